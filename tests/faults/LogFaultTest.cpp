#include "tests/faults/AnsweredRun.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

using testsupport::AnsweredRun;

namespace {

TEST(LogFault, ALogOnAFullDiskIsToldOnceAndTheRunGoesOn)
{
    AnsweredRun run;
    run.argument("--log").argument("/dev/full");
    run.goOn(AnsweredRun::Rest);
    run.goOn(2 * AnsweredRun::Rest);
    run.run();
    EXPECT_EQ(run.status(), 0) << "the log is no result";
    EXPECT_TRUE(run.errorLine().startsWith("station: the log cannot be written: /dev/full: "))
        << run.errors().toStdString();
    EXPECT_EQ(AnsweredRun::answersIn(run.resultsPath()), AnsweredRun::answersUpTo(AnsweredRun::All));
}

TEST(LogFault, ALogThatCannotBeWrittenAtTheStartIsRefused)
{
    AnsweredRun run;
    run.argument("--log").argument("/dev/null/station.log");
    run.run();
    EXPECT_EQ(run.status(), 2);
    EXPECT_EQ(run.errorLine(),
              "station: --log: Failed opening file /dev/null/station.log for writing: Not a directory");
}

TEST(LogFault, ACrashLosesNoLine)
{
    testsupport::StationRun run;
    run.table("[lua]\nallow = ['os.execute']");
    // The shell's parent is the station.
    run.perSystem("for line = 1, 2000 do log(line) end os.execute('kill -ABRT $PPID')").start();
    ASSERT_TRUE(run.process().waitForFinished(60'000)) << run.process().errorString().toStdString();
    EXPECT_EQ(run.process().exitStatus(), QProcess::CrashExit);
    const QStringList lines =
        run.log().split('\n', Qt::SkipEmptyParts).filter(QRegularExpression("\\] \\d+$"));
    ASSERT_EQ(lines.size(), 2000);
    EXPECT_TRUE(lines.last().endsWith("] 2000")) << lines.last().toStdString();
}

TEST(LogFault, AnExitByAScriptLosesNoLine)
{
    testsupport::StationRun run;
    run.table("[lua]\nallow = ['os.exit']");
    run.perSystem("for line = 1, 2000 do log(line) end os.exit(7)").run();
    EXPECT_EQ(run.status(), 7);
    EXPECT_TRUE(run.log().endsWith("] 2000\n")) << run.log().right(200).toStdString();
}

} // namespace
