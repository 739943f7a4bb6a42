#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"

#include <utility>

KVKExtensionStatusRelay *KVKExtensionStatusRelay::sharedStatusRelay()
{
    static KVKExtensionStatusRelay relay;
    return &relay;
}

void KVKExtensionStatusRelay::startHighlightingForSystemIndex(quint64 systemIndex)
{
    pass(systemIndex, true);
}

void KVKExtensionStatusRelay::stopHighlightingForSystemIndex(quint64 systemIndex)
{
    pass(systemIndex, false);
}

void KVKExtensionStatusRelay::pass(quint64 systemIndex, bool highlighted) const
{
    // A copy, since the handler may set another one.
    if (const Handler handler = m_handler)
        handler(systemIndex, highlighted);
}

void KVKExtensionStatusRelay::setHandler(Handler handler)
{
    m_handler = std::move(handler);
}

void KVKExtensionStatusRelay::callWaits(const KVKCallWait &wait)
{
    WaitHandler handler;
    {
        const std::lock_guard lock(m_waitMutex);
        handler = m_waitHandler;
    }
    if (handler)
        handler(wait);
}

void KVKExtensionStatusRelay::showMessage(const QString &message)
{
    if (const MessageHandler handler = m_messageHandler)
        handler(message);
}

void KVKExtensionStatusRelay::showPasses(qint64 maximum, const QList<qint64> &finished)
{
    if (const PassHandler handler = m_passHandler)
        handler(maximum, finished);
}

void KVKExtensionStatusRelay::setWaitHandler(WaitHandler handler)
{
    const std::lock_guard lock(m_waitMutex);
    m_waitHandler = std::move(handler);
}

void KVKExtensionStatusRelay::setMessageHandler(MessageHandler handler)
{
    m_messageHandler = std::move(handler);
}

void KVKExtensionStatusRelay::setPassHandler(PassHandler handler)
{
    m_passHandler = std::move(handler);
}
