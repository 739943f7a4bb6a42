#include "station/Palette.h"

#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using platform::Color;
using station::colorFromText;
using station::defaultColors;

namespace {

constexpr int Systems = 24;

/// The share of a colour component in what the eye takes for light, as the guidelines for readable web pages
/// define it.
double linear(double component)
{
    return component <= 0.03928 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double luminance(const Color &color)
{
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

/// 1 for equal colours, 21 for black on white.
double contrast(const Color &a, const Color &b)
{
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// The colour at an opacity in front of another one.
Color over(const Color &color, double alpha, const Color &behind)
{
    const auto mix = [alpha](double front, double back) { return alpha * front + (1.0 - alpha) * back; };
    return {mix(color.red, behind.red), mix(color.green, behind.green), mix(color.blue, behind.blue), 1.0};
}

double distance(const Color &a, const Color &b)
{
    return std::hypot(a.red - b.red, a.green - b.green, a.blue - b.blue);
}

TEST(Palette, TheTextIsReadableOnEveryBackground)
{
    ASSERT_NEAR(contrast(Color::black(), Color::white()), 21.0, 1e-9);
    for (int i = 0; i < Systems; ++i)
        EXPECT_GE(contrast(defaultColors(i).text, defaultColors(i).background), 7.0) << i;
}

TEST(Palette, BlackIsReadableOnEveryBackgroundAtTheOpacityOfAPanel)
{
    for (int i = 0; i < Systems; ++i) {
        const Color faint = over(defaultColors(i).background, 0.3, Color::windowBackground());
        EXPECT_GE(contrast(Color::black(), faint), 7.0) << i;
        EXPECT_GE(contrast(defaultColors(i).text, faint), 7.0) << i;
    }
}

TEST(Palette, TheTextIsReadableOnASlotThatIsSwitchedOff)
{
    EXPECT_GE(contrast(defaultColors(0).text, Color::windowBackground()), 7.0);
}

TEST(Palette, NeighboursCanBeToldApart)
{
    for (int i = 0; i + 1 < Systems; ++i)
        EXPECT_GE(distance(defaultColors(i).background, defaultColors(i + 1).background), 0.15) << i;
}

TEST(Palette, EightSystemsHaveEightBackgroundsAndTheNextBeginAgain)
{
    for (int i = 0; i < 8; ++i) {
        for (int j = 0; j < i; ++j)
            EXPECT_NE(defaultColors(i).background, defaultColors(j).background) << i << " and " << j;
        EXPECT_EQ(defaultColors(i + 8).background, defaultColors(i).background) << i;
    }
}

TEST(Palette, ColoursAreOpaque)
{
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(defaultColors(i).background.alpha, 1.0);
        EXPECT_EQ(defaultColors(i).text.alpha, 1.0);
    }
}

TEST(Palette, AColourIsReadFromItsHexadecimalDigits)
{
    EXPECT_EQ(colorFromText("#000000"), Color::black());
    EXPECT_EQ(colorFromText("#ffFFff"), Color::white());
    EXPECT_EQ(colorFromText("#3366cc"), (Color{0x33 / 255.0, 0x66 / 255.0, 0xcc / 255.0, 1.0}));
    EXPECT_EQ(colorFromText("#3366cc80"), (Color{0x33 / 255.0, 0x66 / 255.0, 0xcc / 255.0, 0x80 / 255.0}));
    EXPECT_EQ(colorFromText("#00000000"), Color::clear());
}

TEST(Palette, AColourIsReadFromItsName)
{
    EXPECT_EQ(colorFromText("red"), Color::standardRed());
    EXPECT_EQ(colorFromText("White"), Color::white());
    EXPECT_EQ(colorFromText("steelblue"), (Color{0x46 / 255.0, 0x82 / 255.0, 0xb4 / 255.0, 1.0}));
}

TEST(Palette, AnyOtherTextIsNoColour)
{
    for (const char *text :
         {"", "#", "reddish", "#123", "#12345", "#1234567", "#123456789", "#gggggg", "336699", "#-1-1-1",
          "#+1+1+1", "# 1 1 1", "#0x0x0x", "rgb(1,2,3)", "#3366cc8g", "#3366cc\n"})
        EXPECT_EQ(colorFromText(text), std::nullopt) << text;
}

} // namespace
