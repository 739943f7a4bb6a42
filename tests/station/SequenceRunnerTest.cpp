#include "station/SequenceRunner.h"

#include "kovan/KovanLogging/KVKLogging.h"
#include "kovan/KovanUIExtension/KVKExtensionInterruption.h"
#include "tests/station/StationFiles.h"
#include "tests/support/LogTrap.h"
#include "tests/support/Wait.h"

#include <QFile>

#include <algorithm>
#include <mutex>
#include <sys/stat.h>

using station::Results;
using station::SequenceKind;
using station::SequenceRunner;
using station::StationConfig;
using testsupport::waitUntil;

namespace {

/// Writes down what the runner asks of a plug-in.
class Asked : public KVKExtensionInterruption
{
public:
    void interruptWaitingCalls() override { requests.append("interrupt"); }
    void acceptCalls() override { requests.append("accept"); }

    QStringList requests;
};

/// Runs of sequences that call no plug-in.
class SequenceRunnerTest : public ::testing::Test
{
protected:
    /// One sequence of the station per script.
    std::unique_ptr<SequenceRunner> runnerOf(const QByteArrayList &scripts)
    {
        StationConfig config;
        for (const QByteArray &script : scripts) {
            const QString name = QStringLiteral("%1.lua").arg(config.sequences.size());
            config.sequences.append({m_files.write(name, script), SequenceKind::Station});
        }
        auto runner = std::make_unique<SequenceRunner>(
            config, std::vector<KVKBoundFunction>{}, platform::Dictionary{{"volts", 5}},
            QList<KVKExtensionInterruption *>{&m_asked}, m_results);
        QObject::connect(runner.get(), &SequenceRunner::sequenceEnded,
                         [this](int, const KVKLuaEnd &end) { m_ends.append(end.outcome); });
        QObject::connect(runner.get(), &SequenceRunner::allEnded, [this] { ++m_runs; });
        return runner;
    }
    void finish(SequenceRunner &runner)
    {
        ASSERT_TRUE(waitUntil([&] { return !runner.isRunning(); }));
    }

