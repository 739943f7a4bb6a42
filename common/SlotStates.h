#pragma once

#include "platform/Value.h"

#include <QString>
#include <QStringList>

#include <mutex>

namespace interactive {

/// Which slots of a panel take input: what the system calls `enableStatus`. Panel key → slot name → number:
/// positive (or true) for a slot that is switched on, negative for one that a panel leaves out; a slot that
/// was switched off has no entry.
///
/// As in PanelRecords, what was handed out is never written again. Thread: any.
class SlotStates
{
public:
    [[nodiscard]] platform::Dictionary all() const;
    void restore(const platform::Dictionary &data);
    /// A panel's states; nothing when it has none.
    [[nodiscard]] platform::Value of(const QString &panelKey) const;

    /// Switches all these slots on, unless the panel has states already.
    void setUp(const QString &panelKey, const platform::Array &slotNames);
    void switchOn(const QString &panelKey, const QString &slot);
    void switchOff(const QString &panelKey, const QString &slot);
    /// Marks a slot that is on as taking no part.
    void leaveOut(const QString &panelKey, const QString &slot);
    /// Lets a slot that was left out take input again; one that is switched off stays off.
    void takeIn(const QString &panelKey, const QString &slot);
    /// Lets all these take input again, and leaves all those out, as one change.
    void divide(const QString &panelKey, const QStringList &takenIn, const QStringList &leftOut);
    void forget(const QString &panelKey);

private:
    template <class Change>
    void replace(const QString &panelKey, Change change);

    mutable std::mutex m_mutex;
    platform::Dictionary m_data;
};

} // namespace interactive
