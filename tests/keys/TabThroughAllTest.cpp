#include "tests/keys/InStationWindow.h"

#include <QAbstractButton>
#include <QTabBar>
#include <QTabWidget>

#include <algorithm>

using platform::Array;
using platform::Dictionary;

namespace {

/// Where Tab goes in the station's window with the plug-in's panels in it, told by the names that are spoken.
class TabThroughAllTest : public testsupport::InStationWindow<testsupport::FieldKeysFixture>
{
protected:
    void open(int system, const Dictionary &config)
    {
        showView(system, config);
        ASSERT_TRUE(waitForPanel(QString::number(system)));
    }
    void openGroup(int group, const Dictionary &config)
    {
        showGroup(group, config);
        ASSERT_TRUE(waitForPanel(station.groups.at(group)));
    }
    static QStringList reversed(QStringList names)
    {
        std::reverse(names.begin(), names.end());
        return names;
    }
    void expectRound(const QStringList &expected)
    {
        EXPECT_EQ(round(), expected);
        EXPECT_EQ(round(Qt::Key_Backtab), reversed(expected));
    }
};

const QStringList above{"Run", "Operator's badge", "Systems"};
const QStringList views{"Loop: number of passes", "Group G1", "Group G2"};
const QStringList logLine{"Show the log"};

TEST_F(TabThroughAllTest, GoesFromTheToolBarThroughTheViewsToTheLogAndComesRound)
{
    start();
    expectRound(above + views + logLine);
}

TEST_F(TabThroughAllTest, ReachesEveryControlOfPanelsOfTwoGroupsTheInstructionsAndTheOpenLog)
{
    start();
    badge->setBadge("OP7");
    stationWindow().setRunning(true);
    badge->setRunning(true);
    stationWindow().logPane()->setFolded(false);
    openGroup(1, {{"input", Array{"S1"}}});
    open(0, {{"input", Array{"SN"}}, {"instruction", "Hold it **up**"}});
    ASSERT_TRUE(testsupport::waitUntil([&] { return stationWindow().instructionPane()->isVisible(); }));
    const QStringList all = QStringList{"Stop", "Systems"} + views +
                            QStringList{"SN, slot S1, group G2",
                                        "SN, group G2",
                                        "Use, slot S1, group G2",
                                        "Cancel, group G2",
                                        "Clear, group G2",
                                        "OK, group G2",
                                        "SN, slot S1, group G1",
                                        "OK, slot S1, group G1",
                                        "Smaller",
                                        "Larger",
                                        "Fit to width",
                                        "Fold",
                                        "Instructions",
                                        "Fold the log",
                                        "All levels",
                                        "All systems",
                                        "Text in the log's lines",
                                        "Lines of the log"};
    expectRound(all);
    stationWindow().setRunning(false);
    badge->setRunning(false);
    QStringList after = all;
    after.replace(0, "Run again");
    after.insert(1, "Operator's badge");
    after.insert(2, "Log out");
    expectRound(after);
}

TEST_F(TabThroughAllTest, EveryControlThatCanBeUsedIsReachedAndNoneThatCannot)
{
    openGroup(0, {{"input", Array{"S1", "S2"}}, {"switch", Array{"S1"}}});
    stationWindow().logPane()->setFolded(false);
    QWidgetList wanted;
    for (QWidget *widget : window().findChildren<QWidget *>()) {
        const bool canBeUsed = widget->isVisible() && widget->isEnabled() && widget->window() == &window();
        if (canBeUsed && (widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy())
            wanted.append(widget);
    }
    QWidgetList reached;
    window().setFocus();
    for (qsizetype i = 0; i < wanted.size(); ++i) {
        key(Qt::Key_Tab);
        reached.append(window().focusWidget());
    }
    std::sort(wanted.begin(), wanted.end());
    std::sort(reached.begin(), reached.end());
    EXPECT_EQ(reached, wanted);
    // What a mouse can press, keys can press too.
    for (const QAbstractButton *button : window().findChildren<QAbstractButton *>()) {
        if (button->isVisible() && button->isEnabled() && button->window() == &window()) {
            EXPECT_TRUE(button->focusPolicy() & Qt::TabFocus) << button->objectName().toStdString();
        }
    }
}

TEST_F(TabThroughAllTest, ATabThatIsScrolledOutOfSightIsScrolledIntoIt)
{
    station.slotNames = QStringList{"S1", "S2", "S3", "S4", "S5", "S6", "S7", "S8", "S9"};
    for (int system = 0; system < 18; ++system)
        open(system, {{"input", Array{"SN"}}, {"column", "1"}});
    stationWindow().resize(900, 640);
    settle();
    for (const QString &name : round()) {
        const QWidget *focusedNow = window().focusWidget();
        EXPECT_FALSE(focusedNow->visibleRegion().isEmpty()) << name.toStdString();
        key(Qt::Key_Tab);
    }
}

TEST_F(TabThroughAllTest, ASecondPluginsTabIsChosenWithArrows)
{
    start();
    stationWindow().addPluginView("Second", new platform::View(platform::Rect(0, 0, 100, 100)), {100, 100});
    EXPECT_EQ(round(), above + QStringList{"Interactive"} + views + logLine);
    tabTo("Interactive");
    key(Qt::Key_Right);
    EXPECT_EQ(stationWindow().findChild<QTabWidget *>()->currentIndex(), 1);
    EXPECT_EQ(round(), above + QStringList{"Second"} + logLine);
}

TEST_F(TabThroughAllTest, NobodyGetsTheFocusWhenTheOneThatHasItGoes)
{
    open(0, {{"instruction", "Hold it up"}, {"button", Array{"Done"}}});
    ASSERT_TRUE(testsupport::waitUntil([&] { return stationWindow().instructionPane()->isVisible(); }));
    tabTo("Instructions");
    stationWindow().instructionPane()->setFolded(true);
    EXPECT_EQ(focused(), "");
    tabTo("Done, slot S1, group G1");
    key(Qt::Key_Space);
    ASSERT_TRUE(waitForPanelGone("0"));
    EXPECT_EQ(focused(), "");
    tabTo("Run");
    stationWindow().setRunning(true);
    EXPECT_EQ(focused(), "");
}

} // namespace
