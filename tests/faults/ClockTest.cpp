#include "tests/faults/AnsweredRun.h"

#include <QDateTime>
#include <QFile>
#include <QProcessEnvironment>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <gtest/gtest.h>

#include <cstdint>

using testsupport::AnsweredRun;

namespace {

constexpr std::int64_t Hour = 3600;

class ClockTest : public ::testing::Test
{
protected:
    ClockTest()
    {
        setClock(0);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("LD_PRELOAD", SET_CLOCK_PATH);
        environment.insert("SET_CLOCK_FILE", m_run.path("clock"));
        // The library stands before that of a sanitizer, which it leaves alone.
        const QString options = environment.value("ASAN_OPTIONS");
        environment.insert("ASAN_OPTIONS", options + ":verify_asan_link_order=0");
        m_run.process().setProcessEnvironment(environment);
    }
    /// In place: the station has the file mapped.
    void setClock(std::int64_t seconds) const
    {
        QFile file(m_run.path("clock"));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.write(reinterpret_cast<const char *>(&seconds), sizeof seconds);
    }
    QList<QDateTime> column(const QString &name) const
    {
        QList<QDateTime> times;
        QSqlQuery query("SELECT " + name + " FROM calls ORDER BY call", QSqlDatabase::database("clock"));
        while (query.next())
            times.append(QDateTime::fromString(query.value(0).toString(), Qt::ISODateWithMs));
        return times;
    }

    AnsweredRun m_run{"results.sqlite"};
};

TEST_F(ClockTest, SetBackAndForwardByAnHourChangesTheTimesInTheResultsAndNothingElse)
{
    m_run.start();
    ASSERT_TRUE(m_run.waitForAnswers(AnsweredRun::Rest));
    setClock(-Hour);
    m_run.goOn(AnsweredRun::Rest);
    ASSERT_TRUE(m_run.waitForAnswers(2 * AnsweredRun::Rest));
    setClock(Hour);
    m_run.goOn(2 * AnsweredRun::Rest);
    m_run.finish();
    // The panels' limit of ten minutes has not come, that of a fifth of a second has.
    EXPECT_EQ(m_run.status(), 0) << m_run.everything().toStdString();
    EXPECT_EQ(m_run.errors(), "");
    EXPECT_EQ(AnsweredRun::answersIn(m_run.resultsPath()), AnsweredRun::answersUpTo(AnsweredRun::All));
    {
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "clock");
        database.setDatabaseName(m_run.resultsPath());
        ASSERT_TRUE(database.open());
        const QList<QDateTime> ends = column("ended");
        ASSERT_EQ(ends.size(), AnsweredRun::All + 1);
        // The row behind the rest began before the clock was set.
        EXPECT_LT(ends.at(AnsweredRun::Rest + 1), ends.at(0)) << "as the clock of the wall says";
        EXPECT_GT(ends.at(2 * AnsweredRun::Rest + 1), ends.at(0).addSecs(Hour / 2));
        QSqlQuery took("SELECT min(milliseconds), max(milliseconds) FROM calls", database);
        ASSERT_TRUE(took.next());
        EXPECT_GE(took.value(0).toInt(), 0);
        EXPECT_LT(took.value(1).toInt(), Hour * 1000 / 2);
    }
    QSqlDatabase::removeDatabase("clock");
}

} // namespace
