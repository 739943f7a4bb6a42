#pragma once

#include "platform/Value.h"

#include <QString>

class QWidget;

namespace platform {
class View;
} // namespace platform

namespace station {

/// The view and everything below it as nested dictionaries: class (without namespace), identifier, frame (x,
/// y, width, height in points, bottom-left origin), tag, hidden, enabled, focused, children; and where they
/// apply text, editable, background and textColor (red, green, blue, alpha, 0 to 1), fontSize, bold,
/// alignment, state.
///
/// Thread: the main thread.
[[nodiscard]] platform::Dictionary viewTree(const platform::View *view);
/// The first view in tree order with the identifier, or null.
[[nodiscard]] platform::View *firstWithIdentifier(platform::View *root, const QString &identifier);
/// The class of an object, without namespaces.
[[nodiscard]] QString className(const QObject *object);
/// A widget as a person would name it: the view that it is or lies in, by class and identifier.
[[nodiscard]] QString widgetText(const QWidget &widget);

} // namespace station
