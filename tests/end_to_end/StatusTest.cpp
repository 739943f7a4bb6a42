#include "tests/end_to_end/StationRun.h"

#include <QJsonArray>
#include <QProcess>

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

/// A station with a second plug-in, whose functions say what the window shows.
StationRun &withTells(StationRun &station)
{
    return station.argument("--plugin").argument(QStringLiteral(FIXTURE_PLUGINS_PATH "/libTellsStatus.so"));
}

QStringList texts(const QJsonValue &array)
{
    QStringList found;
    for (const QJsonValue &value : array.toArray())
        found.append(value.toString());
    return found;
}

/// Lua for the station's own sequence: goes on when the results tell that both others have ended.
QString whenBothHaveEnded(const StationRun &station)
{
    return QStringLiteral(R"(
        local function endedCount()
            local file, count = assert(io.open("%1")), 0
            for line in file:lines() do count = count + (line:find('"outcome"', 1, true) and 1 or 0) end
            file:close()
            return count
        end
        while endedCount() < 2 do sleep(0.01) end
    )")
        .arg(station.path("results.jsonl"));
}

TEST(Status, ACallThatWaitsForItsTurnShowsSoInItsSystemsRow)
{
    StationRun station;
    withTells(station).slotNames({"S1", "S2"}).perSystem(R"(
        if systemIndex == 0 then return true end
        rowsWhileWaiting({ what = "its turn", systems = { 1 } })
    )");
    station.passes();
    EXPECT_EQ(texts(station.answer("rowsWhileWaiting", "1")).value(1), "Waiting: its turn");
}

TEST(Status, EveryRowOfAGroupIsFramedWhileItsPanelWaitsForTheOperator)
{
    StationRun station;
    withTells(station).groups({"G1", "G2"}).slotNames({"S1", "S2"}).perStation(R"(
        rowsWhileWaiting({ what = "the operator", systems = { 2, 3 } })
        rows()
    )");
    station.passes();
    EXPECT_EQ(texts(station.answer("rowsWhileWaiting", "")),
              (QStringList{"Waiting: the operator", "Waiting: the operator", "[Waiting: the operator]",
                           "[Waiting: the operator]"}));
    EXPECT_EQ(texts(station.answer("rows", "")), (QStringList(4, "Running")));
}

TEST(Status, ASystemRunsUntilTheLastOfItsSequencesHasEnded)
{
    StationRun station;
    withTells(station).slotNames({"S1", "S2"}).perSystem("return systemIndex == 1");
    station.perStation(whenBothHaveEnded(station) + "rows()");
    station.run();
    EXPECT_EQ(texts(station.answer("rows", "")), (QStringList(2, "Running")));
    EXPECT_EQ(station.status(), 1);
}

