#include "layout/Document.h"

#include <algorithm>

namespace interactive {

void Document::makeRoom(const PanelGeometry &geometry)
{
    platform::ScrollView *scrollView = m_views.scrollView();
    const bool isFirst = m_views.panels().isEmpty();
    const platform::Size asked = scrollView->documentSize();
    const double height = geometry.areaHeight() * static_cast<double>(m_station.groupCount());
    scrollView->setDocumentSize(
        {std::max(asked.width(), geometry.minimumWidth()), std::max(asked.height(), height)});
    scrollView->resetScrollers();
    if (isFirst)
        scrollView->scrollToPoint({0.0, scrollView->documentView()->bounds().height()});
}

} // namespace interactive
