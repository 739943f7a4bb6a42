#pragma once

#include "layout/PanelGeometry.h"
#include "presentation/PanelViews.h"

namespace interactive {

/// The document that the panels stand in: as large as the open panels need, and scrolled so that the first
/// panel is seen from its top.
///
/// Thread: the main thread.
class Document
{
public:
    Document(const StationMap &station, PanelViews &views)
        : m_station(station)
        , m_views(views)
    {}

    /// Makes room for the bands of all groups in this geometry.
    void makeRoom(const PanelGeometry &geometry);

private:
    const StationMap &m_station;
    PanelViews &m_views;
};

} // namespace interactive
