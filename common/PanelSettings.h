#pragma once

#include "platform/Value.h"

#include <QtGlobal>

#include <mutex>

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
    [[nodiscard]] PanelLook look() const;
    void setLook(const PanelLook &look);

    /// The columns of the latest panel; 0 before there was one.
    [[nodiscard]] quint64 columns() const;
    void setColumns(quint64 columns);

    /// Whether the host's colours of the systems are used.
    [[nodiscard]] bool customColorEnabled() const;
    void setCustomColorEnabled(bool enabled);

private:
    mutable std::mutex m_mutex;
    PanelLook m_look;
    quint64 m_columns = 0;
    bool m_customColorEnabled = false;
};

} // namespace interactive
