#include "station/window/UpperRow.h"

#include "kovan/KovanUIExtension/KVKExtensionGuidanceRelay.h"
#include "platform/View.h"
#include "station/instruction/InstructionPane.h"
#include "station/window/StationWindow.h"
#include "station/window/StatusTable.h"
#include "station/window/ViewArea.h"
#include "tests/instruction/PictureFiles.h"
#include "tests/support/Wait.h"

#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

using platform::Rect;
using platform::View;
using station::InstructionPane;
using station::StationWindow;
using testsupport::waitUntil;

namespace {

/// The station's window with a plug-in's view, and a panel that comes and goes with something to look at.
class UpperRowTest : public ::testing::Test
{
protected:
    UpperRowTest()
    {
        window.addPluginView("Interactive", view, {600, 400});
        window.resize(780, 640);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(waitUntil([this] { return window.isActiveWindow(); }));
    }

    void open()
    {
        KVKExtensionGuidanceRelay::sharedGuidanceRelay()->offer(guidance);
        KVKExtensionGuidanceRelay::sharedGuidanceRelay()->beginCurrent(guidance);
        settle();
    }
    void close()
    {
        KVKExtensionGuidanceRelay::sharedGuidanceRelay()->withdraw(guidance);
        pane().findChild<QTimer *>("leaves")->start(0);
        EXPECT_TRUE(waitUntil([this] { return !pane().isInUse(); }));
        settle();
    }
    /// Lets layouts that were asked for be done.
    static void settle()
    {
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    }
    [[nodiscard]] InstructionPane &pane() { return *window.instructionPane(); }
    [[nodiscard]] station::ViewArea &area() { return *window.findChild<station::ViewArea *>(); }

    View *view = new View(Rect(0, 0, 600, 400));
    StationWindow window{"Final test 4", {{0, "G1", "S1"}, {1, "G1", "S2"}}};
    KVKGuidancePointer guidance = std::make_shared<const KVKGuidance>(KVKGuidance{"G1 S1", "", "Look", ""});
};

TEST_F(UpperRowTest, ThePaneHasNoWidthWhileNobodyUsesIt)
{
    EXPECT_FALSE(pane().isVisible());
    open();
    EXPECT_TRUE(pane().isVisible());
    EXPECT_GE(pane().width(), 220);
    close();
    EXPECT_FALSE(pane().isVisible());
    EXPECT_EQ(area().geometry().right(), area().parentWidget()->rect().right());
}

TEST_F(UpperRowTest, TheViewKeepsItsSizeAtEveryMomentWhereTheScreenHasNoRoom)
{
    ASSERT_LT(window.screen()->availableGeometry().width(), 1000) << "the screen is too large to show it";
    const QSignalSpy frames(view, &View::frameChanged);
    const int table = window.statusTable()->width();
    open();
    pane().setFolded(true);
    settle();
    pane().setFolded(false);
    settle();
    EXPECT_LT(area().width(), view->width());
    EXPECT_EQ(window.statusTable()->width(), table);
    close();
    EXPECT_EQ(frames.count(), 0);
    EXPECT_EQ(window.statusTable()->width(), table);
    EXPECT_EQ(area().viewport()->width(), view->width());
}

TEST_F(UpperRowTest, TheWindowBecomesWiderWhereThereIsTheRoom)
{
    window.setStandsOnNoScreen();
    const QSignalSpy frames(view, &View::frameChanged);
    const int width = window.width();
    open();
    EXPECT_EQ(window.width(), width + pane().width() + 5);
    EXPECT_EQ(pane().width(), 380);
    EXPECT_EQ(area().viewport()->width(), view->width());
    pane().setFolded(true);
    settle();
    EXPECT_EQ(window.width(), width + 36 + 5);
    pane().setFolded(false);
    settle();
    close();
    EXPECT_EQ(window.width(), width);
    EXPECT_EQ(frames.count(), 0);
}

TEST_F(UpperRowTest, AWindowThatAPersonHasResizedMeanwhileIsNotMadeNarrower)
{
    window.setStandsOnNoScreen();
    open();
    window.resize(window.width() + 50, window.height());
    const int width = window.width();
    close();
    EXPECT_EQ(window.width(), width);
}

TEST_F(UpperRowTest, TheViewFollowsTheWindowBesideThePaneToo)
{
    open();
    const platform::Size before = view->frame().size();
    window.resize(window.width(), window.height() + 40);
    settle();
    EXPECT_EQ(view->frame().height(), before.height() + 40);
}

TEST_F(UpperRowTest, AWidthThatAPersonHasChosenIsRemembered)
{
    const testsupport::PictureFiles files;
    const QString file = files.path("window.ini");
    window.rememberIn(file);
    open();
    const int table = window.statusTable()->width();
    auto *row = window.findChild<station::UpperRow *>();
    QSplitterHandle *handle = row->handle(2);
    const QPoint from = handle->rect().center();
    const int before = pane().width();
    QTest::mousePress(handle, Qt::LeftButton, {}, from);
    QTest::mouseMove(handle, from + QPoint(30, 0));
    QTest::mouseRelease(handle, Qt::LeftButton, {}, from + QPoint(30, 0));
    settle();
    const int chosen = pane().width();
    EXPECT_NE(chosen, before);
    EXPECT_EQ(station::PaneMemory(file).width(), chosen);
    EXPECT_EQ(window.statusTable()->width(), table);
    close();
    open();
    EXPECT_EQ(pane().width(), chosen);
}

TEST_F(UpperRowTest, AFieldThatTakesTheFocusComesIntoSight)
{
    auto *field = new QWidget(view);
    field->setFocusPolicy(Qt::StrongFocus);
    field->setGeometry(view->width() - 40, 10, 30, 20);
    field->show();
    open();
    ASSERT_LT(area().width(), view->width());
    EXPECT_TRUE(field->visibleRegion().isEmpty());
    field->setFocus();
    EXPECT_FALSE(field->visibleRegion().isEmpty());
}

TEST_F(UpperRowTest, TheViewIsScrolledAndNotMadeNarrowerThanItCanBeWhereTheWindowIsNarrow)
{
    open();
    for (const int width : {880, 700, 620, 560}) {
        window.resize(width, 640);
        settle();
        EXPECT_GE(area().widget()->width(), view->mapTo(area().widget(), view->rect().bottomRight()).x() + 1)
            << "what lies outside of the tabs cannot be scrolled to, at " << width;
        EXPECT_GE(view->width(), 600) << width;
        const int hidden = area().widget()->width() - area().viewport()->width();
        EXPECT_EQ(area().horizontalScrollBar()->maximum(), qMax(0, hidden)) << width;
    }
}

TEST_F(UpperRowTest, FitsASmallScreenWithThePane)
{
    window.resize(200, 200);
    open();
    EXPECT_LE(window.width(), 1024 - 8);
    EXPECT_TRUE(pane().isVisible());
    EXPECT_GE(area().width(), 240);
}

} // namespace
