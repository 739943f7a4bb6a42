#include "tests/end_to_end/StationRun.h"

#include <QMap>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <gtest/gtest.h>

#include <memory>
#include <random>

using testsupport::StationRun;

namespace {

/// One answer after the other, until somebody ends it.
const QString Asks = QStringLiteral(
    "while true do showGroupView(groupNumber, { input = { 'S1', 'S2' }, autoConfirm = true }) end");

/// Every entry is another one, also from round to round.
QString answersFrom(int first)
{
    return QStringLiteral("local number = ") + QString::number(first) +
           QStringLiteral("; while true do for _, group in ipairs({ 'G1', 'G2' }) do "
                          "operator.waitForPanel(group, 30); for slot = 1, 2 do number = number + 1; "
                          "operator.type(string.format('%06d\\n', number)) end end end");
}

class KilledResultsTest : public ::testing::Test
{
protected:
    KilledResultsTest()
    {
        m_database = QSqlDatabase::addDatabase("QSQLITE", "killed");
        m_database.setDatabaseName(m_first.path("results.sqlite"));
    }
    ~KilledResultsTest() override
    {
        m_database.close();
        m_database = {};
        QSqlDatabase::removeDatabase("killed");
    }

    /// Runs the station until it has printed so many answers, and kills it. Returns all that was printed.
    QString runAndKill(int round, int answers) const
    {
        StationRun run;
        run.config(QStringLiteral("[station]\ngroups = [\"G1\", \"G2\"]\nslots = [\"S1\", \"S2\"]\n"
                                  "[results]\ndatabase = \"%1\"\n"
                                  "[[sequence]]\nscript = \"%2\"\nper = \"group\"\n")
                       .arg(m_first.path("results.sqlite"), run.file("ask.lua", Asks)));
        run.operatorDoes(answersFrom(10'000 * (round + 1)));
        run.start();
        QString printed;
        while (printed.count('\n') < answers && run.process().waitForReadyRead(60'000))
            printed += QString::fromUtf8(run.process().readAllStandardOutput());
        run.process().kill();
        EXPECT_TRUE(run.process().waitForFinished());
        printed += QString::fromUtf8(run.process().readAllStandardOutput());
        EXPECT_GE(printed.count('\n'), answers) << run.process().readAllStandardError().toStdString();
        return printed;
    }
    QStringList column(const QString &question)
    {
        EXPECT_TRUE(m_database.isOpen() || m_database.open());
        QStringList values;
        QSqlQuery query(m_database);
        EXPECT_TRUE(query.exec(question)) << question.toStdString();
        while (query.next())
            values.append(query.value(0).toString());
        return values;
    }

    StationRun m_first; ///< Its folder holds the database of all rounds.
    QSqlDatabase m_database;
};

TEST_F(KilledResultsTest, EveryAnswerThatWasPrintedIsThereOnceThoughTheStationWasKilled)
{
    std::mt19937 dice(20261121);
    QStringList printed;
    for (int round = 0; round < 5; ++round) {
        const QString output = runAndKill(round, std::uniform_int_distribution(1, 12)(dice));
        static const QRegularExpression entry("S[12] = (\\d{6})");
        for (auto match = entry.globalMatch(output); match.hasNext();)
            printed.append(match.next().captured(1));
    }
    EXPECT_EQ(column("PRAGMA integrity_check"), QStringList{"ok"});
    QMap<QString, int> kept;
    for (const QString &value : column("SELECT value FROM answers"))
        ++kept[value];
    EXPECT_GE(printed.size(), 10);
    for (const QString &value : printed)
        EXPECT_EQ(kept.value(value), 1) << value.toStdString();
    EXPECT_EQ(column("SELECT 1 FROM calls c WHERE (SELECT count(*) FROM answers a WHERE a.run = c.run AND"
                     " a.sequence = c.sequence AND a.call = c.call) <> 2"),
              QStringList())
        << "half an answer";
    EXPECT_EQ(column("SELECT count(*) FROM runs"), QStringList{"5"});
    EXPECT_EQ(column("SELECT DISTINCT outcome IS NULL FROM sequences"), QStringList{"1"});
}

TEST(DatabaseOfTheConfiguration, IsSeenFromItsFileAndGetsEveryResult)
{
    StationRun run;
    run.config(QStringLiteral("[station]\ngroups = [\"G1\"]\nslots = [\"S1\"]\n"
                              "[results]\ndatabase = \"sub.sqlite\"\n[[sequence]]\nscript = \"%1\"\n")
                   .arg(run.file("ask.lua", "return getData(systemIndex) == nil")))
        .passes();
    {
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "seen");
        database.setDatabaseName(run.path("sub.sqlite"));
        ASSERT_TRUE(database.open());
        QSqlQuery query(database);
        ASSERT_TRUE(query.exec(
            "SELECT s.outcome, s.slot, c.function FROM sequences s JOIN calls c USING (run, sequence)"));
        ASSERT_TRUE(query.next());
        EXPECT_EQ(query.value(0).toString(), "passed");
        EXPECT_EQ(query.value(1).toString(), "S1");
        EXPECT_EQ(query.value(2).toString(), "getData");
    }
    QSqlDatabase::removeDatabase("seen");
}

} // namespace
