#include "common/Checks.h"

#include <algorithm>
#include <utility>

namespace interactive {

using platform::Value;

void Checks::Panel::forget(const QString &slot)
{
    good.remove(slot);
    erase_if(asked, [&](const Asked &each) { return each.check.slot == slot; });
}

void Checks::open(const QString &panelKey, Left left)
{
    Panel panel;
    panel.left = std::move(left);
    m_panels.lock()->insert(panelKey, panel);
}

void Checks::close(const QString &panelKey)
{
    m_panels.lock()->remove(panelKey);
}

bool Checks::ask(const QString &panelKey, const QString &slot, const Value &value, const QString &text)
{
    const auto panels = m_panels.lock();
    const auto panel = panels->find(panelKey);
    if (panel == panels->end())
        return false;
    // "OK" looks at an entry again that stands there already.
    const bool isGood = panel->good.contains(slot) && panel->good.value(slot) == value;
    const bool isAsked = std::any_of(panel->asked.cbegin(), panel->asked.cend(), [&](const Asked &each) {
        return each.check.slot == slot && each.check.value == value;
    });
    if (isGood || isAsked)
        return false;
    panel->forget(slot);
    panel->asked.append({{++m_lastId, slot, value, text}, false});
    return true;
}

std::optional<Check> Checks::takeNext(const QString &panelKey)
{
    const auto panels = m_panels.lock();
    const auto panel = panels->find(panelKey);
    if (panel == panels->end())
        return std::nullopt;
    const auto next = std::find_if(panel->asked.begin(), panel->asked.end(),
                                   [](const Asked &each) { return !each.isTaken; });
    if (next == panel->asked.end())
        return std::nullopt;
    next->isTaken = true;
    // Nothing that the main thread writes again: the call's thread reads it without a lock.
    return Check{next->check.id, platform::ownCopy(next->check.slot).toString(),
                 platform::ownCopy(next->check.value), platform::ownCopy(next->check.text).toString()};
}

Checks::Running::Running(Checks &checks, const QString &panelKey)
    : m_checks(checks)
    , m_panelKey(panelKey)
{
    m_checks.setRunning(m_panelKey, true);
}

Checks::Running::~Running()
{
    m_checks.setRunning(m_panelKey, false);
}

void Checks::setRunning(const QString &panelKey, bool isRunning)
{
    const auto panels = m_panels.lock();
    const auto panel = panels->find(panelKey);
    if (panel != panels->end())
        panel->isRunning = isRunning;
}

bool Checks::settle(const QString &panelKey, const Check &check, bool isGood)
{
    const auto panels = m_panels.lock();
    const auto panel = panels->find(panelKey);
    if (panel == panels->end())
        return false;
    const auto gone = erase_if(panel->asked, [&](const Asked &each) { return each.check.id == check.id; });
    if (gone > 0 && isGood)
        panel->good.insert(check.slot, check.value);
    return gone > 0;
}

void Checks::drop(const QString &panelKey, const QString &slot)
{
    const auto panels = m_panels.lock();
    const auto panel = panels->find(panelKey);
    if (panel != panels->end())
        panel->forget(slot);
}

void Checks::drop(const QString &panelKey)
{
    const auto panels = m_panels.lock();
    const auto panel = panels->find(panelKey);
    if (panel == panels->end())
        return;
    panel->asked.clear();
    panel->good.clear();
}

bool Checks::arePending(const QString &panelKey)
{
    return !pending(panelKey).isEmpty();
}

bool Checks::isPending(const QString &panelKey, const QString &slot)
{
    const QList<Check> checks = pending(panelKey);
    return std::any_of(checks.cbegin(), checks.cend(),
                       [&](const Check &check) { return check.slot == slot; });
}

QList<Check> Checks::pending(const QString &panelKey)
{
    QList<Check> checks;
    const auto panels = m_panels.lock();
    const auto panel = panels->constFind(panelKey);
    if (panel == panels->cend())
        return checks;
    for (const Asked &each : panel->asked)
        checks.append(each.check);
    return checks;
}

void Checks::waitHasEnded(const QString &panelKey, bool wasPressed)
{
    Left left;
    {
        const auto panels = m_panels.lock();
        const auto panel = panels->constFind(panelKey);
        if (panel != panels->cend() && panel->isRunning)
            left = panel->left;
    }
    // Without the lock: what it does is not known here.
    if (left)
        left(wasPressed);
}

} // namespace interactive
