#include "presentation/CollectionViewItemView.h"
#include "tests/support/PanelFixture.h"

using platform::Array;
using platform::CollectionView;
using platform::Color;
using platform::Dictionary;
using testsupport::inWords;

namespace {

const Dictionary group{{"input", Array{"S1"}}};
const Dictionary slot{{"input", Array{"SN"}}};

Dictionary inColumns(Dictionary config, int columns)
{
    config.insert("column", columns);
    return config;
}

/// The tiles of a group's slots.
class OverviewTest : public testsupport::PanelFixture
{
protected:
    OverviewTest() { station.groups = {"G1", "G2", "G3"}; }

    QStringList tileFrames(const QString &name)
    {
        QStringList frames;
        for (int i = 0; i < static_cast<int>(plugin().slotCount()); ++i)
            frames.append(tile(name, i) ? inWords(tile(name, i)->view()->frame()) : QString("none"));
        return frames;
    }
};

TEST_F(OverviewTest, TheOverviewOfAGroupPanelLeavesRoomForTheSharedFieldAndTheButtons)
{
    struct Case
    {
        int columns;
        QString scroll;
        QString overview;
    };
    const Case cases[] = {
        {4, "(0, 30, 1000, 80)", "(0, 0, 1000, 80)"},
        {3, "(0, 54, 750, 144)", "(0, 0, 750, 144)"},
        {2, "(0, 54, 500, 144)", "(0, 0, 500, 144)"},
        {1, "(0, 86, 250, 272)", "(0, 0, 250, 272)"},
    };
    for (const Case &each : cases) {
        drawGroup(0, inColumns(group, each.columns));
        ASSERT_NE(overviewScroll("G1"), nullptr);
        EXPECT_EQ(inWords(overviewScroll("G1")->frame()), each.scroll);
        EXPECT_EQ(inWords(overviewOf("G1")->frame()), each.overview);
    }
}

TEST_F(OverviewTest, TheOverviewOfASlotPanelFillsTheBand)
{
    struct Case
    {
        int system;
        int columns;
        QString name;
        QString frame;
    };
    const Case cases[] = {{0, 4, "G1", "(0, 0, 1000, 126)"},
                          {4, 2, "G2", "(0, 0, 500, 236)"},
                          {8, 1, "G3", "(0, 0, 250, 456)"}};
    for (const Case &each : cases) {
        drawSlot(each.system, inColumns(slot, each.columns));
        ASSERT_NE(overviewScroll(each.name), nullptr);
        EXPECT_EQ(inWords(overviewScroll(each.name)->frame()), each.frame);
        EXPECT_EQ(inWords(overviewOf(each.name)->frame()), each.frame);
    }
}

TEST_F(OverviewTest, TilesStandFromTheUpperLeftRowUnderRow)
{
    drawGroup(0, inColumns(group, 4));
    EXPECT_EQ(tileFrames("G1"), (QStringList{"(0, 16, 250, 64)", "(250, 16, 250, 64)", "(500, 16, 250, 64)",
                                             "(750, 16, 250, 64)"}));
    drawGroup(0, inColumns(group, 3));
    EXPECT_EQ(tileFrames("G1"), (QStringList{"(0, 80, 250, 64)", "(250, 80, 250, 64)", "(500, 80, 250, 64)",
                                             "(0, 16, 250, 64)"}));
    drawGroup(0, inColumns(group, 1));
    EXPECT_EQ(tileFrames("G1"), (QStringList{"(0, 208, 250, 64)", "(0, 144, 250, 64)", "(0, 80, 250, 64)",
                                             "(0, 16, 250, 64)"}));
}

TEST_F(OverviewTest, TilesOfASlotPanelAreAsHighAsARow)
{
    drawSlot(0, inColumns(slot, 2));
    EXPECT_EQ(tileFrames("G1"), (QStringList{"(0, 126, 250, 110)", "(250, 126, 250, 110)",
                                             "(0, 16, 250, 110)", "(250, 16, 250, 110)"}));
}

TEST_F(OverviewTest, TheTilesFlowWithoutSpaceBetweenThem)
{
    drawGroup(0, group);
    drawSlot(4, slot);
    for (const auto &[name, height] : {std::pair("G1", 64.0), std::pair("G2", 110.0)}) {
        ASSERT_NE(overviewOf(name), nullptr);
        const CollectionView::FlowLayout &flow = overviewOf(name)->flowLayout();
        for (const double inset : flow.sectionInset)
            EXPECT_EQ(inset, 0.0);
        EXPECT_EQ(flow.scrollDirection, CollectionView::FlowLayout::ScrollDirection::Vertical);
        EXPECT_EQ(flow.minimumInteritemSpacing, 0.0);
        EXPECT_EQ(flow.itemSize, platform::Size(250.0, height));
    }
}

TEST_F(OverviewTest, TheOverviewIsAClearSelectableListOfTheRegisteredTiles)
{
    drawSlot(5, slot);
    CollectionView *overview = overviewOf("G2");
    ASSERT_NE(overview, nullptr);
    EXPECT_EQ(overview->backgroundColors(), QList<Color>{Color::clear()});
    EXPECT_EQ(overview->autoresizingMask(), unsigned(platform::WidthSizable | platform::MaxXMargin));
    EXPECT_EQ(overview->itemIdentifier(), "CollectionViewItem");
    EXPECT_TRUE(overview->isSelectable());
    EXPECT_EQ(overview->delegate(), &plugin());
    EXPECT_EQ(overview->itemCount(), 4);
}

TEST_F(OverviewTest, TheScrollViewAroundItHasNoScrollersAndFollowsTheWidth)
{
    drawSlot(5, slot);
    interactive::ScrollView *scroll = overviewScroll("G2");
    ASSERT_NE(scroll, nullptr);
    EXPECT_FALSE(scroll->hasVerticalScroller());
    EXPECT_FALSE(scroll->hasHorizontalScroller());
    EXPECT_EQ(scroll->autoresizingMask(), platform::WidthSizable);
    EXPECT_EQ(scroll->superview(), pane("G2-group"));
    EXPECT_EQ(overviewOf("G2")->superview(), scroll->contentView());
}

TEST_F(OverviewTest, EveryTileRepresentsItsSystem)
{
    drawGroup(2, group);
    ASSERT_NE(overviewOf("G3"), nullptr);
    EXPECT_EQ(platform::description(overviewOf("G3")->content()),
              "({index = 8}, {index = 9}, {index = 10}, {index = 11})");
    ASSERT_NE(tile("G3", 2), nullptr);
    EXPECT_EQ(platform::description(tile("G3", 2)->representedObject()), "{index = 10}");
}

TEST_F(OverviewTest, ATileIsMadeFromItsInterfaceFile)
{
    drawSlot(0, slot);
    for (int i = 0; i < 4; ++i) {
        ASSERT_NE(tile("G1", i), nullptr);
        auto *view = qobject_cast<interactive::CollectionViewItemView *>(tile("G1", i)->view());
        ASSERT_NE(view, nullptr);
        ASSERT_NE(tile("G1", i)->box(), nullptr);
        EXPECT_EQ(view->box(), tile("G1", i)->box());
        EXPECT_TRUE(view->isAncestorOf(tile("G1", i)->box()));
        EXPECT_EQ(view->superview(), overviewOf("G1"));
    }
}

TEST_F(OverviewTest, AClickOnATileSelectsNothing)
{
    drawSlot(0, slot);
    ASSERT_NE(tile("G1", 2), nullptr);
    click(tile("G1", 2)->view());
    EXPECT_TRUE(overviewOf("G1")->selectionIndexes().empty());
    EXPECT_TRUE(plugin().collectionViewShouldSelectItemsAtIndexPaths(overviewOf("G1"), {0, 1}).empty());
}

TEST_F(OverviewTest, TheFirstSlotPanelOfAGroupShowsItsOwnBoxAlone)
{
    drawSlot(5, slot);
    for (int i = 0; i < 4; ++i) {
        ASSERT_NE(box("G2", i), nullptr);
        EXPECT_EQ(box("G2", i)->isHidden(), i != 1) << i;
    }
}

TEST_F(OverviewTest, LaterSlotPanelsShareTheOverviewOfTheFirst)
{
    drawSlot(5, slot);
    CollectionView *overview = overviewOf("G2");
    drawSlot(6, slot);
    EXPECT_EQ(overviewOf("G2"), overview);
    EXPECT_FALSE(box("G2", 1)->isHidden());
    EXPECT_FALSE(box("G2", 2)->isHidden());
    EXPECT_TRUE(box("G2", 3)->isHidden());
    EXPECT_NE(field("5-SN"), nullptr);
    EXPECT_NE(field("6-SN"), nullptr);
}

TEST_F(OverviewTest, EachGroupHasAnOverviewOfItsOwn)
{
    drawSlot(0, slot);
    drawSlot(4, slot);
    EXPECT_NE(overviewOf("G1"), nullptr);
    EXPECT_NE(overviewOf("G2"), nullptr);
    EXPECT_NE(overviewOf("G1"), overviewOf("G2"));
    EXPECT_EQ(overviewOf("G3"), nullptr);
}

} // namespace
