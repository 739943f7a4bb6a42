#pragma once

#include "platform/Condition.h"
#include "platform/Identifier.h"
#include "platform/Monitored.h"

#include <QHash>

#include <atomic>
#include <memory>

#include "common/Turns.h"

namespace interactive {

/// What calls wait for: a condition for each panel key, the turns of the groups' bands, and the end of all
/// waits when the host stops.
///
/// How places, turns and presses meet is checked by a model, verification/handshake.pml, which stands for the
/// names of this file, of Turns, of ShowCall and of Confirmation.
///
/// Thread: any. Ownership: must outlive its waits and presses.
class Waits
{
public:
    /// What the press that ends a wait means.
    enum class Purpose {
        Answer,          ///< It ends the asking; what was entered is the answer.
        Acknowledgement, ///< Somebody has read an error; there is nothing to record.
    };
    enum class Wake {
        Pressed,
        Interrupted,
        Asked,    ///< There is work to be done between; the wait goes on with the next wait().
        TimedOut, ///< The wait's own limit has come.
    };

    /// A call's place on its panel's condition. It is taken before the panel can be pressed, so that no press
    /// is lost, and given back when it goes.
    class Wait
    {
    public:
        Wait(Waits &waits, const platform::Identifier &panelKey, Purpose purpose);
        ~Wait();
        Wait(const Wait &) = delete;
        Wait &operator=(const Wait &) = delete;

        /// Ends the wait at a time at the latest. Called before the first wait().
        void setLimit(platform::Condition::Time limit) { m_place.setLimit(limit); }
        /// Blocks until the panel was pressed, until the host ends all calls, until the limit, or until there
        /// is work to be done. An end from before the place was taken is told by isInterrupted(), which is
        /// asked before anything is drawn.
        [[nodiscard]] Wake wait();
        /// Ends the wait unless something else has: from now on no press can. How it has ended.
        Wake end();

    private:
        Waits &m_waits;
        platform::Identifier m_panelKey;
        std::shared_ptr<platform::Condition> m_condition;
        platform::Condition::Place m_place;
    };

    /// A press of a panel's button: which wait it can end, as things stood when it was made.
    class Press
    {
    public:
        /// Whether the panel has a condition at all.
        [[nodiscard]] bool hasCondition() const { return m_condition != nullptr; }
        /// False when the call that the press was for has been answered meanwhile.
        [[nodiscard]] bool isOpen() const;
        [[nodiscard]] Purpose purpose() const { return m_purpose; }
        /// Ends the wait; false when there is none any more.
        bool end() const;

    private:
        friend class Waits;
        std::shared_ptr<platform::Condition> m_condition;
        platform::Condition::Ticket m_ticket;
        Purpose m_purpose = Purpose::Answer;
    };

    /// The one instance of the identifier with this text that is used for panels everywhere: some look-ups
    /// compare the instance and not the text.
    [[nodiscard]] platform::Identifier panelKey(const QString &text);

    /// The condition of a panel key, or null. Logs what it finds.
    [[nodiscard]] std::shared_ptr<platform::Condition> getCondition(const platform::Identifier &panelKey);
    /// The same, made where there is none.
    [[nodiscard]] std::shared_ptr<platform::Condition> conditionMade(const platform::Identifier &panelKey);
    /// Puts a new condition under a key. Requires: nobody waits on the former one.
    void makeCondition(const platform::Identifier &panelKey);
    void clear();

    [[nodiscard]] Press press(const platform::Identifier &panelKey);
    /// Whether a call waits, or has just been answered, on a panel of the key.
    [[nodiscard]] bool isWaited(const QString &panelKey);
    /// Whether the call that drew the panel has been answered already and only collects the answer.
    [[nodiscard]] bool isAnswered(const platform::Identifier &panelKey);

    /// Wakes the call that waits on a panel of the key, for work. Never lost, and never an end; nothing where
    /// no call waits.
    void ask(const QString &panelKey);
    /// Ends the wait on the panel when its limit has come, also while its call works; whether it has come.
    bool endOverdue(const QString &panelKey);

    [[nodiscard]] Turns &turns() { return m_turns; }

    /// How much is kept, for whoever looks whether it grows with the calls.
    struct Kept
    {
        qsizetype panelKeys = 0;
        qsizetype conditions = 0;
        qsizetype waits = 0;
        qsizetype turns = 0;
    };
    [[nodiscard]] Kept kept();

    /// Ends all waits, those that begin later included, until accept().
    void interrupt();
    void accept();
    [[nodiscard]] bool isInterrupted() const { return m_interrupted; }

private:
    using Conditions = QHash<QString, std::shared_ptr<platform::Condition>>;

    [[nodiscard]] std::shared_ptr<platform::Condition> find(const QString &panelKey);

    platform::Monitored<QHash<QString, platform::Identifier>> m_panelKeys;
    platform::Monitored<Conditions> m_conditions;
    platform::Monitored<QHash<QString, Purpose>> m_purposes;
    Turns m_turns;
    std::atomic<bool> m_interrupted{false};
};

} // namespace interactive
