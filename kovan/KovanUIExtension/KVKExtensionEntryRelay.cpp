#include "kovan/KovanUIExtension/KVKExtensionEntryRelay.h"

KVKExtensionEntryRelay *KVKExtensionEntryRelay::sharedEntryRelay()
{
    static KVKExtensionEntryRelay relay;
    return &relay;
}

template <typename What>
void KVKExtensionEntryRelay::tell(void (KVKExtensionEntryObserver::*how)(const What &),
                                  const What &what) const
{
    // A copy, since an observer may take itself or another one out.
    const QList<KVKExtensionEntryObserver *> observers = m_observers;
    for (KVKExtensionEntryObserver *observer : observers) {
        if (m_observers.contains(observer))
            (observer->*how)(what);
    }
}

void KVKExtensionEntryRelay::accepted(const KVKAcceptedEntry &entry) const
{
    tell(&KVKExtensionEntryObserver::entryAccepted, entry);
}

void KVKExtensionEntryRelay::refused(const KVKRefusedEntry &entry) const
{
    tell(&KVKExtensionEntryObserver::entryRefused, entry);
}

void KVKExtensionEntryRelay::finished(const KVKFinishedPanel &panel) const
{
    tell(&KVKExtensionEntryObserver::panelFinished, panel);
}

void KVKExtensionEntryRelay::errorShown(const KVKShownError &error) const
{
    tell(&KVKExtensionEntryObserver::errorShown, error);
}

void KVKExtensionEntryRelay::addObserver(KVKExtensionEntryObserver *observer)
{
    if (!m_observers.contains(observer))
        m_observers.append(observer);
}

void KVKExtensionEntryRelay::removeObserver(KVKExtensionEntryObserver *observer)
{
    m_observers.removeAll(observer);
}
