#include "station/operator/Panels.h"

#include "platform/Box.h"
#include "platform/Control.h"
#include "platform/SplitView.h"

#include <algorithm>

namespace station {

using platform::View;

PanelShowing PanelShowing::of(View *panel)
{
    PanelShowing showing{panel->identifier().text(), panel, {}};
    for (View *view : panel->subviews())
        showing.content.append(view);
    return showing;
}

bool PanelShowing::isGone(const View *root) const
{
    if (!panel || !root || !root->isAncestorOf(panel))
        return true;
    return std::none_of(content.begin(), content.end(),
                        [this](const QPointer<View> &view) { return view && view->superview() == panel; });
}

bool isPanel(const View *view)
{
    if (view->identifier().isNull() || view->identifier().text().endsWith(QLatin1String("-group")))
        return false;
    if (qobject_cast<const platform::Control *>(view) || view->subviews().isEmpty())
        return false;
    const View *parent = view->superview();
    if (qobject_cast<const platform::SplitView *>(parent))
        return true;
    const auto *box = qobject_cast<const platform::Box *>(parent);
    return box && box->contentView() == view;
}

View *panelAround(View *view)
{
    while (view && !isPanel(view))
        view = view->superview();
    return view;
}

QList<View *> treeOrder(View *root)
{
    QList<View *> views{root};
    for (View *view : root->subviews())
        views += treeOrder(view);
    return views;
}

QList<View *> panelsWithKey(View *root, const QString &key)
{
    QList<View *> panels;
    for (View *view : treeOrder(root)) {
        if (view->identifier().text() == key && isPanel(view))
            panels.append(view);
    }
    return panels;
}

View *visiblePanel(View *root, const QString &key)
{
    for (View *panel : panelsWithKey(root, key)) {
        if (panel->isVisible())
            return panel;
    }
    return nullptr;
}

QString visiblePanelsText(View *root)
{
    QStringList keys;
    for (View *view : treeOrder(root)) {
        if (isPanel(view) && view->isVisible())
            keys.append(QLatin1Char('"') + view->identifier().text() + QLatin1Char('"'));
    }
    return keys.isEmpty() ? QStringLiteral("none") : keys.join(QLatin1String(", "));
}

} // namespace station
