#include "station/Station.h"
#include "station/window/RunProgress.h"
#include "station/window/StationWindow.h"
#include "tests/station/StationFiles.h"
#include "tests/support/Wait.h"

#include <QAction>
#include <QApplication>
#include <QTest>

using station::StationWindow;
using testsupport::waitUntil;

namespace {

/// The whole station, at whose window somebody presses F5 and Shift+F5 in the moment that the run ends.
class RunKeysTest : public ::testing::Test
{
protected:
    RunKeysTest()
    {
        sequence("return true");
        station::CommandLine line;
        line.config = m_files.write("station.toml", R"([station]
name = "Keys"
groups = ["G1"]
slots = ["S1", "S2"]

[[sequence]]
script = "sequence.lua"
)");
        line.plugins = QStringList{PLUGIN_PATH};
        line.results = m_files.path("results.jsonl");
        m_station = std::make_unique<station::Station>(line);
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *found = qobject_cast<StationWindow *>(widget))
                window = found;
        }
        window->show();
        window->activateWindow();
        EXPECT_TRUE(waitUntil([this] { return window->isActiveWindow(); }));
    }

    void sequence(const QByteArray &lua) const { static_cast<void>(m_files.write("sequence.lua", lua)); }
    void pressRun() const { QTest::keyClick(window->windowHandle(), Qt::Key_F5); }
    void pressStop() const { QTest::keyClick(window->windowHandle(), Qt::Key_F5, Qt::ShiftModifier); }
    /// Calls it once, in the midst of the report of the run's last sequence.
    template <class Call>
    void atTheLastEnd(Call call)
    {
        QObject::connect(window->progress(), &QProgressBar::valueChanged, window, [this, call](int done) {
            if (done == window->progress()->maximum() && done > 0 && !std::exchange(m_called, true))
                call();
        });
    }
    [[nodiscard]] int timesWritten(const QString &text) const
    {
        return static_cast<int>(m_files.lines("results.jsonl").filter(text).size());
    }
    /// Whether so many runs have passed whole, and the window is ready for the next one.
    void expectRuns(int runs) const
    {
        EXPECT_TRUE(m_called);
        ASSERT_TRUE(waitUntil([&] {
            return !window->isRunning() && timesWritten("\"outcome\":") == 2 * runs;
        })) << m_files.read("results.jsonl").toStdString();
        EXPECT_EQ(timesWritten("\"outcome\":\"passed\""), 2 * runs);
        EXPECT_EQ(timesWritten("\"start\":"), runs);
        EXPECT_EQ(window->status(), "All passed");
        EXPECT_TRUE(window->runAction()->isEnabled());
        EXPECT_FALSE(window->stopAction()->isEnabled());
    }

    StationWindow *window = nullptr;

private:
    testsupport::StationFiles m_files;
    std::unique_ptr<station::Station> m_station;
    bool m_called = false;
};

TEST_F(RunKeysTest, StopInTheMomentThatTheLastSequenceEndsLeavesARunThatHasPassed)
{
    atTheLastEnd([this] {
        pressStop();
        pressRun();
    });
    pressRun();
    ASSERT_TRUE(waitUntil([this] { return !window->isRunning(); }));
    expectRuns(1);
    pressRun();
    expectRuns(2);
}

TEST_F(RunKeysTest, StopBetweenTheLastSequencesEndAndTheRunsEndTakesNothingBack)
{
    atTheLastEnd([this] {
        QMetaObject::invokeMethod(
            window,
            [this] {
                ASSERT_TRUE(window->isRunning());
                pressStop();
            },
            Qt::QueuedConnection);
    });
    pressRun();
    ASSERT_TRUE(waitUntil([this] { return !window->isRunning(); }));
    expectRuns(1);
    pressRun();
    expectRuns(2);
}

TEST_F(RunKeysTest, ARunThatWasStoppedSaysSoAndCountsWhatWasStoppedForItself)
{
    sequence("if systemIndex == 1 then while true do sleep(1) end end return true");
    pressRun();
    ASSERT_TRUE(waitUntil([this] { return window->progress()->value() == 1; }));
    EXPECT_EQ(window->progress()->text(), "1 of 2 systems done");
    pressStop();
    ASSERT_TRUE(waitUntil([this] { return !window->isRunning(); }));
    EXPECT_EQ(window->status(), "Run stopped");
    EXPECT_EQ(window->progress()->text(), QStringLiteral("1 of 2 systems done · 1 stopped"));
    sequence("return systemIndex == 0");
    pressRun();
    ASSERT_TRUE(waitUntil([this] { return window->status() == "Not all passed"; }));
    EXPECT_EQ(window->progress()->text(), "2 of 2 systems done");
}

TEST_F(RunKeysTest, RunRightBehindTheRunsEndRunsOnceMore)
{
    QObject::connect(window->runAction(), &QAction::enabledChanged, window,
                     [this, again = true](bool enabled) mutable {
                         if (!enabled || !std::exchange(again, false))
                             return;
                         QMetaObject::invokeMethod(
                             window,
                             [this] {
                                 pressRun();
                                 pressStop();
                             },
                             Qt::QueuedConnection);
                     });
    atTheLastEnd([] {});
    pressRun();
    ASSERT_TRUE(waitUntil([this] { return timesWritten("\"start\":") == 2 && !window->isRunning(); }));
    EXPECT_EQ(timesWritten("\"outcome\":"), 4) << "each sequence has ended once";
    EXPECT_TRUE(window->runAction()->isEnabled());
    EXPECT_NE(window->status(), "Stopping");
}

} // namespace
