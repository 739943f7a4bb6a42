#include "tests/end_to_end/StationRun.h"

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

const QStringList TwoGroups{"G1", "G2"};
const QStringList FourSlots{"S1", "S2", "S3", "S4"};

/// Eight systems, each of which must get the number that was typed for it.
constexpr const char *AskForSerialNumber = R"(
    local answer, problem = showView(systemIndex, { input = { "SN" }, length = 8, button = { "Cancel", "OK" } })
    assert(problem == nil, "an error came with the answer")
    return answer.SN == string.format("SN%06d", systemIndex)
)";

class AnswerOrder : public ::testing::TestWithParam<const char *>
{};

TEST_P(AnswerOrder, EightParallelCallsGetWhatWasTypedForThem)
{
    StationRun station;
    station.groups(TwoGroups).slotNames(FourSlots).perSystem(AskForSerialNumber);
    station.operatorDoes(QStringLiteral(R"(
        for index = 0, 7 do operator.waitForPanel(tostring(index), 30) end
        for _, index in ipairs({ %1 }) do
            operator.click(index .. "-SN")
            operator.scan(string.format("SN%06d", index))
            operator.click({ panel = tostring(index), title = "OK" })
        end
    )")
                             .replace("%1", GetParam()));
    station.passes();
    for (int system = 0; system < 8; ++system) {
        EXPECT_EQ(station.outcome(system), "passed") << system;
        const QJsonObject answer = station.answer("showView", QString::number(system)).toObject();
        EXPECT_EQ(answer.value("SN").toString(), QStringLiteral("SN%1").arg(system, 6, 10, QLatin1Char('0')));
        EXPECT_EQ(answer.value("clickedButton").toString(), "Pass");
        EXPECT_FALSE(answer.contains("length"));
    }
}

INSTANTIATE_TEST_SUITE_P(Orders, AnswerOrder,
                         ::testing::Values("0, 1, 2, 3, 4, 5, 6, 7", "7, 6, 5, 4, 3, 2, 1, 0",
                                           "3, 6, 1, 4, 7, 2, 5, 0"));

TEST(ShowView, EntriesMayAllBeTypedBeforeTheFirstConfirmation)
{
    StationRun station;
    station.groups(TwoGroups).slotNames(FourSlots).perSystem(AskForSerialNumber);
    station.operatorDoes(R"(
        for index = 0, 7 do operator.waitForPanel(tostring(index), 30) end
        for index = 7, 0, -1 do
            operator.click(index .. "-SN")
            operator.scan(string.format("SN%06d", index))
        end
        for _, index in ipairs({ 5, 2, 0, 7, 1, 6, 3, 4 }) do
            operator.click({ panel = tostring(index), title = "OK" })
        end
    )");
    station.passes();
}

TEST(ShowView, AWrongLengthTurnsTheFieldRedAndItsTextIsReplacedByTheNextEntry)
{
    StationRun station;
    station.perSystem(R"(return showView(systemIndex, { input = { "SN" }, length = 4 }).SN == "1234")");
    station.operatorDoes(R"(
        operator.waitForPanel("0", 30)
        operator.scan("12345")
        local field = operator.tree("0-SN")
        expect(field.background.red == 1 and field.background.green == 0 and field.background.blue == 0, "red")
        expect(field.text == "12345" and field.focused, "the entry stays in the field, which keeps the focus")
        operator.type("1234")
        expect(operator.tree("0-SN").text == "1234", "the entry was selected and is replaced")
        operator.type("\n")
        expect(operator.tree("0-SN").background.green == 1, "white again")
        operator.click({ panel = "0", title = "OK" })
    )");
    station.passes();
}

TEST(ShowView, OkOnAWrongLengthKeepsTheCallWaiting)
{
    StationRun station;
    station.perSystem(R"(return showView(systemIndex, { input = { "SN" }, length = 4 }).SN == "1234")");
    station.operatorDoes(R"(
        operator.waitForPanel("0", 30)
        operator.type("123")
        operator.click({ panel = "0", title = "OK" })
        eventually(function() return logged("Invalid input: 0-SN = 123") end, "the refusal")
        expect(operator.tree("0-SN").background.green == 0, "red")
        operator.click("0-SN")
        operator.scan("1234")
        operator.click({ panel = "0", title = "OK" })
    )");
    station.passes();
    EXPECT_EQ(station.calls("showView", "0").size(), 1);
}

