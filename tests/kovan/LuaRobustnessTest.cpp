#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "tests/kovan/Instrument.h"
#include "tests/kovan/SequenceRun.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

using platform::Array;
using platform::Dictionary;
using platform::Value;
using testsupport::Instrument;
using testsupport::SequenceRun;

namespace {

/// What a script can do that must end that script at most.
class LuaRobustness : public ::testing::Test
{
protected:
    KVKLuaEnd endOf(const QByteArray &script)
    {
        SequenceRun run(script);
        const QString dictionary = __kviArgTypeLabel(KVKArgType::NSDictionary);
        run.description.functions = KVKBindFunctions(
            &m_instrument, {{"give", Array{__kviGetSelectorLabel("give:error:"), dictionary}},
                            {"throwNumber", Array{__kviGetSelectorLabel("throwingNumber:")}},
                            {"deep", Array{__kviGetSelectorLabel("deep:")}}});
        const KVKLuaEnd end = run.end();
        calls = run.calls();
        return end;
    }

    QString problemOf(const QByteArray &script)
    {
        const KVKLuaEnd end = endOf(script);
        EXPECT_EQ(end.outcome, KVKLuaOutcome::Erred) << script.toStdString();
        return end.message;
    }

    Value valueOf(const QByteArray &script)
    {
        const KVKLuaEnd end = endOf(script);
        EXPECT_EQ(end.message, "") << script.toStdString();
        return end.value;
    }

    std::vector<KVKLuaCall> calls;

private:
    Instrument m_instrument;
};

TEST_F(LuaRobustness, AnErrorObjectWhoseTextFailsIsNamedWithWhatFailed)
{
    EXPECT_EQ(problemOf("error(setmetatable({}, { __tostring = function() error('no words') end }))"),
              "an error that has no text (a table: script.lua:1: no words)");
    EXPECT_EQ(problemOf("error(setmetatable({}, { __tostring = function() return {} end }))"),
              "an error that has no text (a table: '__tostring' must return a string)");
    EXPECT_EQ(problemOf("local odd = setmetatable({}, { __tostring = function(t) error(t) end }) error(odd)"),
              "an error that has no text (a table)");
    EXPECT_EQ(problemOf("error(setmetatable({}, { __tostring = 'odd' }))"),
              "an error that has no text (a table: attempt to call a string value)");
}

TEST_F(LuaRobustness, AnErrorObjectOfAnyKindIsTold)
{
    EXPECT_EQ(problemOf("error(setmetatable({}, { __tostring = function() return 'odd' end }))"), "odd");
    EXPECT_TRUE(problemOf("error(setmetatable({}, { __name = 'Oddity' }))").startsWith("Oddity: "));
    EXPECT_EQ(problemOf("error(nil)"), "nil");
    EXPECT_EQ(problemOf("error(7)"), "7");
    EXPECT_TRUE(problemOf("error(print)").startsWith("builtin: ") ||
                problemOf("error(print)").startsWith("function: "));
    EXPECT_EQ(problemOf("coroutine.wrap(function() error({}) end)()").left(6), "table:");
    EXPECT_EQ(problemOf("coroutine.wrap(function() error('no current', 0) end)()"),
              "script.lua:1: no current");
}

TEST_F(LuaRobustness, ALongErrorTextIsCut)
{
    const QString text = problemOf("error(string.rep('x', 1000000), 0)");
    EXPECT_EQ(text.size(), 4097);
    EXPECT_TRUE(text.endsWith(QChar(0x2026)));
}

TEST_F(LuaRobustness, WhatFailsWhileTheScriptIsTidiedUpChangesNothing)
{
    EXPECT_EQ(valueOf("keep = setmetatable({}, { __gc = function() error('late') end }) return 1"),
              Value(qlonglong{1}));
    EXPECT_EQ(valueOf("for i = 1, 100 do setmetatable({}, { __gc = function() error('late') end }) end "
                      "collectgarbage() return 2"),
              Value(qlonglong{2}));
    EXPECT_EQ(
        problemOf(
            "local x <close> = setmetatable({}, { __close = function() error('shut') end }) error('a')"),
        "script.lua:1: shut");
}

TEST_F(LuaRobustness, ARecursionWithoutEndIsAnError)
{
    EXPECT_TRUE(problemOf("local function f() return 1 + f() end f()").contains("stack overflow"));
    EXPECT_TRUE(
        problemOf("local function f(x) return (x:gsub('.', f)) end f('x')").contains("stack overflow"));
    EXPECT_TRUE(
        problemOf("local t = setmetatable({}, {}) getmetatable(t).__index = function(t, k) return t[k] end "
                  "return t.x")
            .contains("stack overflow"));
}

TEST_F(LuaRobustness, AnErrorHandlerThatFailsIsAnError)
{
    EXPECT_EQ(valueOf("return (xpcall(error, function() error('again') end))"), Value(false));
}

TEST_F(LuaRobustness, AScriptThatCollectsWithoutEndRunsOutOfItsOwnMemory)
{
    EXPECT_EQ(problemOf("local t = {} while true do t[#t + 1] = string.rep('x', 1000000) .. #t end"),
              "script.lua:1: not enough memory");
    EXPECT_EQ(problemOf("return string.rep('x', 1 << 30)"), "script.lua:1: not enough memory");
}

TEST_F(LuaRobustness, AResultForWhichThereIsNoMemoryIsAnErrorThatCanBeCaught)
{
    // Filled up by ever smaller pieces; what is needed afterwards is made before.
    constexpr const char *script = R"(
        local config, held = { list = { 1, 2, 3 }, text = string.rep('y', 5000) }, {}
        local function hold(size) held = { held, string.rep('x', size) } end
        give(config)
        local size = 1 << 24
        while size > 16 do
            if not pcall(hold, size) then size = size // 2 end
        end
        local ok, why = pcall(give, config)
        held = nil
        return { ok, why }
    )";
    EXPECT_EQ(valueOf(script), Value(Array{false, "not enough memory"}));
    ASSERT_EQ(calls.size(), 2U) << "a call is told once, whatever becomes of its result";
    EXPECT_FALSE(calls[1].error);
}

