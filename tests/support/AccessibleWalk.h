#pragma once

#include <QString>
#include <QStringList>

class QObject;
class QWidget;

namespace testsupport {

/// How assistive technology calls an object; empty where it does not.
[[nodiscard]] QString spokenName(QObject *object);
/// Each object that can be seen in the widget and takes the focus or bears a text, but has no name or no role
/// that says what it is: one line for each. Found as assistive technology finds them.
[[nodiscard]] QStringList accessibilityFaults(QWidget *top);
/// "role: name" of each object that has a name and can be seen, depth first.
[[nodiscard]] QStringList spokenIn(QWidget *top);

} // namespace testsupport
