#include "input/TabOrder.h"

#include "platform/Button.h"
#include "platform/ScrollView.h"
#include "tests/support/AccessibleWalk.h"
#include "tests/support/FieldKeys.h"
#include "tests/support/ManualKeyClock.h"

#include <QLineEdit>

#include <algorithm>

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

const Dictionary entry{{"input", Array{"SN"}}};

/// Where Tab goes, told by the names that are spoken.
class TabOrderTest : public testsupport::FieldKeysFixture
{
protected:
    void open(int system, const Dictionary &config = entry)
    {
        showView(system, config);
        ASSERT_TRUE(waitForPanel(QString::number(system)));
    }
    void openGroup(int group, const Dictionary &config)
    {
        showGroup(group, config);
        ASSERT_TRUE(waitForPanel(station.groups.at(group)));
    }
    QString focused() { return testsupport::spokenName(window().focusWidget()); }
    void tab()
    {
        clock.pause();
        key(Qt::Key_Tab);
    }
    void tabBack()
    {
        clock.pause();
        key(Qt::Key_Tab, Qt::ShiftModifier);
    }
    /// From the loop field through all, and back to it.
    QStringList round(const std::function<void()> &step)
    {
        EXPECT_TRUE(loopField()->becomeFirstResponder());
        QStringList names;
        constexpr int Most = 200;
        do {
            names.append(focused());
            step();
        } while (focused() != names.first() && names.size() < Most);
        return names;
    }
    QStringList forwards()
    {
        return round([this] { tab(); });
    }
    QStringList backwards()
    {
        return round([this] { tabBack(); });
    }
    static QStringList reversed(QStringList names)
    {
        std::reverse(names.begin() + 1, names.end());
        return names;
    }

    testsupport::ManualKeyClock clock;
};

const QStringList above{"Loop: number of passes", "Group G1", "Group G2"};
const QStringList groupPanel{
    "SN, slot S1, group G1",  "SN, slot S2, group G1", "SN, group G1",    "Use, slot S1, group G1",
    "Use, slot S2, group G1", "Cancel, group G1",      "Clear, group G1", "OK, group G1"};

TEST_F(TabOrderTest, GoesThroughAGroupsPanelByFieldsSwitchesAndButtons)
{
    openGroup(0, {{"input", Array{"S1", "S2"}}});
    EXPECT_EQ(forwards(), above + groupPanel);
    EXPECT_EQ(backwards(), reversed(above + groupPanel));
}

TEST_F(TabOrderTest, GoesThroughPanelsAsTheyStandAndNotAsTheyCame)
{
    open(2);
    openGroup(1, {{"button", Array{"No", "Yes"}}});
    open(0);
    const QStringList expected =
        above + QStringList{"No, group G2",          "Yes, group G2",         "SN, slot S1, group G1",
                            "OK, slot S1, group G1", "SN, slot S3, group G1", "OK, slot S3, group G1"};
    EXPECT_EQ(forwards(), expected);
    EXPECT_EQ(backwards(), reversed(expected));
}

TEST_F(TabOrderTest, ReadsLineByLineWhereAPanelHasSeveralRowsOfSlots)
{
    for (const int system : {3, 1, 2, 0})
        open(system, {{"button", Array{"Go"}}, {"column", "2"}});
    EXPECT_EQ(forwards(), above + (QStringList{"Go, slot S1, group G1", "Go, slot S2, group G1",
                                               "Go, slot S3, group G1", "Go, slot S4, group G1"}));
}

TEST_F(TabOrderTest, PassesOverPanelsThatHaveGone)
{
    open(0);
    open(1);
    static_cast<void>(forwards());
    click(field("1-SN"));
    scan("A");
    press("1", "OK");
    ASSERT_TRUE(waitForPanelGone("1"));
    EXPECT_EQ(forwards(), above + (QStringList{"SN, slot S1, group G1", "OK, slot S1, group G1"}));
}