    testsupport::StationFiles m_files;
    Results m_results{{}, false};
    Asked m_asked;
    QList<KVKLuaOutcome> m_ends;
    int m_runs = 0;
};

TEST_F(SequenceRunnerTest, EachSequenceEndsOnceAndTheRunAfterTheLast)
{
    const auto runner = runnerOf({"return true", "return volts == 5", ""});
    runner->start();
    EXPECT_TRUE(runner->isRunning());
    finish(*runner);
    EXPECT_EQ(m_ends, QList<KVKLuaOutcome>(3, KVKLuaOutcome::Passed));
    EXPECT_EQ(m_runs, 1);
    EXPECT_TRUE(runner->allPassed());
    EXPECT_EQ(runner->runningNames(), QStringList());
}

TEST_F(SequenceRunnerTest, OneThatDoesNotPassSpoilsTheRunAndNotTheNextOne)
{
    // The first run makes the file that lets the second one pass.
    const QByteArray path = m_files.path("made").toUtf8();
    const auto runner = runnerOf(
        {"local there = io.open('" + path + "') io.open('" + path + "', 'w'):close() return there ~= nil"});
    runner->start();
    finish(*runner);
    EXPECT_FALSE(runner->allPassed());
    runner->start();
    finish(*runner);
    EXPECT_TRUE(runner->allPassed());
    EXPECT_EQ(m_ends, (QList<KVKLuaOutcome>{KVKLuaOutcome::Failed, KVKLuaOutcome::Passed}));
    EXPECT_EQ(m_runs, 2);
}

TEST_F(SequenceRunnerTest, ASequenceAndItsModuleThatWereEditedAreReadAnew)
{
    static_cast<void>(m_files.write("helper.lua", "return false"));
    const auto runner = runnerOf({"return require 'helper'"});
    runner->start();
    finish(*runner);
    static_cast<void>(m_files.write("helper.lua", "return 1"));
    runner->start();
    finish(*runner);
    static_cast<void>(m_files.write("0.lua", "return require 'helper' == 2"));
    runner->start();
    finish(*runner);
    EXPECT_EQ(m_ends,
              (QList<KVKLuaOutcome>{KVKLuaOutcome::Failed, KVKLuaOutcome::Passed, KVKLuaOutcome::Failed}));
}

TEST_F(SequenceRunnerTest, ASequenceThatWasDeletedErrsByItselfUntilItIsBack)
{
    testsupport::expectError("0.lua: No such file");
    const auto runner = runnerOf({"return true", "return true"});
    ASSERT_TRUE(QFile::remove(m_files.path("0.lua")));
    runner->start();
    finish(*runner);
    EXPECT_EQ(m_ends.count(KVKLuaOutcome::Erred), 1);
    EXPECT_EQ(m_ends.count(KVKLuaOutcome::Passed), 1);
    static_cast<void>(m_files.write("0.lua", "return true"));
    runner->start();
    finish(*runner);
    EXPECT_TRUE(runner->allPassed());
}

TEST_F(SequenceRunnerTest, CallsAreAcceptedAgainByTheRunAfterAStop)
{
    const auto runner = runnerOf({"while true do sleep(1) end"});
    runner->start();
    EXPECT_EQ(m_asked.requests, QStringList{"accept"});
    runner->stop();
    finish(*runner);
    EXPECT_EQ(m_ends, QList<KVKLuaOutcome>{KVKLuaOutcome::Stopped});
    EXPECT_FALSE(runner->allPassed());
    runner->start();
    EXPECT_EQ(m_asked.requests, (QStringList{"accept", "interrupt", "accept"}));
}

TEST_F(SequenceRunnerTest, ASecondStartDuringARunAndAStopAfterItDoNothing)
{
    const auto runner = runnerOf({"sleep(0.01)"});
    runner->start();
    runner->start();
    finish(*runner);
    runner->stop();
    EXPECT_EQ(m_ends.size(), 1);
    EXPECT_EQ(m_asked.requests, QStringList{"accept"});
}

TEST_F(SequenceRunnerTest, ASequenceInsideALibraryFunctionIsStoppedWhenItReturnsAndCanBeRunAgain)
{
    // A reader of a pipe is held until somebody writes. Nothing looks for a stop between the sign and the
    // read.
    const QByteArray pipe = QFile::encodeName(m_files.path("pipe"));
    const QByteArray sign = QFile::encodeName(m_files.path("sign"));
    ASSERT_EQ(::mkfifo(pipe.constData(), S_IRUSR | S_IWUSR), 0);
    const auto runner =
        runnerOf({"local pipe, sign = io.open('" + pipe + "', 'r+'), io.open('" + sign +
                      "', 'w') sign:write('x') sign:flush() pipe:read('l') while true do pcall(error) end",
                  "while true do end"});
    for (int run = 1; run <= 2; ++run) {
        QFile::remove(m_files.path("sign"));
        runner->start();
        ASSERT_TRUE(waitUntil([&] { return QFile(m_files.path("sign")).size() == 1; }));
        runner->stop();
        ASSERT_TRUE(waitUntil([&] { return m_ends.size() == 2 * run - 1; }));
        EXPECT_EQ(runner->runningNames().size(), 1);
        runner->start();
        EXPECT_EQ(runner->runningNames().size(), 1) << "a second run does not begin meanwhile";
        QFile writer(m_files.path("pipe"));
        ASSERT_TRUE(writer.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        EXPECT_EQ(writer.write("\n"), 1);
        finish(*runner);
    }
    EXPECT_EQ(m_ends, QList<KVKLuaOutcome>(4, KVKLuaOutcome::Stopped));
    EXPECT_EQ(m_runs, 2);
}

TEST_F(SequenceRunnerTest, ARunnerThatGoesStopsWhatRuns)
{
    runnerOf({"while true do sleep(1) end"})->start();
    EXPECT_EQ(m_asked.requests, (QStringList{"accept", "interrupt"}));
}

TEST_F(SequenceRunnerTest, ARunWithoutSequencesEndsAtOnceAndHasNotPassed)
{
    const auto runner = runnerOf({});
    EXPECT_FALSE(runner->ranNothing());
    runner->start();
    EXPECT_FALSE(runner->isRunning());
    EXPECT_FALSE(runner->allPassed());
    EXPECT_TRUE(runner->ranNothing());
    EXPECT_EQ(m_runs, 1);
}

TEST_F(SequenceRunnerTest, ARunWithSequencesHasRunSomething)
{
    const auto runner = runnerOf({"return true"});
    runner->start();
    EXPECT_FALSE(runner->ranNothing());
    finish(*runner);
    EXPECT_FALSE(runner->ranNothing());
}

TEST_F(SequenceRunnerTest, ANewRunHasNothingOfTheFormer)
{
    const auto runner =
        runnerOf({"local found = shared.n shared.n = 1 return rendezvous('end') and found == nil",
                  "local ok = locked('meter', function() return true end) "
                  "return rendezvous('end') and ok"});
    for (int run = 0; run < 3; ++run) {
        runner->start();
        finish(*runner);
    }
    EXPECT_EQ(m_ends, QList<KVKLuaOutcome>(6, KVKLuaOutcome::Passed));
}

TEST_F(SequenceRunnerTest, WhatASequenceLogsIsAboutItsSystems)
{
    StationConfig config;
    config.systemGroups = {"G1", "G1", "G2"};
    config.systemSlots = {"S1", "S2", "S1"};
    const QString script = m_files.write("log.lua", "log(slotName or groupName)");
    config.sequences = {{script, SequenceKind::System}, {script, SequenceKind::Group}};
    SequenceRunner runner(config, {}, {}, {}, m_results);
    std::mutex mutex;
    QMap<QString, QList<QList<int>>> about;
    const auto sink = KVKLogGetProxy()->addSink([&](const KVKLogProxy::Line &line) {
        const std::scoped_lock lock(mutex);
        about[line.message].append(station::RunningSequence::systemsOfThread());
    });
    runner.start();
    finish(runner);
    KVKLogGetProxy()->proxyLogMessage(KVKLogLevel::Default, "nobody", {});
    KVKLogGetProxy()->removeSink(sink);
    std::sort(about["S1"].begin(), about["S1"].end());
    EXPECT_EQ(about.value("S1"), (QList<QList<int>>{{0}, {2}}));
    EXPECT_EQ(about.value("S2"), (QList<QList<int>>{{1}}));
    EXPECT_EQ(about.value("G1"), (QList<QList<int>>{{0, 1}}));
    EXPECT_EQ(about.value("nobody"), (QList<QList<int>>{{}}));
}

} // namespace
