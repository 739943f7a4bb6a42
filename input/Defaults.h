#pragma once

#include "input/Focus.h"
#include "presentation/PanelViews.h"

#include "common/PanelRecords.h"
#include "common/RulesInForce.h"

namespace interactive {

/// What a panel's field is filled in with before anybody has entered anything.
///
/// A default is no entry: the record does not hold it, and the panel waits for it like for any other, until
/// Return or "OK" confirms it. Thread: the main thread.
class Defaults
{
public:
    Defaults(const PanelRecords &records, const RulesInForce &rules, const Focus &focus, PanelViews &views)
        : m_records(records)
        , m_rules(rules)
        , m_focus(focus)
        , m_views(views)
    {}

    /// Fills in the field that takes the panel's entries, and selects it, so that what is typed takes its
    /// place: with the default of the label that waits next, and with nothing where that one has none.
    /// Nothing changes on a panel without defaults, nor while an entry is begun, nor where one stands that is
    /// the answer.
    void offer(const platform::Identifier &panelKey);
    /// The default of the label that waits next; nothing when none waits, or it has none.
    [[nodiscard]] std::optional<QString> next(const platform::Identifier &panelKey);

private:
    /// Nothing when none waits.
    [[nodiscard]] std::optional<QString> waitingLabel(const platform::Identifier &panelKey,
                                                      const platform::TextField &field) const;

    const PanelRecords &m_records;
    const RulesInForce &m_rules;
    const Focus &m_focus;
    PanelViews &m_views;
};

} // namespace interactive
