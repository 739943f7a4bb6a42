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
