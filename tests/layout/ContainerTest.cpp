#include "tests/support/PanelFixture.h"

using platform::Array;
using platform::Color;
using platform::Dictionary;
using platform::Font;
using platform::Rect;
using platform::View;
using testsupport::identifierOf;
using testsupport::inWords;
using testsupport::lookOf;
using testsupport::TextLook;

namespace {

/// The band of a group in the split view, and what a group panel has at its upper edge.
class ContainerTest : public testsupport::PanelFixture
{
protected:
    ContainerTest() { station.groups = {"G1", "G2", "G3"}; }
};

TEST_F(ContainerTest, TheSplitViewIsAsWideAsTheWindow)
{
    // The frames below count on it.
    EXPECT_EQ(splitView()->frame().width(), 1280.0);
}

TEST_F(ContainerTest, AGroupPanelStandsInItsGroupsBand)
{
    struct Case
    {
        int group;
        int columns;
        QString name;
        QString frame;
    };
    const Case cases[] = {
        {0, 4, "G1", "(0, 0, 1280, 126)"},   {1, 4, "G2", "(0, 126, 1280, 126)"},
        {2, 4, "G3", "(0, 252, 1280, 126)"}, {0, 3, "G1", "(0, 0, 1280, 236)"},
        {1, 3, "G2", "(0, 236, 1280, 236)"}, {2, 2, "G3", "(0, 472, 1280, 236)"},
        {1, 1, "G2", "(0, 456, 1280, 456)"}, {2, 1, "G3", "(0, 912, 1280, 456)"},
    };
    for (const Case &each : cases) {
        drawGroup(each.group, {{"input", Array{"S1"}}, {"column", each.columns}});
        View *container = pane(each.name);
        ASSERT_NE(container, nullptr) << each.name.toStdString();
        EXPECT_EQ(inWords(container->frame()), each.frame) << each.columns << " columns";
    }
}

TEST_F(ContainerTest, ASlotPanelStandsInTheBandOfItsSystemsGroup)
{
    struct Case
    {
        int system;
        int columns;
        QString identifier;
        QString frame;
    };
    const Case cases[] = {
        {0, 4, "G1-group", "(0, 0, 1280, 126)"},
        {5, 4, "G2-group", "(0, 126, 1280, 126)"},
        {11, 2, "G3-group", "(0, 472, 1280, 236)"},
    };
    for (const Case &each : cases) {
        drawSlot(each.system, {{"input", Array{"SN"}}, {"column", each.columns}});
        View *container = pane(each.identifier);
        ASSERT_NE(container, nullptr) << each.identifier.toStdString();
        EXPECT_EQ(inWords(container->frame()), each.frame);
    }
}

TEST_F(ContainerTest, AContainerIsAClearLayerThatFollowsTheWidthOfTheSplitView)
{
    drawGroup(0, {{"input", Array{"S1"}}});
    drawSlot(5, {{"input", Array{"SN"}}});
    for (const char *identifier : {"G1", "G2-group"}) {
        View *container = pane(identifier);
        ASSERT_NE(container, nullptr) << identifier;
        EXPECT_EQ(container->superview(), splitView());
        EXPECT_EQ(container->autoresizingMask(), platform::WidthSizable);
        EXPECT_EQ(container->layerBackgroundColor(), Color::clear());
        EXPECT_FALSE(container->isHidden());
    }
}

TEST_F(ContainerTest, AContainerIsAsWideAsItsColumnsInANarrowWindow)
{
    station.windowSize = {600, 800};
    drawGroup(0, {{"input", Array{"S1"}}, {"column", 4}});
    ASSERT_NE(pane("G1"), nullptr);
    EXPECT_EQ(inWords(pane("G1")->frame()), "(0, 0, 1000, 126)");
}

TEST_F(ContainerTest, AGroupPanelIsFoundByItsGroupsNameAndASlotPanelIsNot)
{
    drawGroup(0, {{"input", Array{"S1"}}});
    drawSlot(4, {{"input", Array{"SN"}}});
    EXPECT_NE(pane("G1"), nullptr);
    EXPECT_EQ(pane("G2"), nullptr);
}

TEST_F(ContainerTest, AGroupPanelIsHeadedByItsGroupsName)
{
    struct Case
    {
        int group;
        int columns;
        QString name;
        Rect header;
    };
    const Case cases[] = {
        {0, 4, "G1", {8, 99, 1280, 25}}, {1, 2, "G2", {8, 209, 1280, 25}}, {2, 1, "G3", {8, 429, 1280, 25}}};
    for (const Case &each : cases) {
        drawGroup(each.group, {{"input", Array{"S1"}}, {"column", each.columns}});
        const auto found = labels(pane(each.name));
        ASSERT_EQ(found.size(), 1);
        EXPECT_EQ(lookOf(found.first()),
                  (TextLook{.frame = each.header, .text = each.name, .font = Font::system(16)}));
    }
}

TEST_F(ContainerTest, TheHeaderIsAsWideAsTheSplitViewAlsoWhenThePanelIsWider)
{
    station.windowSize = {600, 800};
    drawGroup(0, {{"input", Array{"S1"}}, {"column", 4}});
    ASSERT_FALSE(labels(pane("G1")).isEmpty());
    // The split view had the window's width when the header was made.
    EXPECT_EQ(inWords(labels(pane("G1")).first()->frame()), "(8, 99, 600, 25)");
}

TEST_F(ContainerTest, EveryGroupButTheFirstIsSeparatedByALine)
{
    struct Case
    {
        int group;
        int columns;
        QString name;
        QString line;
    };
    const Case cases[] = {{1, 4, "G2", "(0, 124, 1280, 1)"}, {2, 2, "G3", "(0, 234, 1280, 1)"}};
    for (const Case &each : cases) {
        drawGroup(each.group, {{"input", Array{"S1"}}, {"column", each.columns}});
        View *line = child(pane(each.name), each.name + "-lineView");
        ASSERT_NE(line, nullptr);
        EXPECT_EQ(inWords(line->frame()), each.line);
        EXPECT_EQ(line->autoresizingMask(), unsigned(platform::MinXMargin | platform::WidthSizable));
        EXPECT_EQ(line->layerBackgroundColor(), Color::lightGray());
    }
}

TEST_F(ContainerTest, TheFirstGroupHasNoLine)
{
    drawGroup(0, {{"input", Array{"S1"}}});
    EXPECT_EQ(child(pane("G1"), "G1-lineView"), nullptr);
}

TEST_F(ContainerTest, ASlotPanelHasNeitherHeaderNorLineNorButtonRow)
{
    drawSlot(5, {{"input", Array{"SN"}}});
    ASSERT_NE(pane("G2-group"), nullptr);
    EXPECT_EQ(pane("G2-group")->subviews(), QList<View *>{overviewScroll("G2")});
}

TEST_F(ContainerTest, TheKeyOfAPanelIsTheControllersOwnInstance)
{
    drawGroup(0, {{"input", Array{"S1"}}});
    drawSlot(5, {{"input", Array{"SN"}}});
    ASSERT_NE(pane("G1"), nullptr);
    EXPECT_TRUE(pane("G1")->identifier().isSameInstance(groupButton("G1")->identifier()));
    ASSERT_NE(content("G2", 1), nullptr);
    EXPECT_TRUE(content("G2", 1)->identifier().isSameInstance(rooms().waits.panelKey("5")));
}

TEST_F(ContainerTest, ASlotPanelTakesTheMessageAwayThatStandsInItsGroupsBand)
{
    drawGroup(1, {{"message", "Load the units"}});
    const QPointer<View> message = pane("G2");
    ASSERT_NE(message, nullptr);
    drawSlot(5, {{"input", Array{"SN"}}});
    EXPECT_EQ(panes(), QStringList{"G2-group"});
    EXPECT_NE(pane("G2-group"), message);
    EXPECT_EQ(label(pane("G2-group"), "Load the units"), nullptr);
    letRemovedViewsGo();
    EXPECT_EQ(message, nullptr);
}

TEST_F(ContainerTest, ASlotPanelCanBeSeenAlsoWhereItsGroupsMessageWasHidden)
{
    drawGroup(1, {{"message", "Load the units"}});
    click(groupButton("G2"));
    ASSERT_TRUE(pane("G2")->isHidden());
    drawSlot(5, {{"input", Array{"SN"}}});
    click(groupButton("G2"));
    EXPECT_TRUE(field("5-SN")->isVisible());
}

TEST_F(ContainerTest, TheDrawnFieldsAreKeptAsThePanelsResponders)
{
    drawGroup(0, {{"input", Array{"S1", "S2"}}});
    drawSlot(5, {{"input", Array{"SN"}}});
    EXPECT_EQ(fieldsInLog(), "{5 = (<MouseTrackedTextField: 5-SN>); G1 = (<MouseTrackedTextField: G1-S1>, "
                             "<MouseTrackedTextField: G1-S2>, <MouseTrackedTextField: G1-S3>, "
                             "<MouseTrackedTextField: G1-S4>, <MouseTrackedTextField: G1-SharedInput>)}");
}

TEST_F(ContainerTest, TheFieldsOfAPanelFollowOneAnother)
{
    drawGroup(0, {{"input", Array{"S1", "S2"}}});
    QList<platform::TextField *> fields;
    for (const char *name : {"S1", "S2", "S3", "S4", "SharedInput"})
        fields.append(field(QString("G1-") + name));
    ASSERT_FALSE(fields.contains(nullptr));
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(fields[i]->explicitNextResponder(), fields[i + 1]);
        EXPECT_EQ(fields[i]->nextKeyView(), fields[i + 1]);
    }
    EXPECT_EQ(fields[4]->explicitNextResponder(), nullptr);
}

TEST_F(ContainerTest, APanelWithoutFieldsHasAnEmptyListOfResponders)
{
    drawSlot(5, {{"button", Array{"No", "Yes"}}});
    EXPECT_EQ(fieldsInLog(), "{5 = ()}");
}

TEST_F(ContainerTest, AGroupPanelGivesTheFocusToItsSharedField)
{
    drawGroup(0, {{"input", Array{"S1"}}});
    ASSERT_NE(field("G1-SharedInput"), nullptr);
    EXPECT_TRUE(field("G1-SharedInput")->isFirstResponder());
}

TEST_F(ContainerTest, ASlotPanelGivesTheFocusToItsField)
{
    for (const int system : {5, 6}) {
        drawSlot(system, {{"input", Array{"SN"}}});
        platform::TextField *drawn = field(QString::number(system) + "-SN");
        ASSERT_NE(drawn, nullptr);
        EXPECT_TRUE(drawn->isFirstResponder()) << system;
    }
}

} // namespace
