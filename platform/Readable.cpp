#include "platform/Readable.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace platform::readable {

namespace {

/// A little more than is asked for, since a colour on the screen is rounded.
constexpr double ForRounding = 0.1;

double linear(double part)
{
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

/// Of each strength that a screen shows: a colour is looked at many times for a panel.
const std::array<double, 256> &strengths()
{
    static const auto made = [] {
        std::array<double, 256> all{};
        for (std::size_t part = 0; part < all.size(); ++part)
            all[part] = linear(static_cast<double>(part) / 255.0);
        return all;
    }();
    return made;
}

double luminance(const QColor &color)
{
    const auto strength = [](int part) { return strengths()[static_cast<std::size_t>(part)]; };
    return 0.2126 * strength(color.red()) + 0.7152 * strength(color.green()) +
           0.0722 * strength(color.blue());
}

QColor mixed(const QColor &from, const QColor &to, double share)
{
    const auto part = [share](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * share)); };
    return {part(from.red(), to.red()), part(from.green(), to.green()), part(from.blue(), to.blue())};
}

/// Black or white, whichever is further from the ground. One of them always reaches the contrast.
QColor pole(const QColor &ground)
{
    const bool isLight = contrast(Qt::black, ground) >= contrast(Qt::white, ground);
    return isLight ? QColor(Qt::black) : QColor(Qt::white);
}

/// From an opaque colour towards the pole, as far as needed.
QColor strengthened(const QColor &color, const QColor &ground, double least)
{
    constexpr int Steps = 64;
    const QColor end = pole(ground);
    for (int step = 0; step < Steps; ++step) {
        const QColor nearer = mixed(color, end, double(step) / Steps);
        if (contrast(nearer, ground) >= least + ForRounding)
            return nearer;
    }
    return end;
}

} // namespace

double contrast(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    // The light that every screen reflects.
    return (lighter + 0.05) / (darker + 0.05);
}

QColor over(const QColor &color, const QColor &ground)
{
    return mixed(ground, color, color.alphaF());
}

QColor text(const QColor &wanted, const QColor &ground)
{
    const QColor seen = over(wanted, ground);
    if (contrast(seen, ground) >= LeastContrast + ForRounding)
        return wanted;
    const bool isGrey = wanted.red() == wanted.green() && wanted.green() == wanted.blue();
    return isGrey ? pole(ground) : strengthened(seen, ground, LeastContrast);
}

QColor faint(const QColor &wanted, const QColor &ground)
{
    return strengthened(mixed(over(wanted, ground), ground, 0.5), ground, LeastContrast);
}

QColor mark(const QColor &wanted, const QColor &ground)
{
    const QColor seen = over(wanted, ground);
    return contrast(seen, ground) >= LeastContrastOfMarks ? wanted
                                                          : strengthened(seen, ground, LeastContrastOfMarks);
}

} // namespace platform::readable
