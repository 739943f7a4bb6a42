#include "presentation/ColorEngine.h"

#include "tests/support/Printing.h"

#include <gtest/gtest.h>

using interactive::ColorEngine;
using platform::Color;

namespace {

struct Named
{
    const QString &constant;
    const char *key;
    int red;
    int green;
    int blue;
};

const Named table[] = {
    {interactive::ColorNameKeyNavy, "navy", 0, 0, 128},
    {interactive::ColorNameKeyBlue, "blue", 0, 0, 255},
    {interactive::ColorNameKeyTeal, "teal", 0, 128, 128},
    {interactive::ColorNameKeyCyan, "cyan", 0, 240, 240},
    {interactive::ColorNameKeyGray, "gray", 128, 128, 128},
    {interactive::ColorNameKeySilver, "silver", 204, 204, 204},
    {interactive::ColorNameKeyBrown, "brown", 119, 51, 0},
    {interactive::ColorNameKeyPink, "pink", 255, 102, 255},
    {interactive::ColorNameKeyMagenta, "magenta", 128, 0, 128},
    {interactive::ColorNameKeyPurple, "purple", 153, 51, 255},
    {interactive::ColorNameKeyWhite, "white", 255, 255, 255},
    {interactive::ColorNameKeyBlack, "black", 0, 0, 0},
    {interactive::ColorNameKeyRed, "red", 255, 0, 0},
    {interactive::ColorNameKeyYellow, "yellow", 255, 255, 0},
    {interactive::ColorNameKeyOrange, "orange", 255, 165, 0},
    {interactive::ColorNameKeyGreen, "green", 0, 255, 0},
};

TEST(ColorEngineTest, SixteenNamesHaveAnOpaqueColour)
{
    for (const Named &each : table) {
        EXPECT_EQ(each.constant, each.key);
        EXPECT_EQ(ColorEngine::colorForName(each.constant),
                  (Color{each.red / 255.0, each.green / 255.0, each.blue / 255.0, 1.0}))
            << each.key;
    }
}

TEST(ColorEngineTest, LettersMayBeUpperOrLowerCase)
{
    const Color orange{1.0, 0.6470588235294118, 0.0, 1.0};
    for (const char *name : {"Orange", "ORANGE", "oRaNgE"})
        EXPECT_EQ(ColorEngine::colorForName(name), orange) << name;
    const Color navy{0.0, 0.0, 0.5019607843137255, 1.0};
    EXPECT_EQ(ColorEngine::colorForName("Navy"), navy);
}

TEST(ColorEngineTest, AnyOtherTextHasNoColour)
{
    for (const char *name : {"grey", "", " navy", "navy ", "nav", "navyblue", "#000080", "0"})
        EXPECT_EQ(ColorEngine::colorForName(name), std::nullopt) << '\'' << name << '\'';
}

TEST(ColorEngineTest, NothingHasNoColour)
{
    EXPECT_EQ(ColorEngine::colorForName(QString()), std::nullopt);
}

TEST(ColorEngineTest, EveryLetterThatHasALowerCaseIsFolded)
{
    // The sign for kelvin is an upper case k; a dotted capital i becomes more than an i.
    EXPECT_EQ(ColorEngine::colorForName(u"BLAC\u212A"_qs), (Color{0.0, 0.0, 0.0, 1.0}));
    EXPECT_EQ(ColorEngine::colorForName(u"WH\u0130TE"_qs), std::nullopt);
}

} // namespace
