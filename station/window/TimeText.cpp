#include "station/window/TimeText.h"

#include <algorithm>

namespace station {

QString timeText(std::chrono::seconds time)
{
    constexpr qint64 Minute = 60;
    constexpr qint64 Hour = 60 * Minute;
    const qint64 whole = std::max<qint64>(0, time.count());
    const auto twoDigits = [](qint64 number) { return QStringLiteral("%1").arg(number, 2, 10, QChar('0')); };
    const QString seconds = twoDigits(whole % Minute);
    if (whole < Hour)
        return QStringLiteral("%1:%2").arg(whole / Minute).arg(seconds);
    return QStringLiteral("%1:%2:%3").arg(whole / Hour).arg(twoDigits(whole % Hour / Minute), seconds);
}

} // namespace station
