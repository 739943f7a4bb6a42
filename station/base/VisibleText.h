#pragma once

#include <QString>

namespace station {

/// The text on one line, for people: characters that steer a terminal or the direction of writing are made
/// visible.
///
/// Thread: any.
[[nodiscard]] inline QString visibleText(const QString &text)
{
    const auto steersDirection = [](char16_t code) {
        return code == 0x061c || code == 0x200e || code == 0x200f || (code >= 0x2028 && code <= 0x202e) ||
               (code >= 0x2066 && code <= 0x2069);
    };
    QString visible;
    visible.reserve(text.size());
    for (const QChar character : text) {
        const char16_t code = character.unicode();
        // U+2400 and what follows are pictures of the control characters.
        if (code < 0x20)
            visible += QChar(static_cast<char16_t>(0x2400 + code));
        else if (code == 0x7f)
            visible += QChar(0x2421);
        else if ((code > 0x7f && code < 0xa0) || steersDirection(code))
            visible += QStringLiteral("\\u%1").arg(code, 4, 16, QLatin1Char('0'));
        else
            visible += character;
    }
    return visible;
}

} // namespace station
