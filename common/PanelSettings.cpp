#include "common/PanelSettings.h"

#include "common/ConfigValues.h"

namespace interactive {

PanelLook PanelSettings::takeLook(const platform::Dictionary &config)
{
    const QString alpha = config::text(config::BackgroundAlpha, config);
    const QString shadow = config::text(config::DrawShadow, config);
    // One lock over taking and reading: two calls at once each get their own.
    const std::lock_guard lock(m_mutex);
    if (!alpha.isEmpty())
        m_look.backgroundAlpha = platform::decimalValue(alpha);
    if (!shadow.isEmpty())
        m_look.drawShadow = platform::booleanValue(shadow);
    return m_look;
}

PanelLook PanelSettings::look() const
{
    const std::lock_guard lock(m_mutex);
    return m_look;
}

void PanelSettings::setLook(const PanelLook &look)
{
    const std::lock_guard lock(m_mutex);
    m_look = look;
}

quint64 PanelSettings::columns() const
{
    const std::lock_guard lock(m_mutex);
    return m_columns;
}

void PanelSettings::setColumns(quint64 columns)
{
    const std::lock_guard lock(m_mutex);
    m_columns = columns;
}

bool PanelSettings::customColorEnabled() const
{
    const std::lock_guard lock(m_mutex);
    return m_customColorEnabled;
}

void PanelSettings::setCustomColorEnabled(bool enabled)
{
    const std::lock_guard lock(m_mutex);
    m_customColorEnabled = enabled;
}

} // namespace interactive
