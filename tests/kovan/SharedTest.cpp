#include "tests/kovan/Company.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

using platform::Value;
using testsupport::Company;

namespace {

KVKLuaEnd endOf(const QByteArray &script)
{
    Company company;
    return company.add(script).end(0);
}

void expectTrue(const QByteArray &script)
{
    const KVKLuaEnd end = endOf(script);
    EXPECT_EQ(end.message, "");
    EXPECT_EQ(end.value, Value(true)) << script.toStdString();
}

QString problemOf(const QByteArray &script)
{
    const KVKLuaEnd end = endOf(script);
    EXPECT_EQ(end.outcome, KVKLuaOutcome::Erred) << script.toStdString();
    return end.message;
}

TEST(Shared, IsSeenByAllSequences)
{
    Company company;
    company.add("shared.limits = { low = 1, high = { 2, 3 } } return rendezvous('set')")
        .add("rendezvous('set') return shared.limits.low == 1 and shared.limits.high[2] == 3");
    company.pass();
}

TEST(Shared, AValueComesBackAsItIs)
{
    expectTrue("shared.a = 3 shared.b = 3.0 shared.c = math.mininteger shared.d = -0.0 shared.e = 1/0 "
               "return math.type(shared.a) == 'integer' and math.type(shared.b) == 'float' "
               "and shared.c == math.mininteger and 1 / shared.d == -1/0 and shared.e == 1/0");
    expectTrue("shared.a = 0/0 return shared.a ~= shared.a");
    expectTrue("shared.a = false shared.b = true return shared.a == false and shared.b == true");
    expectTrue("local all = {} for i = 0, 255 do all[#all + 1] = string.char(i) end "
               "local text = table.concat(all) shared.t = text shared[text] = text "
               "return shared.t == text and shared[text] == text");
    expectTrue("shared.t = '' return shared.t == ''");
    expectTrue("shared.t = { 1, 2.0, 'x', { y = { false } }, [10] = 1, [-1] = 2, ['1'] = 'text' } local t = "
               "shared.t "
               "return t[1] == 1 and math.type(t[2]) == 'float' and t[3] == 'x' and t[4].y[1] == false "
               "and t[10] == 1 and t[-1] == 2 and t['1'] == 'text'");
}

TEST(Shared, NothingRemovesAKey)
{
    expectTrue("shared.a = 1 shared.a = nil shared.b = nil return shared.a == nil and next({}) == nil "
               "and not pairs(shared)(select(2, pairs(shared)))");
}

TEST(Shared, AWholeNumberIsTheSameKeyHoweverItIsWritten)
{
    expectTrue(
        "shared[1.0] = 'one' shared['1'] = 'text' return shared[1] == 'one' and shared['1'] == 'text'");
}

TEST(Shared, WhatIsReadIsACopy)
{
    expectTrue(
        "local mine = { n = 1 } shared.t = mine mine.n = 2 shared.t.n = 3 local copy = shared.t copy.n = 4 "
        "return shared.t.n == 1");
}

TEST(Shared, PairsGoOverACopyNumbersFirst)
{
    expectTrue("shared.b = 1 shared.a = 2 shared[2] = 3 shared[1] = 4 local seen = {} "
               "for key, value in pairs(shared) do shared[key] = nil shared['new' .. #seen] = 1 "
               "seen[#seen + 1] = key .. '=' .. value end "
               "table.sort(seen) return table.concat(seen, ' ') == '1=4 2=3 a=2 b=1'");
}

TEST(Shared, ItsLengthIsThatOfItsList)
{
    expectTrue("assert(#shared == 0) shared[1] = 'a' shared[2] = 'b' shared[4] = 'd' shared.x = 1 "
               "local list = {} for i, text in ipairs(shared) do list[i] = text end "
               "return #shared == 2 and table.concat(list) == 'ab'");
}

TEST(Shared, CannotBePassedBy)
{
    expectTrue("return getmetatable(shared) == 'shared' and not pcall(rawset, shared, 'a', 1) "
               "and not pcall(next, shared) and not pcall(setmetatable, shared, {})");
}

TEST(Shared, RefusesValuesThatCannotBeSharedWithTheKeyAndTheType)
{
    const auto problem = [](const char *value) {
        return problemOf(QByteArray("local loop = {} loop.again = loop local a, b = {}, {} a.b, b.a = b, a "
                                    "shared.limits = ") +
                         value);
    };
    EXPECT_EQ(problem("print"), "script.lua:1: shared.limits is a function, which cannot be shared");
    EXPECT_EQ(problem("{ low = { 1, print } }"),
              "script.lua:1: shared.limits.low[2] is a function, which cannot be shared");
    EXPECT_EQ(problem("coroutine.create(print)"),
              "script.lua:1: shared.limits is a thread, which cannot be shared");
    EXPECT_EQ(problem("io.stdout"), "script.lua:1: shared.limits is a userdata, which cannot be shared");
    EXPECT_EQ(problem("shared"), "script.lua:1: shared.limits is a userdata, which cannot be shared");
    EXPECT_EQ(problem("loop"), "script.lua:1: shared.limits.again is a table that contains itself");
    EXPECT_EQ(problem("{ a }"), "script.lua:1: shared.limits[1].b.a is a table that contains itself");
    EXPECT_EQ(problem("{ [1.5] = 1 }"),
              "script.lua:1: shared.limits has texts and whole numbers as keys, not 1.5");
    EXPECT_EQ(problem("{ x = { [true] = 1 } }"),
              "script.lua:1: shared.limits.x has texts and whole numbers as keys, not a boolean");
    EXPECT_TRUE(problemOf("local t = {} for i = 1, 70 do t = { t } end shared.t = t")
                    .endsWith("is a table that is nested too deep"));
    expectTrue("local t = {} for i = 1, 62 do t = { t } end shared.t = t return true");
    expectTrue(
        "local part = { 1 } shared.t = { part, part } return shared.t[1][1] == 1 and shared.t[2][1] == 1");
}

TEST(Shared, RefusesKeysThatAreNone)
{
    for (const char *use : {"shared[%1] = 1", "return shared[%1]"}) {
        const auto problem = [&](const char *key) { return problemOf(QString(use).arg(key).toUtf8()); };
        EXPECT_EQ(problem("true"), "script.lua:1: shared has texts and whole numbers as keys, not a boolean");
        EXPECT_EQ(problem("nil"), "script.lua:1: shared has texts and whole numbers as keys, not a nil");
        EXPECT_EQ(problem("{}"), "script.lua:1: shared has texts and whole numbers as keys, not a table");
        EXPECT_EQ(problem("1.5"), "script.lua:1: shared has texts and whole numbers as keys, not 1.5");
        EXPECT_EQ(problem("0/0").left(75),
                  "script.lua:1: shared has texts and whole numbers as keys, not nan");
    }
    EXPECT_EQ(problemOf("shared.update = 1"),
              "script.lua:1: shared.update is a function, and its name no key");
    EXPECT_EQ(problemOf("shared.update('update', print)"),
              "script.lua:1: shared.update is a function, and its name no key");
}

TEST(Shared, MoreThanThereIsRoomForIsAnErrorAndNothingElse)
{
    EXPECT_TRUE(problemOf("for i = 1, 1000 do shared[i] = string.rep('x', 1000000) end")
                    .endsWith("there is no room for it; all shared values together may take 64 MiB"));
    // Small as it is, each level has the one below twice.
    EXPECT_TRUE(problemOf("local t = 'x' for i = 1, 60 do t = { t, t } end shared.t = t")
                    .endsWith("holds more than there is room for"));
    expectTrue("pcall(function() shared.big = string.rep('x', 100000000) end) shared.n = 1 "
               "return shared.big == nil and shared.n == 1");
}

TEST(Shared, AReaderWithoutMemoryForItGetsAnError)
{
    expectTrue("shared.t = string.rep('x', 40000000) local kept = {} local ok, why "
               "repeat ok, why = pcall(function() kept[#kept + 1] = shared.t .. #kept end) until not ok "
               "kept = nil collectgarbage() return why:find('not enough memory', 1, true) ~= nil and "
               "#shared.t == 40000000");
}

TEST(Update, GivesTheValueAndStoresWhatIsReturned)
{
    expectTrue(
        "assert(shared.update('n', function(n) assert(n == nil) return 1 end) == 1) "
        "assert(shared.update('n', function(n) return n + 1 end) == 2) "
        "assert(shared.update(5, function(t) return { 'x' } end)[1] == 'x') "
        "local t = shared.update('n', function() end) "
        "return t == nil and shared.n == nil and shared[5][1] == 'x' and shared.update == shared['update']");
}

TEST(Update, OfFiftySequencesLosesNone)
{
    Company company;
    company.add(50, "local function more(n) return (n or 0) + 1 end "
                    "for i = 1, 1000 do shared.update('n', more) end "
                    "rendezvous('end') return shared.n == 50000");
    company.pass();
}

TEST(Update, ThatErrsLeavesTheValueAndCanBeMadeAgain)
{
    expectTrue(
        "shared.n = 1 local problem = {} "
        "local ok, got = pcall(shared.update, 'n', function() error(problem) end) "
        "assert(not ok and got == problem and shared.n == 1) "
        "assert(not pcall(shared.update, 'n', function() return print end) and shared.n == 1) "
        "assert(not coroutine.resume(coroutine.create(function() shared.update('n', error) end))) "
        "assert(not coroutine.resume(coroutine.create(function() shared.update('n', coroutine.yield) end))) "
        "return shared.update('n', function(n) return n + 1 end) == 2");
    EXPECT_EQ(problemOf("shared.update('n', function() return { low = print } end)"),
              "script.lua:1: shared.n.low is a function, which cannot be shared");
}

TEST(Update, KeepsTheTracebackOfAnError)
{
    expectTrue("local function deepInside() error('odd') end\n"
               "local ok, trace = xpcall(shared.update, debug.traceback, 'n', function() deepInside() return "
               "1 end)\n"
               "return not ok and trace:find('deepInside', 1, true) ~= nil");
}

TEST(Update, NothingThatMayWaitCanBeCalledInside)
{
    const auto inside = [](const char *call) {
        return problemOf(QByteArray("shared.update('n', function() ") + call + " end)");
    };
    EXPECT_EQ(inside("shared.update('n', print)"),
              "script.lua:1: shared.update: cannot be called inside of shared.update");
    EXPECT_EQ(inside("shared.update('other', print)"),
              "script.lua:1: shared.update: cannot be called inside of shared.update");
    EXPECT_EQ(inside("coroutine.wrap(function() shared.update('other', print) end)()"),
              "script.lua:1: script.lua:1: shared.update: cannot be called inside of shared.update");
    EXPECT_EQ(
        inside(
            "local t = setmetatable({}, { __index = function() shared.update('m', print) end }) print(t.x)"),
        "script.lua:1: shared.update: cannot be called inside of shared.update");
    EXPECT_EQ(inside("rendezvous('start')"),
              "script.lua:1: rendezvous: cannot be called inside of shared.update");
    EXPECT_EQ(inside("locked('meter', print)"),
              "script.lua:1: locked: cannot be called inside of shared.update");
    EXPECT_EQ(inside("gate()"), "script.lua:1: gate: cannot be called inside of shared.update");
    expectTrue("pcall(shared.update, 'n', gate) return rendezvous('start')");
    expectTrue("return shared.update('n', function() shared.m = 1 return shared.m end) == 1");
}

TEST(Update, NeitherReadsNorWritesOfOthersWaitForIt)
{
    Company company;
    // The update goes on until it sees the other's word.
    company.add("shared.n = 1 "
                "local got = shared.update('n', function(n) shared.inside = true "
                "    while not shared.go do end return n + 1 end) "
                "return got == 2 and shared.n == 10");
    company.add("while not shared.inside do end assert(shared.n == 1) shared.n = 10 "
                "assert(shared.n == 10) shared.go = true");
    company.pass();
}

TEST(Update, AStopInsideLetsTheNextOneIn)
{
    Company company;
    company.add("shared.n = 1 shared.update('n', function() shared.inside = true while true do end end)");
    company.add("while not shared.inside do end gate() "
                "return shared.update('n', function(n) return n + 1 end) == 2");
    company.start();
    company.at(1).waitForCall("gate");
    company.openGate();
    company.at(0).stop();
    EXPECT_EQ(company.end(0).outcome, KVKLuaOutcome::Stopped);
    EXPECT_EQ(company.end(1).value, Value(true));
}

TEST(Update, AStopEndsTheWaitForAnother)
{
    Company company;
    company.add("shared.update('n', function() shared.inside = true while true do end end)");
    company.add(4, "while not shared.inside do end gate() "
                   "while true do pcall(shared.update, 'n', function() return 1 end) end");
    company.start();
    for (std::size_t i = 1; i < 5; ++i)
        company.at(i).waitForCall("gate");
    company.openGate();
    for (std::size_t i = 1; i < 5; ++i)
        company.at(i).stop();
    for (std::size_t i = 1; i < 5; ++i)
        EXPECT_EQ(company.end(i).outcome, KVKLuaOutcome::Stopped);
    company.at(0).stop();
    EXPECT_EQ(company.end(0).outcome, KVKLuaOutcome::Stopped);
}

TEST(Update, RefusesWhatIsNoFunction)
{
    EXPECT_EQ(problemOf("shared.update('n', 1)"),
              "script.lua:1: bad argument #2 to 'update' (function expected, got number)");
    EXPECT_EQ(problemOf("shared.update()"), "script.lua:1: bad argument #1 to 'update' (value expected)");
    EXPECT_EQ(problemOf("shared:update('n', print)"),
              "script.lua:1: bad argument #1 to 'update' (function expected, got string)");
}

} // namespace
