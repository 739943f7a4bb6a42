#include "tests/faults/AnsweredRun.h"

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

} // namespace
