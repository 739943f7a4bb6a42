#include "tests/end_to_end/StationRun.h"

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

TEST(DataRetrieval, EverySystemOfAConfirmedGroupHasItsEntry)
{
    StationRun station;
    station.groups({"G1", "G2"}).slotNames({"S1", "S2", "S3"}).perGroup(R"(
        showGroupView(groupNumber, { input = { "S1", "S2", "S3" }, length = 3 })
        for slot = 0, 2 do
            local index = groupNumber * 3 + slot
            local value, problem = getData(index)
            if problem or value ~= groupName .. slot then
                return false
            end
        end
        return true
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.waitForPanel("G2", 30)
        for _, key in ipairs({ "G2", "G1" }) do
            operator.click(key .. "-SharedInput")
            for slot = 0, 2 do operator.scan(key .. slot) end
            operator.click({ panel = key, title = "OK" })
        end
    )");
    station.passes();
    EXPECT_EQ(station.calls("getData", "G1").size(), 3);
    EXPECT_EQ(station.calls("getData", "G2").last().value("result").toString(), "G22");
}

TEST(DataRetrieval, BeforeAnyPanelThereIsNothingAndTheCodeSaysSo)
{
    StationRun station;
    station.perSystem(R"(
        local value, problem = getData(systemIndex)
        assert(value == nil and problem.code == 201 and problem.domain == "InteractivePluginErrorDomain")
        return problem.message == "-[InteractiveView getData:error:]: Invalid parameter or data not found: 0"
    )");
    station.passes();
    const QJsonObject error = station.calls("getData", "0").first().value("error").toObject();
    EXPECT_EQ(error.value("code").toInt(), 201);
}

TEST(DataRetrieval, AQuestionWithoutEntriesLeavesNothing)
{
    StationRun station;
    station.perGroup(R"(
        showGroupView(groupNumber, { button = { "Go on" } })
        local value, problem = getData(0)
        return value == nil and problem.code == 201
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.click({ panel = "G1", title = "Go on" })
    )");
    station.passes();
}

TEST(DataRetrieval, ASystemBeyondTheStationIsALuaErrorThatNamesValueAndRange)
{
    StationRun station;
    station.slotNames({"S1", "S2"}).perGroup(R"(
        local called, text = pcall(getData, 7)
        assert(not called, "no error")
        assert(text:find("7", 1, true) and text:find("0 to 1", 1, true), text)
        return true
    )");
    station.passes();
}

} // namespace
