#include "station/window/LogPane.h"

#include "platform/MainQueue.h"
#include "station/look/Contrast.h"
#include "station/look/WindowLook.h"
#include "station/window/ErrorButton.h"
#include "station/window/LogView.h"
#include "tests/support/LogTrap.h"
#include "tests/support/Wait.h"

#include <QComboBox>
#include <QLineEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTime>
#include <QTimer>
#include <QToolButton>

#include <gtest/gtest.h>

#include <thread>

using station::LogPane;
using testsupport::waitUntil;

namespace {

constexpr int TimeLength = 14; // "HH:mm:ss.zzz  "
const QString Mark = QStringLiteral("so far");

class LogPaneTest : public ::testing::Test
{
protected:
    /// Folded it only keeps its lines.
    LogPaneTest() { pane.setFolded(false); }

    static void log(const QString &text, KVKLogLevel level = KVKLogLevel::Default)
    {
        KVKLogGetProxy()->proxyLogMessage(level, "%@", {text});
    }

    [[nodiscard]] QString line(int number) const
    {
        return pane.view()->document()->findBlockByNumber(number).text().mid(TimeLength);
    }
    [[nodiscard]] QString lastLine() const
    {
        return pane.view()->document()->lastBlock().text().mid(TimeLength);
    }
    [[nodiscard]] bool waitForLast(const QString &text) const
    {
        return waitUntil([&] { return lastLine() == text; });
    }
    [[nodiscard]] QTextCharFormat formatOf(int number) const
    {
        return pane.view()->document()->findBlockByNumber(number).begin().fragment().charFormat();
    }

    /// As large as the lines are to have it.
    void unfold(const QSize &lines)
    {
        pane.setFolded(false);
        pane.resize(lines + QSize(0, pane.foldedHeight()));
        pane.show();
    }
    [[nodiscard]] QStringList lines() const
    {
        QStringList all = pane.view()->toPlainText().split('\n');
        for (QString &each : all)
            each = each.mid(TimeLength);
        all.removeAll(Mark);
        return all;
    }
    /// Returns when the pane has taken the lines that were logged, LinesAtOnce at most: an error is counted
    /// with them.
    void waitUntilTaken()
    {
        testsupport::expectError(Mark);
        const int before = pane.errorButton()->errors();
        log(Mark, KVKLogLevel::Error);
        ASSERT_TRUE(waitUntil([&] { return pane.errorButton()->errors() > before; }));
    }
    [[nodiscard]] bool waitForLines(const QStringList &wanted) const
    {
        return waitUntil([&] { return lines() == wanted; });
    }

    LogPane pane{{{0, "G1", "S1"}, {3, "G1", "S4"}}};
};

} // namespace

TEST_F(LogPaneTest, ShowsTheLinesInOrderWithTheirTimes)
{
    log("one");
    log("two");
    ASSERT_TRUE(waitForLast("two"));
    EXPECT_EQ(line(0), "one");
    EXPECT_EQ(pane.view()->document()->blockCount(), 2);
    EXPECT_TRUE(
        QTime::fromString(pane.view()->document()->firstBlock().text().left(12), "HH:mm:ss.zzz").isValid());
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
    EXPECT_EQ(pane.view()->document()->blockCount(), 1);
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
    EXPECT_EQ(pane.view()->document()->blockCount(), 11);
    for (int number = 0; number < 10; ++number)
        EXPECT_EQ(line(number), QStringLiteral("a⏎b")) << number;
}

TEST_F(LogPaneTest, FollowsTheLatestLineWhenALongOneBringsTheOtherScrollBar)
{
    unfold({400, 100});
    for (int number = 0; number < 20; ++number)
        log(QString::number(number));
    ASSERT_TRUE(waitForLast("19"));
    ASSERT_FALSE(pane.view()->horizontalScrollBar()->isVisible());
    const QScrollBar *bar = pane.view()->verticalScrollBar();
    log(QString(300, 'x'));
    ASSERT_TRUE(waitUntil([this] { return pane.view()->horizontalScrollBar()->isVisible(); }));
    EXPECT_EQ(bar->value(), bar->maximum());
    log("later");
    ASSERT_TRUE(waitForLast("later"));
    EXPECT_EQ(bar->value(), bar->maximum());
}

