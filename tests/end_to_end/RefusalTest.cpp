#include "tests/end_to_end/StationRun.h"

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

/// A call that is refused: the error that it returns, and the text on the error panel.
struct Refusal
{
    const char *name;
    const char *call;
    int code; ///< 0 for a refusal that stands on the panel only.
    const char *message;
};

void PrintTo(const Refusal &refusal, std::ostream *stream)
{
    *stream << refusal.name;
}

class RefusedCall : public ::testing::TestWithParam<Refusal>
{};

TEST_P(RefusedCall, IsShownAndReturnedAndTheSequenceGoesOn)
{
    const Refusal &refusal = GetParam();
    StationRun station;
    station.slotNames({"S1", "S2", "S3", "S4"});
    station.perGroup(QStringLiteral(R"(
        local answer, problem = %1
        assert(answer == nil, "an answer came with the refusal")
        if %2 == 0 then
            assert(problem == nil, "an error came")
        else
            assert(problem.code == %2, "code " .. problem.code)
            assert(problem.domain == "InteractivePluginErrorDomain", problem.domain)
            assert(problem.message == "%3", problem.message)
        end
        return showGroupView(groupNumber, { button = { "Stop", "Go on" } })
    )")
                         .arg(refusal.call)
                         .arg(refusal.code)
                         .arg(refusal.message));
    station.operatorDoes(QStringLiteral(R"(
        operator.waitForPanel("G1", 30)
        local texts = {}
        for _, child in ipairs(operator.tree("G1").children) do texts[child.text or ""] = child end
        expect(texts["%1"], "the message is on the panel")
        expect(texts["%1"].textColor.red == 1 and texts["%1"].textColor.green == 0, "in red")
        operator.click({ panel = "G1", title = "OK" })
        operator.waitForPanelGone("G1", 30)
        operator.waitForPanel("G1", 30)
        operator.click({ panel = "G1", title = "Go on" })
    )")
                             .arg(refusal.message));
    station.passes();
    EXPECT_EQ(station.outcome("G1"), "passed");
}

INSTANTIATE_TEST_SUITE_P(
    Codes, RefusedCall,
    ::testing::Values(
        Refusal{"InputAndSwitch", "showGroupView(0, { input = { 'S1' }, switch = { 'S1' } })", 100,
                "Invalid config. 'input' and 'switch' cannot be defined at the same time"},
        Refusal{"EmptyInputAndSwitchOnSystem", "showView(2, { input = {}, switch = { 'X' } })", 100,
                "Invalid config. 'input' and 'switch' cannot be defined at the same time"},
        Refusal{"UnknownSlot", "showGroupView(0, { input = { 'S1', 'S9' } })", 101,
                "Invalid config. Slot labels for showGroupView() must be slot name."},
        Refusal{"TooManyLabels", "showGroupView(0, { input = { 'S1', 'S2', 'S3', 'S4', 'S1' } })", 102,
                "Invalid config. Invalid slot labels appeared in groupView config."},
        Refusal{"TooManySwitches", "showGroupView(0, { switch = { 'S1', 'S2', 'S3', 'S4', 'S5' } })", 102,
                "Invalid config. Invalid slot labels appeared in groupView config."},
        Refusal{"TooManyColumns", "showGroupView(0, { input = { 'S1' }, column = 5 })", 103,
                "Invalid config. Input column exceeds slot number."},
        Refusal{"NegativeColumns", "showGroupView(0, { input = { 'S1' }, column = -1 })", 103,
                "Invalid config. Input column exceeds slot number."},
        Refusal{"SlotNamedTwice", "showGroupView(0, { input = { 'S1', 'S1' } })", 104,
                "Invalid config. Allow up to 12 input fields and no duplications."},
        Refusal{"TwoInputsOnSystem", "showView(3, { input = { 'A', 'B' } })", 105,
                "Invalid config. Allow 1 input field a time in split mode."},
        Refusal{"LengthAsLabel", "showView(3, { input = { 'length' } })", 405,
                "Invalid config. Label 'length' is reserved: the record of a panel needs it "
                "for itself."},
        Refusal{"ClickedButtonAsLabel", "showView(3, { input = { 'clickedButton' } })", 405,
                "Invalid config. Label 'clickedButton' is reserved: the record of a panel needs "
                "it for itself."},
        Refusal{"SharedInputAsSwitch", "showView(3, { switch = { 'SharedInput' } })", 405,
                "Invalid config. Label 'SharedInput' is reserved: the record of a panel needs it "
                "for itself."},
        Refusal{"SwitchIsNoArray", "showGroupView(0, { switch = 'S1' })", 0,
                "Invalid config. Value for key 'switch' is not array."},
        Refusal{"InputIsNoArray", "showGroupView(0, { input = 'S1' })", 0,
                "Invalid config. Value for key 'input' is not array."},
        Refusal{"SwitchIsCheckedFirst", "showView(1, { input = 1, switch = { a = 1 } })", 0,
                "Invalid config. Value for key 'switch' is not array."}),
    [](const auto &testCase) { return std::string(testCase.param.name); });

