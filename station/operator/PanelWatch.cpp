#include "station/operator/PanelWatch.h"

namespace station {

using platform::View;

bool PanelWatch::isThere(View *root, const QString &key)
{
    if (!visiblePanel(root, key))
        return false;
    const auto clicked = m_clicked.constFind(key);
    if (clicked != m_clicked.constEnd() && clicked->isGone(root))
        m_clicked.erase(clicked);
    return true;
}

PanelShowing PanelWatch::leaving(View *root, const QString &key) const
{
    const auto clicked = m_clicked.constFind(key);
    if (clicked != m_clicked.constEnd())
        return *clicked;
    const QList<View *> panels = panelsWithKey(root, key);
    return panels.isEmpty() ? PanelShowing() : PanelShowing::of(panels.first());
}

} // namespace station
