#include "tests/end_to_end/StationRun.h"

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

TEST(LoopQuestion, EachHasItsOwnAnswerWhateverIsAskedInBetween)
{
    StationRun station;
    station.perSystem(R"(
        setLoop(2)
        for pass = 1, 2 do
            assert(showView(0, { input = { "SN" } }).SN == "unit", "the unit in pass " .. pass)
            assert(showView(0, { button = { "No", "Yes" } }) == true)
            assert(showView(0, { input = { "MAC" } }).MAC == "address", "the address in pass " .. pass)
        end
        return true
    )");
    station.operatorDoes(R"(
        local function answer(field, text)
            eventually(function() return operator.tree(field) end, field)
            operator.scan(text)
            operator.click({ panel = "0", title = "OK" })
            operator.waitForPanelGone("0", 30)
        end
        local function confirm()
            operator.waitForPanel("0", 30)
            operator.click({ panel = "0", title = "Yes" })
            operator.waitForPanelGone("0", 30)
        end
        answer("0-SN", "unit")
        confirm()
        answer("0-MAC", "address")
        confirm()
    )");
    station.passes();
    EXPECT_EQ(station.calls("showView", "0").size(), 6);
}

TEST(LoopQuestion, AnAcknowledgedErrorIsTheAnswerToNone)
{
    StationRun station;
    station.slotNames({"S1", "S2"}).perGroup(R"(
        setLoop(2)
        local answer, problem = showGroupView(0, { input = { "S1", "S9" } })
        assert(answer == nil and problem.code == 101)
        return showGroupView(0, { input = { "S1" } }).S1 == "unit"
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.click({ panel = "G1", title = "OK" })
        operator.waitForPanelGone("G1", 30)
        operator.waitForPanel("G1", 30)
        operator.scan("unit")
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
}

TEST(LoopQuestion, TheNextUnitIsAskedForAfterTheLastPass)
{
    StationRun station;
    station.perSystem(R"(
        setLoop(2)
        for unit = 1, 2 do
            repeat
                assert(showView(0, { input = { "SN" } }).SN == "unit " .. unit)
            until isLoopFinished(0) == 1
        end
        return true
    )");
    station.operatorDoes(R"(
        for unit = 1, 2 do
            operator.waitForPanel("0", 30)
            operator.scan("unit " .. unit)
            operator.click({ panel = "0", title = "OK" })
            operator.waitForPanelGone("0", 30)
        end
    )");
    station.passes();
}

TEST(LoopQuestion, ASecondRunOfTheStationBeginsWithoutAnswers)
{
    StationRun station;
    station.argument("--plugin").argument(QStringLiteral(FIXTURE_PLUGINS_PATH "/libWindowEnds.so"));
    station.perSystem(QStringLiteral(R"(
        setLoop(5)
        if not io.open("%1") then
            assert(showView(0, { input = { "SN" } }).SN == "first")
            assert(showView(0, { input = { "SN" } }).SN == "first", "the second pass")
            io.open("%1", "w"):close()
            runAgain()
            sleep(3600)
        end
        return showView(0, { input = { "SN" } }).SN == "second"
    )")
                          .arg(station.path("second")));
    station.operatorDoes(R"(
        for _, text in ipairs({ "first", "second" }) do
            operator.waitForPanel("0", 30)
            operator.scan(text)
            operator.click({ panel = "0", title = "OK" })
            operator.waitForPanelGone("0", 30)
        end
    )");
    station.run();
    QStringList outcomes;
    for (const QJsonObject &line : station.results()) {
        if (line.contains("outcome"))
            outcomes.append(line.value("outcome").toString());
    }
    EXPECT_EQ(outcomes, (QStringList{"stopped", "passed"})) << station.everything().toStdString();
    EXPECT_EQ(station.errors(), "");
}

} // namespace
