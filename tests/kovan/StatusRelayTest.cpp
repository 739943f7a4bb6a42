#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"

#include <gtest/gtest.h>

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

} // namespace
