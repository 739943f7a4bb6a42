#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"

#include <gtest/gtest.h>

#include <thread>
#include <utility>
#include <vector>

namespace {

using Requests = std::vector<std::pair<quint64, bool>>;

TEST(StatusRelay, PassesStartAndStopWithTheSystem)
{
    KVKExtensionStatusRelay relay;
    Requests requests;
    relay.setHandler([&](quint64 system, bool highlighted) { requests.emplace_back(system, highlighted); });
    relay.startHighlightingForSystemIndex(7);
    relay.stopHighlightingForSystemIndex(7);
    EXPECT_EQ(requests, (Requests{{7, true}, {7, false}}));
}

TEST(StatusRelay, DropsRequestsThatNobodyFollows)
{
    KVKExtensionStatusRelay relay;
    EXPECT_NO_THROW(relay.startHighlightingForSystemIndex(1));
    Requests requests;
    relay.setHandler([&](quint64 system, bool highlighted) { requests.emplace_back(system, highlighted); });
    relay.setHandler({});
    relay.stopHighlightingForSystemIndex(1);
    EXPECT_TRUE(requests.empty());
}

TEST(StatusRelay, AHandlerMayPutAnotherOneInItsPlace)
{
    KVKExtensionStatusRelay relay;
    Requests requests;
    relay.setHandler([&](quint64, bool) {
        relay.setHandler(
            [&](quint64 system, bool highlighted) { requests.emplace_back(system, highlighted); });
    });
    relay.startHighlightingForSystemIndex(1);
    relay.startHighlightingForSystemIndex(2);
    EXPECT_EQ(requests, (Requests{{2, true}}));
}

TEST(StatusRelay, TellsWhatACallWaitsForOnTheCallsOwnThread)
{
    KVKExtensionStatusRelay relay;
    std::vector<std::pair<std::thread::id, QString>> waits;
    relay.setWaitHandler(
        [&](const KVKCallWait &wait) { waits.emplace_back(std::this_thread::get_id(), wait.what); });
    std::thread::id caller;
    std::thread call([&] {
        caller = std::this_thread::get_id();
        relay.callWaits({QStringLiteral("its turn"), {3}});
        relay.callWaits({});
    });
    call.join();
    ASSERT_EQ(waits.size(), 2U);
    EXPECT_EQ(waits[0], std::make_pair(caller, QStringLiteral("its turn")));
    EXPECT_EQ(waits[1], std::make_pair(caller, QString()));
}

TEST(StatusRelay, PassesALineForTheOperator)
{
    KVKExtensionStatusRelay relay;
    relay.showMessage(QStringLiteral("nobody follows"));
    QString line;
    relay.setMessageHandler([&](const QString &message) { line = message; });
    relay.showMessage(QStringLiteral("Scan refused"));
    EXPECT_EQ(line, QStringLiteral("Scan refused"));
}

TEST(StatusRelay, PassesHowFarALoopIs)
{
    KVKExtensionStatusRelay relay;
    relay.showPasses(3, {0});
    qint64 passes = 0;
    QList<qint64> counts;
    relay.setPassHandler([&](qint64 maximum, const QList<qint64> &finished) {
        passes = maximum;
        counts = finished;
    });
    relay.showPasses(3, {1, 2});
    EXPECT_EQ(passes, 3);
    EXPECT_EQ(counts, (QList<qint64>{1, 2}));
}

} // namespace
