#include "station/report/Figures.h"

#include <QDateTime>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <array>
#include <cmath>

namespace station::report {

namespace {

constexpr qint64 MostPeriods = 60;

/// The upper limit of a class, in milliseconds, and its name.
struct Limit
{
    qint64 below;
    const char *name;
};

constexpr std::array<Limit, 10> Limits{{{1'000, "below 1 s"},
                                        {2'000, "1 to 2 s"},
                                        {5'000, "2 to 5 s"},
                                        {10'000, "5 to 10 s"},
                                        {20'000, "10 to 20 s"},
                                        {30'000, "20 to 30 s"},
                                        {60'000, "30 to 60 s"},
                                        {120'000, "1 to 2 min"},
                                        {300'000, "2 to 5 min"},
                                        {600'000, "5 to 10 min"}}};

/// How periods follow one another.
struct Step
{
    const char *unit;
    QDate (*firstOf)(const QDate &);
    QDate (*next)(const QDate &);
};

QDate sameDay(const QDate &day)
{
    return day;
}
QDate nextDay(const QDate &day)
{
    return day.addDays(1);
}
QDate mondayOf(const QDate &day)
{
    return day.addDays(1 - day.dayOfWeek());
}
QDate nextWeek(const QDate &day)
{
    return day.addDays(7);
}
QDate firstOfMonth(const QDate &day)
{
    return {day.year(), day.month(), 1};
}
QDate nextMonth(const QDate &day)
{
    return day.addMonths(1);
}
QDate firstOfYear(const QDate &day)
{
    return {day.year(), 1, 1};
}
QDate nextYear(const QDate &day)
{
    return day.addYears(1);
}

constexpr std::array<Step, 4> Steps{{{"day", sameDay, nextDay},
                                     {"week", mondayOf, nextWeek},
                                     {"month", firstOfMonth, nextMonth},
                                     {"year", firstOfYear, nextYear}}};

/// The runs of each day on which one started.
QMap<QDate, Period> daysOf(const QList<RunFigures> &runs)
{
    QMap<QDate, Period> days;
    for (const RunFigures &run : runs) {
        const QDate day = QDate::fromString(run.started.left(10), Qt::ISODate);
        if (!day.isValid())
            continue;
        Period &period = days[day];
        if (run.sequences.worst() == QLatin1String("passed"))
            ++period.passed;
        else
            ++period.other;
    }
    return days;
}

/// The periods from the first day to the last one; more than can be drawn where a step is too short.
QList<Period> emptyPeriods(const Step &step, const QDate &first, const QDate &last)
{
    QList<Period> periods;
    for (QDate at = step.firstOf(first); at <= last && periods.size() <= MostPeriods; at = step.next(at))
        periods.append({at});
    return periods;
}

Course coarsest(QDate first, const QDate &last)
{
    const QDate earliest(last.year() - static_cast<int>(MostPeriods) + 1, 1, 1);
    return {QStringLiteral("year"), emptyPeriods(Steps.back(), std::max(first, earliest), last)};
}

Course emptyCourse(const QDate &first, const QDate &last)
{
    for (const Step &step : Steps) {
        Course course{QString::fromLatin1(step.unit), emptyPeriods(step, first, last)};
        if (course.periods.size() <= MostPeriods)
            return course;
    }
    return coarsest(first, last);
}

} // namespace

void Outcomes::add(const Outcomes &others)
{
    passed += others.passed;
    failed += others.failed;
    erred += others.erred;
    stopped += others.stopped;
    open += others.open;
}

std::optional<double> Outcomes::yield() const
{
    if (ended() == 0)
        return std::nullopt;
    return static_cast<double>(passed) / static_cast<double>(ended());
}

QString Outcomes::worst() const
{
    if (open > 0)
        return QStringLiteral("open");
    if (erred > 0)
        return QStringLiteral("erred");
    if (failed > 0)
        return QStringLiteral("failed");
    if (stopped > 0)
        return QStringLiteral("stopped");
    return passed > 0 ? QStringLiteral("passed") : QString();
}

QStringList Figures::stations() const
{
    QSet<QString> different;
    for (const RunFigures &run : runs)
        different.insert(run.station);
    QStringList names(different.cbegin(), different.cend());
    names.sort();
    return names;
}

Outcomes Figures::sequences() const
{
    Outcomes all;
    for (const RunFigures &run : runs)
        all.add(run.sequences);
    return all;
}

std::optional<qint64> percentile(const QList<qint64> &sorted, double part)
{
    if (sorted.isEmpty())
        return std::nullopt;
    // A hair less, since 0.9 * 10 is a hair more than 9 for a computer.
    const double rank = std::ceil(part * static_cast<double>(sorted.size()) - 1e-9);
    return sorted.at(std::clamp<qsizetype>(static_cast<qsizetype>(rank) - 1, 0, sorted.size() - 1));
}

QList<TimeClass> histogram(const QList<TimeFigures> &functions)
{
    QList<TimeClass> classes;
    for (const Limit &limit : Limits)
        classes.append({QString::fromLatin1(limit.name)});
    classes.append({QStringLiteral("10 min and more")});
    for (const TimeFigures &function : functions) {
        for (const qint64 time : function.times) {
            const auto found = std::find_if(Limits.begin(), Limits.end(),
                                            [time](const Limit &limit) { return time < limit.below; });
            ++classes[found - Limits.begin()].count;
        }
    }
    return classes;
}

Course courseOf(const QList<RunFigures> &runs)
{
    const QMap<QDate, Period> days = daysOf(runs);
    if (days.isEmpty())
        return {};
    Course course = emptyCourse(days.firstKey(), days.lastKey());
    for (auto day = days.cbegin(); day != days.cend(); ++day) {
        // The last period that begins no later.
        const auto after =
            std::upper_bound(course.periods.begin(), course.periods.end(), day.key(),
                             [](const QDate &date, const Period &period) { return date < period.first; });
        if (after == course.periods.begin())
            continue;
        Period &period = *std::prev(after);
        period.passed += day->passed;
        period.other += day->other;
    }
    return course;
}

} // namespace station::report
