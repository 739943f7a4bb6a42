#include "station/record/PanelDiary.h"

#include "platform/Button.h"
#include "platform/TextField.h"

#include <algorithm>

namespace station {

using platform::View;

namespace {

/// A panel that says something and does not wait has nothing to be used.
bool canBeAnswered(View *panel)
{
    const QList<View *> views = treeOrder(panel);
    return std::any_of(views.begin(), views.end(), [](View *view) {
        const auto *field = qobject_cast<platform::TextField *>(view);
        return qobject_cast<platform::Button *>(view) || (field && field->isEditable());
    });
}

/// Also where one of both has lost some of its views, or has got more.
bool areTheSame(const PanelShowing &one, const PanelShowing &other)
{
    return one.panel == other.panel &&
           std::any_of(one.content.begin(), one.content.end(),
                       [&other](const QPointer<View> &view) { return view && other.content.contains(view); });
}

} // namespace

PanelDiary::Page &PanelDiary::pageOf(const PanelShowing &showing)
{
    const auto found = std::find_if(m_pages.begin(), m_pages.end(),
                                    [&](const Page &page) { return areTheSame(page.showing, showing); });
    if (found != m_pages.end())
        return *found;
    m_pages.append({showing, false, false});
    return m_pages.last();
}

QList<PanelWait> PanelDiary::look(View *root)
{
    QList<PanelWait> missed;
    for (Page &page : m_pages) {
        if (page.isGone || !page.showing.isGone(root))
            continue;
        page.isGone = true;
        if (page.isWaitedFor)
            continue;
        // Otherwise the earlier one, which still stands when it is replayed, would be taken for this one.
        for (Page &earlier : m_pages) {
            if (earlier.isGone && earlier.isWaitedFor && earlier.showing.key == page.showing.key) {
                earlier.isWaitedFor = false;
                missed.append({PanelWait::Until::Gone, earlier.showing.key});
            }
        }
        missed.append({PanelWait::Until::Shown, page.showing.key});
        missed.append({PanelWait::Until::Gone, page.showing.key});
    }
    m_pages.removeIf([](const Page &page) { return page.isGone && !page.isWaitedFor; });
    for (View *view : treeOrder(root)) {
        if (isPanel(view) && view->isVisible() && canBeAnswered(view))
            static_cast<void>(pageOf(PanelShowing::of(view)));
    }
    return missed;
}

QList<PanelWait> PanelDiary::actIn(const PanelShowing &showing)
{
    QList<PanelWait> waits;
    m_pages.removeIf([&](const Page &page) {
        const bool isEarlier = page.isGone && page.showing.key == showing.key;
        if (isEarlier)
            waits.append({PanelWait::Until::Gone, showing.key});
        return isEarlier;
    });
    Page &page = pageOf(showing);
    if (!page.isWaitedFor)
        waits.append({PanelWait::Until::Shown, showing.key});
    page.isWaitedFor = true;
    return waits;
}

QList<PanelWait> PanelDiary::actBeside()
{
    QList<PanelWait> waits;
    m_pages.removeIf([&](const Page &page) {
        if (page.isGone)
            waits.append({PanelWait::Until::Gone, page.showing.key});
        return page.isGone;
    });
    for (Page &page : m_pages) {
        if (page.isWaitedFor || !page.showing.panel || !page.showing.panel->isVisible())
            continue;
        page.isWaitedFor = true;
        waits.append({PanelWait::Until::Shown, page.showing.key});
    }
    // By the key and not as they came, which is another order each time.
    std::sort(waits.begin(), waits.end(), [](const PanelWait &one, const PanelWait &other) {
        return one.until == other.until ? one.key < other.key : one.until == PanelWait::Until::Gone;
    });
    return waits;
}

} // namespace station
