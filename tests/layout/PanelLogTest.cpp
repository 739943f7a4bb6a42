#include "platform/ScrollView.h"
#include "tests/support/PanelFixture.h"

using platform::Array;
using platform::Dictionary;
using testsupport::drawJob;

namespace {

/// What drawing a panel tells the log, whole and in both places.
class PanelLogTest : public testsupport::PanelFixture
{};

TEST_F(PanelLogTest, DrawingAGroupPanelLogsWhatItStartsFrom)
{
    showGroup(0, {{"input", Array{"S1"}}, {"length", 8}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_TRUE(
        loggedOnce(KVKLogLevel::Default,
                   "Entered: " + drawJob +
                       ", viewIdentifier: G1. group: G1, slot: (null), enabled: {S1 = 1; S2 = 1; S3 = 1; "
                       "S4 = 1}, data:{G1 = {length = 8}}"));
}

TEST_F(PanelLogTest, DrawingASlotPanelLogsWhatItStartsFrom)
{
    drawSlot(5, {{"input", Array{"SN"}}});
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default,
                           "Entered: " + drawJob +
                               ", viewIdentifier: 5. group: G2, slot: S2, enabled: (null), data:{}"));
}

TEST_F(PanelLogTest, ThePlaceOfThePanelIsLogged)
{
    drawGroup(0, {{"input", Array{"S1"}}, {"column", 3}});
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Debug,
                           drawJob + ": columns: 3, subViewY: 0.000000, rows: 2. collections: {}"));
    drawSlot(5, {{"input", Array{"SN"}}, {"column", 4}});
    EXPECT_TRUE(loggedOnce(
        KVKLogLevel::Debug,
        drawJob + ": columns: 4, subViewY: 236.000000, rows: 1. collections: {G1 = <CollectionView: "
                  "(null)>}"));
}

TEST_F(PanelLogTest, TheSizeOfTheDocumentIsLoggedWhenAnOverviewIsBuilt)
{
    drawSlot(5, {{"input", Array{"SN"}}, {"column", 1}});
    // Two groups of four rows are higher than the window.
    const QString line = drawJob + ": 5 scrollContentFrame: (0.000000, %1), (1280.000000, 912.000000)";
    const double y = scrollView()->documentView()->frame().y();
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Debug, line.arg(QString::number(y, 'f', 6))));
    drawSlot(6, {{"input", Array{"SN"}}});
    EXPECT_EQ(timesLoggedFrom(drawJob + ": 6 scrollContentFrame"), 0);
}

TEST_F(PanelLogTest, EveryBoxOfAGroupPanelIsLogged)
{
    drawGroup(1, {{"input", Array{"S3", "S1"}}});
    for (int i = 0; i < 4; ++i) {
        const QString slot = "S" + QString::number(i + 1);
        EXPECT_TRUE(loggedOnce(KVKLogLevel::Default,
                               drawJob + ": start to draw view: G2. systemIndex: " + QString::number(4 + i)));
        EXPECT_TRUE(
            loggedOnce(KVKLogLevel::Debug, drawJob + ", currentSlot: " + slot + ", inputFields: (S3, S1)"));
        EXPECT_TRUE(loggedOnce(KVKLogLevel::Debug,
                               "group: G2, slot: " + slot +
                                   ", box frame size: 0.000000, 0.000000, 250.000000, 64.000000"));
    }
}

TEST_F(PanelLogTest, OnlyTheOwnBoxOfASlotPanelIsLogged)
{
    drawSlot(5, {{"input", Array{"SN"}}});
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default, drawJob + ": start to draw view: 5. systemIndex: 5"));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Debug, drawJob + ", currentSlot: S2, inputFields: (SN)"));
    EXPECT_TRUE(
        loggedOnce(KVKLogLevel::Debug,
                   "group: G2, slot: S2, box frame size: 0.000000, 0.000000, 250.000000, 110.000000"));
    EXPECT_EQ(timesLoggedFrom(drawJob + ": start to draw view"), 1);
    EXPECT_EQ(timesLoggedFrom("group: "), 1);
}

TEST_F(PanelLogTest, AnEmptyListOfInputsIsLoggedAsOne)
{
    drawSlot(5, {{"button", Array{"Yes"}}});
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Debug, drawJob + ", currentSlot: S2, inputFields: ()"));
}

TEST_F(PanelLogTest, EveryTileLogsTheSystemThatItRepresents)
{
    drawSlot(5, {{"input", Array{"SN"}}});
    for (int system = 4; system < 8; ++system)
        EXPECT_TRUE(
            loggedOnce(KVKLogLevel::Debug, "representedObject {index = " + QString::number(system) + '}'));
}

TEST_F(PanelLogTest, TheFormerPanelIsLoggedWhenItGoes)
{
    drawGroup(0, {{"message", "Load"}});
    drawGroup(0, {{"message", "Done"}});
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default,
                           "G1 removed with subViews (<TextField: (null)>, <TextField: (null)>)"));
}

} // namespace
