#include "kovan/KovanLuaSequencer/KVKLuaValue.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>
#include <lua.hpp>

#include <limits>
#include <memory>

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

class LuaValueTest : public ::testing::Test
{
protected:
    LuaValueTest() { luaL_openlibs(state.get()); }

    /// The value of a Lua expression.
    Value read(const char *expression)
    {
        evaluate(expression);
        const int top = lua_gettop(state.get());
        const Value value = KVKLuaToValue(state.get(), -1, "it");
        EXPECT_EQ(lua_gettop(state.get()), top) << "the stack has another height";
        lua_pop(state.get(), 1);
        return value;
    }

    QString problemOf(const char *expression)
    {
        evaluate(expression);
        const int top = lua_gettop(state.get());
        QString problem;
        try {
            EXPECT_FALSE(KVKLuaToValue(state.get(), -1, "it").isValid()) << expression;
        } catch (const KVKLuaValueError &error) {
            problem = QString::fromUtf8(error.what());
        }
        EXPECT_EQ(lua_gettop(state.get()), top) << "the stack has another height";
        lua_pop(state.get(), 1);
        return problem;
    }

    /// Whether an expression over the pushed value `v` holds in Lua.
    bool pushedHolds(const Value &value, const char *expression)
    {
        KVKLuaPush(state.get(), value);
        lua_setglobal(state.get(), "v");
        evaluate(expression);
        const bool holds = lua_toboolean(state.get(), -1) != 0;
        lua_pop(state.get(), 1);
        return holds;
    }

    void evaluate(const char *expression)
    {
        const std::string chunk = std::string("return ") + expression;
        ASSERT_EQ(luaL_dostring(state.get(), chunk.c_str()), LUA_OK) << lua_tostring(state.get(), -1);
    }

    std::unique_ptr<lua_State, decltype(&lua_close)> state{luaL_newstate(), &lua_close};
};

TEST_F(LuaValueTest, ScalarsKeepTheirKind)
{
    EXPECT_FALSE(read("nil").isValid());
    EXPECT_EQ(read("true"), Value(true));
    EXPECT_EQ(read("12"), Value(qlonglong{12}));
    EXPECT_EQ(read("math.maxinteger"), Value(std::numeric_limits<qlonglong>::max()));
    EXPECT_EQ(read("12.0").metaType().id(), QMetaType::Double);
    EXPECT_EQ(read("0.5"), Value(0.5));
    EXPECT_EQ(read("'12'"), Value(QString("12")));
}

TEST_F(LuaValueTest, TextIsUtf8AndMayHoldAZero)
{
    EXPECT_EQ(read("'Gr\\u{FC}n \\u{1F600}'"), Value(QString::fromUtf8("Gr\xC3\xBCn \xF0\x9F\x98\x80")));
    EXPECT_EQ(read("'a\\0b'").toString().size(), 3);
    EXPECT_EQ(problemOf("'\\xFF'"), "it is a text that is not valid UTF-8");
}

TEST_F(LuaValueTest, AMarkOfTheByteOrderIsPartOfItsText)
{
    EXPECT_EQ(read("'\\u{FEFF}a'").toString().size(), 2);
}

TEST_F(LuaValueTest, ANumberAndItsTextAsKeysAreRefused)
{
    EXPECT_EQ(problemOf("{ a = { [2] = 'x', ['2'] = 'y' } }"),
              "it.a has the key '2' twice, as a number and as a text");
    EXPECT_EQ(problemOf("{ [1.5] = 'x', ['1.5'] = 'y' }"),
              "it has the key '1.5' twice, as a number and as a text");
}

TEST_F(LuaValueTest, AZeroInAKeyDoesNotCutTheRefusal)
{
    EXPECT_EQ(problemOf("{ ['a\\0b'] = print }"), "it.a\u2400b is a function, which cannot be passed on");
}

