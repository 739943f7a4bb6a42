#include "kovan/KovanLuaSequencer/KVKLuaRun.h"

#include "kovan/KovanLogging/KVKLogging.h"

#include <utility>

namespace {

constexpr qsizetype LongestShownName = 60;

std::vector<QString> groupsOf(const std::vector<KVKLuaPartner> &partners)
{
    std::vector<QString> groups;
    for (const KVKLuaPartner &partner : partners)
        groups.push_back(partner.group);
    return groups;
}

/// Of a key of the table the name that nothing else has.
QByteArray rightOf(const KVKLuaSharedKey &key)
{
    const qint64 *number = std::get_if<qint64>(&key);
    return number ? '#' + QByteArray::number(*number) : '.' + std::get<QByteArray>(key);
}

} // namespace

QString KVKShownName(const QByteArray &name)
{
    const QString text = QString::fromUtf8(name);
    return text.size() <= LongestShownName ? text : text.left(LongestShownName) + QChar(0x2026);
}

KVKLuaRun::KVKLuaRun(std::vector<KVKLuaPartner> partners)
    : m_partners(std::move(partners))
    , m_seats(m_partners.size())
    , m_meetings(groupsOf(m_partners))
{}

bool KVKLuaRun::comeTo(std::size_t who, const QByteArray &meeting, bool hasLimit)
{
    std::vector<Absence> noted;
    QString circle;
    bool isComplete = false;
    {
        const std::lock_guard lock(m_mutex);
        refuseBeginning(who, QStringLiteral("rendezvous"));
        m_meetings.come(meeting, who);
        noteAbsence(who, meeting, noted);
        isComplete = m_meetings.missing(meeting, who).empty();
        if (!isComplete) {
            sit(who, WaitKind::Others, meeting, hasLimit);
            circle = circleFrom(who);
        }
        if (circle.isEmpty()) {
            wakeWhoeverIsComplete();
        } else {
            rise(who);
            m_meetings.withdraw(meeting, who);
        }
    }
    logAbsence(noted);
    if (!circle.isEmpty())
        throw KVKLuaWaitError(QStringLiteral("rendezvous: waiting at \"%1\" would never end: %2")
                                  .arg(KVKShownName(meeting), circle));
    return isComplete;
}

QStringList KVKLuaRun::awaitOthers(std::size_t who, Limit limit)
{
    std::unique_lock lock(m_mutex);
    Seat &seat = m_seats[who];
    const QByteArray meeting = seat.name;
    const auto isOver = [&] { return seat.isInterrupted || m_meetings.missing(meeting, who).empty(); };
    if (limit)
        seat.changed.wait_for(lock, *limit, isOver);
    else
        seat.changed.wait(lock, isOver);
    rise(who);
    QStringList missing;
    for (const std::size_t other : m_meetings.missing(meeting, who))
        missing.append(m_partners[other].name);
    // Whoever was there with this one may still be about to wake: only what is in vain is taken back.
    if (!missing.isEmpty())
        m_meetings.withdraw(meeting, who);
    if (seat.isInterrupted)
        throw KVKLuaWaitError(QStringLiteral("stopped"));
    return missing;
}

bool KVKLuaRun::enter(std::size_t who, const QByteArray &lock)
{
    const std::lock_guard guard(m_mutex);
    refuseBeginning(who, QStringLiteral("locked"));
    if (m_locks.holder(lock) == who) {
        throw KVKLuaWaitError(
            QStringLiteral("locked: this sequence has the lock \"%1\" already").arg(KVKShownName(lock)));
    }
    if (m_locks.enter(lock, who))
        return true;
    sit(who, WaitKind::Lock, lock, false);
    const QString circle = circleFrom(who);
    if (circle.isEmpty())
        return false;
    rise(who);
    passOn(m_locks.leave(lock, who));
    throw KVKLuaWaitError(QStringLiteral("locked: waiting for lock \"%1\" would never end: %2")
                              .arg(KVKShownName(lock), circle));
}

void KVKLuaRun::awaitLock(std::size_t who)
{
    std::unique_lock guard(m_mutex);
    Seat &seat = m_seats[who];
    const QByteArray lock = seat.name;
    seat.changed.wait(guard, [&] { return seat.isInterrupted || m_locks.holder(lock) == who; });
    rise(who);
    if (!seat.isInterrupted)
        return;
    // It may have been given the lock in the same moment, and passes it on then.
    passOn(m_locks.leave(lock, who));
    throw KVKLuaWaitError(QStringLiteral("stopped"));
}

void KVKLuaRun::leave(std::size_t who, const QByteArray &lock)
{
    const std::lock_guard guard(m_mutex);
    passOn(m_locks.leave(lock, who));
}

KVKLuaSharedTable::Value KVKLuaRun::beginUpdate(std::size_t who, const KVKLuaSharedKey &key)
{
    const QByteArray right = rightOf(key);
    std::unique_lock guard(m_mutex);
    refuseBeginning(who, QStringLiteral("shared.update"));
    Seat &seat = m_seats[who];
    if (!m_updates.enter(right, who)) {
        // No circle can come of it: whoever updates waits for nothing.
        sit(who, WaitKind::Update, right, false);
        seat.changed.wait(guard, [&] { return seat.isInterrupted || m_updates.holder(right) == who; });
        rise(who);
        if (seat.isInterrupted) {
            passOn(m_updates.leave(right, who));
            throw KVKLuaWaitError(QStringLiteral("stopped"));
        }
    }
    guard.unlock();
    return m_shared.beginUpdate(key, who);
}

