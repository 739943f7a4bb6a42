#include "presentation/VerticallyCenteredTextFieldCell.h"

#include <cmath>

namespace interactive {

int verticalInset(double frameHeight, double lineHeight)
{
    const auto whole = static_cast<double>(std::ceil(static_cast<float>(lineHeight)));
    // The 1 after the floor makes the text area two points taller than the centred line box.
    return static_cast<int>(std::floor((frameHeight - whole) * 0.5)) - 1;
}

platform::Rect
VerticallyCenteredTextFieldCell::adjustedFrameToVerticallyCenterText(const platform::Rect &frame) const
{
    const double inset = verticalInset(frame.height(), font() ? font()->boundingHeight() : 0.0);
    return {frame.x(), frame.y() + inset, frame.width(), frame.height() - 2.0 * inset};
}

platform::Rect VerticallyCenteredTextFieldCell::drawingFrame(const platform::Rect &frame) const
{
    return TextFieldCell::drawingFrame(adjustedFrameToVerticallyCenterText(frame));
}

platform::Rect VerticallyCenteredTextFieldCell::editingFrame(const platform::Rect &frame) const
{
    return TextFieldCell::editingFrame(adjustedFrameToVerticallyCenterText(frame));
}

platform::Rect VerticallyCenteredTextFieldCell::selectionFrame(const platform::Rect &frame) const
{
    return TextFieldCell::selectionFrame(adjustedFrameToVerticallyCenterText(frame));
}

} // namespace interactive
