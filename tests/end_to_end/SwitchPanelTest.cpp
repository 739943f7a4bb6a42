#include "tests/end_to_end/StationRun.h"

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

const QStringList ThreeSlots{"S1", "S2", "S3"};

constexpr const char *AskForSwitches = R"(
    states, problem = showGroupView(groupNumber, { switch = { "S1", "S2", "S3" }, column = 3 })
    assert(problem == nil, "an error came with the answer")
)";

TEST(SwitchPanel, OkGivesTheStates)
{
    StationRun station;
    station.slotNames(ThreeSlots)
        .perGroup(QLatin1String(AskForSwitches) + "return states.S1 ~= nil and states.S2 == nil and "
                                                  "states.S3 ~= nil and states.clickedButton == nil");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.click({ panel = "G1", switch = "S2" })
        operator.click({ panel = "G1", switch = "S3" })
        operator.click({ panel = "G1", switch = "S3" })
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
    EXPECT_EQ(station.answer("showGroupView", "G1").toObject().keys(), QStringList({"S1", "S3"}));
}

TEST(SwitchPanel, CancelGivesNilAndNoError)
{
    StationRun station;
    station.slotNames(ThreeSlots).perGroup(QLatin1String(AskForSwitches) + "return states == nil");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.click({ panel = "G1", switch = "S2" })
        operator.click({ panel = "G1", title = "Cancel" })
    )");
    station.passes();
    EXPECT_TRUE(station.answer("showGroupView", "G1").isNull());
}

TEST(SwitchPanel, ASlotThatIsOffIsNotAskedForByTheNextPanel)
{
    StationRun station;
    station.slotNames(ThreeSlots).perGroup(QLatin1String(AskForSwitches) + R"(
        local answer = showGroupView(groupNumber, { input = { "S1", "S2", "S3" }, length = 2 })
        return answer.S1 == "11" and answer.S2 == nil and answer.S3 == "13"
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.click({ panel = "G1", switch = "S2" })
        operator.click({ panel = "G1", title = "OK" })
        operator.waitForPanelGone("G1", 30)
        operator.waitForPanel("G1", 30)
        operator.type("11\n13\n")
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
}

} // namespace
