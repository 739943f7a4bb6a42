#pragma once

#include "platform/Monitored.h"
#include "platform/Value.h"

#include <QtGlobal>

namespace interactive {

/// How the boxes of one panel look. It belongs to the call that draws the panel.
struct PanelLook
{
    double backgroundAlpha = 0.0; ///< The opacity of background fills, 0 to 1.
    bool drawShadow = false;

    friend bool operator==(const PanelLook &, const PanelLook &) = default;
};

/// The settings that carry over from panel to panel: a value once given by a configuration stays in force for
/// later panels that give none.
///
/// Thread: any.
class PanelSettings
{
public:
    /// Takes what a configuration gives, and returns what is in force for its panel.
    [[nodiscard]] PanelLook takeLook(const platform::Dictionary &config);
    [[nodiscard]] PanelLook look() const { return m_inForce.lock()->look; }
    void setLook(const PanelLook &look) { m_inForce.lock()->look = look; }

    /// The columns of the latest panel; 0 before there was one.
    [[nodiscard]] quint64 columns() const { return m_inForce.lock()->columns; }
    void setColumns(quint64 columns) { m_inForce.lock()->columns = columns; }

    /// Whether the host's colours of the systems are used.
    [[nodiscard]] bool customColorEnabled() const { return m_inForce.lock()->customColorEnabled; }
    void setCustomColorEnabled(bool enabled) { m_inForce.lock()->customColorEnabled = enabled; }

private:
    struct InForce
    {
        PanelLook look;
        quint64 columns = 0;
        bool customColorEnabled = false;
    };
    mutable platform::Monitored<InForce> m_inForce;
};

} // namespace interactive
