#include "tests/end_to_end/StationRun.h"

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

/// Waits with a question to the first group, then asks the second one for two entries.
constexpr const char *AskSecondGroup = R"(
    assert(showGroupView(0, { button = { "Go on" } }) == true)
    local answer, problem = showGroupView(1, { input = { "S1", "S2" }, length = 2 })
    return problem == nil and answer.S1 == "21" and answer.S2 == "22"
)";

TEST(GroupButton, AGroupSwitchedOffWhileItWaitsComesBackAsItWas)
{
    StationRun station;
    station.groups({"G1", "G2"}).slotNames({"S1", "S2"}).perStation(AskSecondGroup);
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.click({ panel = "G1", title = "Go on" })
        operator.waitForPanel("G2", 30)
        operator.scan("21")
        operator.type("2")
        operator.click("G2")
        expect(operator.tree("G2").class == "View" and operator.tree("G2").hidden, "the panel is hidden")
        operator.click("G2")
        expect(not operator.tree("G2").hidden, "the panel is back")
        expect(operator.tree("G2-S1").text == "21", "the entry is back")
        local shared = operator.tree("G2-SharedInput")
        expect(shared.text == "2" and shared.focused, "half an entry is back, with the focus")
        -- Coming back selects what is in the field.
        operator.scan("22")
        operator.click({ panel = "G2", title = "OK" })
    )");
    station.passes();
}

TEST(GroupButton, OkOnAGroupSwitchedOffBeforeItsCallWaitsForTheGroup)
{
    StationRun station;
    station.groups({"G1", "G2"}).slotNames({"S1", "S2"}).perStation(AskSecondGroup);
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.click("G2")
        operator.click({ panel = "G1", title = "Go on" })
        operator.waitForPanel("G2", 30)
        operator.type("21\n22\n")
        operator.click({ panel = "G2", title = "OK" })
        eventually(function() return logged("Inputs are valid. But group is disabled.") end, "the refusal")
        expect(operator.tree("G2-S2").text == "22", "the panel still waits")
        operator.click("G2")
        operator.click({ panel = "G2", title = "OK" })
    )");
    station.passes();
}

TEST(GroupButton, TheLastGroupStaysOn)
{
    StationRun station;
    station.groups({"G1", "G2"}).perStation(R"(
        return showGroupView(0, { button = { "Go on" } })
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.click("G2")
        operator.click("G1")
        expect(logged("Cannot disable all groups, re-enabled current group: G1"), "the refusal")
        operator.click({ panel = "G1", title = "Go on" })
    )");
    station.passes();
}

} // namespace
