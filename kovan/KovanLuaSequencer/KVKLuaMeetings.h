#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <map>
#include <set>
#include <vector>

/// Who of a run's sequences has come to which meeting, and whom a meeting still lacks.
///
/// A sequence of a group meets the others of its group; one of the station (an empty group) meets all others
/// of the run. Sequences are numbered as they are given. It is counted how often each has come to a name: its
/// k-th time there is met by the k-th time of the others, so that one that is fast cannot slip into a meeting
/// that it has left already. One that has ended counts as not coming and is not waited for.
///
/// Thread: a plain value.
class KVKLuaMeetings
{
public:
    explicit KVKLuaMeetings(std::vector<QString> groups);

    /// A sequence comes to a name, once more.
    void come(const QByteArray &name, std::size_t who);
    /// Takes its last coming back: it has waited in vain.
    void withdraw(const QByteArray &name, std::size_t who);
    void end(std::size_t who) { m_ended.insert(who); }

    /// Whom its last coming still waits for: the others that run and have come less often. None when the
    /// meeting is complete.
    [[nodiscard]] std::vector<std::size_t> missing(const QByteArray &name, std::size_t who) const;
    /// Those that have ended without coming; each is told once for a name.
    [[nodiscard]] std::vector<std::size_t> newlyAbsent(const QByteArray &name, std::size_t who);

private:
    using Counts = std::map<std::size_t, quint64>;

    [[nodiscard]] bool meets(std::size_t who, std::size_t other) const;
    [[nodiscard]] std::vector<std::size_t> behind(const QByteArray &name, std::size_t who, bool ended) const;

    std::vector<QString> m_groups;
    std::map<QByteArray, Counts> m_counts;
    std::map<QByteArray, std::set<std::size_t>> m_told;
    std::set<std::size_t> m_ended;
};
