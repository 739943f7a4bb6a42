#include "station/check/LuaValues.h"

#include "kovan/KovanUIExtension/KVKExtensionConfigurationCheck.h"
#include "station/check/LuaParser.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

/// The value of the first argument of the script's last statement, a call.
Value lastArgument(const QByteArray &script)
{
    const auto tree = station::parseLua(script);
    const station::LuaValues values(*tree,
                                    [](const QString &name) { return name == "use" || name == "pairs"; });
    return values.valueOf(*tree->evaluated.back()->parts.at(1));
}

bool isUnknown(const QByteArray &script)
{
    return lastArgument(script).metaType() == QMetaType::fromType<KVKUnknownValue>();
}

TEST(LuaValues, AreWorkedOutFromConstants)
{
    EXPECT_EQ(lastArgument("use(-3)"), Value(qlonglong{-3}));
    EXPECT_EQ(lastArgument("use(-2.5)"), Value(-2.5));
    EXPECT_EQ(lastArgument("use('a' .. 1 .. 2.0 .. 'b')"), Value("a12.0b"));
    EXPECT_EQ(lastArgument("local x = 'v' use((x))"), Value("v"));
    EXPECT_FALSE(lastArgument("use(nil)").isValid());
    EXPECT_EQ(lastArgument("use({ 'a', { true }, })"), Value(Array{"a", Array{true}}));
    EXPECT_EQ(lastArgument("use({ x = 1, ['y'] = 'z', gone = nil })"),
              Value(Dictionary{{"x", qlonglong{1}}, {"y", "z"}}));
    EXPECT_EQ(lastArgument("local l = { 'S1' } local c = { input = l } use(c)"),
              Value(Dictionary{{"input", Array{"S1"}}}));
    EXPECT_EQ(lastArgument("local c = { a = { b = 5 } } use(c.a.b)"), Value(qlonglong{5}));
}

TEST(LuaValues, AreUnknownWhereAnythingCouldChangeThem)
{
    EXPECT_TRUE(isUnknown("local x = 1 x = 2 use(x)"));
    EXPECT_TRUE(isUnknown("local t = {} t.x = 1 use(t)"));
    EXPECT_TRUE(isUnknown("local t = {} other(t) use(t)"));
    EXPECT_TRUE(isUnknown("local t = {} local u = t u.x = 1 use(t)"));
    EXPECT_TRUE(isUnknown("local t = {} local u = { t } other(u) use(t)"));
    EXPECT_TRUE(isUnknown("local t = {} t:sort() use(t)"));
    EXPECT_TRUE(isUnknown("local t = { {} } for _, e in pairs(t) do e.x = 1 end use(t)"));
    EXPECT_TRUE(isUnknown("local t = {} local u = t or {} u.x = 1 use(t)"));
    EXPECT_TRUE(isUnknown("for i = 1, 2 do use(i) end use(x)"));
}

TEST(LuaValues, StayKnownWhereTheyAreOnlyRead)
{
    EXPECT_FALSE(isUnknown("local t = { 1 } for _, e in pairs(t) do use(e) end use(#t, t) use(t)"));
    EXPECT_FALSE(isUnknown("local t = { a = 'x' } local s = t.a use(t)"));
}

TEST(LuaValues, OfTablesAreListsWhereLuaHasTheNumbersFromOneOn)
{
    EXPECT_EQ(lastArgument("use({ [1] = 'a', [2] = 'b' })"), Value(Array{"a", "b"}));
    EXPECT_EQ(lastArgument("use({ [2.0] = 'b', 'a' })"), Value(Array{"a", "b"}));
    EXPECT_EQ(lastArgument("use({ 'a', nil })"), Value(Array{"a"}));
    EXPECT_EQ(lastArgument("use({ nil })"), Value(Array{}));
    EXPECT_EQ(lastArgument("use({ nil, 'b' })"), Value(Dictionary{{"2", "b"}}));
    EXPECT_EQ(lastArgument("use({ ['1'] = 'a' })"), Value(Dictionary{{"1", "a"}}));
}

TEST(LuaValues, OfTablesTellANumberFromItsText)
{
    EXPECT_EQ(lastArgument("local t = { ['1'] = 'a' } use(t['1'])"), Value("a"));
    EXPECT_TRUE(isUnknown("local t = { ['1'] = 'a' } use(t[1])"));
    EXPECT_TRUE(isUnknown("use({ 'a', ['1'] = 'b' })"));
    // Which of the two stays is Lua's own business.
    EXPECT_TRUE(isUnknown("use({ 'a', [1] = 'b' })"));
}

TEST(LuaValues, OfNumbersAreJoinedAsLuaWritesThem)
{
    EXPECT_EQ(lastArgument("use(-0.0 .. '')"), Value("-0.0"));
    EXPECT_EQ(lastArgument("use(1e15 .. ' ' .. 0.1 .. ' ' .. 1e100)"), Value("1e+15 0.1 1e+100"));
    EXPECT_EQ(lastArgument("use(-1e999 .. '')"), Value("-inf"));
}

TEST(LuaValues, KeepAMarkOfTheByteOrder)
{
    EXPECT_EQ(lastArgument("use('\\u{FEFF}a')"), Value(QString(QChar(0xFEFF)) + "a"));
}

TEST(LuaValues, OfTablesThatHoldEachOtherOftenEnd)
{
    QByteArray script = "local t0 = { 1, 1 } ";
    for (int i = 1; i < 60; ++i) {
        const QByteArray before = QByteArray::number(i - 1);
        script += "local t" + QByteArray::number(i) + " = { t" + before + ", t" + before + " } ";
    }
    static_cast<void>(lastArgument(script + "use(t59)"));
}

} // namespace
