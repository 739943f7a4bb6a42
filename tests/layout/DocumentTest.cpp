#include "platform/ScrollView.h"
#include "plugin/Rooms.h"
#include "tests/support/PanelFixture.h"

#include <QScrollBar>

using platform::Array;
using platform::Dictionary;
using testsupport::inWords;

namespace {

Dictionary entryIn(int columns)
{
    return {{"input", Array{"SN"}}, {"column", columns}};
}

/// The document of the outer scroll view, which grows with the panels.
class DocumentTest : public testsupport::PanelFixture
{
protected:
    platform::Size documentSize() { return scrollView()->documentView()->frame().size(); }
    double visibleTop()
    {
        const platform::Rect seen = scrollView()->documentVisibleRect();
        return seen.y() + seen.height();
    }
    /// Where the knob of a scroller stands, from its beginning.
    int knob(Qt::Orientation orientation)
    {
        for (const QScrollBar *each : scrollView()->findChildren<QScrollBar *>()) {
            if (each->parent() == scrollView() && each->orientation() == orientation)
                return each->value() - each->minimum();
        }
        return -1;
    }
};

TEST_F(DocumentTest, TheDocumentHasRoomForTheBandOfEveryGroup)
{
    station.groups = {"G1", "G2", "G3"};
    drawSlot(0, entryIn(1));
    EXPECT_EQ(documentSize().height(), 3 * 456.0);
    EXPECT_EQ(documentSize().width(), 1280.0);
}

TEST_F(DocumentTest, TheDocumentIsAsWideAsTheColumnsOfAPanel)
{
    station.windowSize = {600, 800};
    drawGroup(0, {{"input", Array{"S1"}}, {"column", 4}});
    EXPECT_EQ(documentSize().width(), 1000.0);
}

TEST_F(DocumentTest, AContainerThatIsDrawnIntoAgainStandsInItsBandAgain)
{
    drawSlot(0, entryIn(1));
    const interactive::PanelGeometry geometry(interactive::PanelKind::Slot, 4, 4, 1280.0);
    auto *container = new platform::View;
    rooms().views.splitView()->addSubview(container);
    rooms().document.add(container, 1, geometry);
    const platform::Rect first = container->frame();
    EXPECT_GT(first.y(), 0.0);
    // As whoever draws into it does, with the band that it reckons with.
    container->setFrame({5.0, 5.0, 10.0, 10.0});
    rooms().document.add(container, 1, geometry);
    EXPECT_EQ(container->frame(), first);
}

TEST_F(DocumentTest, TheDocumentHasWhatTheOpenPanelsNeed)
{
    station.windowSize = {600, 400};
    drawSlot(0, entryIn(1));
    EXPECT_EQ(documentSize(), platform::Size(600.0, 912.0));
    drawSlot(4, entryIn(4));
    EXPECT_EQ(documentSize(), platform::Size(1000.0, 912.0));
    drawGroup(0, {{"input", Array{"S1"}}, {"column", 3}});
    EXPECT_EQ(documentSize(), platform::Size(1000.0, 472.0));
}

TEST_F(DocumentTest, TheDocumentIsNeverSmallerThanTheWindow)
{
    drawSlot(0, entryIn(4));
    EXPECT_EQ(documentSize(), scrollView()->contentView()->frame().size());
}

TEST_F(DocumentTest, TheFirstPanelIsShownFromTheTop)
{
    station.windowSize = {600, 400};
    start();
    scrollView()->scrollToPoint({0.0, 100.0});
    drawSlot(4, entryIn(1));
    EXPECT_EQ(visibleTop(), 912.0);
}

TEST_F(DocumentTest, LaterPanelsThatCanBeSeenLeaveTheScrollPositionAlone)
{
    station.windowSize = {600, 400};
    drawSlot(4, entryIn(1));
    scrollView()->scrollToPoint({0.0, 600.0});
    ASSERT_EQ(visibleTop(), 600.0);
    drawSlot(7, entryIn(1));
    EXPECT_EQ(visibleTop(), 600.0);
}

TEST_F(DocumentTest, APanelThatCannotBeSeenIsScrolledIntoSight)
{
    station.windowSize = {600, 400};
    drawSlot(4, entryIn(1));
    ASSERT_EQ(visibleTop(), 912.0);
    drawSlot(1, entryIn(1));
    // The box of S2, of 110 points, stands 236 above the lower edge.
    EXPECT_EQ(scrollView()->documentVisibleRect().y(), 236.0);
    drawGroup(1, {{"switch", Array{"S1", "S2"}}});
    EXPECT_EQ(visibleTop(), 912.0);
}

TEST_F(DocumentTest, APanelThatOpensLeavesABegunEntryInSight)
{
    station.windowSize = {600, 400};
    drawSlot(0, entryIn(4));
    type("A1");
    ASSERT_TRUE(field("0-SN")->hasBegunEntry());
    const auto isSeen = [this] {
        return field("0-SN")->visibleRegion().boundingRect() == field("0-SN")->rect();
    };
    ASSERT_TRUE(isSeen());
    // The bands become higher, and what opens is out of sight.
    drawSlot(4, entryIn(1));
    EXPECT_TRUE(isSeen());
    drawGroup(1, {{"switch", Array{"S1", "S2"}}, {"column", 1}});
    EXPECT_TRUE(isSeen());
}

TEST_F(DocumentTest, TheScrollersAreResetWhenAnOverviewIsBuilt)
{
    station.windowSize = {600, 400};
    drawSlot(0, entryIn(1));
    scrollView()->scrollToPoint({0.0, 600.0});
    ASSERT_GT(knob(Qt::Vertical), 0);
    drawSlot(4, entryIn(1));
    EXPECT_EQ(knob(Qt::Vertical), 0);
    EXPECT_EQ(knob(Qt::Horizontal), 0);
}

TEST_F(DocumentTest, AMessageThatDoesNotFitCanBeScrolledTo)
{
    station.windowSize = {600, 400};
    drawGroup(1, {{"message", "Load"}, {"column", 1}});
    EXPECT_EQ(documentSize(), platform::Size(600.0, 912.0));
    EXPECT_EQ(visibleTop(), 912.0);
}

TEST_F(DocumentTest, APanelFollowsTheWidthOfTheWindow)
{
    drawGroup(1, {{"input", Array{"S1"}}, {"column", 2}});
    window().resize(1480, 900);
    ASSERT_EQ(splitView()->frame().width(), 1480.0);
    platform::View *panel = pane("G2");
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(inWords(panel->frame()), "(0, 236, 1480, 236)");
    EXPECT_EQ(inWords(buttons(panel).last()->frame()), "(1380, 4, 80, 30)");
    EXPECT_EQ(inWords(labels(panel).first()->frame()), "(8, 209, 1280, 25)");
    EXPECT_EQ(inWords(inputs(panel).first()->frame()), "(8, 8, 375, 25)");
    // Left margin and width share what was added.
    EXPECT_EQ(inWords(child(panel, "G2-lineView")->frame()), "(100, 234, 1380, 1)");
    EXPECT_EQ(inWords(overviewScroll("G2")->frame()), "(0, 54, 700, 144)");
    EXPECT_EQ(inWords(overviewOf("G2")->frame()), "(0, 0, 600, 144)");
}

} // namespace
