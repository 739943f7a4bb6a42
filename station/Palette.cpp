#include "station/Palette.h"

#include <QByteArray>
#include <QRegularExpression>

#include <array>

namespace station {

namespace {

constexpr platform::Color fromRgb(unsigned rgb)
{
    return {((rgb >> 16U) & 0xffU) / 255.0, ((rgb >> 8U) & 0xffU) / 255.0, (rgb & 0xffU) / 255.0, 1.0};
}

constexpr platform::Color DarkText = fromRgb(0x1a1a1a);

/// In an order that sets neighbours apart, the last and the first included.
constexpr std::array<platform::Color, 8> Backgrounds{
    fromRgb(0xa8cdf0), fromRgb(0xb7e1b0), fromRgb(0xf5d6a0), fromRgb(0xe3bfe8),
    fromRgb(0xa5e0dc), fromRgb(0xf2b8b5), fromRgb(0xc5c9f2), fromRgb(0xd6d3a8),
};

std::optional<platform::Color> fromHex(const QString &text)
{
    static const QRegularExpression form(
        QRegularExpression::anchoredPattern(QStringLiteral("#[0-9A-Fa-f]{6}([0-9A-Fa-f]{2})?")));
    if (!form.match(text).hasMatch())
        return std::nullopt;
    const QByteArray bytes = QByteArray::fromHex(text.mid(1).toLatin1());
    const auto part = [&bytes](qsizetype i) { return static_cast<unsigned char>(bytes.at(i)) / 255.0; };
    return platform::Color{part(0), part(1), part(2), bytes.size() == 4 ? part(3) : 1.0};
}

} // namespace

SystemColors defaultColors(int systemIndex)
{
    // A station with more systems than colours begins anew with the first.
    return {Backgrounds[static_cast<std::size_t>(systemIndex) % Backgrounds.size()], DarkText};
}

std::optional<platform::Color> colorFromText(const QString &text)
{
    if (text.startsWith(QLatin1Char('#')))
        return fromHex(text);
    const QColor color(text);
    return color.isValid() ? std::optional(platform::Color::fromQColor(color)) : std::nullopt;
}

} // namespace station
