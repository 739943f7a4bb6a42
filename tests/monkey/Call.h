#pragma once

#include "platform/Error.h"
#include "tests/monkey/Model.h"
#include "tests/support/SequencerCall.h"

#include <QMap>
#include <QString>

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>

namespace interactive {
class InteractiveView;
} // namespace interactive

namespace monkey {

/// What was on a panel at the moment a button that may end its call was pressed.
struct PressedPanel
{
    QString title;
    bool isLast = false;          ///< The pressed button is the panel's last one.
    QMap<QString, QString> texts; ///< What was shown as entered, by slot or label.
    QString begun{};              ///< What stood in the field of a group's panel; "OK" ends it.
    QStringList on{};             ///< The slots that were switched on.
};

/// One call of a sequence, on a thread of its own.
///
/// Thread: the main thread. Ownership: joins its thread; requires that the call has ended or is about to.
class Call
{
public:
    static constexpr int TimeOver = 406;
    enum class State { Running, WaitsForTurn, WaitsForOperator, Ended };

    Call(int number, int step, const Request &request, const Shape &shape,
         interactive::InteractiveView &plugin);

    /// Lets calls learn what their threads wait for, or ends that. Called once around all calls.
    static void listen(bool on);

    [[nodiscard]] State state() const;
    /// Whether its panel has been up.
    [[nodiscard]] bool wasAsked() const { return m_wasAsked; }
    /// Whether its panel may go at any moment by itself.
    [[nodiscard]] bool isLimited() const;
    [[nodiscard]] bool hasTimedOut() { return hasEnded() && error().code == TimeOver; }
    [[nodiscard]] bool hasEnded() const { return state() == State::Ended; }
    [[nodiscard]] QString inWords() const;

    // What came back. Requires: the call has ended.
    [[nodiscard]] platform::Value result() { return m_thread->result(); }
    [[nodiscard]] platform::Error error() { return m_thread->error(); }
    [[nodiscard]] bool hasThrown() { return m_thread->exception() != nullptr; }

    // What is known of it from outside
    const int number;
    const int step;
    const Request request;
    const Fate fate;
    const std::optional<int> band;
    const QString panelKey;
    const std::chrono::steady_clock::time_point made = std::chrono::steady_clock::now();
    std::optional<PressedPanel> pressed; ///< The press that may end it.
    bool isStopped = false;              ///< The station was stopped while it was under way.

private:
    void waitsFor(const QString &what);
    [[nodiscard]] platform::Value make(interactive::InteractiveView &plugin, platform::Error *error);

    std::atomic<State> m_state{State::Running};
    std::atomic<bool> m_wasAsked{false};
    std::unique_ptr<testsupport::SequencerCall> m_thread;
};

} // namespace monkey
