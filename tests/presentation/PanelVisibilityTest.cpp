#include "platform/Button.h"
#include "tests/support/PanelFixture.h"

using platform::Array;
using platform::Dictionary;
using platform::Identifier;
using platform::View;

namespace {

const Dictionary entry{{"input", Array{"SN"}}, {"button", Array{"Cancel", "OK"}}};
const Dictionary groupEntry{{"input", Array{"S1", "S2"}}};

/// Taking panels away, hiding them and bringing them back.
class PanelVisibilityTest : public testsupport::PanelFixture
{
protected:
    Identifier key(const QString &text) { return rooms().waits.panelKey(text); }
    /// A bare panel in the split view.
    View *addPane(const Identifier &identifier)
    {
        auto *made = new View(platform::Rect(0, 0, 100, 50));
        made->setIdentifier(identifier);
        rooms().views.splitView()->addSubview(made);
        return made;
    }
};

TEST_F(PanelVisibilityTest, ResettingDataForgetsTheRecordAndTheFields)
{
    drawGroup(0, groupEntry);
    rooms().records.restore({{"G1", Dictionary{{"S1", "A"}}}, {"G2", Dictionary{{"S1", "B"}}}});
    interactive::resetData(rooms().records, rooms().views, key("G1"));
    EXPECT_EQ(platform::description(plugin().savedData()), "{G2 = {S1 = B}}");
    EXPECT_FALSE(rooms().views.hasResponders("G1"));
}

TEST_F(PanelVisibilityTest, ResettingDataInLoopModeForgetsTheFieldsAlone)
{
    drawGroup(0, groupEntry);
    rooms().records.restore({{"G1", Dictionary{{"S1", "A"}}}});
    rooms().records.setLoopEnabled(true);
    interactive::resetData(rooms().records, rooms().views, key("G1"));
    EXPECT_EQ(platform::description(plugin().savedData()), "{G1 = {S1 = A}}");
    EXPECT_FALSE(rooms().views.hasResponders("G1"));
}

TEST_F(PanelVisibilityTest, ResettingDataLeavesOtherPanelsTheScreenAndTheSwitchesAlone)
{
    drawGroup(0, groupEntry);
    drawGroup(1, groupEntry);
    const Dictionary status = plugin().enableStatus();
    interactive::resetData(rooms().records, rooms().views, key("G1"));
    EXPECT_TRUE(rooms().views.hasResponders("G2"));
    EXPECT_EQ(panes(), (QStringList{"G1", "G2"}));
    EXPECT_EQ(plugin().enableStatus(), status);
}

TEST_F(PanelVisibilityTest, ResettingAGroupPanelTakesItAwayWithItsOverview)
{
    drawGroup(0, groupEntry);
    drawGroup(1, groupEntry);
    rooms().views.resetUI(key("G1"));
    EXPECT_EQ(panes(), QStringList{"G2"});
    EXPECT_EQ(rooms().views.collection("G1"), nullptr);
    EXPECT_NE(rooms().views.collection("G2"), nullptr);
}

TEST_F(PanelVisibilityTest, ResettingAPanelLogsWhatIsTakenAway)
{
    drawGroup(0, {});
    rooms().views.resetUI(key("G1"));
    EXPECT_TRUE(
        loggedOnce(KVKLogLevel::Default,
                   "G1 removed with subViews (<TextField: (null)>, <ScrollView: (null)>, <Button: Pass>)"));
}

TEST_F(PanelVisibilityTest, ResettingTakesAwayTheFirstPanelOfThatInstanceAndStops)
{
    View *first = addPane(key("9"));
    View *second = addPane(key("9"));
    rooms().views.resetUI(key("9"));
    EXPECT_EQ(first->superview(), nullptr);
    EXPECT_EQ(second->superview(), rooms().views.splitView());
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default, "9 removed with subViews ()"));
}

TEST_F(PanelVisibilityTest, ResettingByAnEqualTextOfAnotherInstanceTakesNothingAway)
{
    addPane(key("9"));
    rooms().views.resetUI(Identifier("9"));
    EXPECT_EQ(panes(), QStringList{"9"});
}

TEST_F(PanelVisibilityTest, ResettingAGroupTakesAwayEveryPanelThatBeginsWithItsName)
{
    drawSlot(0, entry);
    drawSlot(1, entry);
    addPane(Identifier("G1-other"));
    addPane(Identifier("G10-group"));
    drawSlot(4, entry);
    ASSERT_EQ(panes(), (QStringList{"G1-group", "G1-group", "G1-other", "G10-group", "G2-group"}));
    rooms().views.resetUI(key("G1"));
    EXPECT_EQ(panes(), (QStringList{"G10-group", "G2-group"}));
    EXPECT_EQ(rooms().views.collection("G1"), nullptr);
    EXPECT_NE(rooms().views.collection("G2"), nullptr);
    EXPECT_EQ(timesLoggedFrom("G1-group removed"), 0);
}

