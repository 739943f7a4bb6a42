#include "station/window/StationWindow.h"

#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/View.h"
#include "station/window/ErrorButton.h"
#include "station/window/LogPane.h"
#include "station/window/RunProgress.h"
#include "station/window/StatusTable.h"
#include "tests/support/LogTrap.h"
#include "tests/support/Wait.h"

#include <QAccessible>
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QSignalSpy>
#include <QSplitter>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <gtest/gtest.h>

using platform::Rect;
using platform::View;
using station::ErrorButton;
using station::RunProgress;
using station::StationWindow;
using station::StatusModel;
using station::SystemState;
using testsupport::waitUntil;

namespace {

class StationWindowTest : public ::testing::Test
{
protected:
    void show()
    {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(waitUntil([this] { return window.isActiveWindow(); }));
    }
    [[nodiscard]] bool isHighlighted(int row) const
    {
        return window.statusTable()->model()->index(row, 0).data(StatusModel::HighlightRole).toBool();
    }

    StationWindow window{"Final test 4", {{0, "G1", "S1"}, {1, "G1", "S2"}}};
    QSignalSpy runs{&window, &StationWindow::runRequested};
    QSignalSpy stops{&window, &StationWindow::stopRequested};
};

} // namespace

TEST_F(StationWindowTest, GivesThePluginsViewItsSizeWhereThereIsTheRoom)
{
    auto *view = new View(Rect(0, 0, 1000, 700));
    window.addPluginView("Interactive", view, {1000, 700});
    show();
    window.resize(1340, 850);
    EXPECT_GE(view->frame().width(), 1000.0);
    EXPECT_GE(view->frame().height(), 700.0);
    // What is more goes to the table first, then to the view.
    window.resize(2000, 900);
    EXPECT_GE(window.statusTable()->width(), window.statusTable()->sizeHint().width());
    EXPECT_GT(view->frame().width(), 1000.0);
}

TEST_F(StationWindowTest, FitsASmallScreenWhateverPluginsAskFor)
{
    auto *view = new View(Rect(0, 0, 2000, 1500));
    window.addPluginView("Interactive", view, {2000, 1500});
    window.addPluginView("Another", new View(Rect(0, 0, 100, 100)), {100, 100});
    show();
    window.resize(200, 200);
    EXPECT_LE(window.width(), 1024 - 8);
    EXPECT_LE(window.height(), 768 - 36);
    EXPECT_GE(view->frame().width(), StationWindow::PanelRoom.width());
    EXPECT_GE(view->frame().height(), StationWindow::PanelRoom.height());
}

TEST_F(StationWindowTest, NeverOpensLargerThanItsScreen)
{
    const QRect screen = window.screen()->availableGeometry();
    ASSERT_LT(screen.width(), 1440) << "the screen is too large to show it";
    EXPECT_LE(window.width(), screen.width());
    EXPECT_LE(window.height(), screen.height());
}

TEST_F(StationWindowTest, ASmallViewKeepsItsSizeAtLeast)
{
    auto *view = new View(Rect(0, 0, 300, 200));
    window.addPluginView("Interactive", view, {300, 200});
    show();
    window.resize(100, 100);
    EXPECT_GE(view->frame().width(), 300.0);
    EXPECT_GE(view->frame().height(), 200.0);
}

TEST_F(StationWindowTest, GivesThePluginsViewTheRoomThatItGains)
{
    auto *view = new View(Rect(0, 0, 600, 400));
    window.addPluginView("Interactive", view, {600, 400});
    show();
    window.resize(1300, 800);
    const platform::Size before = view->frame().size();
    window.resize(window.width() + 100, window.height() + 50);
    EXPECT_EQ(view->frame().size(), before + platform::Size(100, 50));
}

TEST_F(StationWindowTest, ASplitterThatAPersonHasMovedStaysWhereItIs)
{
    window.addPluginView("Interactive", new View(Rect(0, 0, 600, 400)), {600, 400});
    show();
    window.resize(1300, 800);
    auto *splitter = qobject_cast<QSplitter *>(window.statusTable()->parentWidget());
    ASSERT_NE(splitter, nullptr);
    QSplitterHandle *handle = splitter->handle(1);
    const QPoint from = handle->rect().center();
    QTest::mousePress(handle, Qt::LeftButton, {}, from);
    QTest::mouseMove(handle, from + QPoint(60, 0));
    QTest::mouseRelease(handle, Qt::LeftButton, {}, from + QPoint(60, 0));
    const int width = window.statusTable()->width();
    EXPECT_GT(width, window.statusTable()->sizeHint().width());
    window.resize(1400, 800);
    EXPECT_EQ(window.statusTable()->width(), width);
}

