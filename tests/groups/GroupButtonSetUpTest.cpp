#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "tests/groups/GroupFixture.h"
#include "tests/groups/Groups.h"

using interactive::InteractiveView;
using platform::Array;
using platform::Button;
using platform::Dictionary;
using platform::Rect;
using testsupport::ButtonLook;
using testsupport::inWords;
using testsupport::lookOf;

namespace {

/// The group buttons as they are made, in root views of any size and beside what is there already.
class GroupButtonSetUpTest : public testsupport::GroupFixture
{
protected:
    static ButtonLook groupButtonLook(const Rect &frame, const QString &group)
    {
        return {.frame = frame,
                .title = group,
                .identifier = group,
                .font = Button().font(),
                .mask = platform::MinXMargin | platform::MinYMargin,
                .action = "groupBtnClicked:",
                .bezel = Button::BezelStyle::RegularSquare,
                .type = Button::Type::Switch,
                .state = Button::On};
    }
    static QStringList frames(const QList<Button *> &buttons)
    {
        QStringList found;
        for (const Button *button : buttons)
            found.append(inWords(button->frame()));
        return found;
    }
};

/// A controller whose root view has a size of the test's choice from the start.
class SizedController : public InteractiveView
{
public:
    explicit SizedController(const Rect &rootFrame)
        : m_rootFrame(rootFrame)
    {}

protected:
    platform::View *loadView() override
    {
        platform::View *root = InteractiveView::loadView();
        root->setFrame(m_rootFrame);
        return root;
    }

private:
    Rect m_rootFrame;
};

void configureStation(const Array &groups, const Array &slotNames)
{
    KVKConfigEngine::sharedConfigEngine()->setSystemIndexToGroupMapping(groups);
    KVKConfigEngine::sharedConfigEngine()->setSystemIndexToSlotMapping(slotNames);
}

TEST_F(GroupButtonSetUpTest, AreCheckBoxesThatBearTheirGroupsNameAndAreOn)
{
    const QList<Button *> made = groupButtons();
    ASSERT_EQ(made.size(), 2);
    const double y = rootView()->frame().height() - 30;
    EXPECT_EQ(lookOf(made[0]), groupButtonLook({1280.0 - 192, y, 80, 30}, "G1"));
    EXPECT_EQ(lookOf(made[1]), groupButtonLook({1280.0 - 96, y, 80, 30}, "G2"));
    for (const Button *button : made) {
        EXPECT_EQ(button->target(), &plugin());
        EXPECT_EQ(button->superview(), rootView());
        EXPECT_FALSE(button->isHidden());
    }
}

TEST_F(GroupButtonSetUpTest, StandBesideOneAnotherAtTheUpperRightEdge)
{
    configureStation({"A", "B", "C"}, {"S1", "S1", "S1"});
    SizedController controller({0, 0, 800, 600});
    ASSERT_NE(controller.view(), nullptr);
    EXPECT_EQ(frames(groupButtonsIn(controller.view())),
              (QStringList{"(512, 570, 80, 30)", "(608, 570, 80, 30)", "(704, 570, 80, 30)"}));
}

TEST_F(GroupButtonSetUpTest, StandWhereTheyBelongInARootViewOfAnySize)
{
    configureStation({"A", "B"}, {"S1", "S1"});
    SizedController narrow({0, 0, 100.5, 20.25});
    ASSERT_NE(narrow.view(), nullptr);
    // There is no room beside the loop field, so they stand below it.
    EXPECT_EQ(frames(groupButtonsIn(narrow.view())),
              (QStringList{"(4.5, -43.75, 80, 30)", "(4.5, -77.75, 80, 30)"}));
}

TEST_F(GroupButtonSetUpTest, ASecondSetUpLeavesConditionsAndStatusAlone)
{
    testsupport::Groups groups({"A", "B"});
    groups.setUp();
    const QList<Button *> made = groups.buttons.groupButtons();
    const auto condition = groups.waits.getCondition(groups.waits.panelKey("A"));
    groups.slotStates.restore({});
    groups.buttons.setupGroupButtons(nullptr);
    EXPECT_EQ(groups.buttons.groupButtons(), made);
    EXPECT_EQ(groups.waits.getCondition(groups.waits.panelKey("A")), condition);
    EXPECT_EQ(groups.slotStates.all(), Dictionary());
    EXPECT_EQ(buttons(&groups.root), made);
}

TEST_F(GroupButtonSetUpTest, ANewGroupsSlotsAreOnByTheNumberOne)
{
    const platform::Value state = status("G2").value("S3");
    EXPECT_EQ(state.typeId(), QMetaType::LongLong);
    EXPECT_EQ(state.toLongLong(), 1);
}

TEST_F(GroupButtonSetUpTest, AGroupThatHasAStatusKeepsItAndGetsItsButtonAndConditionAllTheSame)
{
    testsupport::Groups groups({"A", "B"});
    groups.slotStates.restore({{"A", Dictionary{{"kept", -1}}}});
    groups.setUp();
    EXPECT_EQ(platform::description(groups.slotStates.all()), "{A = {kept = -1}; B = {S1 = 1}}");
    ASSERT_EQ(groups.buttons.groupButtons().size(), 2);
    EXPECT_EQ(groups.button("A")->state(), Button::On);
    EXPECT_NE(groups.waits.getCondition(groups.waits.panelKey("A")), nullptr);
}

TEST_F(GroupButtonSetUpTest, AShowCallLetsItsGroupBeSwitchedAndItsConfirmationNoMore)
{
    groupButton("G1")->setEnabled(false);
    auto &call = showGroup(0, {{"switch", Array{"S1", "S2"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_TRUE(groupButton("G1")->isEnabled());
    press("G1", "OK");
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_FALSE(groupButton("G1")->isEnabled());
    EXPECT_TRUE(groupButton("G2")->isEnabled());
}

TEST_F(GroupButtonSetUpTest, KeepTheirDistanceToTheTopRightCorner)
{
    station.groups = {"A"};
    plugin();
    rootView()->setFrame({0, 0, 1000, 500});
    EXPECT_EQ(frames(groupButtons()), QStringList{"(904, 470, 80, 30)"});
}

TEST_F(GroupButtonSetUpTest, WrapIntoFurtherRowsThatLowerThePanels)
{
    station.groups = {"A", "B", "C", "D", "E", "F", "G"};
    station.windowSize = {600, 400};
    // Four of 96 points fit beside the loop field.
    EXPECT_EQ(
        frames((start(), groupButtons())),
        (QStringList{"(216, 370, 80, 30)", "(312, 370, 80, 30)", "(408, 370, 80, 30)", "(504, 370, 80, 30)",
                     "(216, 336, 80, 30)", "(312, 336, 80, 30)", "(408, 336, 80, 30)"}));
    EXPECT_EQ(inWords(scrollView()->frame()), "(0, 0, 600, 326)");
    window().resize(1024, 768);
    EXPECT_EQ(
        frames(groupButtons()),
        (QStringList{"(352, 738, 80, 30)", "(448, 738, 80, 30)", "(544, 738, 80, 30)", "(640, 738, 80, 30)",
                     "(736, 738, 80, 30)", "(832, 738, 80, 30)", "(928, 738, 80, 30)"}));
    EXPECT_EQ(inWords(scrollView()->frame()), "(0, 0, 1024, 728)");
}

TEST_F(GroupButtonSetUpTest, NeverCoverTheLoopFieldNorOneAnotherNorThePanels)
{
    for (int i = 0; i < 12; ++i)
        station.groups.append("Group " + QString::number(i));
    start();
    for (const QSize &size : {QSize(1600, 1000), QSize(1024, 768), QSize(600, 400), QSize(230, 700)}) {
        window().resize(size);
        platform::View *root = rootView();
        ASSERT_EQ(root->size(), size);
        QList<Rect> taken;
        for (const platform::View *child : root->subviews()) {
            EXPECT_TRUE(root->bounds().contains(child->frame())) << inWords(child->frame()).toStdString();
            // The loop's caption lies behind its field.
            if (!qobject_cast<const platform::TextField *>(child) || !child->identifier().isNull())
                taken.append(child->frame());
        }
        ASSERT_EQ(taken.size(), 16);
        for (qsizetype i = 0; i < taken.size(); ++i) {
            for (qsizetype j = 0; j < i; ++j)
                EXPECT_FALSE(taken[i].intersects(taken[j]))
                    << inWords(taken[i]).toStdString() << " and " << inWords(taken[j]).toStdString() << " at "
                    << size.width();
        }
    }
}

TEST_F(GroupButtonSetUpTest, RelayoutUsesASmallerPitchAndKeepsTheHeight)
{
    testsupport::Groups groups({"A", "B", "C"});
    groups.root.setFrame({0, 0, 800, 600});
    groups.setUp();
    groups.button("B")->setHidden(true);
    groups.button("C")->setFrame({1, 17, 3, 4});
    groups.buttons.relayoutGroupButtons(800);
    EXPECT_EQ(frames(groups.buttons.groupButtons()),
              (QStringList{"(536, 570, 80, 30)", "(624, 570, 80, 30)", "(712, 17, 80, 30)"}));
    EXPECT_FALSE(groups.button("B")->isHidden());
}

TEST_F(GroupButtonSetUpTest, EveryGroupHasAConditionAndAllItsSlotsAreOn)
{
    station.groups = {"A", "B"};
    station.slotNames = {"x", "y"};
    const auto first = rooms().waits.getCondition(key("A"));
    const auto second = rooms().waits.getCondition(key("B"));
    EXPECT_TRUE(first && second);
    EXPECT_NE(first, second);
    EXPECT_EQ(platform::description(plugin().enableStatus()), "{A = {x = 1; y = 1}; B = {x = 1; y = 1}}");
}

TEST_F(GroupButtonSetUpTest, TheSlotsOfAGroupAreThoseOfItsStretchOfTheMapping)
{
    station.systemGroups = platform::Array{"A", "A", "B", "B"};
    station.systemSlots = platform::Array{"a1", "a2", "b1", "b2"};
    // Four slot names make four slots a group.
    EXPECT_EQ(platform::description(status("A")), "{a1 = 1; a2 = 1; b1 = 1; b2 = 1}");
    EXPECT_EQ(platform::description(status("B")), "{}");
}

} // namespace
