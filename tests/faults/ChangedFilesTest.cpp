#include "tests/faults/AnsweredRun.h"

#include <QFile>

#include <gtest/gtest.h>

#include <cstdio>

using testsupport::AnsweredRun;
using testsupport::StationRun;

namespace {

TEST(ChangedFiles, AreReadAtTheirStartAndNotDuringARun)
{
    for (const bool removed : {false, true}) {
        AnsweredRun run;
        run.start();
        ASSERT_TRUE(run.waitForAnswers(AnsweredRun::Rest));
        for (const char *name : {"station.toml", "sequence1.lua", "operator.lua"}) {
            if (removed)
                EXPECT_TRUE(QFile::remove(run.path(name)));
            else
                run.file(name, "}{");
        }
        run.goOn(AnsweredRun::Rest);
        run.goOn(2 * AnsweredRun::Rest);
        run.finish();
        EXPECT_EQ(run.status(), 0) << run.everything().toStdString();
        EXPECT_EQ(AnsweredRun::answersIn(run.resultsPath()), AnsweredRun::answersUpTo(AnsweredRun::All));
    }
}

TEST(ChangedFiles, ASequenceThatHasChangedIsReadAnewByTheNextRun)
{
    StationRun run;
    run.perSystem("return true")
        .operatorDoes(QStringLiteral(R"(
operator.waitForRunEnd(60)
local file = assert(io.open("%1", "w"))
file:write("}{")
file:close()
operator.run()
operator.waitForRunEnd(60)
os.remove("%1")
operator.run()
operator.waitForRunEnd(60))")
                          .arg(run.path("sequence1.lua")));
    run.run();
    QStringList outcomes;
    for (const QJsonObject &line : run.results()) {
        if (line.contains("outcome"))
            outcomes.append(line.value("outcome").toString());
    }
    EXPECT_EQ(outcomes, (QStringList{"passed", "erred", "erred"})) << run.everything().toStdString();
}

TEST(ChangedFiles, APluginThatIsReplacedAsInstallersDoLeavesTheRunAlone)
{
    AnsweredRun run;
    const QString library = run.path("Plugin.so");
    ASSERT_TRUE(QFile::copy(PLUGIN_PATH, library));
    run.plugin(library);
    run.start();
    ASSERT_TRUE(run.waitForAnswers(AnsweredRun::Rest));
    const QString next = run.file("next.so", "no library at all");
    ASSERT_EQ(std::rename(next.toLocal8Bit(), library.toLocal8Bit()), 0);
    run.goOn(AnsweredRun::Rest);
    run.goOn(2 * AnsweredRun::Rest);
    run.finish();
    EXPECT_EQ(run.status(), 0) << run.everything().toStdString();
}

TEST(ChangedFiles, APluginThatIsCutInItsPlaceEndsTheStationAndNoAcceptedAnswerIsLost)
{
    AnsweredRun run;
    const QString library = run.path("Plugin.so");
    ASSERT_TRUE(QFile::copy(PLUGIN_PATH, library));
    run.plugin(library);
    run.start();
    ASSERT_TRUE(run.waitForAnswers(AnsweredRun::Rest));
    ASSERT_TRUE(QFile::resize(library, 0));
    run.goOn(AnsweredRun::Rest);
    ASSERT_TRUE(run.process().waitForFinished(60'000));
    EXPECT_NE(run.process().exitStatus() == QProcess::NormalExit ? run.process().exitCode() : -1, 0);
    EXPECT_EQ(AnsweredRun::answersIn(run.resultsPath()).mid(0, AnsweredRun::Rest),
              AnsweredRun::answersUpTo(AnsweredRun::Rest));
}

} // namespace
