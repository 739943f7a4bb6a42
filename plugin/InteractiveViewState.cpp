#include "plugin/InteractiveView.h"
#include "plugin/Rooms.h"

namespace interactive {

platform::Dictionary InteractiveView::savedData() const
{
    return m_rooms->records.all();
}

platform::Dictionary InteractiveView::enableStatus() const
{
    return m_rooms->slotStates.all();
}

platform::Array InteractiveView::systemIndexToGroupMapping() const
{
    return m_rooms->station.systemIndexToGroupMapping();
}

platform::Array InteractiveView::systemIndexToSlotMapping() const
{
    return m_rooms->station.systemIndexToSlotMapping();
}

quint64 InteractiveView::groupCount() const
{
    return m_rooms->station.groupCount();
}

quint64 InteractiveView::slotCount() const
{
    return m_rooms->station.slotCount();
}

quint64 InteractiveView::columns() const
{
    return m_rooms->settings.columns();
}

void InteractiveView::setColumns(quint64 columns)
{
    m_rooms->settings.setColumns(columns);
}

bool InteractiveView::customColorEnabled() const
{
    return m_rooms->settings.customColorEnabled();
}

void InteractiveView::setCustomColorEnabled(bool enabled)
{
    m_rooms->settings.setCustomColorEnabled(enabled);
}

bool InteractiveView::drawShadow() const
{
    return m_rooms->settings.look().drawShadow;
}

void InteractiveView::setDrawShadow(bool draw)
{
    m_rooms->settings.setLook({backgroundAlpha(), draw});
}

double InteractiveView::backgroundAlpha() const
{
    return m_rooms->settings.look().backgroundAlpha;
}

void InteractiveView::setBackgroundAlpha(double alpha)
{
    m_rooms->settings.setLook({alpha, drawShadow()});
}

bool InteractiveView::isLoopEnabled() const
{
    return m_rooms->records.isLoopEnabled();
}

} // namespace interactive
