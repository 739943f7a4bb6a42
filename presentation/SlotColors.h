#pragma once

#include "platform/Color.h"
#include "platform/Geometry.h"
#include "platform/Value.h"

#include "common/PanelSettings.h"

namespace platform {
class Box;
class TextField;
struct Shadow;
} // namespace platform

namespace interactive {

/// The colours of systems: the host's where the station asks for them, neutral ones otherwise.
///
/// A system index may be nothing. Thread: the main thread.
class SlotColors
{
public:
    explicit SlotColors(const PanelSettings &settings)
        : m_settings(settings)
    {}

    /// The colour for text on a background of that opacity.
    [[nodiscard]] platform::Color textColor(const platform::Value &systemIndex, double backgroundAlpha) const;
    [[nodiscard]] platform::Color bgColor(const platform::Value &systemIndex) const;
    /// Gives a field the system's colours; nothing without a field.
    void setTextFieldColor(platform::TextField *field, const platform::Value &systemIndex) const;
    /// A new box in the system's colour. The caller owns it.
    [[nodiscard]] platform::Box *bgView(const platform::Rect &frame,
                                        const platform::Value &systemIndex) const;

    /// What fills the box of a slot that is on.
    [[nodiscard]] platform::Color boxColor(const platform::Value &systemIndex, const PanelLook &look) const;
    /// The shadow of a system's box, where panels have shadows.
    [[nodiscard]] static platform::Shadow boxShadow();
    /// What lies behind a slot's value, or behind a field that waits: twice as opaque as the box around it,
    /// so that the field stands out from it.
    [[nodiscard]] static platform::Color valueColor(const PanelLook &look);
    /// What lies behind an entry that waits for the verdict of its sequence.
    [[nodiscard]] static constexpr platform::Color checkingColor() { return {0.72, 0.87, 1.0, 1.0}; }
    /// The texts on a panel's own status line: why an entry was refused, and what needs nothing done. Dark
    /// enough to be read in small type on white and on checkingColor().
    [[nodiscard]] static constexpr platform::Color refusalTextColor() { return {0.69, 0.0, 0.13, 1.0}; }
    [[nodiscard]] static constexpr platform::Color noteTextColor() { return {0.0, 0.2, 0.4, 1.0}; }

private:
    const PanelSettings &m_settings;
};

} // namespace interactive
