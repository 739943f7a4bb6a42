#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaLocks.h"
#include "kovan/KovanLuaSequencer/KVKLuaMeetings.h"
#include "kovan/KovanLuaSequencer/KVKLuaSharedTable.h"

#include <QStringList>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>

/// A wait among sequences that cannot begin, or that was ended by a stop. The text says why.
class KVKLuaWaitError : public std::runtime_error
{
public:
    explicit KVKLuaWaitError(const QString &text)
        : std::runtime_error(text.toStdString())
    {}
};

/// One sequence of a run, as the others see it.
struct KVKLuaPartner
{
    QString name;  ///< For people, as "system 3".
    QString group; ///< The group that it belongs to; empty for a sequence of the whole station.
};

/// What the sequences of one run have among themselves: meetings, locks and a table of values. A host makes
/// one for each run, with all sequences of it, before it starts the first one; the sequences do the rest.
///
/// A wait that could never end is refused to the sequence that would begin it: one for a lock whose holder
/// waits, whether for a lock or, without a time limit, for others, and so on in a circle back to this
/// sequence.
///
/// Thread: any; the verbs of one sequence, interrupt() apart, on that sequence's thread. No lock is held
/// while a verb logs, and none is known outside. Sequences are numbered as they are given.
class KVKLuaRun
{
public:
    using Limit = std::optional<std::chrono::duration<double>>;

    explicit KVKLuaRun(std::vector<KVKLuaPartner> partners);
    KVKLuaRun(const KVKLuaRun &) = delete;
    KVKLuaRun &operator=(const KVKLuaRun &) = delete;

    [[nodiscard]] KVKLuaSharedTable &shared() { return m_shared; }
    [[nodiscard]] std::size_t size() const { return m_partners.size(); }

    /// Comes to a meeting. Returns whether it is complete; otherwise awaitOthers() follows, with a limit or
    /// without as was said here.
    /// Errors: throws KVKLuaWaitError when the sequence is stopped, is inside of an update, or would wait for
    /// ever; it has not come then.
    [[nodiscard]] bool comeTo(std::size_t who, const QByteArray &meeting, bool hasLimit);
    /// Waits until the meeting is complete, and returns nobody; or for as long as the limit says, and returns
    /// the names of those who are missing. A meeting that is complete at that moment has been in time.
    /// Errors: throws KVKLuaWaitError when the sequence is stopped.
    [[nodiscard]] QStringList awaitOthers(std::size_t who, Limit limit);

    /// Takes a lock, or the last place in its queue. Returns whether the sequence has the lock; otherwise
    /// awaitLock() follows. Errors: as comeTo(), and for a lock that the sequence has already.
    [[nodiscard]] bool enter(std::size_t who, const QByteArray &lock);
    /// Errors: throws KVKLuaWaitError when the sequence is stopped; it has neither lock nor place then.
    void awaitLock(std::size_t who);
    /// Gives a lock to who waits longest for it.
    void leave(std::size_t who, const QByteArray &lock);

    /// Waits until nobody else updates the key, and begins an update. Errors: as comeTo().
    [[nodiscard]] KVKLuaSharedTable::Value beginUpdate(std::size_t who, const KVKLuaSharedKey &key);
    /// Ends it, where endUpdate() of the table has not done so without a value.
    void leaveUpdate(std::size_t who, const KVKLuaSharedKey &key);
    /// Errors: throws KVKLuaWaitError, which names the function, when the sequence is inside of an update.
    void refuseInsideUpdate(std::size_t who, const QString &function) const;

    /// Ends the sequence's wait, and each that it begins from now on. Thread: any.
    void interrupt(std::size_t who);
    /// The sequence has ended: what it has is given up, and it is not waited for any more.
    void end(std::size_t who);

private:
    /// What a sequence waits for.
    enum class WaitKind { Nothing, Lock, Update, Others };

    struct Seat
    {
        std::condition_variable changed;
        WaitKind kind = WaitKind::Nothing;
        QByteArray name;
        bool hasLimit = false;
        bool isInterrupted = false;
        bool hasEnded = false;
    };

    /// What is to be logged when the lock has been released.
    struct Absence
    {
        QByteArray meeting;
        std::size_t who;
    };

    void refuseBeginning(std::size_t who, const QString &function) const;
    void refuseUpdating(std::size_t who, const QString &function) const;
    void sit(std::size_t who, WaitKind kind, const QByteArray &name, bool hasLimit);
    void rise(std::size_t who);
    void passOn(std::optional<std::size_t> next);
    void wakeWhoeverIsComplete();
    void noteAbsence(std::size_t who, const QByteArray &meeting, std::vector<Absence> &noted);
    void logAbsence(const std::vector<Absence> &noted) const;
    [[nodiscard]] std::vector<std::size_t> waitsFor(std::size_t who) const;
    [[nodiscard]] bool findWay(std::vector<std::size_t> &way, std::vector<bool> &seen) const;
    [[nodiscard]] QString circleFrom(std::size_t who) const;
    [[nodiscard]] QString textOfWait(std::size_t who, std::size_t other) const;

    const std::vector<KVKLuaPartner> m_partners;
    KVKLuaSharedTable m_shared;
    mutable std::mutex m_mutex;
    std::vector<Seat> m_seats;
    KVKLuaMeetings m_meetings;
    KVKLuaLocks m_locks;
    KVKLuaLocks m_updates; ///< Who updates which key of the table.
};

/// The name of a meeting or a lock as it is shown: a long one is cut.
[[nodiscard]] QString KVKShownName(const QByteArray &name);
