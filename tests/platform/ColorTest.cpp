#include "platform/Color.h"

#include "tests/support/Printing.h"

#include <gtest/gtest.h>

using platform::Color;

TEST(Color, KeepsItsComponentsExactly)
{
    const Color color{0.1, 0.2, 0.3, 0.45};
    EXPECT_EQ(color.red, 0.1);
    EXPECT_EQ(color.green, 0.2);
    EXPECT_EQ(color.blue, 0.3);
    EXPECT_EQ(color.alpha, 0.45);
    EXPECT_FALSE(color == (Color{0.1, 0.2, 0.3, 0.4500001}));
}

TEST(Color, AnotherOpacityLeavesTheOtherComponents)
{
    const Color color = Color{0.1, 0.2, 0.3, 1.0}.withAlphaComponent(0.3);
    EXPECT_EQ(color, (Color{0.1, 0.2, 0.3, 0.3}));
}

TEST(Color, PaintsWithTheNearestColorOfQt)
{
    const struct
    {
        Color given;
        QRgb expected;
    } table[] = {
        {Color::white(), qRgba(255, 255, 255, 255)},
        {Color::black(), qRgba(0, 0, 0, 255)},
        {Color::clear(), qRgba(0, 0, 0, 0)},
        {Color::standardRed(), qRgba(255, 0, 0, 255)},
        {Color::systemGray(), qRgba(142, 142, 147, 255)},
        {Color::systemYellow(), qRgba(255, 204, 0, 255)},
        {Color::systemBlue(), qRgba(0, 122, 255, 255)},
        {Color::windowBackground(), qRgba(236, 236, 236, 255)},
        {Color::lightGray(), qRgba(170, 170, 170, 255)},
        {Color{0.0, 0.0, 0.0, 0.2}, qRgba(0, 0, 0, 51)},
        {Color{-1.0, 2.0, 0.6, 7.0}, qRgba(0, 255, 153, 255)},
    };
    for (const auto &row : table)
        EXPECT_EQ(row.given.toQColor().rgba(), row.expected) << ::testing::PrintToString(row.given);
}

TEST(Color, AColorOfQtComesBackAsItWas)
{
    const QColor given(1, 128, 254, 77);
    EXPECT_EQ(Color::fromQColor(given), (Color{1 / 255.0, 128 / 255.0, 254 / 255.0, 77 / 255.0}));
    EXPECT_EQ(Color::fromQColor(given).toQColor().rgba(), given.rgba());
}

TEST(Color, TravelsInAValue)
{
    const QVariant value = QVariant::fromValue(Color::systemBlue());
    EXPECT_EQ(value.value<Color>(), Color::systemBlue());
}
