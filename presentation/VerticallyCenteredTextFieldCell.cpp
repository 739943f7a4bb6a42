#include "presentation/VerticallyCenteredTextFieldCell.h"

#include <cmath>

namespace interactive {

int verticalInset(double frameHeight, double lineHeight)
{
    // Rounded up in single precision, so that a height a hair above a whole number, which only arithmetic has
    // made, is not taken for a whole point more.
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
    // Drawing, editing and selecting use one frame, so that a text stays where it is when its editing begins.
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
