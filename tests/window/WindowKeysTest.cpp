#include "platform/View.h"
#include "station/window/ErrorButton.h"
#include "station/window/LogPane.h"
#include "station/window/LogView.h"
#include "station/window/ShortcutGuard.h"
#include "station/window/StationWindow.h"
#include "station/window/StatusTable.h"
#include "station/window/WindowMenus.h"
#include "tests/support/LogTrap.h"
#include "tests/support/ManualKeyClock.h"
#include "tests/support/Wait.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include <gtest/gtest.h>

using platform::Rect;
using platform::View;
using station::StationWindow;
using testsupport::waitUntil;

namespace {

/// The window with a plug-in's view that has two fields; keys come from the window system.
class WindowKeysTest : public ::testing::Test
{
protected:
    WindowKeysTest()
    {
        window.addPluginView("Interactive", view, {300, 200});
        for (QLineEdit *field : {first, second})
            field->resize(100, 24);
        second->move(0, 40);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(waitUntil([this] { return window.isActiveWindow(); }));
    }

    void press(int key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window.windowHandle(), static_cast<Qt::Key>(key), modifiers);
    }
    [[nodiscard]] QToolButton *button(QAction *action) const
    {
        return qobject_cast<QToolButton *>(window.findChild<QToolBar *>()->widgetForAction(action));
    }
    [[nodiscard]] QWidget *focused() const { return QApplication::focusWidget(); }
    [[nodiscard]] bool hasRing() const { return window.findChild<QWidget *>("focusRing")->isVisible(); }

    View *view = new View(Rect(0, 0, 300, 200));
    QLineEdit *first = new QLineEdit(view);
    QLineEdit *second = new QLineEdit(view);
    StationWindow window{"Final test 4", {{0, "G1", "S1"}}};
    QSignalSpy runs{&window, &StationWindow::runRequested};
    QSignalSpy stops{&window, &StationWindow::stopRequested};
};

} // namespace

TEST_F(WindowKeysTest, RunAndStopHaveTheirKeysWhileAFieldHasTheFocus)
{
    first->setFocus();
    press(Qt::Key_F5);
    EXPECT_EQ(runs.count(), 1);
    window.setRunning(true);
    press(Qt::Key_F5, Qt::ShiftModifier);
    EXPECT_EQ(stops.count(), 1);
    EXPECT_EQ(first->text(), "");
    EXPECT_EQ(focused(), first);
}

TEST_F(WindowKeysTest, PressingRunTwiceQuicklyRunsOnce)
{
    QObject::connect(&window, &StationWindow::runRequested, [this] { window.setRunning(true); });
    press(Qt::Key_F5);
    press(Qt::Key_F5);
    EXPECT_EQ(runs.count(), 1);
    press(Qt::Key_F5, Qt::ShiftModifier);
    press(Qt::Key_F5, Qt::ShiftModifier);
    EXPECT_EQ(stops.count(), 1);
}

TEST_F(WindowKeysTest, StopBeforeARunAndRunDuringOneDoNothing)
{
    press(Qt::Key_F5, Qt::ShiftModifier);
    EXPECT_EQ(stops.count(), 0);
    window.setRunning(true);
    press(Qt::Key_F5);
    EXPECT_EQ(runs.count(), 0);
}

TEST_F(WindowKeysTest, TheLogFoldsAndTheProgramEndsByKeys)
{
    first->setFocus();
    press(Qt::Key_L, Qt::ControlModifier);
    EXPECT_FALSE(window.logPane()->isFolded());
    EXPECT_TRUE(window.menus()->log()->isChecked());
    press(Qt::Key_L, Qt::ControlModifier);
    EXPECT_TRUE(window.logPane()->isFolded());
    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_TRUE(waitUntil([this] { return !window.isVisible(); }));
}

TEST_F(WindowKeysTest, AControlCharacterInTheMidstOfAScanIsNoShortcut)
{
    first->setFocus();
    std::chrono::steady_clock::time_point now = std::chrono::steady_clock::now();
    window.findChild<station::ShortcutGuard *>()->setClock([&] { return now; });
    QTest::keyClicks(first, "AB");
    press(Qt::Key_Q, Qt::ControlModifier);
    press(Qt::Key_L, Qt::ControlModifier);
    QTest::keyClicks(first, "cd");
    QApplication::processEvents();
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.logPane()->isFolded());
    EXPECT_EQ(first->text(), "ABcd");
    now += station::ShortcutGuard::FasterThanAHand;
    press(Qt::Key_L, Qt::ControlModifier);
    EXPECT_FALSE(window.logPane()->isFolded()) << "a person has pressed it";
    QTest::keyClicks(first, "ef");
    press(Qt::Key_Return);
    press(Qt::Key_L, Qt::ControlModifier);
    EXPECT_TRUE(window.logPane()->isFolded()) << "the scan had ended";
}

TEST_F(WindowKeysTest, TheAltKeyByItselfLeavesTheFocusWhereItIs)
{
    first->setFocus();
    press(Qt::Key_Alt);
    EXPECT_EQ(focused(), first);
}

