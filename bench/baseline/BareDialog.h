#pragma once

#include <QString>

#include <functional>

class QLineEdit;
class QPushButton;
class QWidget;

namespace baseline {

/// Asks with a modal dialog of label, field and button, and returns what was entered. `answer` is called when
/// the dialog stands and its field has the focus. Thread: the main thread.
[[nodiscard]] QString askByDialog(QWidget *window,
                                  const std::function<void(QLineEdit *field, QPushButton *ok)> &answer);

} // namespace baseline
