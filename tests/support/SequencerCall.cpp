#include "tests/support/SequencerCall.h"

#include "platform/MainQueue.h"
#include "tests/support/Wait.h"

#include <gtest/gtest.h>

#include <utility>

namespace testsupport {

SequencerCall::SequencerCall(Function function, bool wantsError)
    : m_thread([this, work = std::move(function), wantsError] { run(work, wantsError); })
{}

SequencerCall::~SequencerCall()
{
    m_thread.join();
}

void SequencerCall::run(const Function &function, bool wantsError)
{
    try {
        m_result = function(wantsError ? &m_error : nullptr);
    } catch (...) {
        m_exception = std::current_exception();
    }
    m_finished.store(true);
    platform::MainQueue::wake();
}

bool SequencerCall::waitUntilFinished()
{
    const bool ended = waitUntil([this] { return finished(); });
    EXPECT_TRUE(ended) << "the call did not return";
    return ended;
}

platform::Value SequencerCall::result()
{
    return waitUntilFinished() ? m_result : platform::Value();
}

platform::Error SequencerCall::error()
{
    return waitUntilFinished() ? m_error : platform::Error();
}

std::exception_ptr SequencerCall::exception()
{
    return waitUntilFinished() ? m_exception : nullptr;
}

} // namespace testsupport
