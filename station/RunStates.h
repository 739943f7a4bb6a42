#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"
#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "station/window/SystemRow.h"

#include <QList>
#include <QMap>
#include <QStringList>

namespace station {

/// How far each system is in a run, where several sequences may speak for one system: it runs until the last
/// of them has ended, and then shows the worst of their ends. Sequences are numbered as they are given.
///
/// Thread: a plain value.
class RunStates
{
public:
    /// What a row of the status table shows.
    struct Shown
    {
        SystemState state = SystemState::Idle;
        QString text;         ///< More than the state's own word; empty where that says it all.
        QString scripts = {}; ///< Those that run; where none does any more, those that ran.

        bool operator==(const Shown &) const = default;
    };

    RunStates() = default;
    /// A run that begins; element i are the systems that sequence i speaks for, and its script's name.
    explicit RunStates(const QList<QList<int>> &sequences, const QStringList &scripts = {});

    /// What a sequence's call waits for from now on; nothing when `wait.what` is empty.
    void waits(int sequence, const KVKCallWait &wait);
    void ended(int sequence, const KVKLuaEnd &end);

    [[nodiscard]] const QList<int> &systemsOf(int sequence) const { return m_sequences.at(sequence).systems; }
    /// A system that no sequence speaks for is idle.
    [[nodiscard]] Shown of(int system) const;
    /// Of the systems that a sequence speaks for: when all its sequences have ended a system is done, or
    /// stopped where that is what its row shows.
    struct Progress
    {
        int done = 0;
        int stopped = 0;
        int all = 0;

        bool operator==(const Progress &) const = default;
    };
    [[nodiscard]] Progress progress() const;
    /// The systems whose rows are to be framed, since their operator is waited for: as often as calls do.
    [[nodiscard]] QList<quint64> framed() const;

private:
    struct Sequence
    {
        QList<int> systems;
        QString script;
        KVKCallWait wait;
        bool hasEnded = false;
        KVKLuaEnd end;
    };

    [[nodiscard]] QString scriptsOf(int system) const;

    QList<Sequence> m_sequences;
};

} // namespace station
