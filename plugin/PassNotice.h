#pragma once

#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"

#include "common/LoopRecord.h"
#include "common/RecordKeys.h"

namespace interactive {

/// Tells the host how far a loop is that has this record. Thread: the main thread.
inline void tellPasses(const platform::Dictionary &record, quint64 groupCount)
{
    QList<qint64> finished;
    for (quint64 group = 0; group < groupCount; ++group)
        finished.append(platform::integerValue(record.value(loop::countKey(static_cast<qulonglong>(group)))));
    KVKExtensionStatusRelay::sharedStatusRelay()->showPasses(
        platform::integerValue(record.value(keys::LoopMax)), finished);
}

} // namespace interactive