TEST(StationWindowName, AShortNameIsShownWhole)
{
    for (const char *name :
         {"Line 3", "Final test 4", "Prüfstand 7", "i", "Demo, act 1: a panel per position"}) {
        StationWindow window(QString::fromUtf8(name), {{0, "G1", "S1"}});
        window.resize(1200, 732);
        window.show();
        bool shown = false;
        for (const QLabel *label : window.findChildren<QLabel *>())
            shown = shown || label->text() == QString::fromUtf8(name);
        EXPECT_TRUE(shown) << name;
    }
}

TEST(StationWindowName, GivesWayToWhatTellsOfTheRunOnASmallScreen)
{
    StationWindow window("Final test, line 3, position 12", {{0, "G1", "S1"}});
    // As wide as the operator's badge.
    auto *tool = new QWidget;
    tool->setFixedWidth(325);
    window.addTool(tool);
    window.resize(1016, 732);
    window.show();
    window.setRunning(true);
    window.setProgress(1, 7, 8);
    window.setRunning(false);
    window.setStatus("Not all passed");
    QCoreApplication::processEvents();
    EXPECT_LE(window.width(), 1016);
    EXPECT_TRUE(tool->isVisible());
    EXPECT_LE(tool->mapTo(&window, QPoint(tool->width(), 0)).x(), window.width());
    bool hasRunAgain = false;
    for (const QToolButton *button : window.findChildren<QToolButton *>()) {
        if (button->text() != "Run again")
            continue;
        hasRunAgain = true;
        EXPECT_GE(button->width(), button->sizeHint().width());
    }
    EXPECT_TRUE(hasRunAgain);
    EXPECT_EQ(window.findChild<QLabel *>("status")->text(), "Not all passed");
    EXPECT_EQ(window.progress()->shownText(), QStringLiteral("1 of 8 done · 7 stopped"));
}

TEST(StationWindowName, ALongNameLeavesRunAndStopInSight)
{
    const QString name(200, 'N');
    StationWindow window(name, {{0, "G1", "S1"}});
    window.resize(1016, 732);
    window.setStatus(QString(300, 'x'));
    window.show();
    EXPECT_LE(window.width(), 1016);
    for (const QToolButton *button : window.findChildren<QToolButton *>()) {
        if (button->text() == "Run" || button->text() == "Stop") {
            EXPECT_TRUE(button->isVisible()) << button->text().toStdString();
        }
    }
    bool told = false;
    for (const QLabel *label : window.findChildren<QLabel *>())
        told = told || label->toolTip() == name;
    EXPECT_TRUE(told) << "no tooltip has the whole name";
}

TEST_F(StationWindowTest, GivesEveryPluginATab)
{
    auto *first = new View(Rect(0, 0, 100, 100));
    auto *second = new View(Rect(0, 0, 100, 100));
    window.addPluginView("First", first, {100, 100});
    window.addPluginView("Second", second, {100, 100});
    show();
    EXPECT_TRUE(first->isVisible());
    EXPECT_FALSE(second->isVisible());
}

TEST_F(StationWindowTest, RunCanBePressedWhileNothingRuns)
{
    EXPECT_TRUE(window.runAction()->isEnabled());
    EXPECT_FALSE(window.stopAction()->isEnabled());
    window.runAction()->trigger();
    EXPECT_EQ(runs.count(), 1);
}

TEST_F(StationWindowTest, StopCanBePressedOnceWhileSequencesRun)
{
    window.setRunning(true);
    EXPECT_FALSE(window.runAction()->isEnabled());
    ASSERT_TRUE(window.stopAction()->isEnabled());
    window.stopAction()->trigger();
    EXPECT_EQ(stops.count(), 1);
    EXPECT_FALSE(window.stopAction()->isEnabled());
}

TEST_F(StationWindowTest, RunComesBackWhenTheSequencesHaveEnded)
{
    window.setRunning(true);
    window.stopAction()->trigger();
    window.setRunning(false);
    EXPECT_TRUE(window.runAction()->isEnabled());
    window.setRunning(true);
    EXPECT_TRUE(window.stopAction()->isEnabled());
}

TEST_F(StationWindowTest, ClosesAtOnceWhenNothingRuns)
{
    show();
    EXPECT_TRUE(window.close());
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(stops.count(), 0);
}