TEST(ShowView, AMissingEntryKeepsTheCallWaiting)
{
    StationRun station;
    station.perSystem(R"(return showView(systemIndex, { input = { "SN" }, length = 4 }).SN == "1234")");
    station.operatorDoes(R"(
        operator.waitForPanel("0", 30)
        operator.click({ panel = "0", title = "OK" })
        eventually(function() return operator.tree("0-SN").background.green == 0 end, "the red field")
        operator.scan("1234")
        operator.click({ panel = "0", title = "OK" })
    )");
    station.passes();
}

TEST(ShowView, ButtonsAloneGiveTrueForTheLastAndFalseForTheOthers)
{
    StationRun station;
    station.slotNames({"S1", "S2"});
    station.perSystem(R"(
        local answer, problem = showView(systemIndex, { button = { "Bad", "Good" } })
        assert(problem == nil and type(answer) == "boolean")
        return answer == (slotName == "S2")
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("0", 30)
        operator.waitForPanel("1", 30)
        operator.click({ panel = "0", title = "Bad" })
        operator.click({ panel = "1", title = "Good" })
    )");
    station.passes();
    EXPECT_EQ(station.answer("showView", "0"), QJsonValue(false));
    EXPECT_EQ(station.answer("showView", "1"), QJsonValue(true));
}

TEST(ShowView, CancelGivesNilAndNoError)
{
    StationRun station;
    station.slotNames({"S1", "S2"});
    station.perSystem(R"(
        local config = { button = { "Cancel", "OK" } }
        if slotName == "S1" then config.input = { "SN" } end
        local answer, problem = showView(systemIndex, config)
        return answer == nil and problem == nil
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("0", 30)
        operator.waitForPanel("1", 30)
        operator.click("0-SN")
        operator.scan("half done")
        operator.click({ panel = "0", title = "Cancel" })
        operator.click({ panel = "1", title = "Cancel" })
    )");
    station.passes();
    for (const char *system : {"0", "1"}) {
        EXPECT_TRUE(station.answer("showView", system).isNull());
        EXPECT_TRUE(station.calls("showView", system).first().value("error").isNull());
    }
}

TEST(ShowView, ClearEmptiesTheFieldAndKeepsTheCallWaiting)
{
    StationRun station;
    station.perSystem(R"(
        return showView(systemIndex, { input = { "SN" }, length = 4, button = { "Clear", "OK" } }).SN == "2222"
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("0", 30)
        operator.scan("1111")
        operator.click({ panel = "0", title = "Clear" })
        eventually(function() return operator.tree("0-SN").text == "" end, "the empty field")
        operator.scan("2222")
        operator.click({ panel = "0", title = "OK" })
    )");
    station.passes();
}

TEST(ShowView, SecondPressDuringConfirmationHarmsNothing)
{
    StationRun station;
    station.perSystem(R"(
        for round = 1, 40 do
            local name = "R" .. round
            local answer, problem = showView(systemIndex, { input = { name }, length = 4 })
            if problem or not answer or answer[name] ~= tostring(1000 + round) then
                return false
            end
        end
        return true
    )");
    station.operatorDoes(R"(
        for round = 1, 40 do
            local field = "0-R" .. round
            eventually(function() return operator.tree(field) ~= nil end, field)
            operator.click(field)
            operator.scan(tostring(1000 + round))
            operator.click({ panel = "0", title = "OK" })
            -- The panel may be gone already, or the next one be there: then its missing entry is refused.
            pcall(operator.click, { panel = "0", title = "OK" })
        end
    )");
    station.passes();
    EXPECT_EQ(station.calls("showView", "0").size(), 40);
}

TEST(ShowView, OneSystemIsAskedAgainAndAgain)
{
    StationRun station;
    station.slotNames({"S1", "S2"});
    station.perSystem(R"(
        local number = showView(systemIndex, { input = { "SN" }, length = 2 })
        local good = showView(systemIndex, { button = { "Bad", "Good" } })
        local note = showView(systemIndex, { input = { "Note" } })
        return number.SN == "1" .. systemIndex and good and note.Note == "n" .. systemIndex
    )");
    station.operatorDoes(R"(
        local function press(key, title)
            operator.click({ panel = key, title = title })
            operator.waitForPanelGone(key, 30)
        end
        operator.waitForPanel("0", 30)
        operator.waitForPanel("1", 30)
        for _, key in ipairs({ "1", "0" }) do
            operator.waitForPanel(key, 30)
            operator.click(key .. "-SN")
            operator.scan("1" .. key)
            press(key, "OK")
            operator.waitForPanel(key, 30)
            press(key, "Good")
            operator.waitForPanel(key, 30)
            operator.click(key .. "-Note")
            operator.scan("n" .. key)
            press(key, "OK")
        end
    )");
    station.passes();
}

} // namespace
