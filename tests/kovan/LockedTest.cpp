#include "tests/kovan/Company.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

using platform::Array;
using platform::Value;
using testsupport::Company;

namespace {

const QString ForMeter = QStringLiteral("lock \"meter\"");

/// Whether a script that is alone in its run returns true.
void expectTrue(const QByteArray &script)
{
    Company company;
    const KVKLuaEnd end = company.add(script).end(0);
    EXPECT_EQ(end.message, "");
    EXPECT_EQ(end.value, Value(true)) << script.toStdString();
}

QString problemOf(const QByteArray &script)
{
    Company company;
    const KVKLuaEnd end = company.add(script).end(0);
    EXPECT_EQ(end.outcome, KVKLuaOutcome::Erred) << script.toStdString();
    return end.message;
}

TEST(Locked, GivesTheFunctionItsArgumentsAndReturnsAllItsResults)
{
    expectTrue(
        "local got = table.pack(locked('meter', function(...) return select('#', ...), ... end, 1, nil, "
        "'x', nil)) return got.n == 5 and got[1] == 4 and got[2] == 1 and got[3] == nil and got[4] == 'x'");
    expectTrue("return select('#', locked('meter', function() end)) == 0");
    expectTrue(
        "local many = table.pack(locked('meter', table.unpack, { 1, 2 }, 1, 5000)) return many.n == 5000");
}

TEST(Locked, RaisesTheErrorItselfAndIsFreeAfterwards)
{
    expectTrue("local problem = setmetatable({}, {}) "
               "local ok, got = pcall(locked, 'meter', error, problem) "
               "return not ok and rawequal(got, problem) and locked('meter', function() return true end)");
    EXPECT_EQ(problemOf("locked('meter', function()\n error('no contact') end)"), "script.lua:2: no contact");
    EXPECT_EQ(problemOf("locked('meter', error)"), "nil");
}

TEST(Locked, AnErrorKeepsItsTraceback)
{
    expectTrue("local function deepInside() error('no contact') end\n"
               "local function measure() deepInside() return 1 end\n"
               "local ok, trace = xpcall(locked, debug.traceback, 'meter', measure)\n"
               "return not ok and trace:find('deepInside', 1, true) ~= nil and trace:find('script.lua:2:', "
               "1, true) ~= nil");
}

TEST(Locked, AnErrorInsideOfTwoLocksFreesBoth)
{
    Company company;
    company.add("local ok, why = pcall(locked, 'a', function() "
                "    return locked('b', function() error('no contact', 0) end) end) "
                "assert(not ok and why == 'no contact') gate() return true");
    company.add("return locked('b', locked, 'a', function() return true end)");
    company.start(0);
    company.at(0).waitForCall("gate");
    EXPECT_EQ(company.end(1).value, Value(true));
    EXPECT_EQ(company.at(1).waits(), QStringList());
    company.openGate();
    company.pass();
}

TEST(Locked, AnErrorInACoroutineFreesTheLockAndIsTheSame)
{
    expectTrue(
        "local problem = {} "
        "local routine = coroutine.create(function() locked('meter', function() error(problem) end) end) "
        "local ok, got = coroutine.resume(routine) "
        "return not ok and got == problem and locked('meter', function() return true end)");
    expectTrue(
        "return coroutine.wrap(function() return locked('meter', function(...) return ... end, true) end)()");
}

TEST(Locked, ACoroutineCannotPauseInside)
{
    expectTrue("local routine = coroutine.create(function() locked('meter', coroutine.yield) end) "
               "local ok, why = coroutine.resume(routine) "
               "return not ok and why:find('attempt to yield', 1, true) ~= nil "
               "and locked('meter', function() return true end)");
}

TEST(Locked, WithAllMemoryTakenInsideIsFreeAfterwards)
{
    expectTrue(
        "local ok, why = pcall(locked, 'meter', function() "
        "    local t = {} while true do t[#t + 1] = string.rep('x', 1000000) .. #t end end) "
        "return not ok and why == 'not enough memory' and locked('meter', function() return true end)");
    expectTrue("local function deeper() return 1 + deeper() end "
               "local ok, why = pcall(locked, 'meter', deeper) "
               "return not ok and why:find('stack overflow', 1, true) ~= nil "
               "and locked('meter', function() return true end)");
    expectTrue("local function again() return 1 + locked('meter', function() return 1 end) + again() end "
               "pcall(again) return locked('meter', function() return true end)");
}

TEST(Locked, ASecondTimeByTheSameSequenceIsAnError)
{
    EXPECT_EQ(problemOf("locked('meter', locked, 'meter', print)"),
              "locked: this sequence has the lock \"meter\" already");
    EXPECT_EQ(problemOf("locked('meter', function() coroutine.wrap(function() "
                        "locked('meter', print) end)() end)"),
              "script.lua:1: script.lua:1: locked: this sequence has the lock \"meter\" already");
    expectTrue("return locked('meter', function() pcall(locked, 'meter', print) "
               "return locked('scope', function() return true end) end)");
}

TEST(Locked, OneAtATimeIsInside)
{
    Company company;
    company.add(8, "shared.count = shared.count or 0 rendezvous('start') "
                   "for i = 1, 200 do locked('meter', function() "
                   "    assert(not shared.inside) shared.inside = true "
                   "    shared.count = shared.count + 1 "
                   "    shared.inside = nil end) end "
                   "rendezvous('end') return shared.count == 1600");
    company.pass();
}

TEST(Locked, WhoeverHasWaitedLongestIsNext)
{
    Company company;
    company.add("locked('meter', gate) rendezvous('end') return shared.order == '312'");
    company.add(
        3, "locked('meter', function() shared.order = (shared.order or '') .. me end) rendezvous('end')");
    company.start(0);
    company.at(0).waitForCall("gate");
    for (const std::size_t who : {3U, 1U, 2U}) {
        company.start(who);
        company.at(who).waitForWait(ForMeter);
    }
    company.openGate();
    company.pass();
    EXPECT_EQ(company.at(3).waits().mid(0, 2), (QStringList{ForMeter, ""}));
}

TEST(Locked, TwoLocksInTwoOrdersAreNoticed)
{
    Company company;
    company.add("return locked('a', function() gate() return locked('b', function() return true end) end)");
    company.add("return locked('b', locked, 'a', print)");
    company.start(0);
    company.at(0).waitForCall("gate");
    company.start(1);
    company.at(1).waitForWait("lock \"a\"");
    company.openGate();
    EXPECT_EQ(company.end(0).message,
              "script.lua:1: locked: waiting for lock \"b\" would never end: system 0 waits for lock \"b\", "
              "which system 1 holds; system 1 waits for lock \"a\", which system 0 holds");
    EXPECT_EQ(company.end(1).outcome, KVKLuaOutcome::Passed);
}

TEST(Locked, ACircleOfThreeLocksIsNoticedByWhoeverWouldCloseIt)
{
    Company company;
    // Each has its first lock before any asks for its second.
    const char *const script = "return locked(%1, function() rendezvous('each has one') %2 "
                               "return locked(%3, function() return true end) end)";
    const auto asks = [&](const char *first, const char *before, const char *second) {
        return QString::fromLatin1(script).arg(first, before, second).toUtf8();
    };
    company.add(asks("'a'", "", "'b'")).add(asks("'b'", "", "'c'")).add(asks("'c'", "gate()", "'a'"));
    company.start();
    company.at(0).waitForWait("lock \"b\"");
    company.at(1).waitForWait("lock \"c\"");
    company.openGate();
    EXPECT_EQ(company.end(2).message,
              "script.lua:1: locked: waiting for lock \"a\" would never end: system 2 waits for lock \"a\", "
              "which system 0 holds; system 0 waits for lock \"b\", which system 1 holds; system 1 waits for "
              "lock \"c\", which system 2 holds");
    EXPECT_EQ(company.end(0).value, Value(true));
    EXPECT_EQ(company.end(1).value, Value(true));
}

TEST(Locked, WaitingForOneWhoWaitsForThisOneAtAMeetingIsNoticed)
{
    Company company;
    company.add("return locked('meter', rendezvous, 'start')").add("return locked('meter', print)");
    company.start(0);
    company.at(0).waitForWait("others at \"start\"");
    EXPECT_EQ(company.end(1).message,
              "script.lua:1: locked: waiting for lock \"meter\" would never end: system 1 waits for lock "
              "\"meter\", which system 0 holds; system 0 waits at \"start\" for system 1");
    EXPECT_EQ(company.end(0).value, Value(true));
}

TEST(Locked, AStopEndsTheWaitAndTheNextOneGetsTheLock)
{
    Company company;
    company.add("locked('meter', gate)");
    company.add("pcall(locked, 'meter', function() shared.inside = true end) shared.after = true");
    company.add("return locked('meter', function() return not shared.inside and not shared.after end)");
    company.start(0);
    company.at(0).waitForCall("gate");
    for (const std::size_t who : {1U, 2U}) {
        company.start(who);
        company.at(who).waitForWait(ForMeter);
    }
    company.at(1).stop();
    EXPECT_EQ(company.end(1).outcome, KVKLuaOutcome::Stopped);
    company.openGate();
    EXPECT_EQ(company.end(2).value, Value(true));
    company.end(0);
}

TEST(Locked, AStopInsideFreesTheLock)
{
    Company company;
    company.add("locked('meter', function() shared.inside = true while true do end end)");
    company.add("return locked('meter', function() return true end)");
    company.start(0);
    company.start(1);
    company.at(0).stop();
    EXPECT_EQ(company.end(0).outcome, KVKLuaOutcome::Stopped);
    EXPECT_EQ(company.end(1).value, Value(true));
}

TEST(Locked, ManyThatAreStoppedInTheMidstLeaveTheLockFree)
{
    Company company;
    company.add(8,
                "while true do locked('meter', function() shared.count = (shared.count or 0) + 1 end) end");
    company.add("gate() return locked('meter', function() return true end)");
    company.start();
    company.at(8).waitForCall("gate");
    for (std::size_t i = 0; i < 8; ++i)
        company.at(i).stop();
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_EQ(company.end(i).outcome, KVKLuaOutcome::Stopped);
    company.openGate();
    EXPECT_EQ(company.end(8).value, Value(true));
}

TEST(Locked, RefusesWhatIsNoNameOrNoFunction)
{
    EXPECT_EQ(problemOf("locked('', print)"),
              "script.lua:1: bad argument #1 to 'locked' (must not be empty)");
    EXPECT_EQ(problemOf("locked(1, print)"),
              "script.lua:1: bad argument #1 to 'locked' (string expected, got number)");
    EXPECT_EQ(problemOf("locked('meter')"),
              "script.lua:1: bad argument #2 to 'locked' (function expected, got no value)");
    EXPECT_EQ(problemOf("locked('meter', {})"),
              "script.lua:1: bad argument #2 to 'locked' (function expected, got table)");
}

} // namespace
