#include "station/window/StationWindow.h"

#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/View.h"
#include "station/window/StatusTable.h"
#include "tests/support/Wait.h"

#include <QAction>
#include <QSignalSpy>

#include <gtest/gtest.h>

using platform::Rect;
using platform::View;
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

TEST_F(StationWindowTest, GivesThePluginsViewItsSizeAtLeast)
{
    auto *view = new View(Rect(0, 0, 1000, 700));
    window.addPluginView("Interactive", view, {1000, 700});
    show();
    EXPECT_GE(view->frame().width(), 1000.0);
    EXPECT_GE(view->frame().height(), 700.0);
    window.resize(200, 200);
    EXPECT_GE(view->frame().width(), 1000.0);
    EXPECT_GE(view->frame().height(), 700.0);
}

TEST_F(StationWindowTest, GivesThePluginsViewTheRoomThatItGains)
{
    auto *view = new View(Rect(0, 0, 600, 400));
    window.addPluginView("Interactive", view, {600, 400});
    show();
    const platform::Size before = view->frame().size();
    window.resize(window.width() + 100, window.height() + 50);
    EXPECT_EQ(view->frame().size(), before + platform::Size(100, 50));
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

TEST(StationWindowEnd, HighlightRequestsAfterItsEndAreDropped)
{
    {
        const StationWindow window("Final test 4", {{0, "G1", "S1"}});
    }
    KVKExtensionStatusRelay::sharedStatusRelay()->startHighlightingForSystemIndex(0);
}

TEST_F(StationWindowTest, ShowsAStatusAndTheStateOfASystem)
{
    window.setStatus("4 of 8 passed");
    window.setSystemState(1, SystemState::Passed);
    EXPECT_EQ(window.status(), "4 of 8 passed");
    EXPECT_EQ(window.statusTable()->model()->index(1, StatusModel::StateColumn).data(), "Passed");
}

TEST_F(StationWindowTest, ALongStatusDoesNotWidenTheWindow)
{
    const int width = window.minimumSizeHint().width();
    window.setStatus(QString(500, 'x'));
    EXPECT_EQ(window.minimumSizeHint().width(), width);
}

TEST_F(StationWindowTest, NothingAroundThePluginsViewTakesTheFocus)
{
    auto *view = new View(Rect(0, 0, 100, 100));
    window.addPluginView("Interactive", view, {100, 100});
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        if (widget == view || !widget->isVisibleTo(&window))
            continue;
        EXPECT_EQ(widget->focusPolicy() & Qt::TabFocus, 0) << widget->metaObject()->className();
        EXPECT_NE(widget->focusPolicy() & Qt::ClickFocus, Qt::ClickFocus)
            << widget->metaObject()->className();
    }
}
