#include "station/report/Figures.h"

#include "tests/support/Printing.h"

#include <gtest/gtest.h>

using namespace station::report;

namespace {

RunFigures runAt(const QString &time, bool passed = true)
{
    RunFigures run;
    run.started = time;
    (passed ? run.sequences.passed : run.sequences.failed) = 1;
    return run;
}

Course courseOfDays(const QStringList &days)
{
    QList<RunFigures> runs;
    for (const QString &day : days)
        runs.append(runAt(day + "T08:00:00.000Z"));
    return courseOf(runs);
}

TEST(FiguresTest, AYieldIsThePassedPartOfTheEndedOnes)
{
    EXPECT_EQ(Outcomes({3, 1, 0, 0, 5}).yield(), 0.75);
    EXPECT_EQ(Outcomes({1, 1, 1, 1, 0}).yield(), 0.25);
    EXPECT_EQ(Outcomes({0, 0, 0, 0, 5}).yield(), std::nullopt);
}

TEST(FiguresTest, ARunIsAsBadAsItsWorstSequence)
{
    EXPECT_EQ(Outcomes({1, 1, 1, 1, 1}).worst(), "open");
    EXPECT_EQ(Outcomes({1, 1, 1, 1, 0}).worst(), "erred");
    EXPECT_EQ(Outcomes({1, 1, 0, 1, 0}).worst(), "failed");
    EXPECT_EQ(Outcomes({1, 0, 0, 1, 0}).worst(), "stopped");
    EXPECT_EQ(Outcomes({1, 0, 0, 0, 0}).worst(), "passed");
    EXPECT_EQ(Outcomes().worst(), "");
}

TEST(FiguresTest, APercentileIsTheNearestRank)
{
    const QList<qint64> ten{1, 2, 3, 4, 5, 6, 7, 8, 9, 100};
    EXPECT_EQ(percentile(ten, 0.5), 5);
    EXPECT_EQ(percentile(ten, 0.9), 9);
    EXPECT_EQ(percentile(ten, 1), 100);
    EXPECT_EQ(percentile({7}, 0.5), 7);
    EXPECT_EQ(percentile({7}, 0.9), 7);
    EXPECT_EQ(percentile({1, 2, 3}, 0.5), 2);
    EXPECT_EQ(percentile({1, 2, 3}, 0.9), 3);
    EXPECT_EQ(percentile({}, 0.5), std::nullopt);
}

TEST(FiguresTest, ATimeOnALimitCountsAboveIt)
{
    TimeFigures one;
    one.times = {999, 1'000, 4'999};
    TimeFigures other;
    other.times = {599'999, 600'000, 9'000'000};
    QStringList classes;
    for (const TimeClass &each : histogram({one, other})) {
        if (each.count > 0)
            classes.append(each.name + ": " + QString::number(each.count));
    }
    EXPECT_EQ(classes, (QStringList{"below 1 s: 1", "1 to 2 s: 1", "2 to 5 s: 1", "5 to 10 min: 1",
                                    "10 min and more: 2"}));
}

TEST(FiguresTest, PeriodsAreAsShortAsTheirNumberAllows)
{
    EXPECT_EQ(courseOfDays({"2026-11-21"}).unit, "day");
    EXPECT_EQ(courseOfDays({"2026-11-21", "2026-09-23"}).periods.size(), 60);
    EXPECT_EQ(courseOfDays({"2026-11-21", "2026-09-23"}).unit, "day");
    EXPECT_EQ(courseOfDays({"2026-11-21", "2026-09-22"}).unit, "week");
    EXPECT_EQ(courseOfDays({"2026-11-21", "2025-01-01"}).unit, "month");
    EXPECT_EQ(courseOfDays({"2026-11-21", "1990-01-01"}).unit, "year");
    EXPECT_EQ(courseOfDays({}).periods.size(), 0);
}

TEST(FiguresTest, EveryRunCountsInItsPeriod)
{
    const Course weeks = courseOfDays({"2026-09-07", "2026-09-13", "2026-09-14", "2026-11-21"});
    ASSERT_EQ(weeks.unit, "week");
    EXPECT_EQ(weeks.periods.size(), 11);
    EXPECT_EQ(weeks.periods.first().first, QDate(2026, 9, 7));
    EXPECT_EQ(weeks.periods.at(0).total(), 2);
    EXPECT_EQ(weeks.periods.at(1).total(), 1);
    EXPECT_EQ(weeks.periods.at(2).total(), 0);
    EXPECT_EQ(weeks.periods.last().total(), 1);
}

TEST(FiguresTest, PassedRunsAreToldFromOthers)
{
    const Course course =
        courseOf({runAt("2026-11-21T08:00:00.000Z"), runAt("2026-11-21T23:59:59.999Z", false)});
    ASSERT_EQ(course.periods.size(), 1);
    EXPECT_EQ(course.periods.first().passed, 1);
    EXPECT_EQ(course.periods.first().other, 1);
}

TEST(FiguresTest, AClockThatWasNeverSetDoesNotMakeThePlotEndless)
{
    const Course course = courseOfDays({"0001-01-01", "1970-01-01", "9998-05-01", "9999-12-31"});
    EXPECT_EQ(course.unit, "year");
    EXPECT_EQ(course.periods.size(), 60);
    EXPECT_EQ(course.periods.last().total(), 1);
    EXPECT_EQ(course.periods.first().total(), 0);
    EXPECT_EQ(courseOf({runAt("yesterday"), runAt("")}).periods.size(), 0);
}

} // namespace
