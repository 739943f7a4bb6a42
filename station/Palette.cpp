#include "station/Palette.h"

#include <array>

namespace station {

namespace {

constexpr platform::Color fromRgb(unsigned rgb)
{
    return {((rgb >> 16U) & 0xffU) / 255.0, ((rgb >> 8U) & 0xffU) / 255.0, (rgb & 0xffU) / 255.0, 1.0};
}

constexpr platform::Color DarkText = fromRgb(0x1a1a1a);

constexpr std::array<platform::Color, 8> Backgrounds{
    fromRgb(0xa8cdf0), fromRgb(0xb7e1b0), fromRgb(0xf5d6a0), fromRgb(0xe3bfe8),
    fromRgb(0xa5e0dc), fromRgb(0xf2b8b5), fromRgb(0xd6d3a8), fromRgb(0xc5c9f2),
};

std::optional<double> hexByte(const QString &text, qsizetype at)
{
    bool ok = false;
    const uint byte = text.mid(at, 2).toUInt(&ok, 16);
    return ok ? std::optional(byte / 255.0) : std::nullopt;
}

std::optional<platform::Color> fromHex(const QString &text)
{
    if (text.size() != 7 && text.size() != 9)
        return std::nullopt;
    const auto red = hexByte(text, 1);
    const auto green = hexByte(text, 3);
    const auto blue = hexByte(text, 5);
    const auto alpha = text.size() == 9 ? hexByte(text, 7) : std::optional(1.0);
    if (!red || !green || !blue || !alpha)
        return std::nullopt;
    return platform::Color{*red, *green, *blue, *alpha};
}

} // namespace

SystemColors defaultColors(int systemIndex)
{
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
