#include "station/window/LogPane.h"

#include "platform/MainQueue.h"
#include "tests/support/LogTrap.h"
#include "tests/support/Wait.h"

#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTime>

#include <gtest/gtest.h>

#include <thread>

using station::LogPane;
using testsupport::waitUntil;

namespace {

constexpr int TimeLength = 14; // "HH:mm:ss.zzz  "

class LogPaneTest : public ::testing::Test
{
protected:
    static void log(const QString &text, KVKLogLevel level = KVKLogLevel::Default)
    {
        KVKLogGetProxy()->proxyLogMessage(level, "%@", {text});
    }

    [[nodiscard]] QString line(int number) const
    {
        return pane.document()->findBlockByNumber(number).text().mid(TimeLength);
    }
    [[nodiscard]] QString lastLine() const { return pane.document()->lastBlock().text().mid(TimeLength); }
    [[nodiscard]] bool waitForLast(const QString &text) const
    {
        return waitUntil([&] { return lastLine() == text; });
    }
    [[nodiscard]] QTextCharFormat formatOf(int number) const
    {
        return pane.document()->findBlockByNumber(number).begin().fragment().charFormat();
    }

    LogPane pane;
};

} // namespace

TEST_F(LogPaneTest, ShowsTheLinesInOrderWithTheirTimes)
{
    log("one");
    log("two");
    ASSERT_TRUE(waitForLast("two"));
    EXPECT_EQ(line(0), "one");
    EXPECT_EQ(pane.document()->blockCount(), 2);
    EXPECT_TRUE(QTime::fromString(pane.document()->firstBlock().text().left(12), "HH:mm:ss.zzz").isValid());
}

TEST_F(LogPaneTest, ShowsLinesOfOtherThreads)
{
    std::thread([] { log("from a sequence"); }).join();
    EXPECT_TRUE(waitForLast("from a sequence"));
}

TEST_F(LogPaneTest, TellsLevelsApartByColour)
{
    testsupport::expectError("wrong");
    log("plain");
    log("details", KVKLogLevel::Debug);
    log("wrong", KVKLogLevel::Error);
    ASSERT_TRUE(waitForLast("wrong"));
    const QColor plain = formatOf(0).foreground().color();
    const QColor details = formatOf(1).foreground().color();
    const QColor wrong = formatOf(2).foreground().color();
    EXPECT_NE(plain, details);
    EXPECT_NE(plain, wrong);
    EXPECT_GT(wrong.red(), 150);
    EXPECT_EQ(formatOf(2).fontWeight(), QFont::Bold);
}

TEST_F(LogPaneTest, KeepsALineOfSeveralLinesInOne)
{
    log("a\nb");
    ASSERT_TRUE(waitForLast(QStringLiteral("a⏎b")));
    EXPECT_EQ(pane.document()->blockCount(), 1);
}

TEST_F(LogPaneTest, KeepsAMessageInOneEntryWhateverItsLineBreaksAre)
{
    const QChar breaks[] = {'\n',          '\r',          '\v',          '\f',         QChar(0x85),
                            QChar(0x2028), QChar(0x2029), QChar(0xfdd0), QChar(0xfdd1)};
    for (const QChar &each : breaks)
        log(QString("a") + each + "b");
    log("a\r\nb\r\n\r\n");
    log("end");
    ASSERT_TRUE(waitForLast("end"));
    EXPECT_EQ(pane.document()->blockCount(), 11);
    for (int number = 0; number < 10; ++number)
        EXPECT_EQ(line(number), QStringLiteral("a⏎b")) << number;
}

TEST_F(LogPaneTest, FollowsTheLatestLineWhenALongOneBringsTheOtherScrollBar)
{
    pane.resize(400, 100);
    pane.show();
    for (int number = 0; number < 20; ++number)
        log(QString::number(number));
    ASSERT_TRUE(waitForLast("19"));
    ASSERT_FALSE(pane.horizontalScrollBar()->isVisible());
    const QScrollBar *bar = pane.verticalScrollBar();
    log(QString(300, 'x'));
    ASSERT_TRUE(waitUntil([this] { return pane.horizontalScrollBar()->isVisible(); }));
    EXPECT_EQ(bar->value(), bar->maximum());
    log("later");
    ASSERT_TRUE(waitForLast("later"));
    EXPECT_EQ(bar->value(), bar->maximum());
}