TEST(Status, ARowTellsScriptAnswerAndTimeOfItsSystem)
{
    StationRun station;
    withTells(station).slotNames({"S1", "S2"}).sequence("group", R"(
        showView(1, { input = { "SN" }, button = { "Cancel", "OK" } })
        cells(1)
        cells(0)
        showGroupView(0, { input = { "S1" }, switch = { "S1" } })
        cells(0)
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("1", 30)
        operator.click("1-SN")
        operator.scan("SN260001")
        operator.click({ panel = "1", title = "OK" })
        operator.waitForPanel("G1", 30)
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.run();
    const QList<QJsonObject> calls = station.calls("cells", "G1");
    ASSERT_EQ(calls.size(), 3) << station.everything().toStdString();
    const QJsonObject asked = calls.at(0).value("result").toObject();
    EXPECT_EQ(asked.value("Slot").toString(), "S2");
    EXPECT_EQ(asked.value("State").toString(), "Running");
    EXPECT_EQ(asked.value("Last answer").toString(), QStringLiteral("SN260001 · Pass"));
    EXPECT_TRUE(asked.value("Sequence").toString().endsWith(".lua"));
    EXPECT_TRUE(asked.value("Time").toString().startsWith("0:"))
        << asked.value("Time").toString().toStdString();
    EXPECT_EQ(calls.at(1).value("result").toObject().value("Last answer").toString(), "");
    EXPECT_TRUE(calls.at(2).value("result").toObject().value("Last answer").toString().startsWith("Error "));
}

TEST(Status, TheProgressCountsSystemsAndPasses)
{
    StationRun station;
    withTells(station).slotNames({"S1", "S2"}).perSystem("return true");
    station.perStation(whenBothHaveEnded(station) + R"(
        setLoop(3)
        isLoopFinished(0)
        progress()
    )");
    station.passes();
    // The station's own sequence speaks for all systems, and is not over.
    EXPECT_EQ(station.answer("progress", "").toString(), QStringLiteral("0 of 2 systems done · pass 2 of 3"));
}

TEST(Status, ALineForTheOperatorIsShownInTheStatusBar)
{
    StationRun station;
    withTells(station).perStation(
        R"(return barAfterSaying({ text = "No field waits" }) == "No field waits")");
    station.passes();
}

TEST(Status, AStationThatIsBusyWithShortCallsIsNotTakenForOneThatWaits)
{
    StationRun station;
    // Longer than a wait may take; all but a moment of it is spent inside of calls.
    withTells(station).perStation("for i = 1, 140 do takeMilliseconds(50) end return true");
    station.passes();
}

TEST(Status, ARunWithNobodyToRunForHasNotPassed)
{
    StationRun station;
    station.file("ask.lua", "return true");
    station.config("[station]\nsystem_groups = []\nsystem_slots = []\n"
                   "[[sequence]]\nscript = 'ask.lua'\n[[sequence]]\nscript = 'ask.lua'\nper = 'group'\n");
    station.run();
    EXPECT_EQ(station.status(), 1);
    EXPECT_EQ(station.errorLine(), "station: nothing has run: no sequence has a system or group to run for");
    EXPECT_EQ(station.results().size(), 1);
}

TEST(Status, AStationWithoutSystemsMayRunASequenceOfItsOwn)
{
    StationRun station;
    station.groups({}).slotNames({}).perStation("return true").passes();
}

TEST(Results, ARunIsAddedBehindTheFormerOnes)
{
    StationRun station;
    station.file("results.jsonl", "{\"earlier\":1}\n");
    station.perSystem("return true").passes();
    const QList<QJsonObject> lines = station.results();
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines.at(0), (QJsonObject{{"earlier", 1}}));
    EXPECT_EQ(lines.at(1).value("station").toString(), "Test station");
    EXPECT_EQ(lines.at(1).value("configuration").toString(), station.path("station.toml"));
    EXPECT_EQ(lines.at(2).value("run"), lines.at(1).value("run"));
}

TEST(Results, ASecondStationDoesNotStartAndTheFirstGoesOn)
{
    StationRun first;
    first.perSystem("showView(systemIndex, { button = { 'No', 'Yes' } })");
    first.operatorDoes(QStringLiteral("operator.waitForPanel('0', 30) local file "
                                      "repeat file = io.open('%1') operator.sleep(0.01) until file "
                                      "operator.click({ panel = '0', title = 'Yes' })")
                           .arg(first.path("go")));
    first.start();
    // When the line of the run is there, the first station has the file.
    while (first.results().isEmpty() && first.process().state() == QProcess::Running)
        first.process().waitForReadyRead(10);
    StationRun second;
    second.perSystem("return true").argument("--results").argument(first.path("results.jsonl")).run();
    EXPECT_EQ(second.status(), 2);
    EXPECT_EQ(second.errorLine(), QStringLiteral("station: --results: %1: another station writes to it")
                                      .arg(first.path("results.jsonl")));
    first.file("go", "");
    first.finish();
    EXPECT_EQ(first.status(), 0) << first.everything().toStdString();
    EXPECT_EQ(first.results().size(), 3);
}

TEST(Results, AFileThatIsRemovedWhileTheStationRunsIsThereAgainAtItsEnd)
{
    StationRun station;
    station.perSystem(QStringLiteral("return os.remove('%1')").arg(station.path("results.jsonl"))).passes();
    EXPECT_EQ(station.errors(), "");
    EXPECT_EQ(station.results().size(), 2) << "the run and the sequence's end";
    EXPECT_EQ(station.outcome(0), "passed");
}

TEST(Plugins, OneThatIsNamedTwiceIsRefused)
{
    StationRun station;
    station.perSystem("return true").argument("--plugin").argument(QStringLiteral(PLUGIN_PATH)).run();
    EXPECT_EQ(station.status(), 2);
    EXPECT_EQ(station.errorLine(), QStringLiteral("station: plug-in %1: is named twice").arg(PLUGIN_PATH));
}

} // namespace
