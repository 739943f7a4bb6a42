#pragma once

#include <QObject>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

#include "bench/baseline/BarePanels.h"
#include "bench/baseline/BareWindow.h"

namespace baseline {

/// Threads that ask a person: each has a bare panel (label, field, button) put into an open window, waits on
/// a condition variable until its button was pressed, and takes the text.
///
/// Thread: the main thread. Ownership: joins its threads, which have to be answered first.
class BareAsking
{
public:
    BareAsking(BareWindow &window, int threads, int callsPerThread);
    ~BareAsking();
    BareAsking(const BareAsking &) = delete;
    BareAsking &operator=(const BareAsking &) = delete;

    /// Whether a panel stands that can be answered; its field has the focus.
    [[nodiscard]] bool isAsked() const { return !m_open.empty(); }
    /// The one to be answered.
    [[nodiscard]] const BarePanel &panel() const { return m_open.front().panel; }
    /// How many calls have been answered with this text.
    [[nodiscard]] int answered() const { return m_answered; }

private:
    /// A call that waits, on its thread's stack.
    struct Call
    {
        std::condition_variable answered;
        bool isAnswered = false;
        QString text;
    };
    struct Open
    {
        BarePanel panel;
        Call *call;
    };

    void ask(int thread);
    void put(int thread, Call &call);
    void answer();

    BareWindow &m_window;
    QObject m_context;
    std::deque<Open> m_open;
    std::mutex m_mutex;
    int m_answered = 0;
    std::vector<std::jthread> m_threads;
};

} // namespace baseline
