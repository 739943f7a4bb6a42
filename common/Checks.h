#pragma once

#include "platform/Monitored.h"
#include "platform/Value.h"

#include <QHash>
#include <QList>
#include <QString>

#include <atomic>
#include <functional>
#include <optional>

namespace interactive {

/// One entry that is held against its call's `validate`.
struct Check
{
    quint64 id = 0;
    QString slot;          ///< The label that the entry is stored under.
    platform::Value value; ///< What the record holds for it.
    QString text;          ///< As it was written.
};

/// The entries that wait for the verdict of their call's own function, panel by panel and in the order in
/// which they were made; and those that have it, so that none is asked about twice.
///
/// A panel has checks from open() to close(). The main thread asks; the call's thread takes a check, runs the
/// function, and hands the verdict to the main thread, which settles the check: one that was dropped
/// meanwhile counts no more. Thread: any.
class Checks
{
public:
    /// Called when a call's wait has ended while its thread still runs the function: somebody else has to do
    /// what the call would do at once. Thread: that of whoever has ended the wait.
    using Left = std::function<void(bool wasPressed)>;

    void open(const QString &panelKey, Left left);
    void close(const QString &panelKey);

    /// Asks about an entry in place of the one before in its slot. Whether there is a new check to be run:
    /// not where the same entry was found good, or is being checked, already.
    bool ask(const QString &panelKey, const QString &slot, const platform::Value &value, const QString &text);
    /// The earliest check that nobody has taken; nothing when there is none.
    [[nodiscard]] std::optional<Check> takeNext(const QString &panelKey);
    /// The function runs, from construction to destruction.
    class Running
    {
    public:
        Running(Checks &checks, const QString &panelKey);
        ~Running();
        Running(const Running &) = delete;
        Running &operator=(const Running &) = delete;

    private:
        Checks &m_checks;
        QString m_panelKey;
    };
    /// Takes the check out; false when it was dropped meanwhile.
    bool settle(const QString &panelKey, const Check &check, bool isGood);
    /// Forgets what is known and asked about a slot's entry, or about all of the panel's.
    void drop(const QString &panelKey, const QString &slot);
    void drop(const QString &panelKey);

    /// Whether an entry of the panel has no verdict yet.
    [[nodiscard]] bool arePending(const QString &panelKey);
    [[nodiscard]] bool isPending(const QString &panelKey, const QString &slot);
    /// These checks, the earliest first.
    [[nodiscard]] QList<Check> pending(const QString &panelKey);
    /// The wait on the panel was ended: tells whoever has to know, where the function runs.
    void waitHasEnded(const QString &panelKey, bool wasPressed);

private:
    void setRunning(const QString &panelKey, bool isRunning);

    struct Asked
    {
        Check check;
        bool isTaken = false;
    };
    struct Panel
    {
        QList<Asked> asked;
        QHash<QString, platform::Value> good;
        Left left;
        bool isRunning = false;

        void forget(const QString &slot);
    };

    platform::Monitored<QHash<QString, Panel>> m_panels;
    std::atomic<quint64> m_lastId{0};
};

} // namespace interactive
