#include "tests/kovan/SequenceRun.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

using testsupport::SequenceRun;

namespace {

KVKLuaEnd endOf(const QByteArray &script)
{
    return SequenceRun(script).end();
}

TEST(Traceback, TellsTheCallsThatLedToAnError)
{
    const KVKLuaEnd end = endOf("local function inner()\n  error('why')\nend\nlocal function outer()\n"
                                "  inner()\nend\nouter()");
    EXPECT_EQ(end.message, "script.lua:2: why");
    EXPECT_EQ(end.traceback, "stack traceback:\n\t[C]: in function 'error'\n"
                             "\tscript.lua:2: in upvalue 'inner'\n"
                             "\tscript.lua:5: in local 'outer'\n"
                             "\tscript.lua:7: in main chunk");
}

TEST(Traceback, OfAnErrorThatLuaRaisesBeginsWithTheScript)
{
    const KVKLuaEnd end = endOf("local x = nil\nlog(x.y)");
    EXPECT_EQ(end.traceback, "stack traceback:\n\tscript.lua:2: in main chunk");
}

TEST(Traceback, BelongsToErrorObjectsThatAreTables)
{
    const KVKLuaEnd end = endOf("error(setmetatable({}, { __tostring = function() return 'told' end }))");
    EXPECT_EQ(end.message, "told");
    EXPECT_TRUE(end.traceback.contains("script.lua:1: in main chunk")) << end.traceback.toStdString();
    const KVKLuaEnd plain = endOf("error({})");
    EXPECT_TRUE(plain.message.startsWith("table: ")) << plain.message.toStdString();
    EXPECT_TRUE(plain.traceback.contains("script.lua:1: in main chunk")) << plain.traceback.toStdString();
}

TEST(Traceback, IsOfTheErrorThatNobodyHasCaught)
{
    const KVKLuaEnd caught = endOf("pcall(error, 'inside')\nreturn true");
    EXPECT_EQ(caught.outcome, KVKLuaOutcome::Passed);
    EXPECT_EQ(caught.traceback, "");
    const KVKLuaEnd later = endOf("pcall(function()\nerror('inside')\nend)\nerror('outside')");
    EXPECT_EQ(later.message, "script.lua:4: outside");
    EXPECT_FALSE(later.traceback.contains(":2:")) << later.traceback.toStdString();
}

TEST(Traceback, IsNotThereForAScriptThatDidNotRun)
{
    EXPECT_EQ(endOf("x = = 1").traceback, "");
    EXPECT_EQ(endOf("return true").traceback, "");
}

TEST(Traceback, OfAnEndlessRecursionIsCutAndTheMessageStays)
{
    const KVKLuaEnd end = endOf("local function f() return 1 + f() end\nf()");
    EXPECT_TRUE(end.message.contains("stack overflow")) << end.message.toStdString();
    EXPECT_LT(end.traceback.count('\n'), 40);
}

} // namespace