TEST_F(PanelVisibilityTest, OnlyAGroupsNameTakesAwayWhatBeginsWithIt)
{
    addPane(Identifier("9-group"));
    rooms().views.resetUI(key("9"));
    EXPECT_EQ(panes(), QStringList{"9-group"});
}

TEST_F(PanelVisibilityTest, ResettingASlotPanelEmptiesAndHidesItsTileAlone)
{
    drawSlot(0, entry);
    drawSlot(1, entry);
    drawSlot(4, entry);
    rooms().views.resetUI(key("0"));
    ASSERT_NE(content("G1", 0), nullptr);
    EXPECT_TRUE(content("G1", 0)->subviews().isEmpty());
    EXPECT_FALSE(content("G1", 1)->subviews().isEmpty());
    EXPECT_FALSE(content("G2", 0)->subviews().isEmpty());
    EXPECT_NE(rooms().views.collection("G1"), nullptr);
    EXPECT_TRUE(box("G1", 0)->isHidden());
    EXPECT_FALSE(box("G1", 1)->isHidden());
}

TEST_F(PanelVisibilityTest, ResettingASlotPanelByAnEqualTextOfAnotherInstanceKeepsItsTile)
{
    drawSlot(0, entry);
    rooms().views.resetUI(Identifier("0"));
    EXPECT_FALSE(content("G1", 0)->subviews().isEmpty());
}

TEST_F(PanelVisibilityTest, ResettingKeepsTheConditions)
{
    auto &call = showView(0, entry);
    ASSERT_TRUE(waitForPanel("0"));
    const auto condition = rooms().waits.getCondition(key("0"));
    ASSERT_NE(condition, nullptr);
    press("0", "Cancel");
    ASSERT_TRUE(call.waitUntilFinished());
    rooms().views.resetUI(key("0"));
    rooms().views.resetUI(key("G1"));
    EXPECT_EQ(rooms().waits.getCondition(key("0")), condition);
    EXPECT_NE(rooms().waits.getCondition(key("G1")), nullptr);
}

TEST_F(PanelVisibilityTest, ResettingANullIdentifierTakesNothingAway)
{
    addPane(Identifier());
    drawSlot(0, entry);
    rooms().views.resetUI(Identifier());
    EXPECT_EQ(panes(), (QStringList{"(null)", "G1-group"}));
    EXPECT_FALSE(content("G1", 0)->subviews().isEmpty());
}

TEST_F(PanelVisibilityTest, HidingByIdentifierHidesTheFirstPanelOfThatInstance)
{
    View *first = addPane(key("9"));
    View *second = addPane(key("9"));
    rooms().views.hideFirst(key("9"));
    EXPECT_TRUE(first->isHidden());
    EXPECT_FALSE(second->isHidden());
}

TEST_F(PanelVisibilityTest, HidingByIdentifierCanBeAskedForByASequence)
{
    drawGroup(0, groupEntry);
    auto &call = onSequencer([this](platform::Error *) {
        rooms().views.hideFirst(key("G1"));
        return platform::Value();
    });
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_TRUE(pane("G1")->isHidden());
}

TEST_F(PanelVisibilityTest, HidingHidesEveryPanelOfThatInstance)
{
    View *first = addPane(key("9"));
    View *other = addPane(key("8"));
    View *second = addPane(key("9"));
    rooms().views.hideUI(key("9"));
    EXPECT_TRUE(first->isHidden());
    EXPECT_TRUE(second->isHidden());
    EXPECT_FALSE(other->isHidden());
}

TEST_F(PanelVisibilityTest, AnEqualTextOfAnotherInstanceHidesNothingAndShowsAll)
{
    View *first = addPane(key("9"));
    View *second = addPane(Identifier("9"));
    rooms().views.hideUI(Identifier("9"));
    rooms().views.hideFirst(Identifier("9"));
    EXPECT_FALSE(first->isHidden());
    EXPECT_FALSE(second->isHidden());

    first->setHidden(true);
    second->setHidden(true);
    rooms().focus.unhideUI(Identifier("9"));
    EXPECT_FALSE(first->isHidden());
    EXPECT_FALSE(second->isHidden());
}

TEST_F(PanelVisibilityTest, AHiddenPanelComesBackAsItWasWithTheFocusInItsLastField)
{
    drawGroup(0, groupEntry);
    drawGroup(1, groupEntry);
    field("G1-S1")->setStringValue("A");
    rooms().views.hideUI(key("G1"));
    EXPECT_TRUE(pane("G1")->isHidden());
    EXPECT_TRUE(rooms().views.hasResponders("G1"));
    rooms().focus.unhideUI(key("G1"));
    EXPECT_FALSE(pane("G1")->isHidden());
    EXPECT_EQ(field("G1-S1")->stringValue(), "A");
    EXPECT_TRUE(field("G1-SharedInput")->isFirstResponder());
}