TEST_F(StationWindowTest, ClosingWhileSequencesRunStopsThemFirst)
{
    show();
    window.setRunning(true);
    EXPECT_FALSE(window.close());
    EXPECT_EQ(stops.count(), 1);
    EXPECT_TRUE(window.isVisible());
    window.setRunning(false);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(StationWindowTest, ClosingTwiceStopsOnce)
{
    show();
    window.setRunning(true);
    window.close();
    window.close();
    EXPECT_EQ(stops.count(), 1);
}

TEST_F(StationWindowTest, ClosingAfterStopWaitsAsWell)
{
    show();
    window.setRunning(true);
    window.stopAction()->trigger();
    EXPECT_FALSE(window.close());
    EXPECT_EQ(stops.count(), 1);
    window.setRunning(false);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(StationWindowTest, StoppingDoesNotCloseIt)
{
    show();
    window.setRunning(true);
    window.stopAction()->trigger();
    window.setRunning(false);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(StationWindowTest, FollowsHighlightRequestsOfPlugins)
{
    KVKExtensionStatusRelay::sharedStatusRelay()->startHighlightingForSystemIndex(1);
    EXPECT_TRUE(isHighlighted(1));
    EXPECT_FALSE(isHighlighted(0));
    KVKExtensionStatusRelay::sharedStatusRelay()->stopHighlightingForSystemIndex(1);
    EXPECT_FALSE(isHighlighted(1));
}

TEST_F(StationWindowTest, ShowsALineOfAPluginInItsStatusBarUntilTheNextOne)
{
    show();
    window.setStatus("Running");
    auto *bar = window.statusBar()->findChild<QLabel *>();
    const int height = window.statusTable()->height();
    EXPECT_EQ(window.message(), "");
    KVKExtensionStatusRelay::sharedStatusRelay()->showMessage("No field waits for \"X1\"");
    EXPECT_EQ(window.message(), "No field waits for \"X1\"");
    EXPECT_EQ(bar->text(), "No field waits for \"X1\"");
    EXPECT_TRUE(bar->isVisible());
    EXPECT_TRUE(bar->autoFillBackground());
    EXPECT_EQ(window.status(), "Running");
    KVKExtensionStatusRelay::sharedStatusRelay()->showMessage("Another");
    EXPECT_EQ(window.message(), "Another");
    EXPECT_EQ(window.statusTable()->height(), height) << "the panes have moved";
}

TEST_F(StationWindowTest, ALineOfAPluginGoesAfterTenSeconds)
{
    auto *time = window.findChild<QTimer *>("messageTime");
    ASSERT_NE(time, nullptr);
    EXPECT_FALSE(time->isActive());
    window.showMessage("No field waits");
    EXPECT_TRUE(time->isActive());
    EXPECT_EQ(time->interval(), 10'000);
    time->start(0);
    EXPECT_TRUE(waitUntil([this] { return window.message().isEmpty(); }));
    EXPECT_FALSE(window.statusBar()->findChild<QLabel *>()->autoFillBackground());
}

TEST_F(StationWindowTest, ALineThatIsTooLongIsElidedAndStandsInItsTooltip)
{
    show();
    const QString line(1000, 'x');
    const int width = window.width();
    window.showMessage(line);
    const auto *bar = window.statusBar()->findChild<QLabel *>();
    EXPECT_TRUE(bar->text().endsWith(QChar(0x2026))) << bar->text().toStdString();
    EXPECT_EQ(bar->toolTip(), line);
    EXPECT_EQ(window.message(), line);
    EXPECT_EQ(window.width(), width);
}

TEST_F(StationWindowTest, ItsControlsHaveNamesForThoseWhoCannotSeeThem)
{
    EXPECT_EQ(window.statusTable()->accessibleName(), "Systems");
    EXPECT_EQ(window.logPane()->accessibleName(), "Log");
    window.setStatus("All passed");
    EXPECT_EQ(window.findChild<QLabel *>("status")->accessibleName(), "Status: All passed");
    window.showMessage("No field waits");
    EXPECT_EQ(window.findChild<QLabel *>("message")->accessibleName(), "Message: No field waits");
    for (QToolButton *button : window.findChildren<QToolButton *>()) {
        const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(button);
        if (button->isVisibleTo(&window)) {
            EXPECT_FALSE(interface->text(QAccessible::Name).isEmpty());
        }
    }
}

TEST(StationWindowEnd, HighlightRequestsAfterItsEndAreDropped)
{
    {
        const StationWindow window("Final test 4", {{0, "G1", "S1"}});
    }
    KVKExtensionStatusRelay::sharedStatusRelay()->startHighlightingForSystemIndex(0);
    KVKExtensionStatusRelay::sharedStatusRelay()->showMessage("too late");
}

TEST_F(StationWindowTest, ShowsAStatusAndTheStateOfASystem)
{
    window.setStatus("4 of 8 passed");
    window.setSystemState(1, SystemState::Passed);
    EXPECT_EQ(window.status(), "4 of 8 passed");
    EXPECT_EQ(window.statusTable()->model()->index(1, StatusModel::StateColumn).data(), "Passed");
    window.setSystemSequence(1, "ask.lua");
    window.setSystemAnswer(1, "SN1");
    EXPECT_EQ(window.statusTable()->model()->index(1, StatusModel::SequenceColumn).data(), "ask.lua");
    EXPECT_EQ(window.statusTable()->model()->index(1, StatusModel::AnswerColumn).data(), "SN1");
}

TEST_F(StationWindowTest, ALongStatusDoesNotWidenTheWindow)
{
    const int width = window.minimumSizeHint().width();
    window.setStatus(QString(500, 'x'));
    EXPECT_EQ(window.minimumSizeHint().width(), width);
}

/// With Tab a person gets to all of it: see WindowKeysTest.
TEST_F(StationWindowTest, NothingAroundThePluginsViewTakesTheFocusByAClickOrByItself)
{
    auto *view = new View(Rect(0, 0, 100, 100));
    window.addPluginView("Interactive", view, {100, 100});
    window.logPane()->setFolded(false);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(testsupport::waitUntil([this] { return window.isActiveWindow(); }));
    EXPECT_TRUE(!window.focusWidget() || window.focusWidget() == &window);
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        // Whoever looks for a text in the log has to type it.
        if (widget == view || widget == window.logPane()->textField() || widget->window() != &window)
            continue;
        EXPECT_NE(widget->focusPolicy() & Qt::ClickFocus, Qt::ClickFocus)
            << widget->metaObject()->className();
    }
}

TEST_F(StationWindowTest, WhatWasRefusedBeforeARunIsNotSaidOfIt)
{
    window.showMessage("Entry refused: SN000099 (no field waits for it)");
    window.setRunning(true);
    EXPECT_EQ(window.message(), "");
    window.showMessage("Entry refused: SN000098 (no field waits for it)");
    window.setRunning(true);
    EXPECT_EQ(window.message(), "Entry refused: SN000098 (no field waits for it)");
}

TEST_F(StationWindowTest, RunIsRunAgainAfterARunAndTheTooltipsTellTheKeys)
{
    EXPECT_EQ(window.runAction()->text(), "Run");
    EXPECT_EQ(window.runAction()->toolTip(), "Run (F5)");
    EXPECT_EQ(window.stopAction()->toolTip(), "Stop (Shift+F5)");
    window.setRunning(true);
    EXPECT_EQ(window.runAction()->text(), "Run");
    window.setRunning(false);
    EXPECT_EQ(window.runAction()->text(), "Run again");
    EXPECT_EQ(window.runAction()->toolTip(), "Run again (F5)");
}

TEST_F(StationWindowTest, TellsHowManySystemsAreDoneAndWhichPassALoopIsIn)
{
    KVKExtensionStatusRelay *relay = KVKExtensionStatusRelay::sharedStatusRelay();
    const RunProgress &progress = *window.progress();
    EXPECT_EQ(progress.text(), "");
    window.setRunning(true);
    window.setProgress(7, 0, 12);
    EXPECT_EQ(progress.text(), "7 of 12 systems done");
    EXPECT_EQ(progress.value(), 7);
    EXPECT_EQ(progress.maximum(), 12);
    relay->showPasses(3, {1, 1});
    EXPECT_EQ(progress.text(), QStringLiteral("7 of 12 systems done · pass 2 of 3"));
    relay->showPasses(3, {0, 2});
    EXPECT_EQ(progress.text(), QStringLiteral("7 of 12 systems done · passes 1–3 of 3"));
    relay->showPasses(3, {3, 4});
    EXPECT_EQ(progress.text(), QStringLiteral("7 of 12 systems done · pass 3 of 3"));
    window.setProgress(7, 5, 12);
    EXPECT_EQ(progress.text(), QStringLiteral("7 of 12 systems done · 5 stopped · pass 3 of 3"));
    EXPECT_EQ(progress.value(), 7);
    window.setRunning(false);
    window.setRunning(true);
    EXPECT_EQ(progress.text(), "0 of 12 systems done");
    relay->showPasses(1, {0, 0});
    EXPECT_EQ(progress.text(), "0 of 12 systems done");
    EXPECT_EQ(progress.accessibleName(), "Progress: 0 of 12 systems done");
}

TEST_F(StationWindowTest, PassesThatWereAskedForBeforeARunCountInIt)
{
    KVKExtensionStatusRelay::sharedStatusRelay()->showPasses(3, {0, 0});
    window.setRunning(true);
    EXPECT_EQ(window.progress()->text(), "pass 1 of 3");
}

TEST_F(StationWindowTest, ErrorsOfTheRunBeforeGoWithTheNextOne)
{
    testsupport::expectError("wrong");
    KVKLogGetProxy()->proxyLogMessage(KVKLogLevel::Error, "wrong", {});
    ErrorButton &errors = *window.logPane()->errorButton();
    ASSERT_TRUE(waitUntil([&] { return errors.errors() == 1; }));
    window.setRunning(true);
    EXPECT_EQ(errors.errors(), 0);
}
