#include "station/LogFile.h"

#include "tests/station/StationFiles.h"
#include "tests/support/LogTrap.h"

#include <QRegularExpression>

#include <thread>
#include <vector>

using station::LogFile;

namespace {

class LogFileTest : public ::testing::Test
{
protected:
    LogFileTest()
        : m_before(KVKLogGetAnchor()->logger())
    {}
    ~LogFileTest() override { KVKLogGetAnchor()->setLogger(m_before); }

    QString path() const { return m_files.path("station.log"); }
    QStringList lines() const
    {
        EXPECT_TRUE(KVKLogGetProxy()->flush());
        return m_files.lines("station.log");
    }
    /// What stands after time, level and thread.
    static QString message(const QString &line) { return line.section("] ", 1); }
    static void logText(KVKLogLevel level, const QString &text)
    {
        KVKLogGetProxy()->proxyLogMessage(level, "%@", {text});
    }

    testsupport::StationFiles m_files;

private:
    std::shared_ptr<spdlog::logger> m_before;
};

TEST_F(LogFileTest, ALineHasTimeLevelThreadAndMessage)
{
    const LogFile log(path());
    logText(KVKLogLevel::Default, "ready");
    ASSERT_EQ(lines().size(), 1);
    const QRegularExpression form(R"(^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3} info \[\d+\] ready$)");
    EXPECT_TRUE(form.match(lines().first()).hasMatch()) << lines().first().toStdString();
}

TEST_F(LogFileTest, EachLevelHasItsName)
{
    testsupport::expectError("three");
    const LogFile log(path());
    logText(KVKLogLevel::Default, "one");
    logText(KVKLogLevel::Debug, "two");
    logText(KVKLogLevel::Error, "three");
    QStringList levels;
    for (const QString &line : lines())
        levels.append(line.section(' ', 1, 1));
    EXPECT_EQ(levels, (QStringList{"info", "debug", "error"}));
}

TEST_F(LogFileTest, LinesOfDifferentThreadsBearDifferentNumbers)
{
    const LogFile log(path());
    logText(KVKLogLevel::Default, "here");
    std::thread([] { logText(KVKLogLevel::Default, "there"); }).join();
    ASSERT_EQ(lines().size(), 2);
    EXPECT_NE(lines().at(0).section(' ', 2, 2), lines().at(1).section(' ', 2, 2));
}

TEST_F(LogFileTest, AMessageIsTextAndNoFormat)
{
    const LogFile log(path());
    logText(KVKLogLevel::Default, "{} {0} %s %d {:>9} %v 100%");
    ASSERT_EQ(lines().size(), 1);
    EXPECT_EQ(message(lines().first()), "{} {0} %s %d {:>9} %v 100%");
}

TEST_F(LogFileTest, FurtherLinesOfAMessageAreIndented)
{
    const LogFile log(path());
    logText(KVKLogLevel::Default, "one\ntwo\r\nthree\rfour\n\n");
    logText(KVKLogLevel::Default, "next");
    ASSERT_EQ(lines().size(), 5);
    EXPECT_EQ(message(lines().at(0)), "one");
    EXPECT_EQ(lines().mid(1, 3), (QStringList{"    two", "    three", "    four"}));
    EXPECT_EQ(message(lines().at(4)), "next");
}

TEST_F(LogFileTest, EachLineIsThereOnceItWasWaitedForAndInOrder)
{
    const LogFile log(path());
    for (int i = 0; i < 20; ++i) {
        logText(KVKLogLevel::Debug, QString::number(i));
        ASSERT_EQ(lines().size(), i + 1);
        EXPECT_EQ(message(lines().at(i)), QString::number(i));
    }
}

TEST_F(LogFileTest, LinesOfManyThreadsDoNotMix)
{
    const LogFile log(path());
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([thread] {
            for (int i = 0; i < 50; ++i)
                logText(KVKLogLevel::Debug, QString(200, QChar('a' + thread)));
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    ASSERT_EQ(lines().size(), 400);
    for (const QString &line : lines())
        EXPECT_EQ(message(line), QString(200, message(line).at(0)));
}

TEST_F(LogFileTest, AFileThatIsThereIsBegunAnew)
{
    m_files.write("station.log", "an earlier run\n");
    const LogFile log(path());
    logText(KVKLogLevel::Default, "new");
    ASSERT_EQ(lines().size(), 1);
    EXPECT_EQ(message(lines().first()), "new");
}

TEST_F(LogFileTest, NothingIsWrittenOnceItIsGone)
{
    {
        const LogFile log(path());
        logText(KVKLogLevel::Default, "last");
    }
    logText(KVKLogLevel::Default, "too late");
    ASSERT_EQ(lines().size(), 1);
    EXPECT_EQ(message(lines().first()), "last");
}

TEST_F(LogFileTest, AFileThatCannotBeWrittenIsRefusedWithItsPath)
{
    const QString refusal = testsupport::refusalOf([] { const LogFile log("/dev/null/station.log"); });
    EXPECT_EQ(refusal, "--log: Failed opening file /dev/null/station.log for writing: Not a directory");
}

TEST_F(LogFileTest, AFullDiskDoesNotStopTheStation)
{
    const LogFile log("/dev/full");
    logText(KVKLogLevel::Default, "lost");
    SUCCEED();
}

TEST_F(LogFileTest, WithoutAPathLinesGoNowhereElse)
{
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    const LogFile log{QString()};
    logText(KVKLogLevel::Default, "quiet");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(LogFileTest, TheErrorOutputHasWhatIsCriticalInTheSystemLogAlone)
{
    testing::internal::CaptureStderr();
    const LogFile log{QString()};
    KVKLogGetAnchor()->logger()->error("an operator's mistake");
    KVKLogGetAnchor()->logger()->critical("the end");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "station: the end\n");
}

} // namespace
