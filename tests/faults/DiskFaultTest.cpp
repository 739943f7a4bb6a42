#include "tests/faults/AnsweredRun.h"

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>

using testsupport::AnsweredRun;

namespace {

/// The results are on a disk of their own, which can be made to fail. In each form of results.
class DiskFaultTest : public ::testing::TestWithParam<const char *>
{
protected:
    DiskFaultTest()
    {
        for (const char *folder : {"disk", "synced"})
            EXPECT_TRUE(QDir().mkpath(m_run.path(folder)));
        setFault(0);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("LD_PRELOAD", FAULTY_DISK_PATH);
        environment.insert("FAULTY_DISK_FOLDER", m_run.path("disk"));
        environment.insert("FAULTY_DISK_FILE", m_run.path("fault"));
        environment.insert("FAULTY_DISK_SYNCED", m_run.path("synced"));
        // The library stands before that of a sanitizer, whose functions it calls.
        environment.insert("ASAN_OPTIONS", environment.value("ASAN_OPTIONS") + ":verify_asan_link_order=0");
        m_run.process().setProcessEnvironment(environment);
    }
    /// In place: the station has the file mapped.
    void setFault(std::int64_t number) const
    {
        QFile file(m_run.path("fault"));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.write(reinterpret_cast<const char *>(&number), sizeof number);
    }
    /// Puts back what a machine finds on its disk when it has power again.
    void losePower()
    {
        m_run.process().kill();
        ASSERT_TRUE(m_run.process().waitForFinished());
        QDir disk(m_run.path("disk"));
        for (const QString &name : disk.entryList(QDir::Files))
            ASSERT_TRUE(disk.remove(name));
        const QDir synced(m_run.path("synced"));
        for (const QString &name : synced.entryList(QDir::Files))
            ASSERT_TRUE(QFile::copy(synced.filePath(name), disk.filePath(name)));
    }

    AnsweredRun m_run{GetParam()};
};

class PowerFailureTest : public DiskFaultTest
{};

TEST_P(DiskFaultTest, WhatADiskThatIsReadOnlyDoesNotTakeIsWrittenWhenItTakesItAgain)
{
    m_run.start();
    ASSERT_TRUE(m_run.waitForAnswers(AnsweredRun::Rest));
    setFault(EROFS);
    m_run.goOn(AnsweredRun::Rest);
    EXPECT_TRUE(m_run.waitForError("station: results cannot be written: " + m_run.resultsPath() + ": "));
    EXPECT_TRUE(m_run.waitForAnswers(2 * AnsweredRun::Rest)) << "the station goes on";
    EXPECT_EQ(AnsweredRun::answersIn(m_run.resultsPath()), AnsweredRun::answersUpTo(AnsweredRun::Rest));
    setFault(0);
    m_run.goOn(2 * AnsweredRun::Rest);
    m_run.finish();
    EXPECT_EQ(m_run.status(), 0) << m_run.everything().toStdString();
    EXPECT_EQ(AnsweredRun::answersIn(m_run.resultsPath()), AnsweredRun::answersUpTo(AnsweredRun::All));
    EXPECT_EQ(m_run.said().count("station: "), 1) << m_run.said().toStdString();
}

TEST_P(PowerFailureTest, FindsEachAcceptedAnswerOnTheDisk)
{
    m_run.start();
    ASSERT_TRUE(m_run.waitForAnswers(AnsweredRun::Rest));
    ASSERT_NO_FATAL_FAILURE(losePower());
    EXPECT_EQ(AnsweredRun::answersIn(m_run.resultsPath()), AnsweredRun::answersUpTo(AnsweredRun::Rest));
}

INSTANTIATE_TEST_SUITE_P(InEachForm, DiskFaultTest,
                         ::testing::Values("disk/results.jsonl", "disk/results.sqlite"),
                         [](const auto &form) { return QString(form.param).section('.', -1).toStdString(); });
// Lines are left to the system, which writes them when it likes.
INSTANTIATE_TEST_SUITE_P(InADatabase, PowerFailureTest, ::testing::Values("disk/results.sqlite"),
                         [](const auto &form) { return QString(form.param).section('.', -1).toStdString(); });

} // namespace
