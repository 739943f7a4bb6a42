#pragma once

#include <QColor>

/// Colours that can be told apart. Thread: plain functions.
namespace platform::readable {

/// What the contrast between a text and its ground is at least.
inline constexpr double LeastContrast = 4.5;
/// And what it is for what is no text.
inline constexpr double LeastContrastOfMarks = 3.0;

/// Of two opaque colours: 1 (the same) to 21 (black and white), as the Web Content Accessibility Guidelines
/// measure it.
[[nodiscard]] double contrast(const QColor &one, const QColor &other);
/// The opaque colour that is seen where one lies over an opaque ground.
[[nodiscard]] QColor over(const QColor &color, const QColor &ground);

/// The wanted colour where a text in it can be read on the opaque ground; otherwise the nearest one of the
/// same hue that can, and black or white in the place of a grey.
[[nodiscard]] QColor text(const QColor &wanted, const QColor &ground);
/// A text that has less to say (of a control that is off, or in the place of an entry): half way to the
/// ground, but no fainter than can be read.
[[nodiscard]] QColor faint(const QColor &wanted, const QColor &ground);

/// The same as text() for what is no text but has to be seen, such as a bar.
[[nodiscard]] QColor mark(const QColor &wanted, const QColor &ground);

} // namespace platform::readable
