#include "station/window/WindowMemory.h"

#include "platform/View.h"
#include "station/window/LogPane.h"
#include "station/window/StationWindow.h"
#include "station/window/StatusTable.h"
#include "station/window/UpperRow.h"
#include "station/window/WindowMenus.h"
#include "tests/support/Wait.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QScreen>
#include <QSplitter>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using station::placeOnScreens;
using station::StationWindow;
using station::ThemeChoice;
using station::WindowMemory;
using testsupport::waitUntil;

namespace {

class WindowMemoryTest : public ::testing::Test
{
protected:
    ~WindowMemoryTest() override { QApplication::setPalette(QPalette()); }

    std::unique_ptr<StationWindow> open() const
    {
        auto window = std::make_unique<StationWindow>(
            "Final test 4", QList<station::SystemRow>{{0, "G1", "S1"}, {1, "G1", "S2"}});
        window->addPluginView("Interactive", new platform::View({0, 0, 300, 200}), {300, 200});
        window->rememberIn(file);
        window->show();
        QApplication::processEvents();
        return window;
    }
    static void drag(QSplitterHandle *handle, const QPoint &by)
    {
        const QPoint from = handle->rect().center();
        QTest::mousePress(handle, Qt::LeftButton, {}, from);
        QTest::mouseMove(handle, from + by);
        QTest::mouseRelease(handle, Qt::LeftButton, {}, from + by);
    }
    void write(const QByteArray &content) const
    {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(content);
    }

    QTemporaryDir folder;
    QString file = folder.filePath("window.ini");
};

TEST_F(WindowMemoryTest, AWindowOpensAsItWasClosed)
{
    QRect place;
    int table = 0;
    int log = 0;
    {
        const auto window = open();
        window->setGeometry(20, 40, 700, 600);
        window->logPane()->setFolded(false);
        QApplication::processEvents();
        drag(window->findChild<station::UpperRow *>()->handle(1), {-40, 0});
        auto *whole = qobject_cast<QSplitter *>(window->centralWidget());
        drag(whole->handle(1), {0, -60});
        window->setTheme(ThemeChoice::Dark, StationWindow::Keep::Yes);
        place = window->geometry();
        table = window->statusTable()->width();
        log = window->logPane()->height();
        EXPECT_TRUE(window->close());
    }
    QApplication::setPalette(QPalette());
    const auto window = open();
    EXPECT_EQ(window->geometry(), place);
    EXPECT_FALSE(window->logPane()->isFolded());
    EXPECT_TRUE(window->menus()->log()->isChecked());
    EXPECT_EQ(window->statusTable()->width(), table);
    EXPECT_EQ(window->logPane()->height(), log);
    EXPECT_EQ(window->theme(), ThemeChoice::Dark);
    EXPECT_TRUE(station::isDark(window->palette()));
}

TEST_F(WindowMemoryTest, AMaximisedWindowOpensMaximisedAndKnowsItsOtherPlace)
{
    {
        const auto window = open();
        window->setGeometry(20, 40, 700, 600);
        QApplication::processEvents();
        window->showMaximized();
        ASSERT_TRUE(waitUntil([&] { return window->isMaximized(); }));
        window->close();
    }
    const auto window = open();
    EXPECT_TRUE(window->isMaximized());
    window->showNormal();
    EXPECT_TRUE(waitUntil([&] { return window->size() == QSize(700, 600); }));
}

TEST_F(WindowMemoryTest, AWindowThatIsClosedDuringARunIsRememberedAtOnce)
{
    const auto window = open();
    window->setGeometry(20, 40, 710, 600);
    window->setRunning(true);
    EXPECT_FALSE(window->close());
    EXPECT_EQ(WindowMemory(file).place().value_or(QRect()).width(), 710);
}

TEST_F(WindowMemoryTest, AFileOfRubbishIsNoChoiceAtAll)
{
    write(QByteArray("\x00\xff\x00rubbish[window\nx=", 20));
    const auto window = open();
    EXPECT_TRUE(window->logPane()->isFolded());
    EXPECT_EQ(window->theme(), ThemeChoice::Auto);
    EXPECT_LE(window->width(), window->screen()->availableGeometry().width());
    write("[window]\nx=1\ny=2\nwidth=-5\nheight=many\nmaximized=perhaps\ntheme=pink\n"
          "[table]\nwidth=999999999999\n[log]\nfolded=42\nheight=-1\n[columns]\nslot.width=-3\n");
    const auto next = open();
    EXPECT_EQ(WindowMemory(file).place(), std::nullopt);
    EXPECT_EQ(WindowMemory(file).tableWidth(), 0);
    EXPECT_EQ(next->theme(), ThemeChoice::Auto);
    EXPECT_TRUE(next->logPane()->isFolded());
}

TEST_F(WindowMemoryTest, WithoutAFileNothingIsKept)
{
    const WindowMemory memory;
    memory.setPlace({1, 2, 300, 400});
    memory.setLogFolded(false);
    EXPECT_EQ(memory.place(), std::nullopt);
    EXPECT_TRUE(memory.isLogFolded());
}

TEST_F(WindowMemoryTest, AFileThatCannotBeWrittenChangesNothing)
{
    write("plain");
    const WindowMemory memory(file + "/window.ini");
    memory.setPlace({1, 2, 300, 400});
    EXPECT_EQ(memory.place(), std::nullopt);
}

TEST(PlaceOnScreens, AWindowOpensOnAScreenThatIsThereAndNoLargerThanIt)
{
    const QRect left(0, 0, 1024, 768);
    const QRect right(1024, 0, 1920, 1080);
    const struct
    {
        QRect place;
        QList<QRect> screens;
        QRect opens;
    } cases[] = {{{1100, 100, 800, 600}, {left, right}, {1100, 100, 800, 600}},
                 // Its screen is gone.
                 {{1100, 100, 800, 600}, {left}, {1024 - 4 - 800, 100, 800, 600}},
                 {{-5000, -5000, 800, 600}, {left, right}, {4, 32, 800, 600}},
                 // Larger than the only screen that there is.
                 {{1024, 0, 1920, 1080}, {left}, {4, 32, 1016, 732}},
                 // Most of it is on the other screen.
                 {{900, 100, 800, 600}, {left, right}, {1028, 100, 800, 600}},
                 {{5, 40, 300, 200}, {}, {5, 40, 300, 200}}};
    for (const auto &each : cases)
        EXPECT_EQ(placeOnScreens(each.place, each.screens), each.opens) << each.place.x();
}

} // namespace