TEST_F(PanelVisibilityTest, ShowingAPanelWithoutFieldsMakesItVisibleAlone)
{
    drawGroup(0, groupEntry);
    ASSERT_TRUE(field("G1-SharedInput")->isFirstResponder());
    View *plain = addPane(key("G2"));
    plain->setHidden(true);
    rooms().focus.unhideUI(key("G2"));
    EXPECT_FALSE(plain->isHidden());
    EXPECT_TRUE(field("G1-SharedInput")->isFirstResponder());
}

TEST_F(PanelVisibilityTest, ShowingAPanelShowsNoOther)
{
    View *other = addPane(key("G1-group"));
    other->setHidden(true);
    addPane(key("G1"));
    rooms().focus.unhideUI(key("G1"));
    EXPECT_TRUE(other->isHidden());
}

TEST_F(PanelVisibilityTest, NoneOfTheFiveChangesTheSwitches)
{
    drawGroup(0, groupEntry);
    const Dictionary status = plugin().enableStatus();
    rooms().views.hideFirst(key("G1"));
    rooms().views.hideUI(key("G1"));
    rooms().focus.unhideUI(key("G1"));
    interactive::resetData(rooms().records, rooms().views, key("G1"));
    rooms().views.resetUI(key("G1"));
    EXPECT_EQ(plugin().enableStatus(), status);
}

TEST_F(PanelVisibilityTest, TheKeyOfAPanelIsOneInstance)
{
    EXPECT_TRUE(key("G1").isSameInstance(key("G1")));
    EXPECT_FALSE(key("G1").isSameInstance(Identifier("G1")));
    EXPECT_EQ(key("G1"), Identifier("G1"));
}

TEST_F(PanelVisibilityTest, TheWalkOverAGroupsPanelsEndsAtTheOneThatBearsItsVeryKey)
{
    addPane(Identifier("G1-before"));
    addPane(key("G1"));
    addPane(Identifier("G1-behind"));
    rooms().views.resetUI(key("G1"));
    EXPECT_EQ(panes(), QStringList{"G1-behind"});
}

TEST_F(PanelVisibilityTest, AnEqualTextOfAGroupsNameTakesItsPanelsAwayWithoutALine)
{
    drawGroup(0, groupEntry);
    addPane(Identifier("G1-behind"));
    log.clear();
    rooms().views.resetUI(Identifier("G1"));
    EXPECT_EQ(panes(), QStringList());
    EXPECT_EQ(rooms().views.collection("G1"), nullptr);
    EXPECT_EQ(timesLoggedFrom("G1"), 0);
}

TEST_F(PanelVisibilityTest, TheWalkEndsWithTheTileThatIsEmptied)
{
    drawSlot(0, entry);
    addPane(key("0"));
    rooms().views.resetUI(key("0"));
    EXPECT_TRUE(content("G1", 0)->subviews().isEmpty());
    EXPECT_EQ(panes(), (QStringList{"G1-group", "0"}));
}

TEST_F(PanelVisibilityTest, EmptyingATileIsNotLogged)
{
    drawSlot(0, entry);
    log.clear();
    rooms().views.resetUI(key("0"));
    EXPECT_EQ(timesLoggedFrom("0 removed"), 0);
    EXPECT_NE(tile("G1", 0), nullptr);
}

TEST_F(PanelVisibilityTest, ShowingAPanelWhoseLastFieldIsGoneMakesItVisibleAlone)
{
    drawGroup(0, groupEntry);
    View *shown = addPane(key("9"));
    shown->setHidden(true);
    auto *gone = new platform::TextField(platform::Rect(0, 0, 10, 10));
    rooms().views.setResponders("9", {gone});
    delete gone;
    rooms().focus.unhideUI(key("9"));
    EXPECT_FALSE(shown->isHidden());
    EXPECT_TRUE(field("G1-SharedInput")->isFirstResponder());
}

TEST_F(PanelVisibilityTest, EveryPanelOfThatTextIsShownAndItsFieldGetsTheFocus)
{
    drawGroup(1, groupEntry);
    drawGroup(0, groupEntry);
    View *first = addPane(Identifier("G2"));
    first->setHidden(true);
    pane("G2")->setHidden(true);
    rooms().focus.unhideUI(Identifier("G2"));
    EXPECT_FALSE(first->isHidden());
    EXPECT_FALSE(pane("G2")->isHidden());
    EXPECT_TRUE(field("G2-SharedInput")->isFirstResponder());
}

} // namespace
