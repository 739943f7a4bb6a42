#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "platform/Button.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/ScrollView.h"
#include "platform/SplitView.h"
#include "platform/TextField.h"
#include "plugin/InteractiveView.h"
#include "tests/support/PluginFixture.h"

using platform::Array;
using platform::Color;
using platform::Dictionary;
using platform::Identifier;

namespace {

class StartUpTest : public testsupport::PluginFixture
{
protected:
    const Dictionary allSlotsOn{{"S1", 1}, {"S2", 1}, {"S3", 1}, {"S4", 1}};
};

TEST_F(StartUpTest, BeginsWithoutAnswersFocusOrdersOrPanels)
{
    EXPECT_EQ(plugin().savedData(), Dictionary());
    EXPECT_FALSE(knowsFieldsOf("G1"));
    EXPECT_FALSE(knowsFieldsOf("0"));
    EXPECT_EQ(overviewOf("G1"), nullptr);
    EXPECT_TRUE(splitView()->subviews().isEmpty());
}

TEST_F(StartUpTest, CopiesTheStationsMappings)
{
    EXPECT_EQ(plugin().systemIndexToGroupMapping(), (Array{"G1", "G1", "G1", "G1", "G2", "G2", "G2", "G2"}));
    EXPECT_EQ(plugin().systemIndexToSlotMapping(), (Array{"S1", "S2", "S3", "S4", "S1", "S2", "S3", "S4"}));
}

TEST_F(StartUpTest, CountsDistinctGroupsAndDistinctSlotNames)
{
    station.groups = {"A", "B", "C"};
    station.slotNames = {"S1", "S2"};
    EXPECT_EQ(plugin().groupCount(), 3U);
    EXPECT_EQ(plugin().slotCount(), 2U);
}

TEST_F(StartUpTest, SystemsOfTheSameGroupCountOnceWhereverTheyStand)
{
    station.systemGroups = Array{"A", "B", "A", "B"};
    station.systemSlots = Array{"S1", "S1", "S2", "S2"};
    EXPECT_EQ(plugin().groupCount(), 2U);
    EXPECT_EQ(plugin().slotCount(), 2U);
}

TEST_F(StartUpTest, AnEmptyMappingGivesNoGroupsAndNoSlotsAndStartsAllTheSame)
{
    station.systemGroups = Array{};
    station.systemSlots = Array{};
    EXPECT_EQ(plugin().groupCount(), 0U);
    EXPECT_EQ(plugin().slotCount(), 0U);
    EXPECT_TRUE(groupButtons().isEmpty());
    EXPECT_EQ(plugin().enableStatus(), Dictionary());
    EXPECT_NE(loopField(), nullptr);
}

TEST_F(StartUpTest, LaterChangesOfTheHostsConfigurationAreNotSeen)
{
    start();
    KVKConfigEngine *config = KVKConfigEngine::sharedConfigEngine();
    config->setSystemIndexToGroupMapping({"X"});
    config->setSystemIndexToSlotMapping({"Y"});
    config->setStatusTableCustomRowColorEnabled(true);
    EXPECT_EQ(plugin().systemIndexToGroupMapping().value(0), platform::Value("G1"));
    EXPECT_EQ(plugin().systemIndexToSlotMapping().value(0), platform::Value("S1"));
    EXPECT_EQ(plugin().groupCount(), 2U);
    EXPECT_EQ(plugin().slotCount(), 4U);
    EXPECT_FALSE(plugin().customColorEnabled());
}

TEST_F(StartUpTest, TakesTheStatusTablesCustomColourSetting)
{
    station.customColors = true;
    EXPECT_TRUE(plugin().customColorEnabled());
}

TEST_F(StartUpTest, HasNoCustomColoursWhenTheStatusTableHasNone)
{
    EXPECT_FALSE(plugin().customColorEnabled());
}

TEST_F(StartUpTest, BeginsWithoutShadowsAtAnOpacityOfThreeTenthsAndWithoutLoop)
{
    EXPECT_FALSE(plugin().drawShadow());
    EXPECT_EQ(plugin().backgroundAlpha(), 0.3);
    EXPECT_FALSE(plugin().isLoopEnabled());
    EXPECT_EQ(plugin().columns(), 0U);
}

TEST_F(StartUpTest, TheRootViewHasAClearLayerAndResizesBothWays)
{
    EXPECT_EQ(rootView()->layerBackgroundColor(), Color::clear());
    EXPECT_EQ(rootView()->autoresizingMask(), 18U);
    EXPECT_EQ(rootView(), plugin().view());
}

TEST_F(StartUpTest, TheSplitViewHasAThinDividerAClearLayerAndResizesBothWays)
{
    EXPECT_EQ(splitView()->layerBackgroundColor(), Color::clear());
    EXPECT_EQ(splitView()->autoresizingMask(), 18U);
}

TEST_F(StartUpTest, TheSplitViewIsScrolledInsideTheRootView)
{
    const QList<platform::View *> all = testsupport::descendants(rootView());
    EXPECT_TRUE(all.contains(scrollView()));
    EXPECT_TRUE(testsupport::descendants(scrollView()).contains(splitView()));
}

TEST_F(StartUpTest, ThePanelAreaLeavesRoomForTheLoopFieldAndTheGroupButtonsAboveIt)
{
    const platform::Rect area = scrollView()->frame();
    EXPECT_LE(area.y() + area.height(), loopField()->frame().y());
    for (platform::Button *button : groupButtons())
        EXPECT_LE(area.y() + area.height(), button->frame().y());
}

TEST_F(StartUpTest, MakesOneButtonPerGroupInGroupOrder)
{
    station.systemGroups = Array{"B", "A", "B", "A"};
    station.systemSlots = Array{"S1", "S1", "S2", "S2"};
    QStringList titles;
    for (platform::Button *button : groupButtons())
        titles.append(button->title());
    EXPECT_EQ(titles, (QStringList{"B", "A"}));
}

TEST_F(StartUpTest, EveryGroupHasAConditionAndAllItsSlotsEnabled)
{
    EXPECT_EQ(plugin().enableStatus(), (Dictionary{{"G1", allSlotsOn}, {"G2", allSlotsOn}}));
    const auto first = rooms().waits.getCondition(Identifier("G1"));
    const auto second = rooms().waits.getCondition(Identifier("G2"));
    EXPECT_TRUE(first && second);
    EXPECT_NE(first, second);
}

TEST_F(StartUpTest, ListensForClicksOnFieldsFromAnySender)
{
    start();
    platform::TextField stranger;
    platform::NotificationCenter::defaultCenter().post("TextFieldMouseDownNotification", &stranger);
    EXPECT_EQ(timesLoggedFrom("-[InteractiveView textFieldMouseDown:]: "), 1);
}

TEST_F(StartUpTest, TheViewIsLoadedOnce)
{
    platform::View *first = plugin().view();
    EXPECT_EQ(plugin().view(), first);
    EXPECT_EQ(groupButtons().size(), 2);
}

TEST_F(StartUpTest, NoTileMayBeSelected)
{
    EXPECT_TRUE(plugin().collectionViewShouldSelectItemsAtIndexPaths(nullptr, {0, 1, 3}).empty());
    EXPECT_TRUE(plugin().collectionViewShouldSelectItemsAtIndexPaths(nullptr, {}).empty());
}

TEST_F(StartUpTest, AClickOnATileOfTheOverviewSelectsNothing)
{
    showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    platform::CollectionView *overview = overviewOf("G1");
    ASSERT_NE(overview, nullptr);
    ASSERT_EQ(overview->itemCount(), 4);
    EXPECT_TRUE(overview->isSelectable());
    click(overview->itemAtIndex(2)->view());
    EXPECT_TRUE(overview->selectionIndexes().empty());
}

TEST_F(StartUpTest, APropertyKeepsWhatItIsSetTo)
{
    plugin().setDrawShadow(true);
    plugin().setBackgroundAlpha(0.75);
    plugin().setColumns(3);
    plugin().setCustomColorEnabled(true);
    EXPECT_TRUE(plugin().drawShadow());
    EXPECT_EQ(plugin().backgroundAlpha(), 0.75);
    EXPECT_EQ(plugin().columns(), 3U);
    EXPECT_TRUE(plugin().customColorEnabled());
}

TEST_F(StartUpTest, TheHostCanReadTheStateAsProperties)
{
    answerGroup(0, {"S1"}, {"A"});
    setLoop(2);
    QObject *context = plugin().pluginContext();
    EXPECT_EQ(context->property("savedData").toMap(),
              (Dictionary{{"G1", Dictionary{{"S1", "A"}, {"clickedButton", "Pass"}}},
                          {"Loop", Dictionary{{"LoopMax", 2}, {"LoopCount_0", 0}, {"LoopCount_1", 0}}}}));
    EXPECT_EQ(context->property("enableStatus").toMap(), plugin().enableStatus());
    EXPECT_EQ(context->property("enableStatus").toMap().value("G1").toMap().value("S2"), platform::Value(-1));
    EXPECT_EQ(context->property("groupCount").toULongLong(), 2U);
    EXPECT_EQ(context->property("slotCount").toULongLong(), 4U);
    EXPECT_EQ(context->property("backgroundAlpha").toDouble(), 0.3);
    EXPECT_EQ(context->property("columns").toULongLong(), 4U);
    EXPECT_TRUE(context->property("isLoopEnabled").toBool());
}

TEST_F(StartUpTest, TheGroupButtonsBearThePanelKeysThemselves)
{
    for (const qint64 group : {0, 1})
        showGroup(group, {{"input", Array{"S1"}}});
    for (platform::Button *button : groupButtons()) {
        ASSERT_TRUE(waitForPanel(button->title()));
        EXPECT_TRUE(button->identifier().isSameInstance(panel(button->title())->identifier()));
    }
}

TEST_F(StartUpTest, WhatWasSetBeforeTheViewWasLoadedDoesNotCount)
{
    start();
    interactive::InteractiveView controller;
    controller.rooms().records.setLoopEnabled(true);
    controller.setDrawShadow(true);
    controller.setBackgroundAlpha(0.9);
    controller.setCustomColorEnabled(true);
    controller.rooms().records.restore({{"G1", Dictionary{{"S1", "A"}}}});
    controller.rooms().slotStates.restore({{"9", Dictionary{{"S1", 1}}}});
    controller.rooms().views.setResponders("G1", {});
    QWidget window;
    controller.view()->setParent(&window);

    EXPECT_FALSE(controller.isLoopEnabled());
    EXPECT_FALSE(controller.drawShadow());
    EXPECT_EQ(controller.backgroundAlpha(), 0.3);
    EXPECT_FALSE(controller.customColorEnabled());
    EXPECT_EQ(controller.savedData(), Dictionary());
    EXPECT_EQ(controller.enableStatus(), (Dictionary{{"G1", allSlotsOn}, {"G2", allSlotsOn}}));
    EXPECT_FALSE(controller.rooms().views.hasResponders("G1"));
}

TEST_F(StartUpTest, TheLoopControlsAreMadeBeforeTheGroupButtons)
{
    QStringList order;
    for (platform::View *view : rootView()->subviews()) {
        if (auto *button = qobject_cast<platform::Button *>(view))
            order.append(button->title());
        if (auto *field = qobject_cast<platform::TextField *>(view))
            order.append(field->stringValue());
    }
    EXPECT_EQ(order, (QStringList{"Loop:", "0", "G1", "G2"}));
}

TEST_F(StartUpTest, WhatIsLeftForTheMainThreadIsDoneBeforeTheControllerGoes)
{
    start();
    bool done = false;
    {
        const interactive::InteractiveView goes;
        platform::MainQueue::async([&done] { done = true; });
    }
    EXPECT_TRUE(done);
}

} // namespace
