#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"

#include <utility>

KVKExtensionStatusRelay *KVKExtensionStatusRelay::sharedStatusRelay()
{
    static KVKExtensionStatusRelay relay;
    return &relay;
}

void KVKExtensionStatusRelay::startHighlightingForSystemIndex(quint64 systemIndex)
{
    if (m_handler)
        m_handler(systemIndex, true);
}

void KVKExtensionStatusRelay::stopHighlightingForSystemIndex(quint64 systemIndex)
{
    if (m_handler)
        m_handler(systemIndex, false);
}

void KVKExtensionStatusRelay::setHandler(Handler handler)
{
    m_handler = std::move(handler);
}
