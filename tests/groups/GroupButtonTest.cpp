#include "platform/Button.h"
#include "platform/SplitView.h"
#include "tests/support/Looks.h"
#include "tests/support/PluginFixture.h"

#include <QApplication>
#include <QChildEvent>

using platform::Button;
using platform::Dictionary;
using platform::Rect;

namespace {

/// The check boxes above the panels, one a group.
class GroupButtonTest : public testsupport::PluginFixture
{
protected:
    std::shared_ptr<platform::Condition> conditionOf(const QString &group)
    {
        return plugin().getCondition(plugin().panelKey(group));
    }

    QString frames()
    {
        QStringList texts;
        for (const Button *button : plugin().groupButtons()) {
            const Rect frame = button->frame();
            texts.append(QStringLiteral("%1 %2 %3 %4")
                             .arg(frame.x())
                             .arg(frame.y())
                             .arg(frame.width())
                             .arg(frame.height()));
        }
        return texts.join(QStringLiteral(", "));
    }
};

TEST_F(GroupButtonTest, StandsAtTheTopRightEdgeOnePitchApart)
{
    station.groups = {"A", "B", "C"};
    plugin();
    plugin().rootView()->setFrame({0, 0, 800, 600});
    EXPECT_EQ(frames(), "512 570 80 30, 608 570 80 30, 704 570 80 30");
}

TEST_F(GroupButtonTest, KeepsItsDistanceToTheTopRightCorner)
{
    station.groups = {"A"};
    plugin();
    plugin().rootView()->setFrame({0, 0, 1000, 500});
    EXPECT_EQ(frames(), "904 470 80 30");
}

TEST_F(GroupButtonTest, RelayoutUsesASmallerPitchAndKeepsTheHeight)
{
    station.groups = {"A", "B", "C"};
    plugin();
    plugin().rootView()->setFrame({0, 0, 800, 600});
    plugin().groupButtons().at(1)->setHidden(true);
    plugin().groupButtons().at(2)->setFrame({1, 17, 3, 4});
    plugin().relayoutGroupButtons(800);
    EXPECT_EQ(frames(), "536 570 80 30, 624 570 80 30, 712 17 80 30");
    EXPECT_FALSE(plugin().groupButtons().at(1)->isHidden());
}

TEST_F(GroupButtonTest, IsACheckBoxThatIsOnAndBearsTheGroupsName)
{
    for (Button *button : plugin().groupButtons()) {
        EXPECT_EQ(button->buttonType(), Button::Type::Switch);
        EXPECT_EQ(button->bezelStyle(), Button::BezelStyle::RegularSquare);
        EXPECT_EQ(button->state(), Button::On);
        EXPECT_EQ(button->actionSelector(), QByteArray("groupBtnClicked:"));
        EXPECT_EQ(button->autoresizingMask(), platform::MinXMargin | platform::MinYMargin);
        EXPECT_TRUE(button->isEnabled());
        EXPECT_FALSE(button->isHidden());
        EXPECT_EQ(button->superview(), plugin().rootView());
    }
    ASSERT_EQ(plugin().groupButtons().size(), 2);
    EXPECT_EQ(plugin().groupButtons().at(0)->title(), "G1");
    EXPECT_EQ(plugin().groupButtons().at(0)->identifier().text(), "G1");
    EXPECT_EQ(plugin().groupButtons().at(1)->title(), "G2");
    EXPECT_EQ(plugin().groupButtons().at(1)->identifier().text(), "G2");
}

TEST_F(GroupButtonTest, IsMadeOnce)
{
    const QList<Button *> before = plugin().groupButtons();
    const qsizetype views = plugin().rootView()->subviews().size();
    plugin().setupGroupButtons();
    EXPECT_EQ(plugin().groupButtons(), before);
    EXPECT_EQ(plugin().rootView()->subviews().size(), views);
}

TEST_F(GroupButtonTest, EveryGroupHasAConditionAndAllItsSlotsAreOn)
{
    station.groups = {"A", "B"};
    station.slotNames = {"x", "y"};
    EXPECT_NE(conditionOf("A"), nullptr);
    EXPECT_NE(conditionOf("B"), nullptr);
    EXPECT_NE(conditionOf("A"), conditionOf("B"));
    EXPECT_EQ(platform::description(plugin().enableStatus()), "{A = {x = 1; y = 1}; B = {x = 1; y = 1}}");
}

TEST_F(GroupButtonTest, TheSlotsOfAGroupAreThoseOfItsStretchOfTheMapping)
{
    station.systemGroups = platform::Array{"A", "A", "B", "B"};
    station.systemSlots = platform::Array{"a1", "a2", "b1", "b2"};
    // Four slot names make four slots a group.
    EXPECT_EQ(platform::description(status("A")), "{a1 = 1; a2 = 1; b1 = 1; b2 = 1}");
    EXPECT_EQ(platform::description(status("B")), "{}");
}

/// Stores a group's slots while the first group's button is being added.
class StoresOnTheWay : public QObject
{
public:
    explicit StoresOnTheWay(interactive::InteractiveView &plugin)
        : m_plugin(plugin)
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        const auto *childEvent =
            event->type() == QEvent::ChildAdded ? static_cast<QChildEvent *>(event) : nullptr;
        if (childEvent && childEvent->child()->objectName().isEmpty() && m_plugin.groupButtons().isEmpty())
            m_plugin.setEnableStatus({{"G2", Dictionary{{"kept", 0}}}});
        return false;
    }

private:
    interactive::InteractiveView &m_plugin;
};

TEST_F(GroupButtonTest, AGroupWhoseSlotsAreKnownKeepsThem)
{
    start(); // tells the host's configuration
    interactive::InteractiveView fresh;
    const StoresOnTheWay storing(fresh);
    ASSERT_NE(fresh.view(), nullptr);
    EXPECT_EQ(platform::description(fresh.enableStatus()),
              "{G1 = {S1 = 1; S2 = 1; S3 = 1; S4 = 1}; G2 = {kept = 0}}");
}

} // namespace
