#include "station/RunStates.h"

#include "station/IdleWatch.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

using station::IdleWatch;
using station::RunStates;
using station::stateText;

namespace {

RunStates runOf(const QList<QList<int>> &sequences)
{
    return RunStates(sequences);
}

QString shown(const RunStates &states, int system)
{
    return stateText(states.of(system).state, states.of(system).text);
}

KVKLuaEnd end(KVKLuaOutcome outcome, const QString &message = {})
{
    return {outcome, {}, message};
}

constexpr auto Passed = KVKLuaOutcome::Passed;
constexpr auto Failed = KVKLuaOutcome::Failed;
constexpr auto Erred = KVKLuaOutcome::Erred;
constexpr auto Stopped = KVKLuaOutcome::Stopped;

TEST(RunStates, BeforeARunAndWithoutASequenceASystemIsIdle)
{
    EXPECT_EQ(shown(RunStates(), 0), "Idle");
    EXPECT_EQ(shown(runOf({{0}}), 1), "Idle");
}

TEST(RunStates, ASystemRunsUntilTheLastOfItsSequencesHasEnded)
{
    RunStates states = runOf({{0}, {1}, {0, 1}});
    EXPECT_EQ(shown(states, 0), "Running");
    states.ended(0, end(Failed));
    EXPECT_EQ(shown(states, 0), "Running");
    states.ended(2, end(Passed));
    EXPECT_EQ(shown(states, 0), "Failed");
    EXPECT_EQ(shown(states, 1), "Running");
}

TEST(RunStates, ASystemIsDoneWithTheLastOfItsSequences)
{
    using Progress = RunStates::Progress;
    EXPECT_EQ(RunStates().progress(), (Progress{0, 0, 0}));
    RunStates states = runOf({{0}, {1}, {0, 1}, {}});
    EXPECT_EQ(states.progress(), (Progress{0, 0, 2}));
    states.ended(0, end(Passed));
    states.ended(1, end(Failed));
    EXPECT_EQ(states.progress(), (Progress{0, 0, 2}));
    states.ended(2, end(Passed));
    EXPECT_EQ(states.progress(), (Progress{2, 0, 2}));
}

TEST(RunStates, ASystemThatWasStoppedIsNotDone)
{
    using Progress = RunStates::Progress;
    RunStates states = runOf({{0}, {1}, {2}, {2}, {3}, {3}});
    states.ended(0, end(Passed));
    states.ended(1, end(Stopped));
    states.ended(2, end(Stopped));
    EXPECT_EQ(states.progress(), (Progress{1, 1, 4})) << "system 2 still runs";
    states.ended(3, end(Passed));
    EXPECT_EQ(states.progress(), (Progress{1, 2, 4})) << "half of it was stopped";
    states.ended(4, end(Failed));
    states.ended(5, end(Stopped));
    EXPECT_EQ(states.progress(), (Progress{2, 2, 4})) << "its row says that it failed";
}

TEST(RunStates, NamesTheScriptsThatRunAndAfterThemThoseThatRan)
{
    RunStates states({{0}, {0}, {0, 1}}, {"ask.lua", "check.lua", "ask.lua"});
    EXPECT_EQ(states.of(0).scripts, "ask.lua, check.lua");
    states.ended(1, end(Passed));
    EXPECT_EQ(states.of(0).scripts, "ask.lua");
    EXPECT_EQ(states.of(1).scripts, "ask.lua");
    states.ended(0, end(Passed));
    states.ended(2, end(Passed));
    EXPECT_EQ(states.of(0).scripts, "ask.lua, check.lua");
    EXPECT_EQ(states.of(2).scripts, "");
}

TEST(RunStates, TheWorstEndIsShownInWhicheverOrderTheyCome)
{
    const struct
    {
        KVKLuaOutcome one;
        KVKLuaOutcome other;
        const char *shown;
    } cases[] = {{Passed, Passed, "Passed"}, {Passed, Stopped, "Stopped"}, {Passed, Failed, "Failed"},
                 {Passed, Erred, "Error"},   {Stopped, Failed, "Failed"},  {Stopped, Erred, "Error"},
                 {Failed, Erred, "Error"},   {Stopped, Stopped, "Stopped"}};
    for (const auto &each : cases) {
        for (const int first : {0, 1}) {
            RunStates states = runOf({{0}, {0}});
            states.ended(first, end(each.one));
            states.ended(1 - first, end(each.other));
            EXPECT_EQ(shown(states, 0), each.shown);
        }
    }
}

TEST(RunStates, AnErrorSaysWhyAndTheOtherEndsSayThemselves)
{
    const std::pair<KVKLuaOutcome, const char *> cases[] = {
        {Passed, "Passed"}, {Failed, "Failed"}, {Stopped, "Stopped"}, {Erred, "Error: a.lua:1: why"}};
    for (const auto &[outcome, text] : cases) {
        RunStates states = runOf({{0}});
        states.ended(0, end(outcome, "a.lua:1: why"));
        EXPECT_EQ(shown(states, 0), text);
    }
}

TEST(RunStates, OfTwoErrorsTheFirstSequencesIsTold)
{
    RunStates states = runOf({{0}, {0}});
    states.ended(1, end(Erred, "b.lua:1: late"));
    states.ended(0, end(Erred, "a.lua:1: early"));
    EXPECT_EQ(shown(states, 0), "Error: a.lua:1: early");
}

TEST(RunStates, AWaitIsShownInTheRowsOfItsSequenceUntilItIsOver)
{
    RunStates states = runOf({{0}, {1, 2}});
    states.waits(1, {"its turn", {1, 2}});
    EXPECT_EQ(shown(states, 0), "Running");
    EXPECT_EQ(shown(states, 1), "Waiting: its turn");
    EXPECT_EQ(shown(states, 2), "Waiting: its turn");
    EXPECT_EQ(states.framed(), QList<quint64>());
    states.waits(1, {"the operator", {1, 2}});
    EXPECT_EQ(shown(states, 1), "Waiting: the operator");
    EXPECT_EQ(states.framed(), (QList<quint64>{1, 2}));
    states.waits(1, {});
    EXPECT_EQ(shown(states, 1), "Running");
    EXPECT_EQ(states.framed(), QList<quint64>());
}

TEST(RunStates, OfTwoWaitsTheOneForTheOperatorIsShown)
{
    for (const int asked : {0, 1}) {
        RunStates states = runOf({{0}, {0}, {0}});
        states.waits(asked, {"the operator", {0}});
        states.waits(1 - asked, {"its turn", {0}});
        EXPECT_EQ(shown(states, 0), "Waiting: the operator");
        states.waits(asked, {});
        EXPECT_EQ(shown(states, 0), "Waiting: its turn");
        states.waits(1 - asked, {});
        EXPECT_EQ(shown(states, 0), "Running");
    }
}

TEST(RunStates, ASystemWaitsAlsoWhenAnotherOfItsSequencesHasEnded)
{
    RunStates states = runOf({{0}, {0}});
    states.ended(0, end(Failed));
    states.waits(1, {"the operator", {0}});
    EXPECT_EQ(shown(states, 0), "Waiting: the operator");
}

TEST(RunStates, TwoWaitsForOneSystemFrameItsRowTwice)
{
    RunStates states = runOf({{0}, {0, 1}});
    states.waits(0, {"the operator", {0}});
    states.waits(1, {"the operator", {0, 1}});
    EXPECT_EQ(states.framed(), (QList<quint64>{0, 0, 1}));
    states.waits(0, {});
    EXPECT_EQ(states.framed(), (QList<quint64>{0, 1}));
}

TEST(RunStates, ASequenceThatHasEndedWaitsForNothing)
{
    RunStates states = runOf({{0}});
    states.waits(0, {"the operator", {0}});
    states.ended(0, end(Stopped));
    EXPECT_EQ(shown(states, 0), "Stopped");
    EXPECT_EQ(states.framed(), QList<quint64>());
}

/// How many looks it takes until the watch finds that nothing moves; 0 when it never does.
int looksUntilIdle(IdleWatch &watch, const std::function<QList<quint64>(int)> &calls)
{
    for (int look = 1; look <= 100; ++look) {
        if (watch.look(calls(look)))
            return look;
    }
    return 0;
}

TEST(IdleWatch, TheSameCallsAreAWaitAfterFiveSecondsOfLooks)
{
    IdleWatch watch;
    EXPECT_EQ(looksUntilIdle(watch, [](int) { return QList<quint64>{3, 4}; }), 1 + IdleWatch::Looks);
}

TEST(IdleWatch, OtherCallsAtEachLookAreNone)
{
    IdleWatch watch;
    EXPECT_EQ(looksUntilIdle(watch, [](int look) { return QList<quint64>{3, 4 + quint64(look)}; }), 0);
}

TEST(IdleWatch, NeitherIsASequenceThatIsOutsideOfCalls)
{
    IdleWatch watch;
    EXPECT_EQ(looksUntilIdle(watch, [](int) { return QList<quint64>(); }), 0);
}

TEST(IdleWatch, AnAnswerInBetweenBeginsAnew)
{
    IdleWatch watch;
    const auto calls = [](int look) { return QList<quint64>{look <= 8 ? 1U : 2U}; };
    EXPECT_EQ(looksUntilIdle(watch, calls), 8 + 1 + IdleWatch::Looks);
}

} // namespace
