#pragma once

#include "platform/Error.h"
#include "platform/Value.h"

#include <atomic>
#include <thread>

namespace interactive {
class InteractiveView;
} // namespace interactive

namespace fuzz {

/// One show call on a thread of its own, which is ended whatever it waits for.
///
/// Thread: the main thread, which serves its queue meanwhile.
class ShowCallTrial
{
public:
    /// What ends the call where it waits for an operator.
    enum class End {
        Press, ///< Of any button of the panel, such as the one of a refusal.
        Interruption,
    };

    /// Makes the call and returns when it has ended, or hangs.
    ShowCallTrial(interactive::InteractiveView &plugin, bool forGroup, int number,
                  const platform::Dictionary &config, End end);
    ~ShowCallTrial();
    ShowCallTrial(const ShowCallTrial &) = delete;
    ShowCallTrial &operator=(const ShowCallTrial &) = delete;

    /// Whether it came back by what ended it.
    [[nodiscard]] bool hasEnded() const { return m_hasEnded; }
    [[nodiscard]] const platform::Value &result() const { return m_result; }
    [[nodiscard]] const platform::Error &error() const { return m_error; }

private:
    void press();

    interactive::InteractiveView &m_plugin;
    platform::Value m_result;
    platform::Error m_error;
    std::atomic<bool> m_waits{false};
    std::atomic<bool> m_returned{false};
    bool m_hasEnded = false;
    std::thread m_thread;
};

} // namespace fuzz
