#include "layout/PanelDrawing.h"
#include "platform/Box.h"
#include "platform/ScrollView.h"
#include "platform/SplitView.h"
#include "plugin/InteractiveView.h"
#include "plugin/Log.h"
#include "plugin/Messages.h"
#include "plugin/RecordKeys.h"
#include "plugin/Selectors.h"
#include "presentation/CollectionViewItem.h"
#include "presentation/ScrollView.h"

#include <algorithm>

namespace interactive {

using platform::CollectionView;

namespace {

/// The collection view of a group's tiles, without tiles.
CollectionView *makeOverview(const PanelGeometry &geometry, const platform::Rect &containerBounds)
{
    auto overview = std::make_unique<CollectionView>(containerBounds);
    CollectionView::FlowLayout flow;
    flow.itemSize = geometry.tile();
    overview->setFlowLayout(flow);
    overview->setFrame(geometry.overview());
    overview->setBackgroundColors({platform::Color::clear()});
    overview->setAutoresizingMask(platform::WidthSizable | platform::MaxXMargin);
    overview->registerItem([] { return CollectionViewItem::makeFromInterfaceFile(); },
                           CollectionViewItem::Name);
    overview->setSelectable(true);
    return overview.release();
}

platform::Array tileContent(quint64 groupNumber, quint64 slotCount)
{
    platform::Array content;
    for (quint64 i = 0; i < slotCount; ++i) {
        const auto system = static_cast<qulonglong>(groupNumber * slotCount + i);
        content.append(platform::Dictionary{{keys::Index, system}});
    }
    return content;
}

void hideBoxes(const CollectionView &overview, quint64 slotCount)
{
    for (quint64 i = 0; i < slotCount; ++i) {
        const auto *item = qobject_cast<CollectionViewItem *>(overview.itemAtIndex(static_cast<qint64>(i)));
        if (item && item->box())
            item->box()->setHidden(true);
    }
}

} // namespace

void InteractiveView::buildOverview(PanelDrawing &drawing)
{
    const PanelPlan &plan = drawing.plan;
    CollectionView *overview = makeOverview(drawing.geometry, drawing.container->bounds());
    overview->setContent(tileContent(plan.groupNumber, m_slotCount));
    overview->setDelegate(this);

    auto scrollView = std::make_unique<ScrollView>(drawing.geometry.overviewScroll());
    scrollView->setAutoresizingMask(platform::WidthSizable);
    scrollView->setHasVerticalScroller(false);
    scrollView->setHasHorizontalScroller(false);
    scrollView->contentView()->addSubview(overview);
    drawing.container->addSubview(scrollView.release());
    if (!isGroupView(plan.panelKey))
        hideBoxes(*overview, m_slotCount);
    m_collections.lock()->insert(plan.groupName.text(), overview);
    enlargeDocument(drawing.geometry);
    const platform::Rect document = m_scrollView->documentView()->frame();
    log::debug(messages::DocumentEnlarged, {selectors::blockName(selectors::DrawUI), plan.panelKey,
                                            document.x(), document.y(), document.width(), document.height()});
}

void InteractiveView::enlargeDocument(const PanelGeometry &geometry)
{
    const platform::View *document = m_scrollView->documentView();
    const platform::Size asked = m_scrollView->documentSize();
    const double height = geometry.areaHeight() * static_cast<double>(m_groupCount);
    m_scrollView->setDocumentSize(
        {std::max(asked.width(), geometry.minimumWidth()), std::max(asked.height(), height)});
    m_scrollView->resetScrollers();
    if (m_splitView->subviews().isEmpty())
        m_scrollView->scrollToPoint({0.0, document->bounds().height()});
}

QString InteractiveView::describeCollections()
{
    platform::Dictionary description;
    const auto guard = m_collections.lock();
    for (auto entry = guard->cbegin(); entry != guard->cend(); ++entry)
        description.insert(entry.key(), log::describe(entry.value()));
    return platform::description(description);
}

} // namespace interactive
