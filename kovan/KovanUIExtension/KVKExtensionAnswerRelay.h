#pragma once

#include "platform/Error.h"
#include "platform/Value.h"

#include <functional>
#include <mutex>
#include <optional>

/// What the operator has answered, as the call will return it.
struct KVKGivenAnswer
{
    platform::Dictionary configuration; ///< What the panel was asked for with.
    platform::Value result;
    std::optional<platform::Error> error;
};

/// Passes an answer on to the host before the operator sees that it was accepted: while its panel still
/// stands, so that a host that makes answers safe has done so when the panel goes. A call whose answer was
/// not told, since no panel was answered, returns what it returns all the same.
///
/// Thread: any; told on the thread of the call that returns the answer.
class KVKExtensionAnswerRelay
{
public:
    /// Receives the answer. The call goes on when it returns; it must not throw, nor wait for an operator.
    using Handler = std::function<void(const KVKGivenAnswer &answer)>;

    [[nodiscard]] static KVKExtensionAnswerRelay *sharedAnswerRelay();

    /// Tells the answer of the call that runs on the calling thread.
    void answerGiven(const KVKGivenAnswer &answer);
    /// Host: sets who is told; an empty one for nobody. A call under way may still tell the former one.
    void setHandler(Handler handler);

private:
    std::mutex m_mutex;
    Handler m_handler;
};