TEST_F(TabOrderTest, FollowsTheButtonsOfGroupsIntoNewRowsWhenTheWindowIsResized)
{
    station.groups = QStringList{"A", "B", "C", "D"};
    open(0, {{"button", Array{"Go"}}});
    window().resize(360, 500);
    settle();
    const QStringList names = forwards();
    EXPECT_EQ(names, (QStringList{"Loop: number of passes", "Group A", "Group B", "Group C", "Group D",
                                  "Go, slot S1, group A"}));
}

TEST_F(TabOrderTest, DoesNotReachWhatIsOffOrHidden)
{
    openGroup(0, {{"input", Array{"S1", "S2"}}});
    pressSwitch("G1-100-S1");
    QStringList expected = above + groupPanel;
    expected.removeAll("SN, slot S1, group G1");
    EXPECT_EQ(forwards(), expected);
    click(groupButton("G1"));
    EXPECT_EQ(forwards(), above);
    click(groupButton("G1"));
    EXPECT_EQ(forwards(), expected);
}

TEST_F(TabOrderTest, StaysBetweenTheControlsOfTheHost)
{
    start();
    auto *before = new QLineEdit(&window());
    before->setAccessibleName("before");
    auto *after = new QLineEdit(&window());
    after->setAccessibleName("after");
    before->show();
    after->show();
    QWidget::setTabOrder(before, loopField()->focusTarget());
    open(0, {{"button", Array{"Go"}}});
    before->setFocus(Qt::OtherFocusReason);
    QStringList names;
    for (int i = 0; i < 7; ++i) {
        names.append(focused());
        tab();
    }
    EXPECT_EQ(names.filter("Group"), (QStringList{"Group G1", "Group G2"}));
    EXPECT_EQ(names.indexOf("Go, slot S1, group G1"), names.indexOf("Group G2") + 1);
    EXPECT_TRUE(names.contains("after"));
    EXPECT_EQ(names.at(names.indexOf("Loop: number of passes") + 1), "Group G1");
}

TEST_F(TabOrderTest, BringsAButtonOutsideOfTheWindowIntoSight)
{
    station.groups = QStringList{"G1", "G2", "G3", "G4", "G5", "G6"};
    station.windowSize = {700, 400};
    for (const int system : {0, 20})
        open(system, {{"button", Array{"Go"}}});
    for (const char *key : {"20", "0", "20"}) {
        const platform::Button *go = button(key, "Go");
        for (int i = 0; i < 40 && !go->isFirstResponder(); ++i)
            tab();
        ASSERT_TRUE(go->isFirstResponder());
        EXPECT_EQ(go->visibleRegion().boundingRect(), go->rect()) << key;
    }
}

TEST_F(TabOrderTest, PageDownAndPageUpScrollWhereNoControlHasTheKeys)
{
    station.groups = QStringList{"G1", "G2", "G3", "G4", "G5", "G6"};
    station.windowSize = {700, 400};
    auto &message = showGroup(5, {{"message", "Load all fixtures"}});
    ASSERT_TRUE(message.waitUntilFinished());
    open(0, {{"button", Array{"Go"}}});
    window().setFocus(Qt::OtherFocusReason);
    const double low = scrollView()->documentVisibleRect().y();
    key(Qt::Key_PageUp);
    const double high = scrollView()->documentVisibleRect().y();
    EXPECT_GT(high, low);
    key(Qt::Key_PageDown);
    EXPECT_LT(scrollView()->documentVisibleRect().y(), high);
}

TEST_F(TabOrderTest, TabWhileThePanelOfTheFocusGoesReachesWhatIsLeft)
{
    open(0, {{"button", Array{"Go"}}});
    open(4, {{"button", Array{"Go"}}});
    ASSERT_TRUE(button("0", "Go")->becomeFirstResponder());
    // Both before the press is carried out: the Tab comes after it.
    key(Qt::Key_Return);
    tab();
    ASSERT_TRUE(waitForPanelGone("0"));
    settle();
    EXPECT_NE(focused(), "Go, slot S1, group G1");
    EXPECT_EQ(forwards(), above + QStringList{"Go, slot S1, group G2"});
}

