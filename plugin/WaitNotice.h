#pragma once

#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"

#include <QList>
#include <QString>

namespace interactive {

/// Tells the host what the call on this thread waits for, as long as it exists.
///
/// Thread: the calling sequencer thread, from construction to destruction.
class WaitNotice
{
public:
    WaitNotice(const char *what, const QList<quint64> &systems)
    {
        KVKExtensionStatusRelay::sharedStatusRelay()->callWaits({QLatin1String(what), systems});
    }
    ~WaitNotice() { KVKExtensionStatusRelay::sharedStatusRelay()->callWaits({}); }
    WaitNotice(const WaitNotice &) = delete;
    WaitNotice &operator=(const WaitNotice &) = delete;
};

} // namespace interactive
