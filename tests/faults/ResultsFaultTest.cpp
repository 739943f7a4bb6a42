#include "tests/faults/AnsweredRun.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <sys/resource.h>

using testsupport::AnsweredRun;

namespace {

/// In each form of results.
class ResultsFaultTest : public ::testing::TestWithParam<const char *>
{
protected:
    void startAndRest()
    {
        m_run.start();
        ASSERT_TRUE(m_run.waitForAnswers(AnsweredRun::Rest));
    }
    /// What the station says while results cannot be written.
    QString trouble(const QString &why = {}) const
    {
        return QStringLiteral("station: results cannot be written: %1: %2").arg(m_run.resultsPath(), why);
    }
    /// The rest of the answers; then all are there, once, and the station has nothing to complain of.
    void endsWithEveryAnswer()
    {
        m_run.goOn(2 * AnsweredRun::Rest);
        m_run.finish();
        EXPECT_EQ(m_run.status(), 0) << m_run.everything().toStdString();
        EXPECT_EQ(AnsweredRun::answersIn(m_run.resultsPath()), AnsweredRun::answersUpTo(AnsweredRun::All));
    }

    AnsweredRun m_run{GetParam()};
};

/// Lets no file of the station grow beyond a size, as a full disk does.
void limitFiles(qint64 process, rlim_t bytes)
{
    const rlimit limit{bytes, RLIM_INFINITY};
    ASSERT_EQ(::prlimit(static_cast<pid_t>(process), RLIMIT_FSIZE, &limit, nullptr), 0);
}

TEST_P(ResultsFaultTest, WhatAFullDiskDoesNotTakeIsWrittenWhenThereIsRoom)
{
    ASSERT_NO_FATAL_FAILURE(startAndRest());
    const QString growing = m_run.isDatabase() ? m_run.resultsPath() + "-wal" : m_run.resultsPath();
    limitFiles(m_run.process().processId(), static_cast<rlim_t>(QFileInfo(growing).size()));
    m_run.goOn(AnsweredRun::Rest);
    EXPECT_TRUE(m_run.waitForError(trouble()));
    EXPECT_TRUE(m_run.waitForAnswers(2 * AnsweredRun::Rest)) << "the station goes on";
    EXPECT_EQ(AnsweredRun::answersIn(m_run.resultsPath()), AnsweredRun::answersUpTo(AnsweredRun::Rest));
    limitFiles(m_run.process().processId(), RLIM_INFINITY);
    endsWithEveryAnswer();
    EXPECT_EQ(m_run.said().count("station: "), 1) << m_run.said().toStdString();
}

TEST_P(ResultsFaultTest, WhatIsLostAtTheEndIsToldAndStandsInTheLog)
{
    m_run.argument("--log").argument(m_run.path("station.log"));
    ASSERT_NO_FATAL_FAILURE(startAndRest());
    ASSERT_TRUE(QFile::remove(m_run.resultsPath()));
    ASSERT_TRUE(QDir().mkdir(m_run.resultsPath()));
    m_run.goOn(AnsweredRun::Rest);
    m_run.goOn(2 * AnsweredRun::Rest);
    m_run.finish();
    EXPECT_EQ(m_run.status(), 1);
    const QString why = m_run.resultsPath() + ": Is a directory\n";
    EXPECT_EQ(
        m_run.errors().toStdString(),
        ("station: results cannot be written: " + why + "station: results are lost: " + why).toStdString());
    for (const QString &answer : AnsweredRun::answersUpTo(AnsweredRun::All).mid(AnsweredRun::Rest)) {
        EXPECT_EQ(m_run.log().split('\n').filter("not yet in ").filter('"' + answer + '"').size(), 1)
            << answer.toStdString();
    }
}

TEST_P(ResultsFaultTest, AFileThatIsRemovedIsMadeAnewWithAllThatItHeld)
{
    ASSERT_NO_FATAL_FAILURE(startAndRest());
    ASSERT_TRUE(QFile::remove(m_run.resultsPath()));
    m_run.goOn(AnsweredRun::Rest);
    EXPECT_TRUE(m_run.waitForAnswers(2 * AnsweredRun::Rest));
    endsWithEveryAnswer();
    EXPECT_EQ(m_run.errors(), "");
}

TEST_P(ResultsFaultTest, AFileThatIsMovedKeepsWhatItHeldAndANewOneGetsTheRest)
{
    ASSERT_NO_FATAL_FAILURE(startAndRest());
    const QString moved = m_run.path("moved-" + QString(GetParam()));
    ASSERT_TRUE(QFile::rename(m_run.resultsPath(), moved));
    m_run.goOn(AnsweredRun::Rest);
    m_run.goOn(2 * AnsweredRun::Rest);
    m_run.finish();
    EXPECT_EQ(m_run.status(), 0) << m_run.everything().toStdString();
    EXPECT_EQ(AnsweredRun::answersIn(moved) + AnsweredRun::answersIn(m_run.resultsPath()),
              AnsweredRun::answersUpTo(AnsweredRun::All));
}

TEST_P(ResultsFaultTest, AFolderThatGoesAwayAndComesBackHasEveryAnswer)
{
    const QString name = GetParam();
    AnsweredRun run("share/" + name);
    ASSERT_TRUE(QDir().mkdir(run.path("share")));
    run.start();
    ASSERT_TRUE(run.waitForAnswers(AnsweredRun::Rest));
    ASSERT_TRUE(QFile::rename(run.path("share"), run.path("away")));
    run.goOn(AnsweredRun::Rest);
    EXPECT_TRUE(run.waitForError("results cannot be written: " + run.resultsPath() + ": "));
    EXPECT_TRUE(run.waitForAnswers(2 * AnsweredRun::Rest));
    ASSERT_TRUE(QFile::rename(run.path("away"), run.path("share")));
    run.goOn(2 * AnsweredRun::Rest);
    run.finish();
    EXPECT_EQ(run.status(), 0) << run.everything().toStdString();
    EXPECT_EQ(AnsweredRun::answersIn(run.resultsPath()), AnsweredRun::answersUpTo(AnsweredRun::All));
}

TEST_P(ResultsFaultTest, AnOlderCopyInTheFilesPlaceGetsWhatItLacks)
{
    ASSERT_NO_FATAL_FAILURE(startAndRest());
    const QString copy = m_run.path("copy-" + QString(GetParam()));
    ASSERT_TRUE(QFile::copy(m_run.resultsPath(), copy));
    if (m_run.isDatabase())
        QFile::copy(m_run.resultsPath() + "-wal", copy + "-wal");
    // A copy is a database of its own once somebody has read it with its log.
    EXPECT_EQ(AnsweredRun::answersIn(copy), AnsweredRun::answersUpTo(AnsweredRun::Rest));
    ASSERT_EQ(std::rename(copy.toLocal8Bit(), m_run.resultsPath().toLocal8Bit()), 0);
    m_run.goOn(AnsweredRun::Rest);
    EXPECT_TRUE(m_run.waitForAnswers(2 * AnsweredRun::Rest));
    endsWithEveryAnswer();
}

INSTANTIATE_TEST_SUITE_P(InEachForm, ResultsFaultTest, ::testing::Values("results.jsonl", "results.sqlite"),
                         [](const auto &form) {
                             return QString(form.param).endsWith("jsonl") ? "JsonLines" : "Sqlite";
                         });

TEST(SpoiltDatabase, IsRefusedAtTheStartAndLeftAsItIs)
{
    AnsweredRun run("results.sqlite");
    const QString spoilt = QString(100, 'x');
    run.file("results.sqlite", spoilt);
    run.run();
    EXPECT_EQ(run.status(), 2);
    EXPECT_EQ(run.errorLine(), "station: --results: " + run.resultsPath() + ": file is not a database");
    EXPECT_EQ(QFileInfo(run.resultsPath()).size(), spoilt.size());
}

} // namespace
