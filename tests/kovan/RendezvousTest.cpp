#include "tests/kovan/Company.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

using platform::Array;
using platform::Value;
using testsupport::Company;
using testsupport::LogRecorder;
using testsupport::SequenceRun;

namespace {

const QString OthersAtStart = QStringLiteral("others at \"start\"");

/// The error of a script that is alone in its run.
QString problemOf(const QByteArray &script)
{
    Company company;
    const KVKLuaEnd end = company.add(script).end(0);
    EXPECT_EQ(end.outcome, KVKLuaOutcome::Erred) << script.toStdString();
    return end.message;
}

TEST(Rendezvous, EachReturnsTrueWhenAllAreThere)
{
    Company company;
    company.add(3, "shared.update('there', function(n) return (n or 0) + 1 end) "
                   "local met, more = rendezvous('start') "
                   "return met == true and more == nil and shared.there == 3");
    company.pass();
}

TEST(Rendezvous, TheSameNameIsMetAgainAndAgain)
{
    Company company;
    // Each counts in every pass; nobody is in a later pass than the others are.
    company.add(4, "for pass = 1, 200 do "
                   "    shared.update(pass, function(n) return (n or 0) + 1 end) "
                   "    assert(rendezvous('pass')) "
                   "    assert(shared[pass] == 4, pass) "
                   "end");
    company.pass();
}

TEST(Rendezvous, OneThatEndsWhileOthersWaitIsNotWaitedForAnyMore)
{
    for (const char *end : {"error('no contact')", "return false", "return true"}) {
        const LogRecorder recorder;
        Company company;
        company.add(2, "return rendezvous('start')").add(QByteArray("gate() ") + end);
        company.start();
        company.at(0).waitForWait(OthersAtStart);
        company.at(1).waitForWait(OthersAtStart);
        company.openGate();
        company.end(2);
        EXPECT_EQ(company.end(0).value, Value(true)) << end;
        EXPECT_EQ(company.end(1).value, Value(true)) << end;
        EXPECT_EQ(recorder.count(KVKLogLevel::Default,
                                 "rendezvous \"start\": system 2 has ended and is not waited for"),
                  1);
    }
}

TEST(Rendezvous, WithAllOthersEndedReturnsAtOnce)
{
    const LogRecorder recorder;
    Company company;
    company.add("return true").add("return false").add("return rendezvous('start') and rendezvous('start')");
    company.end(0);
    company.end(1);
    EXPECT_EQ(company.end(2).value, Value(true));
    for (const char *who : {"system 0", "system 1"}) {
        EXPECT_EQ(recorder.count(
                      KVKLogLevel::Default,
                      QStringLiteral("rendezvous \"start\": %1 has ended and is not waited for").arg(who)),
                  1);
    }
    EXPECT_EQ(company.at(2).waits(), QStringList());
}

TEST(Rendezvous, OneThatWasNeverStartedIsWaitedForUntilItIsTakenAway)
{
    auto run =
        std::make_shared<KVKLuaRun>(std::vector<KVKLuaPartner>{{"system 0", "G1"}, {"system 1", "G1"}});
    SequenceRun first("return rendezvous('start')");
    first.description.run = run;
    SequenceRun second("");
    auto idle = std::make_unique<KVKLuaSequence>(KVKLuaSequence::Description{{}, {}, {}, run, 1}, second);
    first.start();
    first.waitForWait(OthersAtStart);
    idle.reset();
    EXPECT_EQ(first.end().value, Value(true));
}

TEST(Rendezvous, APlaceThatTheRunDoesNotHaveIsRefused)
{
    SequenceRun sequence("");
    const KVKLuaSequence::Description description{
        {}, {}, {}, std::make_shared<KVKLuaRun>(std::vector<KVKLuaPartner>{{"system 0", {}}}), 1};
    EXPECT_THROW(KVKLuaSequence(description, sequence), std::out_of_range);
}

TEST(Rendezvous, NamesWhoIsMissingWhenTheTimeIsUp)
{
    Company company;
    company.add("local met, missing = rendezvous('start', 0.001) return { tostring(met), missing }")
        .add("gate()")
        .add("gate()");
    company.start();
    EXPECT_EQ(company.end(0).value, Value(Array{"nil", "system 1, system 2"}));
    company.openGate();
    company.end(1);
    company.end(2);
}

TEST(Rendezvous, WithNoTimeAtAllTellsWhoIsThere)
{
    Company company;
    company.add("return select(2, rendezvous('start', 0))").add("gate()");
    company.start();
    EXPECT_EQ(company.end(0).value, Value("system 1"));
    EXPECT_EQ(company.at(0).waits(), QStringList());
    company.openGate();
    company.end(1);
}

TEST(Rendezvous, WhoeverHasWaitedInVainComesAnew)
{
    Company company;
    company.add("assert(not rendezvous('start', 0)) gate() return rendezvous('start')")
        .add("return rendezvous('start')");
    company.start(0);
    company.at(0).waitForCall("gate");
    company.start(1);
    company.at(1).waitForWait(OthersAtStart);
    company.openGate();
    company.pass();
}

TEST(Rendezvous, IsWithTheGroupOrForTheStationsSequenceWithAll)
{
    Company company;
    company.add("return rendezvous('start')", "G1")
        .add("return rendezvous('start')", "G1")
        .add("gate() return rendezvous('start')", "G2")
        .add("return rendezvous('start')", "");
    company.start();
    EXPECT_EQ(company.end(0).value, Value(true));
    EXPECT_EQ(company.end(1).value, Value(true));
    company.at(3).waitForWait(OthersAtStart);
    EXPECT_FALSE(company.at(3).hasEnded());
    company.openGate();
    EXPECT_EQ(company.end(2).value, Value(true));
    EXPECT_EQ(company.end(3).value, Value(true));
}

TEST(Rendezvous, TellsItsHostThatItWaitsAndThatItDoesNotAnyMore)
{
    Company company;
    company.add("return rendezvous('start')").add("gate() return rendezvous('start')");
    company.start();
    company.at(0).waitForWait(OthersAtStart);
    company.openGate();
    company.pass();
    EXPECT_EQ(company.at(0).waits(), (QStringList{OthersAtStart, ""}));
    EXPECT_EQ(company.at(1).waits(), QStringList());
}

TEST(Rendezvous, IsEndedByAStopAndTheOthersGoOn)
{
    Company company;
    company.add("pcall(rendezvous, 'start') shared.after = true").add("return rendezvous('start', 1000)");
    company.add("gate() return rendezvous('start') and shared.after == nil");
    company.start();
    company.at(0).waitForWait(OthersAtStart);
    company.at(1).waitForWait(OthersAtStart);
    company.at(0).stop();
    EXPECT_EQ(company.end(0).outcome, KVKLuaOutcome::Stopped);
    company.openGate();
    EXPECT_EQ(company.end(1).value, Value(true));
    EXPECT_EQ(company.end(2).value, Value(true));
}

TEST(Rendezvous, AStopEndsAllThatWait)
{
    Company company;
    company.add(8, "while true do pcall(rendezvous, 'start') end").add("gate()");
    company.start();
    for (std::size_t i = 0; i < 8; ++i)
        company.at(i).waitForWait(OthersAtStart);
    for (std::size_t i = 0; i < 8; ++i)
        company.at(i).stop();
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_EQ(company.end(i).outcome, KVKLuaOutcome::Stopped);
    company.openGate();
    company.end(8);
}

TEST(Rendezvous, TwoThatWaitForEachOtherAtTwoNamesAreNoticed)
{
    Company company;
    company.add("return rendezvous('start')").add("return rendezvous('begin')").add("gate()");
    company.start(0);
    company.at(0).waitForWait(OthersAtStart);
    company.start(2);
    EXPECT_EQ(
        company.end(1).message,
        "script.lua:1: rendezvous: waiting at \"begin\" would never end: system 1 waits at \"begin\" for "
        "system 0; system 0 waits at \"start\" for system 1");
    company.openGate();
    EXPECT_EQ(company.end(0).value, Value(true));
    company.end(2);
}

TEST(Rendezvous, InsideOfALockThatAnotherWaitsForIsNoticed)
{
    Company company;
    company.add("return locked('meter', function() gate() return rendezvous('start') end)")
        .add("return locked('meter', rendezvous, 'start')");
    company.start(0);
    company.at(0).waitForCall("gate");
    company.start(1);
    company.at(1).waitForWait("lock \"meter\"");
    company.openGate();
    EXPECT_EQ(
        company.end(0).message,
        "script.lua:1: rendezvous: waiting at \"start\" would never end: system 0 waits at \"start\" for "
        "system 1; system 1 waits for lock \"meter\", which system 0 holds");
    EXPECT_EQ(company.end(1).value, Value(true));
}

TEST(Rendezvous, RefusesNamesAndTimesThatAreNone)
{
    for (const char *seconds : {"-1", "0/0", "math.huge", "-math.huge", "1000001"}) {
        EXPECT_EQ(problemOf(QByteArray("rendezvous('start', ") + seconds + ")"),
                  "script.lua:1: bad argument #2 to 'rendezvous' (must be a number of seconds, 0 to 1000000)")
            << seconds;
    }
    EXPECT_EQ(problemOf("rendezvous('start', {})"),
              "script.lua:1: bad argument #2 to 'rendezvous' (number expected, got table)");
    EXPECT_EQ(problemOf("rendezvous('')"),
              "script.lua:1: bad argument #1 to 'rendezvous' (must not be empty)");
    EXPECT_EQ(problemOf("rendezvous(12)"),
              "script.lua:1: bad argument #1 to 'rendezvous' (string expected, got number)");
    EXPECT_EQ(problemOf("rendezvous()"),
              "script.lua:1: bad argument #1 to 'rendezvous' (string expected, got no value)");
    Company company;
    company.add("return rendezvous('start', 1000000) and rendezvous('start', nil) and rendezvous('a\\0b')")
        .pass();
}

TEST(Rendezvous, IsNotThereForASequenceThatRunsByItself)
{
    EXPECT_EQ(SequenceRun("return rendezvous == nil and locked == nil and shared == nil").end().value,
              Value(true));
}

} // namespace