TEST_F(LuaValueTest, KeysFromOneToNMakeAList)
{
    EXPECT_EQ(read("{ 'a', 2, { true } }"), Value(Array{"a", qlonglong{2}, Array{true}}));
    EXPECT_EQ(read("{}"), Value(Array{}));
}

TEST_F(LuaValueTest, AnyOtherTableIsADictionary)
{
    EXPECT_EQ(read("{ a = 1, b = { c = 'd' } }"),
              Value(Dictionary{{"a", qlonglong{1}}, {"b", Dictionary{{"c", "d"}}}}));
    EXPECT_EQ(read("{ 'x', n = 1 }"), Value(Dictionary{{"1", "x"}, {"n", qlonglong{1}}}));
    EXPECT_EQ(read("{ [1] = 'x', [3] = 'z' }"), Value(Dictionary{{"1", "x"}, {"3", "z"}}));
    EXPECT_EQ(read("{ 'x', nil, 'z' }"), Value(Dictionary{{"1", "x"}, {"3", "z"}}));
    EXPECT_EQ(read("{ [1.5] = 'x' }"), Value(Dictionary{{"1.5", "x"}}));
}

TEST_F(LuaValueTest, ATableThatIsToBeADictionaryIsOneAlsoWhenItLooksLikeAList)
{
    evaluate("{}");
    EXPECT_EQ(KVKLuaToDictionary(state.get(), -1, "it"), Dictionary{});
    evaluate("{ 'x' }");
    EXPECT_EQ(KVKLuaToDictionary(state.get(), -1, "it"), (Dictionary{{"1", "x"}}));
}

TEST_F(LuaValueTest, WhatHasNoCounterpartIsNamedWithItsPlace)
{
    EXPECT_EQ(problemOf("print"), "it is a function, which cannot be passed on");
    EXPECT_EQ(problemOf("{ a = { 1, print } }"), "it.a[2] is a function, which cannot be passed on");
    EXPECT_EQ(problemOf("{ io.stdout }"), "it[1] is a userdata, which cannot be passed on");
    EXPECT_EQ(problemOf("{ coroutine.create(print) }"), "it[1] is a thread, which cannot be passed on");
    EXPECT_EQ(problemOf("{ [true] = 1 }"), "it has a key that is a boolean; keys are texts or numbers");
    EXPECT_EQ(problemOf("{ ['\\xC3'] = 1 }"), "it: a key is a text that is not valid UTF-8");
}

TEST_F(LuaValueTest, ATableThatContainsItselfIsRefusedAndADeepOneTaken)
{
    const QString problem = problemOf("(function() local t = {} t.t = t return t end)()");
    EXPECT_TRUE(problem.endsWith("is nested too deep, or contains itself")) << problem.toStdString();
    EXPECT_TRUE(read("(function() local t = {} for i = 1, 60 do t = { t } end return t end)()").isValid());
}

TEST_F(LuaValueTest, PushedScalarsKeepTheirKind)
{
    EXPECT_TRUE(pushedHolds({}, "v == nil"));
    EXPECT_TRUE(pushedHolds(true, "v == true"));
    EXPECT_TRUE(pushedHolds(7, "v == 7 and math.type(v) == 'integer'"));
    EXPECT_TRUE(pushedHolds(7.0, "v == 7 and math.type(v) == 'float'"));
    EXPECT_TRUE(pushedHolds(QString("7"), "v == '7'"));
    EXPECT_TRUE(pushedHolds(QString::fromUtf8("\xC3\xBC"), "v == '\\u{FC}'"));
}

TEST_F(LuaValueTest, PushedListsAndDictionariesAreTables)
{
    EXPECT_TRUE(pushedHolds(Array{"a", 2, Array{}}, "#v == 3 and v[1] == 'a' and v[2] == 2 and #v[3] == 0"));
    EXPECT_TRUE(pushedHolds(Dictionary{{"SN", "x"}, {"on", true}}, "v.SN == 'x' and v.on == true"));
    EXPECT_TRUE(pushedHolds(QStringList{"a", "b"}, "#v == 2 and v[2] == 'b'"));
}

} // namespace
