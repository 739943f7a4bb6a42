#include "layout/Overview.h"

#include "layout/PanelParts.h"
#include "platform/Box.h"
#include "presentation/CollectionViewItem.h"
#include "presentation/ScrollView.h"

#include "common/RecordKeys.h"

namespace interactive::overview {

using platform::CollectionView;

platform::Array content(quint64 groupNumber, quint64 slotCount)
{
    platform::Array content;
    for (quint64 i = 0; i < slotCount; ++i) {
        // Systems are counted group by group.
        const auto system = static_cast<qulonglong>(groupNumber * slotCount + i);
        content.append(platform::Dictionary{{keys::Index, system}});
    }
    return content;
}

CollectionView *put(platform::View &container, const PanelGeometry &geometry, const platform::Array &content)
{
    auto overview = std::make_unique<CollectionView>(container.bounds());
    CollectionView::FlowLayout flow;
    flow.itemSize = geometry.tile();
    // Told and not left to the width: tiles must not flow anew when the window gets narrower.
    flow.itemsInRow = static_cast<int>(geometry.columns());
    overview->setFlowLayout(flow);
    overview->setFrame(geometry.overview());
    overview->setBackgroundColors({platform::Color::clear()});
    overview->setAutoresizingMask(platform::WidthSizable | platform::MaxXMargin);
    overview->registerItem([] { return CollectionViewItem::makeFromInterfaceFile(); },
                           CollectionViewItem::Name);
    overview->setSelectable(true);
    overview->setContent(content);

    auto scrollView = std::make_unique<ScrollView>(geometry.overviewScroll());
    scrollView->setAutoresizingMask(platform::WidthSizable);
    // It is as large as the overview and never scrolls; the document around all panels does.
    scrollView->setHasVerticalScroller(false);
    scrollView->setHasHorizontalScroller(false);
    const double width = geometry.overviewScroll().width();
    parts::followWidth(container, *scrollView, width, platform::LargestCoordinate);
    CollectionView *put = overview.get();
    scrollView->contentView()->addSubview(overview.release());
    container.addSubview(scrollView.release());
    return put;
}

void hideBoxes(const CollectionView &overview)
{
    // A slot's panel uses one tile; each of the others is shown when its own system asks.
    for (qsizetype i = 0; i < overview.content().size(); ++i) {
        const auto *item = qobject_cast<CollectionViewItem *>(overview.itemAtIndex(i));
        if (item && item->box())
            item->box()->setHidden(true);
    }
}

} // namespace interactive::overview
