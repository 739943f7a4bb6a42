#pragma once

#include "platform/Font.h"
#include "platform/View.h"

#include <optional>

namespace platform {

/// Where a text field puts its text. The field paints border and background over its whole bounds and asks
/// its cell for the rectangle of the text: for drawing, for editing and for selecting.
///
/// Shapes and units: rectangles in points inside the field, bottom-left origin.
/// Thread: the main thread. Ownership: a field owns its cell.
class TextFieldCell
{
public:
    enum class BezelStyle { Square = 0, Rounded = 1 };
    enum class VerticalPlacement { Upper, Centered, Lower };

    virtual ~TextFieldCell() = default;

    [[nodiscard]] virtual Rect drawingFrame(const Rect &frame) const { return frame; }
    [[nodiscard]] virtual Rect editingFrame(const Rect &frame) const { return frame; }
    [[nodiscard]] virtual Rect selectionFrame(const Rect &frame) const { return frame; }
    /// Where text stands in the drawing frame's height. Where the frame has no room for a further line, it is
    /// centred all the same.
    [[nodiscard]] virtual VerticalPlacement verticalPlacement() const { return VerticalPlacement::Upper; }

    [[nodiscard]] std::optional<Font> font() const { return m_font; }
    void setFont(const std::optional<Font> &font) { m_font = font; }
    [[nodiscard]] bool isBezeled() const { return m_bezeled; }
    void setBezeled(bool bezeled) { m_bezeled = bezeled; }
    [[nodiscard]] BezelStyle bezelStyle() const { return m_bezelStyle; }
    void setBezelStyle(BezelStyle style) { m_bezelStyle = style; }

private:
    std::optional<Font> m_font;
    bool m_bezeled = false;
    BezelStyle m_bezelStyle = BezelStyle::Square;
};

} // namespace platform
