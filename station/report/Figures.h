#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace station::report {

/// What a report says. Plain values; times are as the results have them: universal, ISO 8601, milliseconds.

/// How sequences ended.
struct Outcomes
{
    qint64 passed = 0;
    qint64 failed = 0;
    qint64 erred = 0;
    qint64 stopped = 0;
    qint64 open = 0; ///< Have no end: they run still, or their station was killed.

    void add(const Outcomes &others);
    [[nodiscard]] qint64 ended() const { return passed + failed + erred + stopped; }
    [[nodiscard]] qint64 total() const { return ended() + open; }
    /// The part of the ended ones that passed, 0 to 1; nothing when none has ended.
    [[nodiscard]] std::optional<double> yield() const;
    /// The worst of them in a word: "open" before "erred", "failed", "stopped" and "passed"; empty for none.
    [[nodiscard]] QString worst() const;
};

/// One run.
struct RunFigures
{
    QString run;
    QString station;
    QString operatorBadge; ///< Empty where nobody was asked for one.
    QString configuration;
    QString started;
    QString ended; ///< Empty while a sequence is open.
    qint64 systems = 0;
    Outcomes sequences;
};

/// The sequences of a slot, or of all of a group.
struct YieldFigures
{
    QString station;
    QString group; ///< Empty for the sequences of a whole station.
    QString slot;  ///< Empty for a group's.
    Outcomes sequences;
};

/// How long operators took.
struct TimeFigures
{
    QString station;
    QString function; ///< Empty for those of a slot.
    QString group;
    QString slot; ///< Empty for calls of a group.
    qint64 calls = 0;
    qint64 unanswered = 0; ///< So many of the calls ended with an error.
    qint64 repeated = 0;   ///< So many of them had no panel: a loop gave the answer again.
    QList<qint64> times;   ///< Milliseconds of the others, sorted.
};

struct RefusalFigures
{
    QString kind;
    qint64 entries = 0;
    qint64 runs = 0;
    QString last;
};

/// A value that was answered in a run in which a serial number was entered; or a call without a named value.
struct SerialAnswer
{
    QString run;
    QString time;
    QString station;
    QString operatorBadge;
    QString script;
    QString group;
    QString slot;
    QString function;
    QString label;
    QString value;
    QString button;
    QString error;
    QString outcome; ///< Of the sequence.
    /// It belongs to the unit: to the sequence or the slot for which the serial number was entered.
    bool isOfUnit = false;
};

struct Figures
{
    QString file;
    QList<RunFigures> runs; ///< The latest first.
    QList<YieldFigures> groupYields;
    QList<YieldFigures> slotYields;
    QList<TimeFigures> functions;
    QList<TimeFigures> slotTimes;
    QList<RefusalFigures> refusals; ///< The most frequent first.
    qint64 answers = 0;
    QString serial; ///< What was asked for; the answers are none without it.
    QList<SerialAnswer> serialAnswers;

    [[nodiscard]] QStringList stations() const;
    [[nodiscard]] Outcomes sequences() const;
};

/// The value below or at which so much of the sorted values lies (nearest rank), so always one that was
/// measured; nothing without values. `part` is 0 to 1.
[[nodiscard]] std::optional<qint64> percentile(const QList<qint64> &sorted, double part);

/// A class of a histogram.
struct TimeClass
{
    QString name; ///< "5 to 10 s"
    qint64 count = 0;
};

/// The times of all functions in classes of fixed limits; a time on a limit counts above it.
[[nodiscard]] QList<TimeClass> histogram(const QList<TimeFigures> &functions);

/// The runs of a time: by how they ended.
struct Period
{
    QDate first;
    qint64 passed = 0;
    qint64 other = 0;
    [[nodiscard]] qint64 total() const { return passed + other; }
};

/// Runs in equal periods, also in those without any, as short as it takes no more than sixty of them.
struct Course
{
    QString unit; ///< "day", "week", "month", "year"
    QList<Period> periods;
};

/// Runs without a date that can be read are left out; of years, those before the last sixty.
[[nodiscard]] Course courseOf(const QList<RunFigures> &runs);

} // namespace station::report
