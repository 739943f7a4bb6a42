#include "station/report/FiguresReader.h"

#include "tests/report/ExampleResults.h"
#include "tests/results/Tables.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <fstream>

using namespace station::report;
using platform::Dictionary;
using testsupport::ExampleResults;
using testsupport::refusalOf;
using testsupport::runOnFile;

namespace {

QString inWords(const Outcomes &outcomes)
{
    return QStringLiteral("%1 %2 %3 %4 %5")
        .arg(outcomes.passed)
        .arg(outcomes.failed)
        .arg(outcomes.erred)
        .arg(outcomes.stopped)
        .arg(outcomes.open);
}

QStringList inWords(const QList<YieldFigures> &yields)
{
    QStringList words;
    for (const YieldFigures &yield : yields)
        words.append(yield.station + '|' + yield.group + '|' + yield.slot + '|' + inWords(yield.sequences));
    return words;
}

QStringList inWords(const QList<TimeFigures> &list)
{
    QStringList words;
    for (const TimeFigures &figures : list) {
        QStringList times;
        for (const qint64 time : figures.times)
            times.append(QString::number(time));
        words.append(
            figures.function + '|' + figures.group + '|' + figures.slot +
            QStringLiteral("|%1 %2 %3|").arg(figures.calls).arg(figures.unanswered).arg(figures.repeated) +
            times.join(' '));
    }
    return words;
}

QStringList inWords(const QList<SerialAnswer> &answers)
{
    QStringList words;
    for (const SerialAnswer &answer : answers)
        words.append(QStringList{answer.run, answer.group, answer.slot, answer.label, answer.value,
                                 answer.isOfUnit ? "unit" : "run"}
                         .join('|'));
    return words;
}

class FiguresReaderTest : public ::testing::Test
{
protected:
    QString path() const { return m_files.path("results.sqlite"); }
    Figures read(const QString &serial = {}) const { return readFigures(path(), serial); }
    QString refusal() const
    {
        return refusalOf([this] { static_cast<void>(read()); });
    }
    QStringList filesThere() const { return QDir(m_files.folder()).entryList(QDir::Files, QDir::Name); }

