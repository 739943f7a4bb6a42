#include "tests/kovan/SequenceRun.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/Printing.h"

#include <QFile>

#include <gtest/gtest.h>

using platform::Value;
using testsupport::SequenceRun;

namespace {

QString problemOf(const QByteArray &script)
{
    SequenceRun run(script);
    const KVKLuaEnd end = run.end();
    EXPECT_EQ(end.outcome, KVKLuaOutcome::Erred) << script.toStdString();
    return end.message;
}

KVKLuaOutcome outcomeOf(const QByteArray &script)
{
    return SequenceRun(script).end().outcome;
}

TEST(LuaSequence, FalseAloneFailsAndAnythingElsePasses)
{
    EXPECT_EQ(outcomeOf("return false"), KVKLuaOutcome::Failed);
    EXPECT_EQ(outcomeOf("return true"), KVKLuaOutcome::Passed);
    EXPECT_EQ(outcomeOf("return nil"), KVKLuaOutcome::Passed);
    EXPECT_EQ(outcomeOf(""), KVKLuaOutcome::Passed);
    EXPECT_EQ(outcomeOf("return 0"), KVKLuaOutcome::Passed);
    EXPECT_EQ(outcomeOf("return 'false'"), KVKLuaOutcome::Passed);
}

TEST(LuaSequence, GivesTheFirstValueThatItReturns)
{
    EXPECT_EQ(SequenceRun("return { SN = 'x', n = 2 }, 3").end().value,
              Value(platform::Dictionary{{"SN", "x"}, {"n", qlonglong{2}}}));
}

TEST(LuaSequence, AResultThatNobodyCanReadIsAnError)
{
    EXPECT_EQ(problemOf("return print"), "the result is a function, which cannot be passed on");
}

TEST(LuaSequence, AnErrorNamesFileAndLine)
{
    EXPECT_EQ(problemOf("\n\nerror('no current')"), "script.lua:3: no current");
    EXPECT_EQ(problemOf("\nlocal x = nil + 1"), "script.lua:2: attempt to perform arithmetic on a nil value");
    EXPECT_EQ(problemOf("error({})").left(6), "table:");
    EXPECT_EQ(problemOf("error()"), "nil");
}

TEST(LuaSequence, AScriptThatCannotBeReadIsAnError)
{
    EXPECT_EQ(problemOf("return ="), "script.lua:1: unexpected symbol near '='");
    SequenceRun run("");
    run.description.scriptPath = "/nowhere/at all.lua";
    EXPECT_EQ(run.end().message, "/nowhere/at all.lua: No such file or directory");
}

TEST(LuaSequence, APrecompiledScriptIsNoScript)
{
    EXPECT_TRUE(problemOf(QByteArray("\x1bLua\x54\0", 6))
                    .contains("script.lua: bytecode is not loaded, only Lua as text"));
}

TEST(LuaSequence, FindsItsGlobals)
{
    SequenceRun run("return systemIndex == 3 and slotName == 'S1' and groupNumber == nil");
    run.description.globals = {{"systemIndex", 3}, {"slotName", "S1"}};
    EXPECT_EQ(run.end().value, Value(true));
}

TEST(LuaSequence, RequiresFilesBesideItself)
{
    SequenceRun run("return require('limits').low");
    run.addFile("limits.lua", "return { low = 4 }");
    EXPECT_EQ(run.end().value, Value(qlonglong{4}));
}

TEST(LuaSequence, LogsTexts)
{
    const testsupport::LogRecorder recorder;
    EXPECT_EQ(outcomeOf("log('100 % {}') log(12) log(nil) log(true)"), KVKLuaOutcome::Passed);
    for (const char *line : {"100 % {}", "12", "nil", "true"})
        EXPECT_EQ(recorder.count(KVKLogLevel::Default, line), 1) << line;
    EXPECT_EQ(problemOf("log()"), "script.lua:1: bad argument #1 to 'log' (value expected)");
}

TEST(LuaSequence, RefusesWhatWouldEndTheStationOrWaitForATerminal)
{
    for (const char *function : {"os.setlocale", "io.read", "debug.sethook", "debug.debug"}) {
        EXPECT_EQ(
            problemOf(QByteArray(function) + "(false)"),
            QStringLiteral("script.lua:1: %1 is not available to a sequence").arg(QLatin1String(function)));
    }
}

TEST(LuaSequence, SleepsForTheTimeGiven)
{
    EXPECT_EQ(outcomeOf("sleep(0) sleep(0.001)"), KVKLuaOutcome::Passed);
    EXPECT_EQ(problemOf("sleep(-1)"),
              "script.lua:1: bad argument #1 to 'sleep' (must be a number of seconds, 0 or more)");
    EXPECT_EQ(problemOf("sleep(0/0)"),
              "script.lua:1: bad argument #1 to 'sleep' (must be a number of seconds, 0 or more)");
    EXPECT_EQ(problemOf("sleep('long')"),
              "script.lua:1: bad argument #1 to 'sleep' (number expected, got string)");
}

/// A script that would never end by itself.
class EndlessScript : public ::testing::TestWithParam<const char *>
{};

TEST_P(EndlessScript, EndsWhenItIsStopped)
{
    SequenceRun run(GetParam());
    run.start();
    run.stop();
    const KVKLuaEnd end = run.end();
    EXPECT_EQ(end.outcome, KVKLuaOutcome::Stopped);
    EXPECT_EQ(end.message, "stopped");
}

INSTANTIATE_TEST_SUITE_P(Ways, EndlessScript,
                         ::testing::Values("while true do end", "sleep(1000000)", "sleep(math.huge)",
                                           "while true do pcall(function() while true do end end) end",
                                           "coroutine.wrap(function() while true do end end)()",
                                           "while true do sleep(0) end",
                                           "error(setmetatable({}, { __tostring = function() "
                                           "while true do end end }))"));

TEST(LuaSequence, IsStoppedAndJoinedWhenItIsDestroyed)
{
    SequenceRun run("while true do end");
    KVKLuaSequence sequence(run.description, run);
    sequence.start();
    EXPECT_FALSE(sequence.hasEnded());
}

TEST(LuaSequence, EachHasAStateOfItsOwn)
{
    SequenceRun first("shared = 1 return shared");
    SequenceRun second("return shared == nil");
    EXPECT_EQ(first.end().value, Value(qlonglong{1}));
    EXPECT_EQ(second.end().value, Value(true));
}

} // namespace
