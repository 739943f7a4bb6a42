#pragma once

#include "kovan/KovanUIExtension/KVKExtensionEntryObserver.h"

#include <QList>

/// Passes on what becomes of the operator's entries: which are accepted, which are refused and why, which
/// panels are finished and how, and that an error is shown. A host lets sounds follow it, or counts.
///
/// Each is told once, when it is decided: an entry that waits for the verdict of its sequence's function is
/// told with the verdict, and one that a button looks at again and finds unchanged is not told anew; one that
/// the operator ends with Return once more is. Without an observer nothing is done.
/// Thread: the main thread.
class KVKExtensionEntryRelay
{
public:
    [[nodiscard]] static KVKExtensionEntryRelay *sharedEntryRelay();

    void accepted(const KVKAcceptedEntry &entry) const;
    void refused(const KVKRefusedEntry &entry) const;
    void finished(const KVKFinishedPanel &panel) const;
    void errorShown(const KVKShownError &error) const;

    /// Host: tells an observer from now on; one that is told already is not told twice. Ownership: the
    /// observer stays the caller's, who takes it out before it goes. One that is taken out while others are
    /// told of something hears nothing more.
    void addObserver(KVKExtensionEntryObserver *observer);
    void removeObserver(KVKExtensionEntryObserver *observer);

private:
    template <typename What>
    void tell(void (KVKExtensionEntryObserver::*how)(const What &), const What &what) const;

    QList<KVKExtensionEntryObserver *> m_observers;
};
