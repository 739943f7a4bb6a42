#pragma once

#include "platform/View.h"

#include <QList>
#include <QPointer>
#include <QString>
#include <QStringList>

namespace station {

/// One showing of a panel: its view with what was on it. A panel that is answered and shown again at once is
/// another showing, also where it uses the same view.
struct PanelShowing
{
    QString key;
    QPointer<platform::View> panel;
    QList<QPointer<platform::View>> content;

    /// The showing as it is now. Requires: the view is a panel.
    [[nodiscard]] static PanelShowing of(platform::View *panel);
    /// Whether the view left the tree below the root, or nothing that was on it is left. A hidden panel is
    /// not gone.
    [[nodiscard]] bool isGone(const platform::View *root) const;
};

/// Whether the view is a panel, that is, something that asks the operator: a pane of a split view, or the
/// content of a box, with an identifier (its panel key) and subviews. The container of slot panels
/// ("G1-group") is none.
[[nodiscard]] bool isPanel(const platform::View *view);
/// The panel that the view is, or lies in; null when it lies in none.
[[nodiscard]] platform::View *panelAround(platform::View *view);
/// The panels with the key below the root, in tree order.
[[nodiscard]] QList<platform::View *> panelsWithKey(platform::View *root, const QString &key);
/// The first of them that can be seen, or null.
[[nodiscard]] platform::View *visiblePanel(platform::View *root, const QString &key);
/// The keys of all panels that can be seen, for a person to read: `"3", "G1"`, or `none`.
[[nodiscard]] QString visiblePanelsText(platform::View *root);

/// The view and everything below it, depth first, as the operator meets it.
[[nodiscard]] QList<platform::View *> treeOrder(platform::View *root);

} // namespace station
