#pragma once

#include "input/Focus.h"
#include "presentation/PanelViews.h"

#include <functional>
#include <utility>

#include "common/Checks.h"
#include "common/PanelRecords.h"
#include "common/RulesInForce.h"
#include "common/StationMap.h"

namespace interactive {

/// Presses "OK" on a panel that asks for it (`autoConfirm`), as soon as everything was entered.
///
/// Thread: the main thread.
class AutoConfirm
{
public:
    AutoConfirm(const StationMap &station, const PanelRecords &records, const RulesInForce &rules,
                Checks &checks, const Focus &focus, PanelViews &views)
        : m_station(station)
        , m_records(records)
        , m_rules(rules)
        , m_checks(checks)
        , m_focus(focus)
        , m_views(views)
    {}

    /// What a press of a button does; handed in, since that is built on entries.
    void setPress(std::function<void(platform::View *button)> press) { m_press = std::move(press); }

    /// Something was entered, or is not waited for any more: to be called after each change that may have
    /// been the last one, a check that came back good included.
    void look(const platform::Identifier &panelKey);

private:
    [[nodiscard]] bool isComplete(const platform::Identifier &panelKey) const;

    const StationMap &m_station;
    const PanelRecords &m_records;
    const RulesInForce &m_rules;
    Checks &m_checks;
    const Focus &m_focus;
    PanelViews &m_views;
    std::function<void(platform::View *button)> m_press;
};

} // namespace interactive
