#include "tests/end_to_end/StationRun.h"

#include <QJsonArray>
#include <QSet>

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

const QStringList TwoSlots{"S1", "S2"};

/// Lets a sequence begin when the operator gives the sign: a number in the field "Loop:".
constexpr const char *AfterTheSign = "while getLoopConfig().LoopMax ~= 1 do sleep(0.01) end ";

/// The operator's part of it; the second call has come when its line is in the log.
constexpr const char *GiveTheSign = R"(
    operator.click("Loop")
    operator.scan("1")
    local function called(what) eventually(function() return logged(what) end, what) end
)";

/// Calls of one group's systems and of the group itself, made at the same time.
class MeetingCalls : public ::testing::Test
{
protected:
    StationRun station;
};

TEST_F(MeetingCalls, FourSystemsThatAreRefusedAtOnceAreAcknowledgedOneByOne)
{
    station.slotNames({"S1", "S2", "S3", "S4"}).perSystem(R"(
        local answer, problem = showView(systemIndex, { input = { "A", "B" } })
        return answer == nil and problem.code == 105
    )");
    station.operatorDoes(R"(
        for i = 1, 4 do
            operator.waitForPanel("G1", 30)
            operator.click({ panel = "G1", title = "OK" })
            operator.waitForPanelGone("G1", 30)
        end
    )");
    station.passes();
}

TEST_F(MeetingCalls, ARefusalBesideAnOpenGroupPanelEndsItsOwnCallAlone)
{
    station.slotNames(TwoSlots).perGroup(R"(
        local answer, problem = showGroupView(0, { input = { "S1", "S2" } })
        return problem == nil and answer.S1 == "a" and answer.S2 == "b"
    )");
    station.perStation(QLatin1String(AfterTheSign) + R"(
        local answer, problem = showView(1, { input = { "A", "B" }, title = "Wrong" })
        return answer == nil and problem.code == 105
    )");
    station.operatorDoes(QStringLiteral(R"(
        operator.waitForPanel("G1", 30)
        operator.scan("a")
        %1
        called("systemIndex: 1")
        expect(operator.tree("G1-S1").text == "a", "the group's panel stays")
        operator.scan("b")
        operator.click({ panel = "G1", title = "OK" })
        operator.waitForPanelGone("G1", 30)
        operator.waitForPanel("G1", 30)
        local saved = operator.property("savedData").G1
        operator.click({ panel = "G1", title = "OK" })
        operator.waitForPanelGone("G1", 30)
        local after = operator.property("savedData").G1
        expect(after.S1 == saved.S1 and after.S2 == saved.S2, "the acknowledgement leaves the record alone")
    )")
                             .arg(GiveTheSign));
    station.passes();
}

TEST_F(MeetingCalls, AGroupsPanelWaitsUntilTheSlotPanelsOfItsGroupAreAnswered)
{
    station.slotNames(TwoSlots).perSystem(
        R"(return showView(systemIndex, { input = { "SN" } }).SN == "n" .. systemIndex)");
    station.perStation(QLatin1String(AfterTheSign) + R"(
        local answer = showGroupView(0, { input = { "S1", "S2" } })
        return answer.S1 == "a" and answer.S2 == "b"
    )");
    station.operatorDoes(QStringLiteral(R"(
        operator.waitForPanel("0", 30)
        operator.waitForPanel("1", 30)
        %1
        called("systemIndex: (null")
        for _, key in ipairs({ "1", "0" }) do
            operator.click(key .. "-SN")
            operator.scan("n" .. key)
            operator.click({ panel = key, title = "OK" })
            operator.waitForPanelGone(key, 30)
        end
        operator.waitForPanel("G1", 30)
        operator.type("a\nb\n")
        operator.click({ panel = "G1", title = "OK" })
    )")
                             .arg(GiveTheSign));
    station.passes();
}

TEST_F(MeetingCalls, TwoCallsForOneGroupAtOnceAreAnsweredOneAfterTheOther)
{
    constexpr const char *Ask = R"(return showGroupView(groupNumber, { input = { "S1" } }).S1 ~= nil)";
    station.perGroup(Ask).perGroup(Ask).operatorDoes(R"(
        for _, text in ipairs({ "first", "second" }) do
            operator.waitForPanel("G1", 30)
            operator.scan(text)
            operator.click({ panel = "G1", title = "OK" })
            operator.waitForPanelGone("G1", 30)
        end
    )");
    station.passes();
    QSet<QString> answers;
    for (const QJsonObject &call : station.calls("showGroupView", "G1"))
        answers.insert(call.value("result").toObject().value("S1").toString());
    EXPECT_EQ(answers, (QSet<QString>{"first", "second"}));
}

