#include "common/SlotStates.h"

#include <utility>

namespace interactive {

namespace {

/// Marks a slot that is on but takes no part in the panel: it waits for no input.
constexpr qlonglong TakesNoInput = -1;
constexpr qlonglong TakesInput = 1;

} // namespace

/// Changes a copy while what others may share is still there: see PanelRecords::replace.
template <class Change>
void SlotStates::replace(const QString &panelKey, Change change)
{
    platform::Dictionary former;
    {
        const std::lock_guard lock(m_mutex);
        platform::Dictionary next = m_data;
        platform::Dictionary states = next.value(panelKey).toMap();
        change(states);
        next.insert(panelKey, states);
        former = std::exchange(m_data, std::move(next));
    }
}

platform::Dictionary SlotStates::all() const
{
    const std::lock_guard lock(m_mutex);
    return m_data;
}

void SlotStates::restore(const platform::Dictionary &data)
{
    const std::lock_guard lock(m_mutex);
    m_data = data;
}

platform::Value SlotStates::of(const QString &panelKey) const
{
    const std::lock_guard lock(m_mutex);
    return m_data.value(panelKey);
}

void SlotStates::setUp(const QString &panelKey, const platform::Array &slotNames)
{
    // Looked at and set up in two steps: only the loading of the view sets states up, before anybody can
    // switch.
    if (of(panelKey).isValid())
        return;
    replace(panelKey, [&](platform::Dictionary &states) {
        for (const platform::Value &slot : slotNames)
            states.insert(platform::description(slot), TakesInput);
    });
}

/// A truth value, where the set-up has a 1: a sequence gets the states of a switch panel as they are.
void SlotStates::switchOn(const QString &panelKey, const QString &slot)
{
    replace(panelKey, [&](platform::Dictionary &states) { states.insert(slot, true); });
}

/// Taken out and not set to 0: what a switch panel answers lists the slots that are on.
void SlotStates::switchOff(const QString &panelKey, const QString &slot)
{
    replace(panelKey, [&](platform::Dictionary &states) { states.remove(slot); });
}

void SlotStates::leaveOut(const QString &panelKey, const QString &slot)
{
    divide(panelKey, {}, {slot});
}

void SlotStates::takeIn(const QString &panelKey, const QString &slot)
{
    divide(panelKey, {slot}, {});
}

void SlotStates::divide(const QString &panelKey, const QStringList &takenIn, const QStringList &leftOut)
{
    replace(panelKey, [&](platform::Dictionary &states) {
        for (const QString &slot : takenIn) {
            // One that was switched off has no entry, reads as 0 here and stays off.
            if (platform::integerValue(states.value(slot)) < 0)
                states.insert(slot, TakesInput);
        }
        for (const QString &slot : leftOut)
            states.insert(slot, TakesNoInput);
    });
}

void SlotStates::forget(const QString &panelKey)
{
    // Declared before the lock, so that it is freed after the lock was released.
    platform::Dictionary former;
    const std::lock_guard lock(m_mutex);
    platform::Dictionary next = m_data;
    next.remove(panelKey);
    former = std::exchange(m_data, std::move(next));
}

} // namespace interactive