TEST_F(LogPaneTest, FollowsTheLatestLineWhenThePaneGetsSmaller)
{
    pane.resize(400, 200);
    pane.show();
    for (int number = 0; number < 50; ++number)
        log(QString::number(number));
    ASSERT_TRUE(waitForLast("49"));
    pane.resize(400, 90);
    const QScrollBar *bar = pane.verticalScrollBar();
    EXPECT_EQ(bar->value(), bar->maximum());
}

TEST_F(LogPaneTest, KeepsOnlyTheLastLines)
{
    for (int number = 0; number < LogPane::MaximumLines; ++number)
        log(QString::number(number));
    ASSERT_TRUE(waitForLast(QString::number(LogPane::MaximumLines - 1)));
    log("a");
    log("b");
    ASSERT_TRUE(waitForLast("b"));
    EXPECT_EQ(pane.document()->blockCount(), LogPane::MaximumLines);
    EXPECT_EQ(line(0), "2");
}

TEST_F(LogPaneTest, LeavesOutWhatNobodyCouldHaveSeenAndSaysSo)
{
    for (int number = 0; number < LogPane::MaximumLines + 5; ++number)
        log(QString::number(number));
    ASSERT_TRUE(waitUntil([this] { return pane.document()->blockCount() > 1; }));
    EXPECT_EQ(pane.document()->firstBlock().text(), QStringLiteral("… 5 lines left out here …"));
    EXPECT_EQ(line(1), "5");
}

TEST_F(LogPaneTest, TakesNoMoreThanAFewHundredLinesInOneGo)
{
    int most = 0;
    int before = 0;
    QObject::connect(pane.document(), &QTextDocument::blockCountChanged, [&](int count) {
        most = std::max(most, count - before);
        before = count;
    });
    for (int number = 0; number < LogPane::MaximumLines; ++number)
        log(QString::number(number));
    ASSERT_TRUE(waitForLast(QString::number(LogPane::MaximumLines - 1)));
    EXPECT_LE(most, LogPane::LinesAtOnce);
}

TEST_F(LogPaneTest, ServesOtherEventsWhileLinesPourIn)
{
    std::atomic<bool> enough{false};
    std::thread flood([&] {
        while (!enough)
            log("flood");
    });
    int turns = 0;
    EXPECT_TRUE(
        waitUntil([&] { return ++turns > 3 && pane.document()->blockCount() > LogPane::LinesAtOnce; }));
    enough = true;
    flood.join();
}

TEST_F(LogPaneTest, FollowsTheLatestLineUnlessTheReaderHasScrolledAway)
{
    pane.resize(400, 100);
    pane.show();
    for (int number = 0; number < 50; ++number)
        log(QString::number(number));
    ASSERT_TRUE(waitForLast("49"));
    const QScrollBar *bar = pane.verticalScrollBar();
    ASSERT_GT(bar->maximum(), 0);
    EXPECT_EQ(bar->value(), bar->maximum());
    pane.verticalScrollBar()->setValue(7);
    log("later");
    ASSERT_TRUE(waitForLast("later"));
    EXPECT_EQ(bar->value(), 7);
}

TEST_F(LogPaneTest, NeverTakesTheFocus)
{
    EXPECT_EQ(pane.focusPolicy(), Qt::NoFocus);
}

TEST(LogPaneEnd, LinesAfterItsEndAreNobodysBusiness)
{
    {
        LogPane pane;
        KVKLogGetProxy()->proxyLogMessage(KVKLogLevel::Default, "before", {});
    }
    KVKLogGetProxy()->proxyLogMessage(KVKLogLevel::Default, "after", {});
    bool served = false;
    platform::MainQueue::async([&] { served = true; });
    EXPECT_TRUE(waitUntil([&] { return served; }));
}
