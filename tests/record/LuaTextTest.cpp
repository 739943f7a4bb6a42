#include "station/record/LuaText.h"

#include <gtest/gtest.h>

using station::luaText;

namespace {

TEST(LuaText, LeavesWhatCanBeReadAsItIs)
{
    EXPECT_EQ(luaText(QStringLiteral("Unit-07/ab Ä中")), QStringLiteral("\"Unit-07/ab Ä中\""));
    EXPECT_EQ(luaText(QStringLiteral("😀")), QStringLiteral("\"😀\""));
    EXPECT_EQ(luaText({}), "\"\"");
}

TEST(LuaText, EscapesQuotesBackslashesAndLineEnds)
{
    EXPECT_EQ(luaText("a\"b\\c\nd\re\tf'"), R"("a\"b\\c\nd\re\tf'")");
}

TEST(LuaText, EscapesControlCharactersSoThatADigitBehindThemIsNoneOfThem)
{
    EXPECT_EQ(luaText(QString(QChar(0x1d)) + "7"), R"("\0297")");
    EXPECT_EQ(luaText(QString(QChar(0)) + "1"), R"("\0001")");
    EXPECT_EQ(luaText(QString(QChar(0x7f))), R"("\127")");
    EXPECT_EQ(luaText(QString(QChar(0x85))), R"("\u{85}")");
}

TEST(LuaText, EscapesWhatNobodyWouldSee)
{
    EXPECT_EQ(luaText(QString(QChar(0x202e)) + "x"), R"("\u{202E}x")");
    EXPECT_EQ(luaText(QString(QChar(0x2028))), R"("\u{2028}")");
    EXPECT_EQ(luaText(QString(QChar(0xa0))), R"("\u{A0}")");
}

TEST(LuaText, PutsAReplacementForHalfACharacter)
{
    EXPECT_EQ(luaText(QString(QChar(0xd800)) + "x"), QStringLiteral("\"\uFFFDx\""));
    EXPECT_EQ(luaText("x" + QString(QChar(0xdc00))), QStringLiteral("\"x\uFFFD\""));
}

} // namespace
