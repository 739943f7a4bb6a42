#pragma once

#include "station/operator/Panels.h"

#include <QHash>

namespace station {

/// Remembers which showing of a panel the operator has answered, so that waiting for it to go is not deceived
/// by the next one of the same key.
///
/// The click into a panel is remembered until its going, or another showing in its place, was waited for.
/// Thread: the main thread.
class PanelWatch
{
public:
    /// Notes that the operator has clicked something on the showing.
    void clicked(const PanelShowing &showing) { m_clicked.insert(showing.key, showing); }

    /// Whether a panel with the key can be seen, and remembers which showing that is. It may be the answered
    /// one that has not gone yet: wait for its going first.
    [[nodiscard]] bool isThere(platform::View *root, const QString &key);
    /// The showing whose going counts: the one last clicked in, otherwise the one last seen, otherwise the
    /// one that is there (with no view when there is none).
    [[nodiscard]] PanelShowing leaving(platform::View *root, const QString &key) const;
    /// Forgets the panel.
    void forget(const QString &key);

private:
    QHash<QString, PanelShowing> m_clicked;
    QHash<QString, PanelShowing> m_seen;
};

} // namespace station
