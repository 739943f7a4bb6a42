#include "presentation/TimeBar.h"

#include "tests/support/Printing.h"
#include "tests/support/Wait.h"

#include <QColor>
#include <QImage>

#include <gtest/gtest.h>

using interactive::TimeBar;
using namespace std::chrono_literals;

namespace {

TEST(TimeBar, RunsDownEvenlyAndTurnsRedForTheLastFifth)
{
    EXPECT_EQ(TimeBar::lookAfter(0s, 10s).share, 1.0);
    EXPECT_FALSE(TimeBar::lookAfter(0s, 10s).isLate);
    EXPECT_EQ(TimeBar::lookAfter(5s, 10s).share, 0.5);
    EXPECT_FALSE(TimeBar::lookAfter(7999ms, 10s).isLate);
    EXPECT_TRUE(TimeBar::lookAfter(8s, 10s).isLate);
    EXPECT_EQ(TimeBar::lookAfter(10s, 10s).share, 0.0);
    EXPECT_EQ(TimeBar::lookAfter(11s, 10s).share, 0.0) << "late, but never below nothing";
}

TEST(TimeBar, TellsTheSecondsThatAreLeft)
{
    EXPECT_EQ(TimeBar::lookAfter(0s, 12s).name, "Time left: 12 s");
    EXPECT_EQ(TimeBar::lookAfter(1ms, 12s).name, "Time left: 12 s") << "the second that has begun counts";
    EXPECT_EQ(TimeBar::lookAfter(1s, 12s).name, "Time left: 11 s");
    EXPECT_EQ(TimeBar::lookAfter(11500ms, 12s).name, "Time left: 1 s");
    EXPECT_EQ(TimeBar::lookAfter(12s, 12s).name, "Time left: 0 s");
    EXPECT_EQ(TimeBar::lookAfter(0s, 500ms).name, "Time left: 1 s");
}

TEST(TimeBar, IsBlueAndFullAtFirst)
{
    TimeBar bar({0.0, 0.0, 100.0, 3.0}, 1h, [] {});
    EXPECT_EQ(bar.accessibleName(), "Time left: 3600 s");
    const QImage picture = bar.grab().toImage();
    EXPECT_EQ(picture.pixelColor(97, 1), platform::Color::systemBlue().toQColor());
}

TEST(TimeBar, SaysOnceThatItsTimeIsOver)
{
    int over = 0;
    TimeBar bar({0.0, 0.0, 100.0, 3.0}, 30ms, [&] { ++over; });
    EXPECT_EQ(over, 0);
    EXPECT_TRUE(testsupport::waitUntil([&] { return over > 0; }));
    EXPECT_GE(TimeBar::Clock::now(), bar.end());
    EXPECT_EQ(bar.look().share, 0.0);
    EXPECT_EQ(bar.accessibleName(), "Time left: 0 s");
    // Red at the end, where nothing is left: the track alone.
    EXPECT_TRUE(bar.look().isLate);
    // Other timers are served meanwhile, and this one is not among them any more.
    TimeBar other({0.0, 0.0, 100.0, 3.0}, 150ms, [&] { over += 10; });
    EXPECT_TRUE(testsupport::waitUntil([&] { return over >= 10; }));
    EXPECT_EQ(over, 11);
}

} // namespace
