#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "tests/groups/GroupFixture.h"

#include <QEvent>

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

/// A controller whose root view has a size of the test's choice from the start, and an enable status that was
/// there before the group buttons.
class PreparedController : public InteractiveView
{
public:
    PreparedController(const Rect &rootFrame, Dictionary status)
        : m_rootFrame(rootFrame)
        , m_status(std::move(status))
    {}

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // The loop controls come into the root view right before the buttons.
        if (event->type() == QEvent::ChildAdded && !m_status.isEmpty() && groupButtons().isEmpty())
            rooms().slotStates.restore(m_status);
        return InteractiveView::eventFilter(watched, event);
    }

    QList<Button *> groupButtons() { return rooms().groupButtons.groupButtons(); }

protected:
    platform::View *loadView() override
    {
        platform::View *root = InteractiveView::loadView();
        root->setFrame(m_rootFrame);
        root->installEventFilter(this);
        return root;
    }

private:
    Rect m_rootFrame;
    Dictionary m_status;
};

void configureStation(const Array &groups, const Array &slotNames)
{
    KVKConfigEngine::sharedConfigEngine()->setSystemIndexToGroupMapping(groups);
    KVKConfigEngine::sharedConfigEngine()->setSystemIndexToSlotMapping(slotNames);
}

TEST_F(GroupButtonSetUpTest, AreCheckBoxesThatBearTheirGroupsNameAndAreOn)
{
    const QList<Button *> made = rooms().groupButtons.groupButtons();
    ASSERT_EQ(made.size(), 2);
    const double y = rooms().views.rootView()->frame().height() - 30;
    EXPECT_EQ(lookOf(made[0]), groupButtonLook({1280.0 - 192, y, 80, 30}, "G1"));
    EXPECT_EQ(lookOf(made[1]), groupButtonLook({1280.0 - 96, y, 80, 30}, "G2"));
    for (const Button *button : made) {
        EXPECT_EQ(button->target(), &plugin());
        EXPECT_EQ(button->superview(), rooms().views.rootView());
        EXPECT_FALSE(button->isHidden());
    }
}

TEST_F(GroupButtonSetUpTest, StandBesideOneAnotherAtTheUpperRightEdge)
{
    configureStation({"A", "B", "C"}, {"S1", "S1", "S1"});
    PreparedController controller({0, 0, 800, 600}, {});
    ASSERT_NE(controller.view(), nullptr);
    EXPECT_EQ(frames(controller.groupButtons()),
              (QStringList{"(512, 570, 80, 30)", "(608, 570, 80, 30)", "(704, 570, 80, 30)"}));
}

TEST_F(GroupButtonSetUpTest, StandWhereTheyBelongInARootViewOfAnySize)
{
    configureStation({"A", "B"}, {"S1", "S1"});
    PreparedController narrow({0, 0, 100.5, 20.25}, {});
    ASSERT_NE(narrow.view(), nullptr);
    // There is no room beside the loop field, so they stand below it.
    EXPECT_EQ(frames(narrow.groupButtons()), (QStringList{"(4.5, -43.75, 80, 30)", "(4.5, -77.75, 80, 30)"}));
}

TEST_F(GroupButtonSetUpTest, ASecondSetUpLeavesConditionsAndStatusAlone)
{
    const QList<Button *> made = rooms().groupButtons.groupButtons();
    const auto condition = rooms().waits.getCondition(key("G1"));
    rooms().slotStates.restore({});
    rooms().groupButtons.setupGroupButtons(&plugin());
    EXPECT_EQ(rooms().groupButtons.groupButtons(), made);
    EXPECT_EQ(rooms().waits.getCondition(key("G1")), condition);
    EXPECT_EQ(plugin().enableStatus(), Dictionary());
    EXPECT_EQ(buttons(rooms().views.rootView()).count(made.first()), 1);
}

TEST_F(GroupButtonSetUpTest, ANewGroupsSlotsAreOnByTheNumberOne)
{
    const platform::Value state = status("G2").value("S3");
    EXPECT_EQ(state.typeId(), QMetaType::LongLong);
    EXPECT_EQ(state.toLongLong(), 1);
}

