#include "platform/Button.h"
#include "presentation/PanelViews.h"
#include "tests/support/PanelFixture.h"

#include "common/PanelRecords.h"
#include "common/StationMap.h"
#include "common/Waits.h"

using interactive::PanelRecords;
using interactive::PanelViews;
using platform::Array;
using platform::Dictionary;
using platform::Identifier;
using platform::View;

namespace {

const Dictionary entry{{"input", Array{"SN"}}, {"button", Array{"Cancel", "OK"}}};
const Dictionary groupEntry{{"input", Array{"S1", "S2"}}};

/// The rules by which panels are found, taken away, hidden and shown: by the instance of their identifier or
/// by its text. Panes without anything in them, and no window.
class PanelViewsTest : public ::testing::Test
{
protected:
    PanelViewsTest()
    {
        root.addSubview(splitView);
        views.setViews(&root, nullptr, splitView);
    }
    Identifier key(const QString &text) { return waits.panelKey(text); }
    View *addPane(const Identifier &identifier)
    {
        auto *made = new View(platform::Rect(0, 0, 100, 50));
        made->setIdentifier(identifier);
        splitView->addSubview(made);
        return made;
    }
    platform::CollectionView *addOverview(const QString &group)
    {
        auto *made = new platform::CollectionView;
        root.addSubview(made);
        views.setCollection(group, made);
        return made;
    }
    QStringList panes()
    {
        QStringList found;
        for (View *view : splitView->subviews())
            found.append(testsupport::identifierOf(view));
        return found;
    }
    bool logsRemovalOf(const QString &identifier)
    {
        return log.anyContains(identifier + " removed with subViews");
    }

