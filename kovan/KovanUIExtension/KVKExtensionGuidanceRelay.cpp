#include "kovan/KovanUIExtension/KVKExtensionGuidanceRelay.h"

#include <utility>

namespace {

void tell(const KVKExtensionGuidanceRelay::Handler &handler, const KVKGuidancePointer &guidance, bool begins)
{
    // A copy, since the handler may set another one.
    if (const KVKExtensionGuidanceRelay::Handler copy = handler)
        copy(guidance, begins);
}

} // namespace

KVKExtensionGuidanceRelay *KVKExtensionGuidanceRelay::sharedGuidanceRelay()
{
    static KVKExtensionGuidanceRelay relay;
    return &relay;
}

QString KVKExtensionGuidanceRelay::folderOfCall()
{
    FolderHandler handler;
    {
        const std::lock_guard lock(m_folderMutex);
        handler = m_folderHandler;
    }
    return handler ? handler() : QString();
}

void KVKExtensionGuidanceRelay::offer(const KVKGuidancePointer &guidance)
{
    tell(m_offerHandler, guidance, true);
}

void KVKExtensionGuidanceRelay::withdraw(const KVKGuidancePointer &guidance)
{
    endCurrent(guidance);
    tell(m_offerHandler, guidance, false);
}

void KVKExtensionGuidanceRelay::beginCurrent(const KVKGuidancePointer &guidance)
{
    if (m_current == guidance)
        return;
    // With several plug-ins the operator goes from one's panel to another's.
    if (m_current)
        endCurrent(KVKGuidancePointer(m_current));
    m_current = guidance;
    tell(m_currentHandler, guidance, true);
}

void KVKExtensionGuidanceRelay::endCurrent(const KVKGuidancePointer &guidance)
{
    // One that another has followed has ended already.
    if (!guidance || m_current != guidance)
        return;
    m_current.reset();
    tell(m_currentHandler, guidance, false);
}

void KVKExtensionGuidanceRelay::setOfferHandler(Handler handler)
{
    m_offerHandler = std::move(handler);
}

void KVKExtensionGuidanceRelay::setCurrentHandler(Handler handler)
{
    m_currentHandler = std::move(handler);
}

void KVKExtensionGuidanceRelay::setFolderHandler(FolderHandler handler)
{
    const std::lock_guard lock(m_folderMutex);
    m_folderHandler = std::move(handler);
}