TEST_F(WindowKeysTest, NoEntryOfAMenuHasALetterThatAScanWouldPress)
{
    int entries = 0;
    for (const QMenu *menu : window.menuBar()->findChildren<QMenu *>()) {
        for (const QAction *entry : menu->actions()) {
            // What is cut off at the bar's end.
            if (window.menuBar()->actions().contains(entry))
                continue;
            EXPECT_FALSE(entry->text().contains(QLatin1Char('&'))) << entry->text().toStdString();
            ++entries;
        }
    }
    EXPECT_GE(entries, 8);
}

TEST_F(WindowKeysTest, TabReachesEveryControlInTheOrderOfTheEye)
{
    window.logPane()->setFolded(false);
    window.setFocus();
    const QWidgetList order{button(window.runAction()),
                            window.statusTable(),
                            first,
                            second,
                            window.logPane()->foldButton(),
                            window.logPane()->levelBox(),
                            window.logPane()->systemBox(),
                            window.logPane()->textField(),
                            window.logPane()->view()};
    for (QWidget *wanted : order) {
        press(Qt::Key_Tab);
        EXPECT_EQ(focused(), wanted) << wanted->metaObject()->className();
        EXPECT_EQ(hasRing(), wanted != first && wanted != second);
    }
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), order.first());
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focused(), order.last());
}

TEST_F(WindowKeysTest, TheRingGoesWithAControlThatItsHolderTakesElsewhere)
{
    auto *tool = new QWidget;
    tool->setFixedSize(120, 30);
    auto *edit = new QLineEdit(tool);
    window.addTool(tool);
    QCoreApplication::processEvents();
    edit->setFocus(Qt::OtherFocusReason);
    ASSERT_TRUE(hasRing());
    tool->move(tool->x() - 8, tool->y());
    const QRect place(edit->mapTo(&window, QPoint(0, 0)), edit->size());
    EXPECT_EQ(window.findChild<QWidget *>("focusRing")->geometry(),
              place.adjusted(-3, -3, 3, 3) & window.rect());
}

TEST_F(WindowKeysTest, ReturnPressesTheButtonThatHasTheFocus)
{
    window.setFocus();
    press(Qt::Key_Tab);
    ASSERT_EQ(focused(), button(window.runAction()));
    press(Qt::Key_Return);
    EXPECT_EQ(runs.count(), 1);
}

TEST_F(WindowKeysTest, AScanPressesNoButtonAlsoWhereNobodyTakesIt)
{
    testsupport::ManualKeyClock clock;
    for (QAction *action : {window.runAction(), window.stopAction()}) {
        window.setRunning(action == window.stopAction());
        window.setFocus();
        clock.pause();
        press(Qt::Key_Tab);
        ASSERT_EQ(focused(), button(action));
        for (const int each : {Qt::Key_A, Qt::Key_Space, Qt::Key_1, Qt::Key_Return})
            press(each);
        EXPECT_EQ(runs.count() + stops.count(), 0);
    }
    clock.pause();
    press(Qt::Key_Return);
    EXPECT_EQ(stops.count(), 1) << "a person has pressed it";
}

TEST_F(WindowKeysTest, TheErrorLineUnfoldsTheLogWithReturn)
{
    testsupport::expectError("wrong");
    KVKLogGetProxy()->proxyLogMessage(KVKLogLevel::Error, "wrong", {});
    ASSERT_TRUE(waitUntil([this] { return window.logPane()->errorButton()->isVisible(); }));
    second->setFocus();
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    ASSERT_EQ(focused(), window.logPane()->errorButton());
    press(Qt::Key_Return);
    EXPECT_FALSE(window.logPane()->isFolded());
    EXPECT_FALSE(window.logPane()->errorButton()->isVisible());
}

TEST_F(WindowKeysTest, NoButtonGetsTheFocusByItselfSoThatAReturnPressesNone)
{
    // A run begins while Run has the focus, and its field goes while it has.
    window.setFocus();
    press(Qt::Key_Tab);
    ASSERT_EQ(focused(), button(window.runAction()));
    window.setRunning(true);
    press(Qt::Key_Return);
    EXPECT_EQ(stops.count(), 0);
    second->setFocus();
    second->hide();
    first->hide();
    press(Qt::Key_Return);
    EXPECT_EQ(stops.count(), 0);
    EXPECT_NE(focused(), window.logPane()->foldButton());
    EXPECT_TRUE(window.logPane()->isFolded());
}

TEST_F(WindowKeysTest, WhoeverHasLookedForATextInTheLogGivesTheKeysBackWithReturnOrEscape)
{
    window.logPane()->setFolded(false);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        window.logPane()->textField()->setFocus(Qt::MouseFocusReason);
        ASSERT_EQ(focused(), window.logPane()->textField());
        press(key);
        EXPECT_NE(focused(), window.logPane()->textField());
    }
}