void KVKLuaRun::leaveUpdate(std::size_t who, const KVKLuaSharedKey &key)
{
    m_shared.dropUpdate(key);
    const std::lock_guard guard(m_mutex);
    passOn(m_updates.leave(rightOf(key), who));
}

void KVKLuaRun::refuseInsideUpdate(std::size_t who, const QString &function) const
{
    const std::lock_guard guard(m_mutex);
    refuseUpdating(who, function);
}

void KVKLuaRun::interrupt(std::size_t who)
{
    const std::lock_guard guard(m_mutex);
    m_seats[who].isInterrupted = true;
    m_seats[who].changed.notify_one();
}

void KVKLuaRun::end(std::size_t who)
{
    std::vector<Absence> noted;
    {
        const std::lock_guard guard(m_mutex);
        if (std::exchange(m_seats[who].hasEnded, true))
            return;
        m_meetings.end(who);
        for (const QByteArray &lock : m_locks.heldBy(who))
            passOn(m_locks.leave(lock, who));
        for (const QByteArray &right : m_updates.heldBy(who))
            passOn(m_updates.leave(right, who));
        for (std::size_t other = 0; other < m_seats.size(); ++other) {
            if (m_seats[other].kind == WaitKind::Others)
                noteAbsence(other, m_seats[other].name, noted);
        }
        wakeWhoeverIsComplete();
    }
    logAbsence(noted);
}

void KVKLuaRun::refuseBeginning(std::size_t who, const QString &function) const
{
    if (m_seats[who].isInterrupted)
        throw KVKLuaWaitError(QStringLiteral("stopped"));
    refuseUpdating(who, function);
}

/// Whoever updates waits for nothing, so that those who wait for it do not wait for ever.
void KVKLuaRun::refuseUpdating(std::size_t who, const QString &function) const
{
    if (!m_updates.heldBy(who).empty())
        throw KVKLuaWaitError(QStringLiteral("%1: cannot be called inside of shared.update").arg(function));
}

void KVKLuaRun::sit(std::size_t who, WaitKind kind, const QByteArray &name, bool hasLimit)
{
    m_seats[who].kind = kind;
    m_seats[who].name = name;
    m_seats[who].hasLimit = hasLimit;
}

void KVKLuaRun::rise(std::size_t who)
{
    sit(who, WaitKind::Nothing, {}, false);
}

void KVKLuaRun::passOn(std::optional<std::size_t> next)
{
    if (next)
        m_seats[*next].changed.notify_one();
}

void KVKLuaRun::wakeWhoeverIsComplete()
{
    for (std::size_t who = 0; who < m_seats.size(); ++who) {
        Seat &seat = m_seats[who];
        if (seat.kind == WaitKind::Others && m_meetings.missing(seat.name, who).empty())
            seat.changed.notify_one();
    }
}

void KVKLuaRun::noteAbsence(std::size_t who, const QByteArray &meeting, std::vector<Absence> &noted)
{
    for (const std::size_t other : m_meetings.newlyAbsent(meeting, who))
        noted.push_back({meeting, other});
}

void KVKLuaRun::logAbsence(const std::vector<Absence> &noted) const
{
    for (const Absence &absence : noted) {
        KVKLogEvent(KVKLogLevel::Default, "rendezvous \"%@\": %@ has ended and is not waited for",
                    {KVKShownName(absence.meeting), m_partners[absence.who].name});
    }
}

/// Those without whom the sequence cannot go on. A wait that is limited or being stopped ends by itself.
std::vector<std::size_t> KVKLuaRun::waitsFor(std::size_t who) const
{
    const Seat &seat = m_seats[who];
    if (seat.isInterrupted || seat.hasLimit)
        return {};
    if (seat.kind == WaitKind::Others)
        return m_meetings.missing(seat.name, who);
    const auto holder = seat.kind == WaitKind::Lock ? m_locks.holder(seat.name) : std::nullopt;
    return holder ? std::vector{*holder} : std::vector<std::size_t>{};
}

/// Follows the waits from the last of the way on, until they come back to its first.
bool KVKLuaRun::findWay(std::vector<std::size_t> &way, std::vector<bool> &seen) const
{
    for (const std::size_t next : waitsFor(way.back())) {
        if (next == way.front())
            return true;
        if (seen[next])
            continue;
        seen[next] = true;
        way.push_back(next);
        if (findWay(way, seen))
            return true;
        way.pop_back();
    }
    return false;
}

/// The circle that the sequence's wait closes, in words; empty when it closes none.
QString KVKLuaRun::circleFrom(std::size_t who) const
{
    std::vector<std::size_t> way{who};
    std::vector<bool> seen(m_seats.size());
    if (!findWay(way, seen))
        return {};
    QStringList waits;
    for (std::size_t i = 0; i < way.size(); ++i)
        waits.append(textOfWait(way[i], way[(i + 1) % way.size()]));
    return waits.join(QStringLiteral("; "));
}

QString KVKLuaRun::textOfWait(std::size_t who, std::size_t other) const
{
    const QString text = m_seats[who].kind == WaitKind::Lock
                             ? QStringLiteral("%1 waits for lock \"%2\", which %3 holds")
                             : QStringLiteral("%1 waits at \"%2\" for %3");
    return text.arg(m_partners[who].name, KVKShownName(m_seats[who].name), m_partners[other].name);
}
