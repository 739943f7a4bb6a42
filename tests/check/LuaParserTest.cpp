#include "station/check/LuaParser.h"

#include "station/check/LuaLexer.h"

#include <gtest/gtest.h>

#include <limits>

using station::LuaExpression;
using station::LuaLexer;
using station::LuaPlace;
using station::LuaToken;
using station::parseLua;

namespace {

LuaToken tokenOf(const QByteArray &script)
{
    return LuaLexer(script).next();
}

TEST(LuaLexer, ResolvesTheEscapesOfTexts)
{
    EXPECT_EQ(tokenOf(R"("a\n\t\\\"\'\65\x42\u{20AC}\z
        b")")
                  .text,
              "a\n\t\\\"'AB\xe2\x82\xac"
              "b");
    EXPECT_EQ(tokenOf("'one\\\ntwo'").text, "one\ntwo");
    EXPECT_EQ(tokenOf("[==[\nfirst ]] ]=]\r\nsecond]==]").text, "first ]] ]=]\nsecond");
    EXPECT_EQ(tokenOf("'\\0001'").text, QByteArray("\0"
                                                   "1",
                                                   2));
}

TEST(LuaLexer, ReadsNumbersAsLuaDoes)
{
    EXPECT_EQ(tokenOf("9223372036854775807").integer, 9223372036854775807);
    EXPECT_EQ(tokenOf("9223372036854775808").kind, LuaToken::Kind::Number);
    EXPECT_EQ(tokenOf("0xffffffffffffffff").integer, -1);
    EXPECT_EQ(tokenOf("0x1p4").number, 16.0);
    EXPECT_EQ(tokenOf(".5e1").number, 5.0);
    EXPECT_EQ(tokenOf("0x1.8p1").number, 3.0);
    EXPECT_EQ(tokenOf("1e999").number, std::numeric_limits<double>::infinity());
    EXPECT_EQ(tokenOf("1e99999").number, std::numeric_limits<double>::infinity());
    EXPECT_EQ(tokenOf("1e-999").number, 0.0);
    EXPECT_EQ(tokenOf("5e-324").number, 5e-324);
    EXPECT_EQ(tokenOf("3-2").integer, 3);
    EXPECT_EQ(tokenOf("0xA-2").integer, 10);
}

TEST(LuaLexer, CountsLinesAndCharacters)
{
    const QByteArray script = "--[[ long\ncomment ]] \xc3\xa4 = 1";
    LuaLexer lexer(script);
    EXPECT_THROW(static_cast<void>(lexer.next()), station::LuaSyntaxError);
    const QByteArray second = "--[[ a\r\nb ]] '\xc3\xa4' x";
    LuaLexer places(second);
    EXPECT_EQ(places.next().place, (LuaPlace{2, 6}));
    EXPECT_EQ(places.next().place, (LuaPlace{2, 10}));
}

TEST(LuaParser, ResolvesLocalsByTheirScopes)
{
    const auto tree = parseLua("local x = 1\ndo local x = x print(x) end\nprint(x, y)");
    ASSERT_EQ(tree->locals.size(), 2U);
    std::vector<const station::LuaLocal *> named;
    for (const LuaExpression *expression : tree->evaluated) {
        for (const LuaExpression *part : expression->parts) {
            if (part->kind == LuaExpression::Kind::Local)
                named.push_back(part->local);
        }
    }
    ASSERT_EQ(named.size(), 2U);
    EXPECT_EQ(named[0], &tree->locals[1]);
    EXPECT_EQ(named[1], &tree->locals[0]);
    // The value of the inner one is still the outer one.
    EXPECT_EQ(tree->locals[1].value->local, &tree->locals[0]);
}

TEST(LuaParser, TheConditionOfARepeatSeesItsBody)
{
    const auto tree = parseLua("repeat local done = true until done");
    EXPECT_EQ(tree->evaluated.back()->kind, LuaExpression::Kind::Local);
}

TEST(LuaParser, ALongRowOfOperatorsIsNoDeepTree)
{
    QByteArray script = "local x = 1";
    for (int i = 0; i < 100'000; ++i)
        script += " + 1";
    const auto tree = parseLua(script);
    EXPECT_EQ(tree->locals.front().value->parts.size(), 100'001U);
}

TEST(LuaParser, AChainBeyondMeasureIsRefused)
{
    EXPECT_THROW(static_cast<void>(parseLua("local x = a" + QByteArray(".b").repeated(100'000))),
                 station::LuaSyntaxError);
}

} // namespace
