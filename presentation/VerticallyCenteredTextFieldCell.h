#pragma once

#include "platform/TextFieldCell.h"

namespace interactive {

/// A text cell whose text is drawn, edited and selected vertically centred in its frame; border and bezel use
/// the full frame.
///
/// Thread: the main thread.
class VerticallyCenteredTextFieldCell : public platform::TextFieldCell
{
public:
    /// The frame inset vertically so that a line of the cell's font is centred in it, two points taller than
    /// the bare line and shifted up by one; larger than the frame when the line does not fit. Without a font
    /// the line has no height. Points, bottom-left origin.
    [[nodiscard]] platform::Rect adjustedFrameToVerticallyCenterText(const platform::Rect &frame) const;

    [[nodiscard]] platform::Rect drawingFrame(const platform::Rect &frame) const override;
    [[nodiscard]] platform::Rect editingFrame(const platform::Rect &frame) const override;
    [[nodiscard]] platform::Rect selectionFrame(const platform::Rect &frame) const override;
    [[nodiscard]] VerticalPlacement verticalPlacement() const override { return VerticalPlacement::Centered; }
};

/// The inset for a frame and a line of these heights, in points.
[[nodiscard]] int verticalInset(double frameHeight, double lineHeight);

} // namespace interactive
