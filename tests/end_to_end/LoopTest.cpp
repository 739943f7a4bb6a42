#include "tests/end_to_end/StationRun.h"

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

TEST(Loop, ThreePassesOverTwoGroupsAskOnceAndCountExactly)
{
    StationRun station;
    station.groups({"G1", "G2"}).slotNames({"S1", "S2"}).perGroup(R"(
        if groupNumber == 0 then setLoop(3) end
        while getLoopConfig().LoopCount_1 == nil do sleep(0.01) end
        local passes = 0
        repeat
            local answer, problem = showGroupView(groupNumber, { input = { "S1", "S2" }, length = 3 })
            assert(problem == nil and answer.S1 == groupName .. "a" and answer.S2 == groupName .. "b")
            passes = passes + 1
            local finished = isLoopFinished(groupNumber)
            assert(finished == (passes < 3 and 0 or 1), "pass " .. passes .. ": " .. finished)
        until finished == 1
        local value, problem = getData(groupNumber * 2)
        assert(value == nil and problem.code == 201, "the answers are cleared")
        assert(getLoopConfig()["LoopCount_" .. groupNumber] == 3, "three passes are counted")
        return passes == 3
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.waitForPanel("G2", 30)
        for _, key in ipairs({ "G1", "G2" }) do
            operator.click(key .. "-SharedInput")
            operator.type(key .. "a\n" .. key .. "b\n")
        end
        expect(operator.tree("Loop").text == "3", "the field shows the passes")
        operator.click({ panel = "G2", title = "OK" })
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
    EXPECT_EQ(station.calls("showGroupView", "G1").size(), 3);
    EXPECT_EQ(station.calls("isLoopFinished", "G2").size(), 3);
    EXPECT_EQ(station.log().count("Entered: "), 2) << "each group's panel is drawn once";
}

TEST(Loop, WithoutAMaximumOnePassIsAllAndItsAnswersAreCleared)
{
    StationRun station;
    station.perGroup(R"(
        assert(next(getLoopConfig()) == nil, "no loop record yet")
        showGroupView(groupNumber, { input = { "S1" } })
        assert(getData(0) == "x")
        assert(isLoopFinished(groupNumber) == 1)
        local value, problem = getData(0)
        return value == nil and problem.code == 201
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.scan("x")
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
}

TEST(Loop, TheFieldDecidesWhetherTheNextCallAsks)
{
    StationRun station;
    station.groups({"G1", "G2"}).perStation(R"(
        local function ask()
            return showGroupView(0, { input = { "S1" } }).S1
        end
        local function letOperatorType()
            assert(showGroupView(1, { button = { "Next" } }))
        end
        assert(ask() == "first")
        letOperatorType() -- "5"
        assert(getLoopConfig().LoopMax == 5 and getLoopConfig().LoopCount_0 == 0)
        assert(ask() == "first", "the answer is there already")
        assert(isLoopFinished(0) == 0 and getLoopConfig().LoopCount_0 == 1)
        letOperatorType() -- "abc"
        assert(getLoopConfig().LoopMax == 0 and getLoopConfig().LoopCount_0 == 0)
        assert(ask() == "second", "the operator is asked again")
        letOperatorType() -- "2"
        assert(getLoopConfig().LoopMax == 2)
        assert(ask() == "second", "the answer is there already")
        assert(isLoopFinished(0) == 0 and isLoopFinished(0) == 1)
        assert(ask() == "third", "the last pass has cleared the answer")
        return true
    )");
    station.operatorDoes(R"(
        local function answer(text)
            operator.waitForPanel("G1", 30)
            operator.click("G1-SharedInput")
            operator.scan(text)
            operator.click({ panel = "G1", title = "OK" })
            operator.waitForPanelGone("G1", 30)
        end
        local function passes(text)
            operator.waitForPanel("G2", 30)
            operator.click("Loop")
            operator.scan(text)
            operator.click({ panel = "G2", title = "Next" })
            operator.waitForPanelGone("G2", 30)
        end
        answer("first")
        passes("5")
        passes("abc")
        answer("second")
        passes("2")
        answer("third")
    )");
    station.passes();
}

TEST(Loop, ASystemIsAskedOnceInALoop)
{
    StationRun station;
    station.perSystem(R"(
        setLoop(2)
        for pass = 1, 2 do
            if showView(systemIndex, { input = { "SN" } }).SN ~= "only once" then return false end
        end
        return true
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("0", 30)
        operator.scan("only once")
        operator.click({ panel = "0", title = "OK" })
    )");
    station.passes();
}

TEST(Loop, NoCountIsLostWhenManySequencesReportAtOnce)
{
    StationRun station;
    station.groups({"G1", "G2", "G3", "G4"}).slotNames({"S1", "S2"});
    // Two systems of each group report 200 passes each.
    station.perSystem(R"(
        if systemIndex == 0 then setLoop(1000) end
        while getLoopConfig().LoopCount_3 == nil do sleep(0.01) end
        for pass = 1, 200 do isLoopFinished(systemIndex // 2) end
        return true
    )");
    station.operatorDoes(R"(
        eventually(function()
            local loop = operator.property("savedData").Loop or {}
            for group = 0, 3 do
                if loop["LoopCount_" .. group] ~= 400 then return false end
            end
            return true
        end, "400 passes of each group")
    )");
    station.passes();
}

} // namespace
