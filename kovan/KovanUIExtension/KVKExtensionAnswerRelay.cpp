#include "kovan/KovanUIExtension/KVKExtensionAnswerRelay.h"

#include <utility>

KVKExtensionAnswerRelay *KVKExtensionAnswerRelay::sharedAnswerRelay()
{
    static KVKExtensionAnswerRelay relay;
    return &relay;
}

void KVKExtensionAnswerRelay::answerGiven(const KVKGivenAnswer &answer)
{
    Handler handler;
    {
        const std::lock_guard lock(m_mutex);
        handler = m_handler;
    }
    if (handler)
        handler(answer);
}

void KVKExtensionAnswerRelay::setHandler(Handler handler)
{
    const std::lock_guard lock(m_mutex);
    m_handler = std::move(handler);
}