TEST_F(LogPaneTest, FollowsTheLatestLineWhenThePaneGetsSmaller)
{
    unfold({400, 200});
    for (int number = 0; number < 50; ++number)
        log(QString::number(number));
    ASSERT_TRUE(waitForLast("49"));
    pane.resize(400, 130);
    const QScrollBar *bar = pane.view()->verticalScrollBar();
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
    EXPECT_EQ(pane.view()->document()->blockCount(), LogPane::MaximumLines);
    EXPECT_EQ(line(0), "2");
}

TEST_F(LogPaneTest, LeavesOutWhatNobodyCouldHaveSeenAndSaysSo)
{
    for (int number = 0; number < LogPane::MaximumLines + 5; ++number)
        log(QString::number(number));
    ASSERT_TRUE(KVKLogGetProxy()->flush());
    ASSERT_TRUE(waitUntil([this] { return pane.view()->document()->blockCount() > 1; }));
    EXPECT_EQ(pane.view()->document()->firstBlock().text(), QStringLiteral("… 5 lines left out here …"));
    EXPECT_EQ(line(1), "5");
}

TEST_F(LogPaneTest, TakesNoMoreThanAFewHundredLinesInOneGo)
{
    int most = 0;
    int before = 0;
    QObject::connect(pane.view()->document(), &QTextDocument::blockCountChanged, [&](int count) {
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
    EXPECT_TRUE(waitUntil(
        [&] { return ++turns > 3 && pane.view()->document()->blockCount() > LogPane::LinesAtOnce; }));
    enough = true;
    flood.join();
}

TEST_F(LogPaneTest, FollowsTheLatestLineUnlessTheReaderHasScrolledAway)
{
    unfold({400, 100});
    for (int number = 0; number < 50; ++number)
        log(QString::number(number));
    ASSERT_TRUE(waitForLast("49"));
    const QScrollBar *bar = pane.view()->verticalScrollBar();
    ASSERT_GT(bar->maximum(), 0);
    EXPECT_EQ(bar->value(), bar->maximum());
    pane.view()->verticalScrollBar()->setValue(7);
    log("later");
    ASSERT_TRUE(waitForLast("later"));
    EXPECT_EQ(bar->value(), 7);
}

TEST_F(LogPaneTest, AClickOnItTakesTheFocusFromNobodyExceptInItsTextField)
{
    for (const QWidget *widget : pane.findChildren<QWidget *>()) {
        // A list that has dropped down has the keys to itself.
        if (widget != pane.textField() && widget->window() == &pane) {
            EXPECT_NE(widget->focusPolicy() & Qt::ClickFocus, Qt::ClickFocus)
                << widget->metaObject()->className();
        }
    }
}

TEST(FoldedLogPane, IsOneLineUntilSomebodyUnfoldsIt)
{
    LogPane pane;
    pane.show();
    EXPECT_TRUE(pane.isFolded());
    EXPECT_FALSE(pane.view()->isVisible());
    EXPECT_LE(pane.maximumHeight(), 40);
    pane.foldButton()->click();
    EXPECT_TRUE(pane.view()->isVisible());
    EXPECT_TRUE(pane.textField()->isVisible());
    pane.foldButton()->click();
    EXPECT_FALSE(pane.view()->isVisible());
}

TEST_F(LogPaneTest, LaysNoLineOutWhileItIsFoldedAndShowsThemInTheirOrderAfterwards)
{
    log("seen");
    ASSERT_TRUE(waitForLast("seen"));
    for (const QStringList &missed : {QStringList{"a", "b"}, QStringList{}, QStringList{"c"}}) {
        const QStringList before = lines();
        pane.setFolded(true);
        for (const QString &each : missed)
            log(each);
        waitUntilTaken();
        EXPECT_EQ(lines(), before);
        pane.setFolded(false);
        EXPECT_EQ(lines(), before + missed);
    }
    log("seen again");
    EXPECT_TRUE(waitForLines({"seen", "a", "b", "c", "seen again"}));
}

TEST_F(LogPaneTest, AFilterHoldsForTheLinesThatCameWhileItWasFolded)
{
    pane.textField()->setText("2");
    pane.setFolded(true);
    for (int number = 0; number < 30; ++number)
        log(QString::number(number));
    waitUntilTaken();
    pane.setFolded(false);
    EXPECT_TRUE(waitForLines({"2", "12", "20", "21", "22", "23", "24", "25", "26", "27", "28", "29"}));
    // Written anew while it is folded, they are not missing twice.
    pane.setFolded(true);
    log("32");
    waitUntilTaken();
    pane.textField()->setText("3");
    pane.setFolded(false);
    EXPECT_TRUE(waitForLines({"3", "13", "23", "32"}));
}

TEST_F(LogPaneTest, UnfoldedAndFoldedInAFloodItLosesAndDoublesNoLine)
{
    bool folded = true;
    QTimer fold;
    QObject::connect(&fold, &QTimer::timeout, [&] { pane.setFolded(folded = !folded); });
    fold.start(0);
    std::thread flood([] {
        for (int number = 0; number < 2000; ++number)
            log(QString::number(number));
    });
    flood.join();
    ASSERT_TRUE(waitForLast("1999"));
    fold.stop();
    pane.setFolded(false);
    ASSERT_TRUE(waitForLast("1999"));
    const QStringList shown = lines();
    ASSERT_EQ(shown.size(), 2000);
    for (int number = 0; number < 2000; ++number)
        ASSERT_EQ(shown.at(number), QString::number(number));
}

TEST_F(LogPaneTest, UnfoldedAfterMoreLinesThanItKeepsItShowsTheLastOnes)
{
    log("seen");
    ASSERT_TRUE(waitForLast("seen"));
    pane.setFolded(true);
    for (int number = 0; number < 2 * LogPane::MaximumLines; ++number) {
        log(QString::number(number));
        if (number % 200 == 199)
            waitUntilTaken();
    }
    pane.setFolded(false);
    ASSERT_TRUE(waitForLast(Mark));
    EXPECT_EQ(pane.view()->document()->blockCount(), LogPane::MaximumLines);
    EXPECT_FALSE(lines().contains("seen"));
}

TEST_F(LogPaneTest, ItsLineCountsTheErrorsAndShowsTheNewestUntilItIsClicked)
{
    testsupport::expectError("one");
    testsupport::expectError("two");
    pane.setFolded(true);
    pane.show();
    EXPECT_FALSE(pane.errorButton()->isVisible());
    log("one", KVKLogLevel::Error);
    ASSERT_TRUE(waitUntil([this] { return pane.errorButton()->isVisible(); }));
    EXPECT_EQ(pane.errorButton()->wholeText(), QStringLiteral("1 error · one"));
    log("two", KVKLogLevel::Error);
    ASSERT_TRUE(waitUntil([this] { return pane.errorButton()->errors() == 2; }));
    EXPECT_EQ(pane.errorButton()->wholeText(), QStringLiteral("2 errors · two"));
    EXPECT_TRUE(pane.isFolded());
    pane.errorButton()->click();
    EXPECT_FALSE(pane.isFolded());
    EXPECT_FALSE(pane.errorButton()->isVisible());
}

TEST_F(LogPaneTest, ItsLineTellsTheErrorToTheOperatorAndTheLogAsItWasLogged)
{
    const QString line = "-[InteractiveView checkInput:]: Invalid input: S1 = 4711";
    testsupport::expectError(line);
    log(line, KVKLogLevel::Error);
    ASSERT_TRUE(waitForLast(line));
    EXPECT_EQ(pane.errorButton()->wholeText(), QStringLiteral("1 error · Invalid input: S1 = 4711"));
    EXPECT_FALSE(pane.errorButton()->toolTip().contains("checkInput"));
    EXPECT_FALSE(pane.errorButton()->accessibleName().contains("checkInput"));
}

TEST_F(LogPaneTest, AnErrorCountsAlthoughItsLineIsLeftOut)
{
    testsupport::expectError("lost");
    log("lost", KVKLogLevel::Error);
    for (int number = 0; number < LogPane::MaximumLines + 5; ++number)
        log(QString::number(number));
    ASSERT_TRUE(waitForLast(QString::number(LogPane::MaximumLines + 4)));
    EXPECT_EQ(pane.errorButton()->wholeText(), QStringLiteral("1 error · lost"));
}

TEST_F(LogPaneTest, ErrorsOfTheRunBeforeAreForgottenEvenOnesThatItHasNotShown)
{
    testsupport::expectError("before");
    log("before", KVKLogLevel::Error);
    pane.forgetErrors();
    log("after");
    ASSERT_TRUE(waitForLast("after"));
    EXPECT_EQ(pane.errorButton()->errors(), 0);
}

TEST_F(LogPaneTest, LevelSystemAndTextChooseTogetherAmongTheLinesThatItKeeps)
{
    testsupport::expectError("Unit A");
    testsupport::expectError("unit b");
    QList<int> owners;
    pane.setOwners([&] { return owners; });
    log("unit of nobody");
    owners = {3};
    log("unit a");
    log("details of unit a", KVKLogLevel::Debug);
    log("Unit A", KVKLogLevel::Error);
    owners = {0};
    log("unit b", KVKLogLevel::Error);
    ASSERT_TRUE(waitForLast("unit b"));
    pane.systemBox()->setCurrentIndex(2);
    ASSERT_EQ(pane.filter().system, 3);
    EXPECT_TRUE(waitForLines({"unit a", "details of unit a", "Unit A"}));
    pane.levelBox()->setCurrentIndex(1);
    EXPECT_TRUE(waitForLines({"unit a", "Unit A"}));
    pane.levelBox()->setCurrentIndex(2);
    EXPECT_TRUE(waitForLines({"Unit A"}));
    pane.textField()->setText("NIT a");
    EXPECT_TRUE(waitForLines({"Unit A"}));
    pane.textField()->setText("b");
    EXPECT_TRUE(waitForLines({""}));
    pane.systemBox()->setCurrentIndex(0);
    EXPECT_TRUE(waitForLines({"unit b"}));
    pane.textField()->clear();
    pane.levelBox()->setCurrentIndex(0);
    EXPECT_TRUE(waitForLines({"unit of nobody", "unit a", "details of unit a", "Unit A", "unit b"}));
}

TEST_F(LogPaneTest, AFilterChangedInAFloodLosesAndDoublesNoLine)
{
    pane.textField()->setText("2");
    for (int number = 0; number < 2000; ++number)
        log(QString::number(number));
    // In the midst: some lines are in the pane, others not yet.
    ASSERT_TRUE(waitUntil([this] { return pane.view()->document()->blockCount() > 1; }));
    pane.textField()->setText("9");
    pane.setFolded(false);
    pane.textField()->clear();
    ASSERT_TRUE(waitForLast("1999"));
    const QStringList shown = lines();
    ASSERT_EQ(shown.size(), 2000);
    for (int number = 0; number < 2000; ++number)
        ASSERT_EQ(shown.at(number), QString::number(number));
}

TEST_F(LogPaneTest, AHundredThousandLinesLeaveTheLastOnesAndTheEventLoopATurnInBetween)
{
    int turns = 0;
    QTimer turn;
    QObject::connect(&turn, &QTimer::timeout, [&] { ++turns; });
    turn.start(0);
    unfold({400, 200});
    std::thread flood([] {
        for (int number = 0; number < 100'000; ++number)
            log(QString::number(number));
    });
    EXPECT_TRUE(waitForLast("99999"));
    flood.join();
    EXPECT_EQ(pane.view()->document()->blockCount(), LogPane::MaximumLines);
    EXPECT_GT(turns, LogPane::MaximumLines / LogPane::LinesAtOnce);
}

TEST_F(LogPaneTest, LinesThatStandThereTakeTheColoursOfAnotherTheme)
{
    testsupport::expectError("wrong");
    log("plain");
    log("details", KVKLogLevel::Debug);
    log("wrong", KVKLogLevel::Error);
    ASSERT_TRUE(waitForLast("wrong"));
    for (const bool dark : {true, false}) {
        const QPalette palette = station::windowPalette(dark);
        pane.setPalette(palette);
        EXPECT_TRUE(waitUntil([&] {
            return pane.view()->document()->blockCount() == 3 &&
                   formatOf(0).foreground().color() == palette.color(QPalette::Text);
        }));
        for (int number = 0; number < 3; ++number)
            EXPECT_GE(station::contrast(formatOf(number).foreground().color(), palette.color(QPalette::Base)),
                      station::ReadableContrast);
    }
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
