#include "common/LoopRecord.h"

#include "common/RecordKeys.h"

namespace interactive::loop {

namespace {

/// With one pass there is no later one in which an answer could be given again.
constexpr qint64 FewestPassesOfALoop = 2;

} // namespace

QString countKey(const platform::Value &groupNumber)
{
    return keys::LoopCount + QLatin1Char('_') + platform::description(groupNumber);
}

bool isLoop(qint64 maximum)
{
    return maximum >= FewestPassesOfALoop;
}

platform::Dictionary restarted(platform::Dictionary record, qint64 maximum, quint64 groupCount)
{
    // Into what is there: an entry of a group that the station does not count stays as it is.
    record.insert(keys::LoopMax, static_cast<qlonglong>(maximum));
    for (quint64 group = 0; group < groupCount; ++group)
        record.insert(countKey(static_cast<qulonglong>(group)), qlonglong{0});
    return record;
}

Pass reported(platform::Dictionary record, const platform::Value &groupNumber)
{
    const platform::Value maximum = record.value(keys::LoopMax);
    // Nobody has asked for passes, so the one that has run was the last: a sequence that repeats until
    // its group has finished must not go on for ever.
    if (!maximum.isValid())
        return {record, true, false};
    const qint64 count = platform::integerValue(record.value(countKey(groupNumber))) + 1;
    record.insert(countKey(groupNumber), static_cast<qlonglong>(count));
    // Not only at the maximum itself: a group that reports once more after its last pass has finished all the
    // same.
    return {record, platform::integerValue(maximum) <= count, true};
}

} // namespace interactive::loop
