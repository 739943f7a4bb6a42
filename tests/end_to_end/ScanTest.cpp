#include "tests/end_to_end/StationRun.h"

#include <QSet>

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

const QStringList FourSlots{"S1", "S2", "S3", "S4"};
constexpr const char *AskForUnit = R"(return showView(systemIndex, { input = { "SN" } }).SN ~= nil)";

/// Where the scans of the one scanner go.
class Scan : public ::testing::Test
{
protected:
    StationRun station;
};

TEST_F(Scan, BeforeTheFirstPanelIsRefusedAndSetsNoLoop)
{
    station.argument("--plugin").argument(QStringLiteral(FIXTURE_PLUGINS_PATH "/libTellsStatus.so"));
    station.perSystem(QStringLiteral(R"(
        while not io.open("%1") do sleep(0.01) end
        assert(bar() == "Entry refused: 20230001 (no field waits for it" .. string.char(41), bar())
        assert(next(getLoopConfig()) == nil, "no loop was set")
        return showView(0, { input = { "SN" } }).SN == "unit"
    )")
                          .arg(station.path("scanned")));
    station.operatorDoes(QStringLiteral(R"(
        operator.scan("20230001")
        expect(operator.tree("Loop").text == "0", "the loop's field is as it was")
        expect(logged("Entry refused: 20230001 (no field waits for it"), "it is refused")
        io.open("%1", "w"):close()
        operator.waitForPanel("0", 30)
        operator.scan("unit")
        operator.click({ panel = "0", title = "OK" })
    )")
                             .arg(station.path("scanned")));
    station.passes();
}

TEST_F(Scan, EightInARowFillEightOpenPanels)
{
    station.groups({"G1", "G2"}).slotNames(FourSlots).perSystem(AskForUnit).operatorDoes(R"(
        for index = 0, 7 do operator.waitForPanel(tostring(index), 30) end
        for unit = 0, 7 do operator.scan("U" .. unit) end
        for index = 0, 7 do operator.click({ panel = tostring(index), title = "OK" }) end
    )");
    station.passes();
    QSet<QString> answers;
    for (int system = 0; system < 8; ++system)
        answers.insert(station.answer("showView", QString::number(system)).toObject().value("SN").toString());
    EXPECT_EQ(answers, (QSet<QString>{"U0", "U1", "U2", "U3", "U4", "U5", "U6", "U7"}));
}

TEST_F(Scan, RightBehindClearComesAfterTheClearing)
{
    station.perGroup(R"(return showGroupView(groupNumber, { input = { "S1" } }).S1 == "new")");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        for i = 1, 20 do
            operator.scan("old")
            operator.click({ panel = "G1", title = "Clear" })
            operator.scan("new")
            eventually(function() return operator.tree("G1-S1").text == "new" end, "scan " .. i)
            expect(operator.property("savedData").G1.S1 == "new", "what is seen is stored")
            if i < 20 then
                operator.click({ panel = "G1", title = "Clear" })
                eventually(function() return operator.tree("G1-S1").text == "" end, "clearing " .. i)
            end
        end
        operator.click({ panel = "G1", title = "OK" })
    )");
    station.passes();
}

TEST_F(Scan, RightBehindOkGoesToThePanelThatWaits)
{
    station.slotNames({"S1", "S2"}).perSystem(AskForUnit).operatorDoes(R"(
        operator.waitForPanel("0", 30)
        operator.waitForPanel("1", 30)
        operator.click("0-SN")
        operator.type("first")
        operator.click({ panel = "0", title = "OK" })
        operator.scan("second")
        operator.waitForPanelGone("0", 30)
        eventually(function() return operator.tree("1-SN").text == "second" end, "the second scan")
        operator.click({ panel = "1", title = "OK" })
    )");
    station.passes();
    EXPECT_EQ(station.answer("showView", "0").toObject().value("SN").toString(), "first");
    EXPECT_EQ(station.answer("showView", "1").toObject().value("SN").toString(), "second");
}

TEST_F(Scan, KeepsTheGroupSeparatorsOfItsCode)
{
    station.perSystem(AskForUnit).operatorDoes(R"(
        operator.waitForPanel("0", 30)
        operator.scan("0104\x1d10ABC")
        expect(operator.tree("0-SN").text:find("0104", 1, true), "the entry is seen")
        operator.click({ panel = "0", title = "OK" })
    )");
    station.passes();
    EXPECT_EQ(station.answer("showView", "0").toObject().value("SN").toString(),
              QStringLiteral("0104\u001d10ABC"));
}

TEST_F(Scan, OfMoreThanAFieldTakesIsRefusedWhole)
{
    station.perSystem(AskForUnit).operatorDoes(R"(
        operator.waitForPanel("0", 30)
        operator.scan(string.rep("x", 4097))
        eventually(function() return logged("Entry refused: xxx") end, "the refusal")
        expect(operator.property("savedData")["0"].SN == nil, "nothing of it is stored")
        operator.scan(string.rep("y", 4096))
        operator.click({ panel = "0", title = "OK" })
    )");
    station.passes();
    EXPECT_EQ(station.answer("showView", "0").toObject().value("SN").toString(), QString(4096, 'y'));
}

TEST_F(Scan, ThatHasBegunIsNotTornByAPanelThatOpens)
{
    station.slotNames({"S1", "S2"})
        .perSystem(QStringLiteral(R"(
        while systemIndex == 1 and not io.open("%1") do sleep(0.01) end
        %2
    )")
                       .arg(station.path("begun"), AskForUnit));
    station.operatorDoes(QStringLiteral(R"(
        operator.waitForPanel("0", 30)
        operator.type("AB")
        io.open("%1", "w"):close()
        operator.waitForPanel("1", 30)
        operator.scan("CD")
        expect(operator.tree("0-SN").text == "ABCD", "one entry in one field")
        expect(operator.tree("1-SN").focused, "then the focus goes on")
        operator.scan("EF")
        operator.click({ panel = "0", title = "OK" })
        operator.click({ panel = "1", title = "OK" })
    )")
                             .arg(station.path("begun")));
    station.passes();
    EXPECT_EQ(station.answer("showView", "0").toObject().value("SN").toString(), "ABCD");
    EXPECT_EQ(station.answer("showView", "1").toObject().value("SN").toString(), "EF");
}

} // namespace