TEST_F(TabOrderTest, ReturnOnAButtonWhosePanelWasJustAnsweredAnswersNoOther)
{
    auto &first = showView(0, {{"button", Array{"No", "Yes"}}});
    ASSERT_TRUE(waitForPanel("0"));
    auto &second = showView(1, {{"button", Array{"No", "Yes"}}});
    ASSERT_TRUE(waitForPanel("1"));
    ASSERT_TRUE(button("0", "No")->becomeFirstResponder());
    click(button("0", "Yes"));
    key(Qt::Key_Return);
    EXPECT_EQ(first.result(), Value(true));
    settle();
    EXPECT_FALSE(second.finished());
    EXPECT_TRUE(isOpen("1"));
}

TEST_F(TabOrderTest, AGroupThatIsSwitchedOffByTheKeysKeepsThemOffItsPanel)
{
    openGroup(0, {{"input", Array{"S1"}}});
    open(4);
    ASSERT_TRUE(button("G1", "OK")->becomeFirstResponder());
    click(groupButton("G1"));
    key(Qt::Key_Return);
    settle();
    EXPECT_TRUE(record("G1").value("clickedButton").isNull());
    scan("A");
    EXPECT_EQ(record("4").value("SN"), Value("A"));
    EXPECT_FALSE(record("G1").contains("S1"));
}

TEST_F(TabOrderTest, F2OpensAnEntryAgainAsAClickDoes)
{
    openGroup(0, {{"input", Array{"S1", "S2"}}});
    scan("A");
    scan("B");
    ASSERT_TRUE(field("G1-S2")->becomeFirstResponder());
    tabBack();
    ASSERT_EQ(focused(), "SN, slot S1, group G1: A");
    key(Qt::Key_F2);
    EXPECT_EQ(field("G1-S1")->backgroundColor(), platform::Color::systemYellow());
    EXPECT_TRUE(field("G1-SharedInput")->isFirstResponder());
    scan("C");
    EXPECT_EQ(record("G1"), (Dictionary{{"length", 0}, {"S1", "C"}, {"S2", "B"}}));
}

TEST_F(TabOrderTest, AScanThatBeginsWithABlankPressesNoButtonWhereNoFieldWaitsEither)
{
    auto &call = showView(0, {{"button", Array{"No", "Yes"}}});
    ASSERT_TRUE(waitForPanel("0"));
    ASSERT_TRUE(button("0", "Yes")->becomeFirstResponder());
    expectError("Entry refused:  A 1");
    scan(" A 1");
    EXPECT_EQ(operatorLines, QStringList{"Entry refused:  A 1 (no field waits for it)"});
    settle();
    EXPECT_FALSE(call.finished());
    // A blank alone, afterwards: had the first one worked the button, too, the call would have ended by it.
    clock.pause();
    ASSERT_TRUE(button("0", "No")->becomeFirstResponder());
    type(" ");
    EXPECT_EQ(call.result(), Value(false));
}

TEST_F(TabOrderTest, AScanThatBeginsWithABlankAtAButtonGoesWholeToTheField)
{
    open(0);
    ASSERT_TRUE(button("0", "OK")->becomeFirstResponder());
    scan(" A 1");
    EXPECT_EQ(record("0").value("SN"), Value(" A 1"));
    EXPECT_TRUE(isOpen("0"));
}

TEST_F(TabOrderTest, AnErrorIsAcknowledgedByTheKeysAlone)
{
    auto &refused = showView(0, {{"input", Array{"A", "B"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_EQ(forwards(), above + QStringList{"OK, error on G1"});
    tabBack();
    key(Qt::Key_Return);
    EXPECT_EQ(refused.error().code, 105);
}

TEST(ReadingOrder, GoesLineByLineAndFromLeftToRight)
{
    using interactive::taborder::Placed;
    const auto order = interactive::taborder::read({{QRectF(100, 2, 50, 20), 0},
                                                    {QRectF(0, 0, 50, 20), 1},
                                                    {QRectF(0, 30, 50, 20), 2},
                                                    {QRectF(200, -3, 50, 30), 3},
                                                    {QRectF(300, 0, 0, 0), 4}});
    EXPECT_EQ(order, (std::vector<std::size_t>{1, 0, 3, 4, 2}));
}

} // namespace
