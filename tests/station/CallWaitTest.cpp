#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/MainQueue.h"
#include "station/SequenceRunner.h"
#include "tests/station/StationFiles.h"
#include "tests/support/Wait.h"

#include <QRegularExpression>

#include <atomic>
#include <semaphore>
#include <thread>

using station::SequenceRunner;
using testsupport::waitUntil;

namespace {

/// A plug-in whose calls wait until they are let go on.
class Waiting : public QObject
{
    Q_OBJECT
public:
    /// Tells that it waits for its turn, and waits; with 1 it does not tell when that is over.
    Q_INVOKABLE platform::Value ask(const platform::Value &number, platform::Error *)
    {
        const auto index = number.toULongLong();
        KVKExtensionStatusRelay::sharedStatusRelay()->callWaits({QStringLiteral("its turn"), {index}});
        ++entered;
        goOn.acquire();
        if (index != 1)
            KVKExtensionStatusRelay::sharedStatusRelay()->callWaits({});
        return {};
    }

    std::atomic<int> entered{0};
    std::counting_semaphore<> goOn{0};
};

class CallWaitTest : public ::testing::Test
{
protected:
    ~CallWaitTest() override
    {
        // Whatever a failed test has left behind a wait ends.
        m_plugin.goOn.release(100);
    }

    SequenceRunner &runnerOf(const QByteArrayList &scripts)
    {
        station::StationConfig config;
        for (const QByteArray &script : scripts) {
            const QString name = QStringLiteral("%1.lua").arg(config.sequences.size());
            config.sequences.append({m_files.write(name, script), station::SequenceKind::Station});
        }
        const platform::Array ask{__kviGetSelectorLabel("ask:error:"),
                                  __kviArgTypeLabel(KVKArgType::NSNumber)};
        m_runner = std::make_unique<SequenceRunner>(
            config, KVKBindFunctions(&m_plugin, {{QStringLiteral("ask"), ask}}), platform::Dictionary{},
            QList<KVKExtensionInterruption *>{}, m_results);
        QObject::connect(m_runner.get(), &SequenceRunner::sequenceWaits,
                         [this](int sequence, const KVKCallWait &wait) {
                             EXPECT_TRUE(platform::MainQueue::isMainThread());
                             m_waits.append(QStringLiteral("%1: %2").arg(sequence).arg(wait.what));
                             m_systems.append(wait.systems);
                         });
        return *m_runner;
    }
    [[nodiscard]] bool waitForCalls(int count) const
    {
        return waitUntil([&] { return m_plugin.entered == count; });
    }
    [[nodiscard]] bool waitForEnd() const
    {
        return waitUntil([&] { return !m_runner->isRunning(); });
    }

    testsupport::StationFiles m_files;
    station::Results m_results{{}, false};
    Waiting m_plugin;
    QStringList m_waits;
    QList<QList<quint64>> m_systems;
    std::unique_ptr<SequenceRunner> m_runner;
};

TEST_F(CallWaitTest, WhatACallWaitsForIsToldWithItsSequenceAndItsEndToo)
{
    SequenceRunner &runner = runnerOf({"return true", "ask(7)"});
    runner.start();
    ASSERT_TRUE(waitUntil([this] { return m_waits.size() == 1; }));
    EXPECT_EQ(m_waits, QStringList{"1: its turn"});
    EXPECT_EQ(m_systems.first(), QList<quint64>{7});
    m_plugin.goOn.release();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(m_waits, (QStringList{"1: its turn", "1: "}));
}

TEST_F(CallWaitTest, ACallThatIsOverWaitsNoLongerWhetherItSaysSoOrNot)
{
    SequenceRunner &runner = runnerOf({"ask(1)"});
    m_plugin.goOn.release();
    runner.start();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(m_waits, (QStringList{"0: its turn", "0: "}));
}

TEST_F(CallWaitTest, WaitsOfSequencesAtTheSameTimeAreToldApart)
{
    SequenceRunner &runner = runnerOf({"ask(0) ask(0)", "ask(0) ask(0)", "ask(0) ask(0)"});
    m_plugin.goOn.release(6);
    runner.start();
    ASSERT_TRUE(waitForEnd());
    for (int sequence = 0; sequence < 3; ++sequence) {
        const QString mark = QString::number(sequence) + ": ";
        EXPECT_EQ(m_waits.filter(QRegularExpression("^" + mark)),
                  (QStringList{mark + "its turn", mark, mark + "its turn", mark}));
    }
}

TEST_F(CallWaitTest, AWaitOfNoSequenceIsNobodys)
{
    SequenceRunner &runner = runnerOf({"ask(0)"});
    runner.start();
    ASSERT_TRUE(waitUntil([this] { return m_waits.size() == 1; }));
    std::thread([] { KVKExtensionStatusRelay::sharedStatusRelay()->callWaits({"a lamp", {}}); }).join();
    KVKExtensionStatusRelay::sharedStatusRelay()->callWaits({"a lamp", {}});
    m_plugin.goOn.release();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(m_waits, (QStringList{"0: its turn", "0: "}));
}

TEST_F(CallWaitTest, ACallKeepsItsNumberAndTheNextOneHasAnother)
{
    SequenceRunner &runner = runnerOf({"ask(0) ask(0)"});
    EXPECT_EQ(runner.callsUnderWay(), QList<quint64>());
    runner.start();
    ASSERT_TRUE(waitForCalls(1));
    const QList<quint64> first = runner.callsUnderWay();
    EXPECT_EQ(first.size(), 1);
    EXPECT_EQ(runner.callsUnderWay(), first);
    m_plugin.goOn.release();
    ASSERT_TRUE(waitForCalls(2));
    EXPECT_EQ(runner.callsUnderWay().size(), 1);
    EXPECT_NE(runner.callsUnderWay(), first);
    m_plugin.goOn.release();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(runner.callsUnderWay(), QList<quint64>());
}

TEST_F(CallWaitTest, CallsOfSequencesAtTheSameTimeHaveDifferentNumbers)
{
    SequenceRunner &runner = runnerOf({"ask(0)", "ask(0)", "return true"});
    runner.start();
    ASSERT_TRUE(waitForCalls(2));
    ASSERT_TRUE(waitUntil([&] { return runner.runningNames().size() == 2; }));
    const QList<quint64> calls = runner.callsUnderWay();
    ASSERT_EQ(calls.size(), 2);
    EXPECT_NE(calls.at(0), calls.at(1));
    m_plugin.goOn.release(2);
    ASSERT_TRUE(waitForEnd());
}

TEST_F(CallWaitTest, NoCallsAreUnderWayTogetherWhileOneSequenceIsOutside)
{
    SequenceRunner &runner = runnerOf({"ask(0)", "while true do end"});
    runner.start();
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(runner.callsUnderWay(), QList<quint64>());
    runner.stop();
    m_plugin.goOn.release();
    ASSERT_TRUE(waitForEnd());
}

} // namespace

#include "CallWaitTest.moc"
