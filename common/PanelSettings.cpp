#include "common/PanelSettings.h"

#include "common/ConfigValues.h"

namespace interactive {

PanelLook PanelSettings::takeLook(const platform::Dictionary &config)
{
    const QString alpha = config::text(config::BackgroundAlpha, config);
    const QString shadow = config::text(config::DrawShadow, config);
    // One lock over taking and reading: two calls at once each get their own.
    const auto inForce = m_inForce.lock();
    // An empty value gives nothing, and what an earlier configuration gave stays.
    if (!alpha.isEmpty())
        inForce->look.backgroundAlpha = platform::decimalValue(alpha);
    if (!shadow.isEmpty())
        inForce->look.drawShadow = platform::booleanValue(shadow);
    return inForce->look;
}

} // namespace interactive
