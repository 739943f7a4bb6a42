#include "station/operator/PanelWatch.h"

namespace station {

using platform::View;

bool PanelWatch::isThere(View *root, const QString &key)
{
    View *panel = visiblePanel(root, key);
    if (!panel)
        return false;
    const auto clicked = m_clicked.constFind(key);
    if (clicked != m_clicked.constEnd() && clicked->isGone(root))
        m_clicked.erase(clicked);
    m_seen.insert(key, PanelShowing::of(panel));
    return true;
}

PanelShowing PanelWatch::leaving(View *root, const QString &key) const
{
    const auto clicked = m_clicked.constFind(key);
    if (clicked != m_clicked.constEnd())
        return *clicked;
    // One that was waited for and went by itself must not be taken for the next one.
    const auto seen = m_seen.constFind(key);
    if (seen != m_seen.constEnd())
        return *seen;
    const QList<View *> panels = panelsWithKey(root, key);
    return panels.isEmpty() ? PanelShowing() : PanelShowing::of(panels.first());
}

void PanelWatch::forget(const QString &key)
{
    m_clicked.remove(key);
    m_seen.remove(key);
}

} // namespace station