TEST(Refusal, ThirteenInputsAreOneTooMany)
{
    QStringList thirteen;
    for (int slot = 1; slot <= 13; ++slot)
        thirteen.append(QStringLiteral("S%1").arg(slot));
    StationRun station;
    station.slotNames(thirteen);
    station.perGroup(R"(
        local slots = {}
        for slot = 1, 13 do slots[slot] = "S" .. slot end
        local answer, problem = showGroupView(groupNumber, { input = slots, column = 4 })
        return answer == nil and problem.code == 104
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
}

TEST(Refusal, ARefusalOfOneGroupLeavesTheOtherWaiting)
{
    StationRun station;
    station.groups({"G1", "G2"}).slotNames({"S1", "S2"}).perGroup(R"(
        if groupNumber == 1 then
            local answer, problem = showGroupView(1, { input = { "nowhere" } })
            return answer == nil and problem.code == 101
        end
        local answer = showGroupView(0, { input = { "S1", "S2" } })
        return answer.S1 == "a" and answer.S2 == "b"
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.waitForPanel("G2", 30)
        operator.click("G1-SharedInput")
        operator.scan("a")
        operator.click({ panel = "G2", title = "OK" })
        operator.waitForPanelGone("G2", 30)
        operator.click("G1-SharedInput")
        operator.scan("b")
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
}

TEST(Refusal, AnEarlierCancelDoesNotKeepTheErrorPanelOpen)
{
    StationRun station;
    station.slotNames({"S1", "S2"}).perGroup(R"(
        assert(showGroupView(0, { label = "MAC", input = { "S1", "S2" }, length = 4 }) == nil)
        local answer, problem = showGroupView(0, { input = { "S1", "S1" } })
        return answer == nil and problem.code == 104
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.click({ panel = "G1", title = "Cancel" })
        operator.waitForPanelGone("G1", 30)
        operator.waitForPanel("G1", 30)
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
}

TEST(Refusal, ASystemBeyondTheStationIsRefusedAtOnceAndTold)
{
    StationRun station;
    station.perSystem(R"(
        local answer, problem = showView(99, { input = { "A", "B" } })
        return answer == nil and problem.code == 404 and problem.message:find("99", 1, true) ~= nil
    )");
    station.passes();
    EXPECT_TRUE(station.log().contains("system index 99 is beyond the station's systems"));
}

TEST(Refusal, AKeyThatIsNotKnownIsTakenForNoneAndNamedInTheLog)
{
    StationRun station;
    station.perSystem(R"(return showView(0, { lenght = 4, MESSAGE = "Is it lit?", button = { "OK" } }))");
    station.operatorDoes(R"(operator.waitForPanel("0", 30) operator.click({ panel = "0", title = "OK" }))");
    station.passes();
    EXPECT_TRUE(station.log().contains("key 'lenght' is not known; it is not used. Did you mean 'length'?"));
    EXPECT_TRUE(
        station.log().contains("key 'MESSAGE' is not known; it is not used. Did you mean 'message'?"));
}

} // namespace