TEST_F(LuaRobustness, AnExceptionOfAnyTypeEndsTheCallWithAnError)
{
    EXPECT_EQ(problemOf("throwNumber()"), "script.lua:1: an exception of an unknown type");
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls[0].error.value_or(platform::Error{}).localizedDescription,
              "an exception of an unknown type");
    EXPECT_EQ(valueOf("return { pcall(throwNumber) }"),
              Value(Array{false, "an exception of an unknown type"}));
}

TEST_F(LuaRobustness, AResultThatIsNestedTooDeepIsAnError)
{
    EXPECT_EQ(problemOf("deep()"), "script.lua:1: a result is nested too deep");
}

TEST_F(LuaRobustness, TextsWithPlaceholdersStayWhatTheyAre)
{
    EXPECT_EQ(problemOf("give({ ['a%2'] = { 'x', print } })"),
              "script.lua:1: give: argument 1.a%2[2] is a function, which cannot be passed on");
}

TEST_F(LuaRobustness, AnObserverThatThrowsEndsTheCallAndNotTheProgram)
{
    class Thrower : public SequenceRun
    {
    public:
        using SequenceRun::SequenceRun;
        void sequenceCalls(const QString &) override { throw 42; }
    };
    Instrument instrument;
    Thrower run("return { pcall(fail) }");
    run.description.functions =
        KVKBindFunctions(&instrument, {{"fail", Array{__kviGetSelectorLabel("fail:")}}});
    EXPECT_EQ(run.end().value, Value(Array{false, "an exception of an unknown type"}));
}

TEST_F(LuaRobustness, AScriptInAFolderWithAnOddNameFindsItsModules)
{
    SequenceRun run("return require('limits.voltage').low", "odd;? %2.lua", "odd;? %2");
    run.addFile("limits/voltage.lua", "return { low = 4 }");
    EXPECT_EQ(run.end().value, Value(qlonglong{4}));
    SequenceRun failing("\nerror('no current')", "odd;? %2.lua", "odd;? %2");
    EXPECT_EQ(failing.end().message, "odd;? %2.lua:2: no current");
}

TEST_F(LuaRobustness, AModuleThatCannotBeReadIsNamed)
{
    SequenceRun run("require('broken')");
    run.addFile("broken.lua", "return =");
    const QString why = run.end().message;
    EXPECT_TRUE(why.contains("error loading module 'broken' from file")) << why.toStdString();
    EXPECT_TRUE(why.contains("broken.lua:1: unexpected symbol near '='")) << why.toStdString();
    EXPECT_TRUE(problemOf("require('nowhere')").contains("module 'nowhere' not found"));
}

/// The ways to come by the terminal's input.
class TerminalInput : public ::testing::TestWithParam<const char *>
{};

TEST_P(TerminalInput, IsRefused)
{
    const KVKLuaEnd end = SequenceRun(GetParam()).end();
    EXPECT_EQ(end.outcome, KVKLuaOutcome::Erred);
    EXPECT_TRUE(end.message.contains(" is not available to a sequence")) << end.message.toStdString();
    EXPECT_TRUE(end.message.startsWith("script.lua:1: io.")) << end.message.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Ways, TerminalInput,
                         ::testing::Values("io.lines()", "io.lines(nil)", "io.read()", "io.read('n')",
                                           "io.stdin:read()", "io.stdin:lines()", "io.input():read()",
                                           "io.input():lines()", "io.input(io.stdin):read()",
                                           "io.input(io.stdin) io.read()", "io.input(io.stdin) io.lines()",
                                           "getmetatable(io.stdin).__index.read(io.stdin)"));

TEST(LuaFiles, AreReadByLineAndByMethod)
{
    SequenceRun run(
        "local all = {} for line in io.lines(folder .. '/limits.txt') do all[#all + 1] = line end "
        "local file = io.open(folder .. '/limits.txt') all[#all + 1] = file:read('n') "
        "for rest in file:lines() do all[#all + 1] = rest end return all");
    run.addFile("limits.txt", "12\n13\n");
    run.description.globals = {{"folder", run.folder()}};
    EXPECT_EQ(run.end().value, Value(Array{"12", "13", qlonglong{12}, "", "13"}));
}

TEST(LuaFiles, AMissingNameIsToldWithTheFunctionAndTheLine)
{
    EXPECT_EQ(SequenceRun("\nio.open(nil)").end().message,
              "script.lua:2: bad argument #1 to 'open' (string expected, got nil)");
    EXPECT_EQ(SequenceRun("return select(2, io.open('/nowhere.txt'))").end().value,
              Value("/nowhere.txt: No such file or directory"));
}

TEST(LuaFiles, OneThatIsNotThereIsNamedWithTheLineOfTheScript)
{
    EXPECT_EQ(SequenceRun("\nio.lines('/nowhere.txt')").end().message,
              "script.lua:2: cannot open file '/nowhere.txt' (No such file or directory)");
}

} // namespace