    testsupport::LogRecorder log;
    interactive::StationMap station{{"G1", "G1", "G2", "G2"}, {"S1", "S2", "S1", "S2"}};
    interactive::Waits waits;
    PanelRecords records;
    PanelViews views{station};
    View root;
    platform::SplitView *splitView = new platform::SplitView;
};

TEST_F(PanelViewsTest, ResettingDataForgetsTheRecordAndTheFieldsOfThatPanelAlone)
{
    records.restore({{"G1", Dictionary{{"S1", "A"}}}, {"G2", Dictionary{{"S1", "B"}}}});
    views.setResponders("G1", {});
    views.setResponders("G2", {});
    addPane(key("G1"));
    interactive::resetData(records, views, key("G1"));
    EXPECT_EQ(platform::description(records.all()), "{G2 = {S1 = B}}");
    EXPECT_FALSE(views.hasResponders("G1"));
    EXPECT_TRUE(views.hasResponders("G2"));
    EXPECT_EQ(panes(), QStringList{"G1"});
}

TEST_F(PanelViewsTest, ResettingDataInLoopModeForgetsTheFieldsAlone)
{
    records.restore({{"G1", Dictionary{{"S1", "A"}}}});
    records.setLoopEnabled(true);
    views.setResponders("G1", {});
    interactive::resetData(records, views, key("G1"));
    EXPECT_EQ(platform::description(records.all()), "{G1 = {S1 = A}}");
    EXPECT_FALSE(views.hasResponders("G1"));
}

TEST_F(PanelViewsTest, ResettingTakesAwayTheFirstPanelOfThatInstanceAndStops)
{
    View *first = addPane(key("9"));
    View *second = addPane(key("9"));
    views.resetUI(key("9"));
    EXPECT_EQ(first->superview(), nullptr);
    EXPECT_EQ(second->superview(), splitView);
    EXPECT_EQ(log.count(KVKLogLevel::Default, "9 removed with subViews ()"), 1);
}

TEST_F(PanelViewsTest, ResettingByAnEqualTextOfAnotherInstanceTakesNothingAway)
{
    addPane(key("9"));
    views.resetUI(Identifier("9"));
    EXPECT_EQ(panes(), QStringList{"9"});
}

TEST_F(PanelViewsTest, ResettingAGroupTakesAwayEveryPanelThatBeginsWithItsName)
{
    for (const char *identifier : {"G1-group", "G1-group", "G1-other", "G10-group", "G2-group"})
        addPane(Identifier(identifier));
    addOverview("G1");
    platform::CollectionView *other = addOverview("G2");
    views.resetUI(key("G1"));
    EXPECT_EQ(panes(), (QStringList{"G10-group", "G2-group"}));
    EXPECT_EQ(views.collection("G1"), nullptr);
    EXPECT_EQ(views.collection("G2"), other);
    EXPECT_FALSE(logsRemovalOf("G1-group"));
}

TEST_F(PanelViewsTest, OnlyAGroupsNameTakesAwayWhatBeginsWithIt)
{
    addPane(Identifier("9-group"));
    views.resetUI(key("9"));
    EXPECT_EQ(panes(), QStringList{"9-group"});
}

TEST_F(PanelViewsTest, TheWalkOverAGroupsPanelsEndsAtTheOneThatBearsItsVeryKey)
{
    addPane(Identifier("G1-before"));
    addPane(key("G1"));
    addPane(Identifier("G1-behind"));
    views.resetUI(key("G1"));
    EXPECT_EQ(panes(), QStringList{"G1-behind"});
}

TEST_F(PanelViewsTest, AnEqualTextOfAGroupsNameTakesItsPanelsAwayWithoutALine)
{
    addPane(key("G1"));
    addPane(Identifier("G1-behind"));
    addOverview("G1");
    views.resetUI(Identifier("G1"));
    EXPECT_EQ(panes(), QStringList());
    EXPECT_EQ(views.collection("G1"), nullptr);
    EXPECT_FALSE(logsRemovalOf("G1"));
}

TEST_F(PanelViewsTest, HidingByIdentifierHidesTheFirstPanelOfThatInstance)
{
    View *first = addPane(key("9"));
    View *second = addPane(key("9"));
    views.hideFirst(key("9"));
    EXPECT_TRUE(first->isHidden());
    EXPECT_FALSE(second->isHidden());
}

TEST_F(PanelViewsTest, HidingByIdentifierCanBeAskedForByASequence)
{
    View *pane = addPane(key("G1"));
    testsupport::SequencerCall call([this](platform::Error *) {
        views.hideFirst(key("G1"));
        return platform::Value();
    });
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_TRUE(pane->isHidden());
}

TEST_F(PanelViewsTest, HidingHidesEveryPanelOfThatInstance)
{
    View *first = addPane(key("9"));
    View *other = addPane(key("8"));
    View *second = addPane(key("9"));
    views.hideUI(key("9"));
    EXPECT_TRUE(first->isHidden());
    EXPECT_TRUE(second->isHidden());
    EXPECT_FALSE(other->isHidden());
}

TEST_F(PanelViewsTest, AnEqualTextOfAnotherInstanceHidesNothingAndShowsAll)
{
    View *first = addPane(key("9"));
    View *second = addPane(Identifier("9"));
    views.hideUI(Identifier("9"));
    views.hideFirst(Identifier("9"));
    EXPECT_FALSE(first->isHidden());
    EXPECT_FALSE(second->isHidden());

    first->setHidden(true);
    second->setHidden(true);
    EXPECT_TRUE(views.show(Identifier("9")));
    EXPECT_FALSE(first->isHidden());
    EXPECT_FALSE(second->isHidden());
}

TEST_F(PanelViewsTest, ShowingAPanelShowsNoOther)
{
    View *other = addPane(key("G1-group"));
    other->setHidden(true);
    addPane(key("G1"));
    EXPECT_TRUE(views.show(key("G1")));
    EXPECT_TRUE(other->isHidden());
}

/// Panels that go, hide and come back as the operator sees it.
class PanelVisibilityTest : public testsupport::PanelFixture
{
protected:
    View *addPane(const Identifier &identifier)
    {
        auto *made = new View(platform::Rect(0, 0, 100, 50));
        made->setIdentifier(identifier);
        splitView()->addSubview(made);
        return made;
    }
    testsupport::SequencerCall &open(qint64 system)
    {
        auto &call = showView(system, entry);
        waitForPanel(QString::number(system));
        return call;
    }
    testsupport::SequencerCall &openGroup(qint64 group, const Dictionary &config = groupEntry)
    {
        auto &call = showGroup(group, config);
        waitForPanel(station.groups.at(group));
        return call;
    }
    void end(testsupport::SequencerCall &call, const QString &panelKey, const QString &title = "Cancel")
    {
        press(panelKey, title);
        ASSERT_TRUE(call.waitUntilFinished());
    }
};

TEST_F(PanelVisibilityTest, AGroupPanelGoesWithItsOverview)
{
    auto &call = openGroup(0);
    openGroup(1);
    end(call, "G1");
    EXPECT_EQ(panes(), QStringList{"G2"});
    EXPECT_EQ(overviewOf("G1"), nullptr);
    EXPECT_NE(overviewOf("G2"), nullptr);
}

TEST_F(PanelVisibilityTest, APanelThatGoesIsLoggedWithWhatIsTakenAway)
{
    end(openGroup(0, {}), "G1", "OK");
    EXPECT_TRUE(
        loggedOnce(KVKLogLevel::Default,
                   "G1 removed with subViews (<TextField: (null)>, <ScrollView: (null)>, <Button: Pass>)"));
}

TEST_F(PanelVisibilityTest, ASlotPanelThatGoesEmptiesAndHidesItsTileAlone)
{
    auto &call = open(0);
    open(1);
    open(4);
    end(call, "0");
    ASSERT_NE(content("G1", 0), nullptr);
    EXPECT_TRUE(content("G1", 0)->subviews().isEmpty());
    EXPECT_FALSE(content("G1", 1)->subviews().isEmpty());
    EXPECT_FALSE(content("G2", 0)->subviews().isEmpty());
    EXPECT_NE(overviewOf("G1"), nullptr);
    EXPECT_TRUE(box("G1", 0)->isHidden());
    EXPECT_FALSE(box("G1", 1)->isHidden());
}

TEST_F(PanelVisibilityTest, ATileIsEmptiedByTheVeryInstanceOfItsPanelKeyAlone)
{
    // The other tiles of the overview have no identifier at all, like the pane.
    addPane(Identifier());
    drawSlot(0, entry);
    rooms().views.resetUI(Identifier("0"));
    rooms().views.resetUI(Identifier());
    EXPECT_EQ(panes(), (QStringList{"(null)", "G1-group"}));
    EXPECT_FALSE(content("G1", 0)->subviews().isEmpty());
}

TEST_F(PanelVisibilityTest, TheWalkEndsWithTheTileThatIsEmptied)
{
    auto &call = open(0);
    addPane(panel("0")->identifier())->setHidden(true); // or it would cover the button
    end(call, "0");
    EXPECT_TRUE(content("G1", 0)->subviews().isEmpty());
    EXPECT_EQ(panes(), (QStringList{"G1-group", "0"}));
}

TEST_F(PanelVisibilityTest, EmptyingATileIsNotLogged)
{
    end(open(0), "0");
    EXPECT_EQ(timesLoggedFrom("0 removed"), 0);
    EXPECT_NE(tile("G1", 0), nullptr);
}

TEST_F(PanelVisibilityTest, AHiddenPanelComesBackAsItWasWithTheFocusInItsLastField)
{
    openGroup(0);
    openGroup(1);
    click(field("G1-SharedInput"));
    scan("A");
    click(field("G2-SharedInput"));
    click(groupButton("G1"));
    EXPECT_TRUE(pane("G1")->isHidden());
    click(groupButton("G1"));
    EXPECT_FALSE(pane("G1")->isHidden());
    EXPECT_EQ(field("G1-S1")->stringValue(), "A");
    EXPECT_TRUE(field("G1-SharedInput")->isFirstResponder());
}

TEST_F(PanelVisibilityTest, ShowingAPanelWithoutFieldsMakesItVisibleAlone)
{
    openGroup(0);
    ASSERT_TRUE(showGroup(1, {{"message", "Load"}}).waitUntilFinished());
    click(groupButton("G2"));
    ASSERT_TRUE(pane("G2")->isHidden());
    ASSERT_TRUE(field("G1-SharedInput")->isFirstResponder());
    click(groupButton("G2"));
    EXPECT_FALSE(pane("G2")->isHidden());
    EXPECT_TRUE(field("G1-SharedInput")->isFirstResponder());
}

TEST_F(PanelVisibilityTest, ShowingAPanelWhoseLastFieldIsGoneMakesItVisibleAlone)
{
    openGroup(0);
    openGroup(1);
    click(field("G1-SharedInput"));
    delete field("G2-SharedInput");
    click(groupButton("G2"));
    ASSERT_TRUE(pane("G2")->isHidden());
    click(groupButton("G2"));
    EXPECT_FALSE(pane("G2")->isHidden());
    EXPECT_TRUE(field("G1-SharedInput")->isFirstResponder());
}

TEST_F(PanelVisibilityTest, EveryPanelOfThatTextIsShownAndItsFieldGetsTheFocus)
{
    openGroup(1);
    openGroup(0);
    click(field("G1-SharedInput"));
    click(groupButton("G2"));
    View *other = addPane(Identifier("G2"));
    other->setHidden(true);
    ASSERT_TRUE(pane("G2")->isHidden());
    click(groupButton("G2"));
    EXPECT_FALSE(other->isHidden());
    EXPECT_FALSE(pane("G2")->isHidden());
    EXPECT_TRUE(field("G2-SharedInput")->isFirstResponder());
}

TEST_F(PanelVisibilityTest, HidingShowingAndTakingAwayChangeNoSwitch)
{
    auto &call = openGroup(0);
    const Dictionary status = plugin().enableStatus();
    click(groupButton("G1"));
    click(groupButton("G1"));
    EXPECT_EQ(plugin().enableStatus(), status);
    end(call, "G1");
    EXPECT_EQ(plugin().enableStatus(), status);
}

} // namespace