TEST_F(MeetingCalls, OneThatQueuesShowsSoInTheTableUntilItsTurnComes)
{
    station.argument("--plugin").argument(QStringLiteral(FIXTURE_PLUGINS_PATH "/libTellsStatus.so"));
    station.slotNames(TwoSlots).perSystem(R"(
        if systemIndex == 0 then return showView(0, { button = { "No", "Yes" } }) end
        while rows()[1] ~= "[Waiting: the operator]" do sleep(0.01) end
        local answer, problem = showView(1, { input = { "A", "B" } })
        return problem.code == 105
    )");
    station.perStation(R"(
        while rows()[2] ~= "Waiting: its turn" do sleep(0.01) end
        setLoop(1)
        while rows()[2] ~= "[Waiting: the operator]" do sleep(0.01) end
        setLoop(0)
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("0", 30)
        eventually(function() return operator.tree("Loop").text == "1" end, "the row that waits for its turn")
        operator.click({ panel = "0", title = "Yes" })
        operator.waitForPanel("G1", 30)
        eventually(function() return operator.tree("Loop").text == "0" end, "the row of the refused call")
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
}

TEST_F(MeetingCalls, OneThatQueuesIsStoppedLikeOneThatIsShown)
{
    station.argument("--plugin").argument(QStringLiteral(FIXTURE_PLUGINS_PATH "/libTellsStatus.so"));
    station.argument("--plugin").argument(QStringLiteral(FIXTURE_PLUGINS_PATH "/libWindowEnds.so"));
    station.slotNames(TwoSlots).perSystem(R"(
        if systemIndex == 0 then showView(0, { button = { "No", "Yes" } }) end
        while rows()[1] ~= "[Waiting: the operator]" do sleep(0.01) end
        showView(1, { input = { "A", "B" } })
    )");
    station.perStation(R"(
        while rows()[2] ~= "Waiting: its turn" do sleep(0.01) end
        pressStop()
    )");
    station.run();
    EXPECT_EQ(station.status(), 1);
    for (const char *system : {"0", "1"}) {
        EXPECT_EQ(station.outcome(QLatin1String(system)), "stopped");
        const QList<QJsonObject> calls = station.calls("showView", QLatin1String(system));
        ASSERT_FALSE(calls.isEmpty()) << station.everything().toStdString();
        EXPECT_EQ(calls.first().value("error").toObject().value("code").toInt(), 401);
    }
}

TEST_F(MeetingCalls, AStoredAnswerIsGivenWhileAnotherCallOfThePanelWaits)
{
    station.perSystem(R"(
        setLoop(3)
        assert(showView(0, { input = { "SN" } }).SN == "unit")
        return showView(0, { input = { "MAC" } }).MAC == "address"
    )");
    station.perStation(R"(
        while getLoopConfig().LoopMax ~= 5 do sleep(0.01) end
        assert(showView(0, { input = { "SN" } }).SN == "unit")
        setLoop(6)
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("0", 30)
        operator.scan("unit")
        operator.click({ panel = "0", title = "OK" })
        eventually(function() return operator.tree("0-MAC") end, "the second question")
        operator.click("Loop")
        operator.scan("5")
        eventually(function() return operator.tree("Loop").text == "6" end, "the stored answer")
        expect(operator.tree("0-MAC").focused, "the open panel is as it was")
        operator.scan("address")
        operator.click({ panel = "0", title = "OK" })
    )");
    station.passes();
}

TEST_F(MeetingCalls, ASlotsPanelIsThereAgainWithItsGroupWhereAMessageWasHidden)
{
    station.groups({"G1", "G2"})
        .slotNames(TwoSlots)
        .perStation(QStringLiteral(R"(
        showGroupView(0, { message = "Load the fixture" })
        %1
        return showView(0, { input = { "SN" } }).SN == "unit"
    )")
                        .arg(AfterTheSign));
    station.operatorDoes(QStringLiteral(R"(
        eventually(function() return operator.tree("G1").class == "View" end, "the message")
        operator.click("G1")
        expect(operator.tree("G1").hidden, "the message is hidden")
        %1
        eventually(function() return operator.tree("0-SN") end, "the panel")
        operator.click("G1")
        operator.waitForPanel("0", 30)
        operator.click("0-SN")
        operator.scan("unit")
        operator.click({ panel = "0", title = "OK" })
    )")
                             .arg(GiveTheSign));
    station.passes();
}

} // namespace