    testsupport::StationFiles m_files;
};

TEST_F(FiguresReaderTest, ARunHasItsStartStationOperatorSystemsAndEnd)
{
    ExampleResults results(path());
    results.run("a", "2026-11-20T08:00:00.000Z", "B7");
    for (const int system : {0, 1}) {
        results.system(system);
        results.answers(true, 1000);
        results.ends(system == 0 ? KVKLuaOutcome::Passed : KVKLuaOutcome::Failed);
    }
    results.group("G1");
    results.ends(KVKLuaOutcome::Stopped);
    results.run("b", "2026-11-21T08:00:00.000Z", {}, "Line 4");
    results.system(0);
    const Figures figures = read();
    ASSERT_EQ(figures.runs.size(), 2);
    const RunFigures &latest = figures.runs.first();
    EXPECT_EQ(latest.run + latest.station + latest.operatorBadge + latest.ended, "bLine 4");
    EXPECT_EQ(latest.sequences.worst(), "open");
    const RunFigures &first = figures.runs.last();
    EXPECT_EQ(first.started + first.operatorBadge, "2026-11-20T08:00:00.000ZB7");
    EXPECT_EQ(first.ended, "2026-11-20T08:00:02.000Z");
    EXPECT_EQ(first.systems, 2);
    EXPECT_EQ(inWords(first.sequences), "1 1 0 1 0");
    EXPECT_EQ(figures.answers, 0);
    EXPECT_EQ(figures.stations(), (QStringList{"Line 3", "Line 4"}));
}

TEST_F(FiguresReaderTest, YieldsAreInTheOrderOfTheStationsSystems)
{
    ExampleResults results(path());
    for (const char *run : {"a", "b"}) {
        results.run(run, "2026-11-20T08:00:00.000Z");
        results.wholeStation();
        results.ends(KVKLuaOutcome::Passed);
        for (const int system : {3, 2, 0}) {
            results.system(system);
            results.ends(system == 3 ? KVKLuaOutcome::Erred : KVKLuaOutcome::Passed);
        }
        results.group("G1");
        results.ends(KVKLuaOutcome::Failed);
    }
    EXPECT_EQ(inWords(read().slotYields),
              (QStringList{"Line 3|G1|S1|2 0 0 0 0", "Line 3|G2|S1|2 0 0 0 0", "Line 3|G2|S2|0 0 2 0 0"}));
    EXPECT_EQ(inWords(read().groupYields),
              (QStringList{"Line 3|G1||2 2 0 0 0", "Line 3|G2||2 0 2 0 0", "Line 3|||2 0 0 0 0"}));
}

TEST_F(FiguresReaderTest, OnlyAnswersOfPeopleHaveATime)
{
    ExampleResults results(path());
    results.run("a", "2026-11-20T08:00:00.000Z");
    results.system(1);
    results.answers(Dictionary{{"SN", "A1"}}, 4000);
    results.answers(Dictionary{{"SN", "A1"}}, 2000);
    results.answers(true, 1);
    results.fails(60'000);
    results.answers(Dictionary{{"SN", "A1"}}, 5, "getData");
    results.system(0);
    results.answers(true, 3000);
    results.group("G1");
    results.answers(true, 9000, "showGroupView");
    EXPECT_EQ(inWords(read().functions),
              (QStringList{"showGroupView|||1 0 0|9000", "showView|||5 1 1|2000 3000 4000"}));
    EXPECT_EQ(inWords(read().slotTimes),
              (QStringList{"|G1|S1|1 0 0|3000", "|G1|S2|4 1 1|2000 4000", "|G1||1 0 0|9000"}));
}

TEST_F(FiguresReaderTest, RefusalsAreCountedByKindTheMostFrequentFirst)
{
    ExampleResults results(path());
    results.run("a", "2026-11-20T08:00:00.000Z");
    results.refuses("length");
    results.refuses("pattern");
    results.run("b", "2026-11-21T08:00:00.000Z");
    results.refuses("pattern");
    results.refuses("pattern");
    const QList<RefusalFigures> refusals = read().refusals;
    ASSERT_EQ(refusals.size(), 2);
    EXPECT_EQ(refusals.first().kind, "pattern");
    EXPECT_EQ(refusals.first().entries, 3);
    EXPECT_EQ(refusals.first().runs, 2);
    EXPECT_EQ(refusals.first().last, "2026-11-21T08:00:00.000Z");
    EXPECT_EQ(refusals.last().entries, 1);
}

TEST_F(FiguresReaderTest, ASerialNumberHasAllAnswersOfItsRunsAndItsOwnAreTold)
{
    ExampleResults results(path());
    results.run("a", "2026-11-20T08:00:00.000Z");
    results.system(0);
    results.answers(Dictionary{{"SN", "A1"}}, 1000);
    results.answers(true, 1000);
    results.system(1);
    results.answers(Dictionary{{"SN", "A2"}}, 1000);
    results.group("G1");
    results.answers(Dictionary{{"S1", "12.5"}, {"S2", "13"}}, 1000, "showGroupView");
    results.run("b", "2026-11-20T09:00:00.000Z");
    results.system(0);
    results.answers(Dictionary{{"SN", "A3"}}, 1000);
    results.run("c", "2026-11-20T10:00:00.000Z");
    results.wholeStation();
    results.answers(Dictionary{{"SN", "A1"}}, 1000);
    EXPECT_EQ(inWords(read("A1").serialAnswers),
              (QStringList{"a|G1|S1|SN|A1|unit", "a|G1|S1||true|unit", "a|G1|S2|SN|A2|run",
                           "a|G1|S1||12.5|unit", "a|G1|S2||13|run", "c|||SN|A1|unit"}));
    EXPECT_EQ(inWords(read("a1").serialAnswers), QStringList());
    EXPECT_EQ(inWords(read("A%' OR 1=1 --").serialAnswers), QStringList());
    EXPECT_EQ(inWords(read().serialAnswers), QStringList());
}

TEST_F(FiguresReaderTest, AFileWithoutRunsAndOneWithoutTablesHaveNothingToSay)
{
    ExampleResults(path()).close();
    EXPECT_EQ(read("A1").runs.size(), 0);
    m_files.write("results.sqlite", {});
    EXPECT_EQ(read("A1").runs.size(), 0);
}

// The station writes; its answers are in the -wal file alone, which no reader may take away.
TEST_F(FiguresReaderTest, WhatAStationHasWrittenIsReadWhileItRuns)
{
    ExampleResults results(path());
    results.run("a", "2026-11-20T08:00:00.000Z");
    results.system(0);
    for (int i = 1; i <= 20; ++i) {
        results.answers(Dictionary{{"SN", "A1"}}, 1000);
        EXPECT_EQ(read().answers, i);
    }
    results.close();
    EXPECT_EQ(read().answers, 20);
}

// As a reader of another user would leave them, and a station could not write its results any more.
TEST_F(FiguresReaderTest, ReadingLeavesNoFilesBeside)
{
    ExampleResults(path()).close();
    ASSERT_EQ(filesThere(), QStringList{"results.sqlite"});
    static_cast<void>(read());
    EXPECT_EQ(filesThere(), QStringList{"results.sqlite"});
}

TEST_F(FiguresReaderTest, WhatAKilledStationLeftIsReadAndStays)
{
    ExampleResults results(path());
    results.run("a", "2026-11-20T08:00:00.000Z");
    // As they are on the disk at this moment, without the locks.
    for (const QString &suffix : QStringList{"", "-wal"})
        ASSERT_TRUE(QFile::copy(path() + suffix, m_files.path("killed.sqlite" + suffix)));
    EXPECT_EQ(readFigures(m_files.path("killed.sqlite"), {}).runs.size(), 1);
    EXPECT_TRUE(QFile::exists(m_files.path("killed.sqlite-wal")));
    EXPECT_EQ(readFigures(m_files.path("killed.sqlite"), {}).runs.size(), 1);
}

TEST_F(FiguresReaderTest, TablesOfTheFirstVersionHaveNeitherOperatorsNorRefusals)
{
    ExampleResults results(path());
    results.run("a", "2026-11-20T08:00:00.000Z", "B7");
    results.system(0);
    results.answers(Dictionary{{"SN", "A1"}}, 1000);
    results.close();
    runOnFile(path(), {"ALTER TABLE runs DROP COLUMN operator", "ALTER TABLE calls DROP COLUMN operator",
                       "DROP TABLE refusals", "PRAGMA user_version = 1"});
    const Figures figures = read("A1");
    EXPECT_EQ(figures.runs.size(), 1);
    EXPECT_EQ(figures.runs.first().operatorBadge, "");
    EXPECT_EQ(figures.serialAnswers.size(), 1);
}

TEST_F(FiguresReaderTest, AnEntryOfAnyKindIsFound)
{
    ExampleResults results(path());
    results.run("a", "2026-11-20T08:00:00.000Z");
    results.system(0);
    const QStringList entries{"=1+1", "'; DROP TABLE runs; --", QStringLiteral("é␝漢"), QString(QChar(0)),
                              " "};
    for (const QString &entry : entries)
        results.answers(Dictionary{{"SN", entry}}, 1000);
    for (const QString &entry : entries)
        EXPECT_EQ(read(entry).serialAnswers.size(), entries.size()) << entry.toStdString();
}

TEST_F(FiguresReaderTest, ANameOfAnyKindIsRead)
{
    for (const QString &name : QStringList{"a b.sqlite", "50%?x=1#y.sqlite", "file:é'&.sqlite"}) {
        ExampleResults(m_files.path(name)).run("a", "2026-11-20T08:00:00.000Z");
        EXPECT_EQ(readFigures(m_files.path(name), {}).runs.size(), 1) << name.toStdString();
    }
}

TEST_F(FiguresReaderTest, WhatCannotBeReadIsNamedWithWhy)
{
    EXPECT_EQ(refusal(), path() + ": there is no such file");
    EXPECT_FALSE(QFile::exists(path()));
    EXPECT_EQ(refusalOf([this] { static_cast<void>(readFigures(m_files.folder(), {})); }),
              m_files.folder() + ": is no file");
    m_files.write("results.sqlite", QByteArray(4096, 'x'));
    EXPECT_EQ(refusal(), path() + ": file is not a database");
    QFile::remove(path());
    runOnFile(path(), {"CREATE TABLE notes (text TEXT)"});
    EXPECT_EQ(refusal(), path() + ": the file holds something else than results");
}

TEST_F(FiguresReaderTest, TablesOfANewerVersionAreRefused)
{
    ExampleResults(path()).close();
    runOnFile(path(), {"PRAGMA user_version = 99"});
    EXPECT_EQ(refusal(), path() + ": the results are of version 99, and this station knows up to 2");
}

TEST_F(FiguresReaderTest, AFileThatIsSpoiltInItsMidstGivesNoHalfOfTheFigures)
{
    ExampleResults results(path());
    results.run("a", "2026-11-20T08:00:00.000Z");
    results.close();
    runOnFile(path(), {"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000)"
                       " INSERT INTO runs (run, station, configuration, started)"
                       " SELECT 'r' || i, 'Line 3', '/', '2026-11-20' FROM n",
                       "PRAGMA wal_checkpoint(TRUNCATE)"});
    ASSERT_EQ(read().runs.size(), 5001);
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.seek(file.size() / 2 / 4096 * 4096));
    file.write(QByteArray(8 * 4096, '\xff'));
    file.close();
    EXPECT_EQ(refusal(), path() + ": database disk image is malformed");
}

TEST_F(FiguresReaderTest, AHundredThousandAnswersAreRead)
{
    ExampleResults(path()).close();
    const QString numbers = "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < %1) ";
    runOnFile(path(),
              {"BEGIN",
               numbers.arg(999) + "INSERT INTO runs (run, station, configuration, started)"
                                  " SELECT 'r' || i, 'Line 3', '/', '2026-11-20T08:00:00.000Z' FROM n",
               numbers.arg(9'999) +
                   "INSERT INTO sequences (run, sequence, script, system, group_name, slot,"
                   " started, outcome) SELECT 'r' || (i / 10), i % 10, 'a.lua', i % 10, 'G1',"
                   " 'S' || (i % 10), '', 'passed' FROM n",
               numbers.arg(99'999) + "INSERT INTO calls (run, sequence, call, function, started, ended,"
                                     " milliseconds, result) SELECT 'r' || (i / 100), i / 10 % 10, i % 10,"
                                     " 'showView', '', '', i, '' FROM n",
               numbers.arg(99'999) + "INSERT INTO answers (run, sequence, call, position, value)"
                                     " SELECT 'r' || (i / 100), i / 10 % 10, i % 10, 1, 'A' || i FROM n",
               "COMMIT"});
    const Figures figures = read("A77");
    EXPECT_EQ(figures.answers, 100'000);
    EXPECT_EQ(figures.runs.size(), 1000);
    EXPECT_EQ(figures.slotYields.size(), 10);
    EXPECT_EQ(figures.functions.first().times.size(), 99'998);
    EXPECT_EQ(figures.serialAnswers.size(), 100);
}

} // namespace
