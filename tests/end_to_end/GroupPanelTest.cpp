#include "tests/end_to_end/StationRun.h"

#include <QJsonArray>

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

const QStringList FourSlots{"S1", "S2", "S3", "S4"};

/// Asks a group for four entries of two characters; its answer is looked at in the results.
constexpr const char *AskForFour = R"(
    local answer, problem = showGroupView(groupNumber, { input = { "S1", "S2", "S3", "S4" }, length = 2 })
    return answer ~= nil and problem == nil
)";

/// The entries of a group's answer, by slot: "S1=11 S2=12".
QString entriesOf(const StationRun &station, const char *group)
{
    const QJsonObject answer = station.answer("showGroupView", group).toObject();
    QStringList entries;
    for (const QString &slot : answer.keys()) {
        if (slot.startsWith(QLatin1Char('S')))
            entries.append(slot + QLatin1Char('=') + answer.value(slot).toString());
    }
    return entries.join(QLatin1Char(' '));
}

TEST(GroupPanel, ABurstOfTwelveEntriesLandsInTheOrderOfTheSlots)
{
    StationRun station;
    station.slotNames({"S01", "S02", "S03", "S04", "S05", "S06", "S07", "S08", "S09", "S10", "S11", "S12"});
    station.perGroup(R"(
        local answer = showGroupView(groupNumber, {
            input = { "S12", "S03", "S07", "S01", "S11", "S05", "S02", "S09", "S04", "S10", "S06", "S08" },
            length = 10, column = 4,
        })
        return answer ~= nil
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        local burst = ""
        for slot = 1, 12 do burst = burst .. string.format("UNIT%06d\n", slot) end
        operator.type(burst)
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
    const QJsonObject answer = station.answer("showGroupView", "G1").toObject();
    for (int slot = 1; slot <= 12; ++slot) {
        const QString name = QStringLiteral("S%1").arg(slot, 2, 10, QLatin1Char('0'));
        EXPECT_EQ(answer.value(name).toString(), QStringLiteral("UNIT%1").arg(slot, 6, 10, QLatin1Char('0')));
    }
}

TEST(GroupPanel, ADuplicateIsRefusedAndReplacedByTheNextEntry)
{
    StationRun station;
    station.slotNames(FourSlots).perGroup(AskForFour);
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.type("11\n11\n")
        local field = operator.tree("G1-SharedInput")
        expect(field.text == "11" and field.background.green == 0, "refused")
        expect(operator.tree("G1-S2").text == "", "S2 still waits")
        operator.type("12\n13\n11\n14\n")
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
    EXPECT_EQ(entriesOf(station, "G1"), "S1=11 S2=12 S3=13 S4=14");
    EXPECT_TRUE(station.log().contains("Duplicated input detected: S2 = 11"));
    EXPECT_TRUE(station.log().contains("Duplicated input detected: S4 = 11"));
}

TEST(GroupPanel, AWrongLengthIsRefusedAndReplacedByTheNextEntry)
{
    StationRun station;
    station.slotNames(FourSlots).perGroup(AskForFour);
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.type("11\n1\n12\n13\n1444\n14\n")
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
    EXPECT_EQ(entriesOf(station, "G1"), "S1=11 S2=12 S3=13 S4=14");
}

TEST(GroupPanel, ASlotInTheMiddleIsOpenedAgainAndRefilled)
{
    StationRun station;
    station.slotNames(FourSlots).perGroup(AskForFour);
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.type("11\n12\n13\n")
        operator.click({ panel = "G1", slot = "S2" })
        local field = operator.tree("G1-S2")
        expect(field.text == "" and field.background.alpha == 1, "opened again")
        operator.type("22\n14\n")
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
    EXPECT_EQ(entriesOf(station, "G1"), "S1=11 S2=22 S3=13 S4=14");
}

TEST(GroupPanel, ASlotThatHoldsNothingIsNotOpened)
{
    StationRun station;
    station.slotNames(FourSlots).perGroup(AskForFour);
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.type("11\n")
        operator.click({ panel = "G1", slot = "S3" })
        operator.type("12\n13\n14\n")
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
    EXPECT_EQ(entriesOf(station, "G1"), "S1=11 S2=12 S3=13 S4=14");
    EXPECT_TRUE(station.log().contains("G1, S3, no saved data, not enabling data modification"));
}

TEST(GroupPanel, ASlotSwitchedOffAndOnAgainIsAskedForAnew)
{
    StationRun station;
    station.slotNames(FourSlots).perGroup(AskForFour);
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.type("11\n12\n")
        operator.click({ panel = "G1", switch = "S2" })
        expect(operator.tree("G1-S2").text == "" and not operator.tree("G1-S2").enabled, "off and empty")
        operator.type("13\n")
        expect(operator.tree("G1-S3").text == "13", "the entry passes over the slot that is off")
        operator.click({ panel = "G1", switch = "S2" })
        operator.type("22\n14\n")
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
    EXPECT_EQ(entriesOf(station, "G1"), "S1=11 S2=22 S3=13 S4=14");
}

TEST(GroupPanel, ASlotThatStaysOffHasNoPartInTheAnswer)
{
    StationRun station;
    station.slotNames(FourSlots).perGroup(AskForFour);
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.click({ panel = "G1", switch = "S3" })
        operator.type("11\n12\n14\n")
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
    EXPECT_EQ(entriesOf(station, "G1"), "S1=11 S2=12 S4=14");
}

TEST(GroupPanel, OkBeforeTheLastEntryKeepsTheCallWaiting)
{
    StationRun station;
    station.slotNames(FourSlots).perGroup(AskForFour);
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.type("11\n12\n13\n")
        operator.click("Loop")
        operator.click({ panel = "G1", title = "OK" })
        eventually(function() return operator.tree("G1-SharedInput").focused end, "the focus in the shared field")
        operator.type("14\n")
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
    EXPECT_EQ(entriesOf(station, "G1"), "S1=11 S2=12 S3=13 S4=14");
}

TEST(GroupPanel, ClearEmptiesAllFieldsAndAScanFollowsWithoutAClick)
{
    StationRun station;
    station.slotNames(FourSlots).perGroup(AskForFour);
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.type("91\n92\n9")
        operator.click({ panel = "G1", title = "Clear" })
        -- The shared field is the last one to be emptied.
        eventually(function() return operator.tree("G1-SharedInput").text == "" end, "the empty fields")
        expect(operator.tree("G1-S1").text == "" and operator.tree("G1-S2").text == "", "all are empty")
        expect(operator.tree("G1-S1").focused, "the first slot's field has the focus")
        operator.type("11\n12\n13\n14\n")
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
    EXPECT_EQ(entriesOf(station, "G1"), "S1=11 S2=12 S3=13 S4=14");
}

TEST(GroupPanel, CancelGivesNilAndNoError)
{
    StationRun station;
    station.slotNames(FourSlots).perGroup(R"(
        local answer, problem = showGroupView(groupNumber, { input = { "S1", "S2" } })
        return answer == nil and problem == nil
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.type("some\n")
        operator.click({ panel = "G1", title = "Cancel" })
    )");
    station.passes();
    EXPECT_TRUE(station.answer("showGroupView", "G1").isNull());
}

TEST(GroupPanel, TwoGroupsAreAnsweredInterleaved)
{
    StationRun station;
    station.groups({"G1", "G2"}).slotNames(FourSlots).perGroup(AskForFour);
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.waitForPanel("G2", 30)
        for slot = 1, 4 do
            -- The same number may stand in two groups.
            for group = 1, 2 do
                operator.click("G" .. group .. "-SharedInput")
                operator.scan("1" .. slot)
            end
        end
        operator.click({ panel = "G2", title = "OK" })
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
    EXPECT_EQ(entriesOf(station, "G1"), "S1=11 S2=12 S3=13 S4=14");
    EXPECT_EQ(entriesOf(station, "G2"), "S1=11 S2=12 S3=13 S4=14");
}

TEST(GroupPanel, AMessageIsAnsweredAtOnceAndStaysUp)
{
    StationRun station;
    station.groups({"G1", "G2"}).perStation(R"(
        local answer, problem = showGroupView(0, { message = "Warming up" })
        assert(type(answer) == "table" and next(answer) == nil and problem == nil)
        return showGroupView(1, { button = { "Go on" } })
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("G2", 30)
        -- The call about the message has returned long since.
        local panel = operator.tree("G1")
        local texts = {}
        for _, child in ipairs(panel.children) do texts[child.text or ""] = true end
        expect(not panel.hidden and texts["Warming up"], "the message stays up")
        operator.click({ panel = "G2", title = "Go on" })
    )");
    station.passes();
    const QJsonValue answer = station.calls("showGroupView", "").first().value("result");
    EXPECT_TRUE(answer.toObject().isEmpty() && answer.toArray().isEmpty() && !answer.isNull());
}

TEST(GroupPanel, EachGroupPanelKeepsItsOwnAnswerOverManyRounds)
{
    StationRun station;
    station.groups({"G1", "G2"}).slotNames({"S1", "S2"}).perGroup(R"(
        for round = 1, 10 do
            local answer = showGroupView(groupNumber, { input = { "S1", "S2" }, length = 4 })
            local wanted = groupName .. string.format("%02d", round)
            if not answer or answer.S1 ~= wanted or answer.S2 ~= wanted:lower() then
                return false
            end
        end
        return true
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.waitForPanel("G2", 30)
        for round = 1, 10 do
            for _, key in ipairs(round % 2 == 0 and { "G1", "G2" } or { "G2", "G1" }) do
                operator.click(key .. "-SharedInput")
                local text = key .. string.format("%02d", round)
                operator.type(text .. "\n" .. text:lower() .. "\n")
                operator.click({ panel = key, title = "OK" })
                operator.waitForPanelGone(key, 30)
                -- A panel takes the focus when it opens; what is typed into the other one waits for that.
                if round < 10 then operator.waitForPanel(key, 30) end
            end
        end
    )");
    station.passes();
}

} // namespace