TEST_F(GroupButtonSetUpTest, AGroupThatHasAStatusKeepsItAndGetsItsButtonAndConditionAllTheSame)
{
    configureStation({"A", "B"}, {"S1", "S1"});
    PreparedController controller({0, 0, 800, 600}, {{"A", Dictionary{{"kept", -1}}}});
    ASSERT_NE(controller.view(), nullptr);
    EXPECT_EQ(platform::description(controller.enableStatus()), "{A = {kept = -1}; B = {S1 = 1}}");
    ASSERT_EQ(controller.groupButtons().size(), 2);
    EXPECT_EQ(controller.groupButtons().first()->state(), Button::On);
    EXPECT_NE(controller.rooms().waits.getCondition(controller.rooms().waits.panelKey("A")), nullptr);
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
    rooms().views.rootView()->setFrame({0, 0, 1000, 500});
    EXPECT_EQ(frames(rooms().groupButtons.groupButtons()), QStringList{"(904, 470, 80, 30)"});
}

TEST_F(GroupButtonSetUpTest, WrapIntoFurtherRowsThatLowerThePanels)
{
    station.groups = {"A", "B", "C", "D", "E", "F", "G"};
    station.windowSize = {600, 400};
    // Four of 96 points fit beside the loop field.
    EXPECT_EQ(
        frames((start(), rooms().groupButtons.groupButtons())),
        (QStringList{"(216, 370, 80, 30)", "(312, 370, 80, 30)", "(408, 370, 80, 30)", "(504, 370, 80, 30)",
                     "(216, 336, 80, 30)", "(312, 336, 80, 30)", "(408, 336, 80, 30)"}));
    EXPECT_EQ(inWords(rooms().views.scrollView()->frame()), "(0, 0, 600, 326)");
    window().resize(1024, 768);
    EXPECT_EQ(
        frames(rooms().groupButtons.groupButtons()),
        (QStringList{"(352, 738, 80, 30)", "(448, 738, 80, 30)", "(544, 738, 80, 30)", "(640, 738, 80, 30)",
                     "(736, 738, 80, 30)", "(832, 738, 80, 30)", "(928, 738, 80, 30)"}));
    EXPECT_EQ(inWords(rooms().views.scrollView()->frame()), "(0, 0, 1024, 728)");
}

TEST_F(GroupButtonSetUpTest, NeverCoverTheLoopFieldNorOneAnotherNorThePanels)
{
    for (int i = 0; i < 12; ++i)
        station.groups.append("Group " + QString::number(i));
    start();
    for (const QSize &size : {QSize(1600, 1000), QSize(1024, 768), QSize(600, 400), QSize(230, 700)}) {
        window().resize(size);
        platform::View *root = rooms().views.rootView();
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
    station.groups = {"A", "B", "C"};
    plugin();
    rooms().views.rootView()->setFrame({0, 0, 800, 600});
    rooms().groupButtons.groupButtons().at(1)->setHidden(true);
    rooms().groupButtons.groupButtons().at(2)->setFrame({1, 17, 3, 4});
    rooms().groupButtons.relayoutGroupButtons(800);
    EXPECT_EQ(frames(rooms().groupButtons.groupButtons()),
              (QStringList{"(536, 570, 80, 30)", "(624, 570, 80, 30)", "(712, 17, 80, 30)"}));
    EXPECT_FALSE(rooms().groupButtons.groupButtons().at(1)->isHidden());
}

TEST_F(GroupButtonSetUpTest, EveryGroupHasAConditionAndAllItsSlotsAreOn)
{
    station.groups = {"A", "B"};
    station.slotNames = {"x", "y"};
    EXPECT_NE(rooms().waits.getCondition(key("A")), nullptr);
    EXPECT_NE(rooms().waits.getCondition(key("B")), nullptr);
    EXPECT_NE(rooms().waits.getCondition(key("A")), rooms().waits.getCondition(key("B")));
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
