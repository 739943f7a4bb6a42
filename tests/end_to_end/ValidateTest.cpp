#include "tests/end_to_end/StationRun.h"

#include <QJsonArray>

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

/// Fifty positions.
StationRun &prepareFifty(StationRun &station)
{
    QStringList groups;
    for (int group = 1; group <= 10; ++group)
        groups.append(QStringLiteral("G%1").arg(group));
    return station.groups(groups).slotNames({"S1", "S2", "S3", "S4", "S5"});
}

TEST(Validate, FiftyCallsAtOnceKeepTheirEntriesApart)
{
    StationRun station;
    prepareFifty(station)
        .perSystem(R"(
            local function check(text, slot)
                if text ~= "n" .. systemIndex or slot ~= "SN" then
                    return false, "it is not for system " .. systemIndex
                end
                return true
            end
            return showView(systemIndex, { input = { "SN" }, validate = check }).SN == "n" .. systemIndex
        )")
        .operatorDoes(R"(
            for index = 0, 49 do operator.waitForPanel(tostring(index), 60) end
            for index = 0, 49 do
                local key = tostring(index)
                operator.click(key .. "-SN")
                operator.scan("n" .. key)
                operator.click({ panel = key, title = "OK" })
            end
            for index = 0, 49 do operator.waitForPanelGone(tostring(index), 60) end
        )")
        .passes();
}

TEST(Validate, AStopWhileFiftyFunctionsRunStopsAllOfThem)
{
    StationRun station;
    prepareFifty(station)
        .argument("--plugin")
        .argument(QStringLiteral(FIXTURE_PLUGINS_PATH "/libWindowEnds.so"));
    // Each runs for ever: only the stop ends them. Half of them sleep, half of them compute.
    station.perSystem(R"(
        local function check()
            shared.update("running", function(count) return (count or 0) + 1 end)
            while true do
                if systemIndex % 2 == 0 then sleep(60) end
            end
        end
        showView(systemIndex, { input = { "SN" }, validate = check })
    )");
    station.perStation("while (shared.running or 0) < 50 do sleep(0.02) end closeWindow()");
    station.operatorDoes(R"(
        for index = 0, 49 do operator.waitForPanel(tostring(index), 60) end
        for index = 0, 49 do
            operator.click(index .. "-SN")
            operator.scan("n" .. index)
        end
    )");
    station.run();
    for (int system = 0; system < 50; ++system)
        EXPECT_EQ(station.outcome(system), "stopped") << station.everything().toStdString();
}

TEST(Validate, AnErrorInItEndsTheSequenceWithItsTraceback)
{
    StationRun station;
    station.perSystem("local function check(text) error('no line') end\n"
                      "showView(systemIndex, { input = { 'SN' }, validate = check })");
    station.operatorDoes("operator.waitForPanel('0', 30) operator.scan('A') "
                         "operator.waitForPanelGone('0', 30)");
    station.run();
    EXPECT_EQ(station.outcome(0), "erred") << station.everything().toStdString();
    const QString message = station.end("0").value("message").toString();
    EXPECT_TRUE(message.contains("no line")) << message.toStdString();
    EXPECT_TRUE(message.contains("stack traceback:")) << message.toStdString();
    const QList<QJsonObject> calls = station.calls("showView", "0");
    ASSERT_EQ(calls.size(), 1);
    EXPECT_TRUE(calls.first().value("error").toObject().value("message").toString().contains("no line"));
}

TEST(Validate, AFunctionUnderAnotherKeyIsRefusedAsBefore)
{
    StationRun station;
    station.perSystem("local ok, why = pcall(showView, systemIndex, { input = { 'SN' }, hint = print }) "
                      "log(why) return not ok and why:find('hint is a function, which cannot be passed on', "
                      "1, true) ~= nil");
    station.run();
    EXPECT_EQ(station.outcome(0), "passed") << station.everything().toStdString();
}

TEST(TimeLimit, TheResultsKeepTheEntriesOfACallWhoseTimeIsOver)
{
    StationRun station;
    station.perSystem("local answer, problem = showView(systemIndex, { input = { 'SN' }, timeLimit = 0.2 }) "
                      "return answer == nil and problem.code == 406 and next(problem.answer) == nil");
    station.run();
    EXPECT_EQ(station.outcome(0), "passed") << station.everything().toStdString();
    const QJsonObject error = station.calls("showView", "0").first().value("error").toObject();
    EXPECT_EQ(error.value("code").toInt(), 406);
    EXPECT_TRUE(error.contains("answer"));
    EXPECT_TRUE(error.value("answer").toObject().isEmpty());
}

} // namespace
