#pragma once

#include "platform/Error.h"
#include "platform/Value.h"

#include <QString>

#include <atomic>
#include <exception>
#include <functional>
#include <thread>

namespace testsupport {

/// A call that a sequence makes of the plug-in, on a thread of its own, as the sequencer would.
///
/// Thread: the main thread; the waiting accessors serve the event loop meanwhile and fail the test when the
/// call does not end. Ownership: joins its thread; requires that the call has ended or is about to end by
/// itself.
class SequencerCall
{
public:
    using Function = std::function<platform::Value(platform::Error *)>;

    /// Starts the call. Without wantsError the function gets no place for an error.
    explicit SequencerCall(Function function, bool wantsError = true);
    ~SequencerCall();
    SequencerCall(const SequencerCall &) = delete;
    SequencerCall &operator=(const SequencerCall &) = delete;

    /// Whether the call has returned, without waiting for it.
    [[nodiscard]] bool finished() const { return m_finished.load(); }
    /// False, and a failed test, when the call does not return.
    bool waitUntilFinished();

    // What came back; they wait until the call has ended.
    [[nodiscard]] platform::Value result();
    [[nodiscard]] platform::Error error();
    /// The exception that left the call; null when it returned.
    [[nodiscard]] std::exception_ptr exception();
    /// The text of the exception when it is of that type; otherwise empty.
    template <class Exception>
    [[nodiscard]] QString thrown()
    {
        try {
            if (const std::exception_ptr what = exception())
                std::rethrow_exception(what);
        } catch (const Exception &caught) {
            return QString::fromUtf8(caught.what());
        } catch (...) {
        }
        return {};
    }

private:
    void run(const Function &function, bool wantsError);

    platform::Value m_result;
    platform::Error m_error;
    std::exception_ptr m_exception;
    std::atomic<bool> m_finished{false};
    std::thread m_thread;
};

} // namespace testsupport
