#include "layout/Document.h"

#include "platform/TextField.h"
#include "presentation/MouseTrackedTextField.h"

#include <algorithm>

namespace interactive {

void Document::followWindow(QObject *context)
{
    // The bands are placed here, and would otherwise be laid out twice for each change.
    m_views.splitView()->setAutoresizesSubviews(false);
    QObject::connect(m_views.splitView(), &platform::View::frameChanged, context, [this] {
        const QList<bool> used = usedBands();
        placeBands(stackOf(used, neededBy(used).height()));
    });
    // What is typed must be seen where it lands.
    QObject::connect(m_views.scrollView(), &platform::View::frameChanged, context,
                     [this] { MouseTrackedTextField::bringIntoSight(m_views.focusedField()); });
}

double Document::bandBegin(quint64 group, double height) const
{
    return static_cast<double>(group) * std::max(height, neededByEach().height());
}

QList<bool> Document::usedBands() const
{
    QList<bool> used;
    for (const Band &band : m_bands)
        used.append(isUsed(band));
    return used;
}

bool Document::isUsed(const Band &band)
{
    const platform::View *container = band.container;
    if (!container || !container->superview())
        return false;
    if (band.shown && !band.shown->isHidden() && container->isAncestorOf(band.shown))
        return true;
    band.shown = PanelViews::shownBox(*container);
    return band.shown || PanelViews::isInUse(container);
}

platform::Size Document::neededBy(const QList<bool> &used) const
{
    platform::Size needed(0.0, 0.0);
    for (qsizetype i = 0; i < m_bands.size(); ++i) {
        if (used[i])
            needed = needed.expandedTo(m_bands[i].largest);
    }
    return needed;
}

platform::Size Document::neededByEach() const
{
    return neededBy(usedBands());
}

platform::Size Document::sizeFor(const platform::Size &band) const
{
    return {band.width(), band.height() * static_cast<double>(m_station.groupCount())};
}

void Document::makeRoom(const PanelGeometry &geometry)
{
    platform::ScrollView *scrollView = m_views.scrollView();
    const bool isFirst = m_views.panels().isEmpty();
    // Only larger here. What is no longer needed is given back when a panel has gone, see fit().
    const platform::Size needed = sizeFor(neededByEach().expandedTo(geometry.needed()));
    scrollView->setDocumentSize(scrollView->documentSize().expandedTo(needed));
    scrollView->resetScrollers();
    if (isFirst)
        scrollView->scrollToPoint({0.0, scrollView->documentView()->bounds().height()});
}

void Document::add(platform::View *container, quint64 group, const PanelGeometry &geometry)
{
    m_stacked.reset();
    // One for each container, however many slot panels were drawn into it.
    const auto known =
        std::ranges::find_if(m_bands, [container](const Band &band) { return band.container == container; });
    if (known == m_bands.end()) {
        m_bands.append({container, group, geometry.needed(), geometry.needed()});
    } else {
        known->needed = geometry.needed();
        known->largest = known->largest.expandedTo(known->needed);
    }
    fit();
}

void Document::fit()
{
    // What has no superview is gone, too: a view that was removed is deleted only later.
    if (m_bands.removeIf([](const Band &band) { return !band.container || !band.container->superview(); }))
        m_stacked.reset();
    platform::ScrollView *scrollView = m_views.scrollView();
    const QList<bool> used = usedBands();
    const platform::Size needed = neededBy(used);
    const bool keepsSize = scrollView->documentSize() == sizeFor(needed);
    const Stack stack = stackOf(used, needed.height());
    // Most panels leave others in their bands: many that end at once would each place all bands anew.
    if (keepsSize && m_stacked == stack)
        return;
    const platform::View *field = m_views.focusedField();
    // The field stays in sight, but one that somebody has scrolled away is not brought back.
    const bool wasSeen = field && !field->visibleRegion().isEmpty();
    // Asking anew would put the scrollers' knobs back that makeRoom() has reset.
    if (!keepsSize)
        scrollView->setDocumentSize(sizeFor(needed));
    // Reckoned again: the document's size may have changed the split view's.
    placeBands(stackOf(used, needed.height()));
    if (wasSeen)
        MouseTrackedTextField::bringIntoSight(field);
}

Document::Stack Document::stackOf(const QList<bool> &used, double height) const
{
    return {used, height, m_views.splitView()->frame().width()};
}

void Document::placeBands(const Stack &stack)
{
    m_stacked = stack;
    for (qsizetype i = 0; i < m_bands.size(); ++i) {
        const Band &band = m_bands.at(i);
        if (!band.container || !band.container->superview())
            continue;
        band.container->setFrame({0.0, static_cast<double>(band.group) * stack.height,
                                  std::max(stack.width, band.needed.width()), band.needed.height()});
        // A container whose tiles have all ended would lie over other bands and keep clicks from them.
        if (!PanelViews::isTileContainer(band.container))
            continue;
        // Asked first: to hide what is hidden would be told to all that stand in it.
        if (band.container->isHidden() == stack.used[i])
            band.container->setHidden(!stack.used[i]);
    }
}

} // namespace interactive
