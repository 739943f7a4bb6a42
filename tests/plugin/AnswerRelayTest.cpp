#include "kovan/KovanUIExtension/KVKExtensionAnswerRelay.h"
#include "platform/MainQueue.h"
#include "tests/support/PluginFixture.h"

using platform::Array;
using platform::Dictionary;
using platform::MainQueue;
using platform::Value;

namespace {

class AnswerRelayTest : public testsupport::PluginFixture
{
protected:
    struct Told
    {
        KVKGivenAnswer answer;
        bool panelStood;
    };

    AnswerRelayTest()
    {
        KVKExtensionAnswerRelay::sharedAnswerRelay()->setHandler([this](const KVKGivenAnswer &answer) {
            MainQueue::sync([&] { m_told.push_back({answer, isOpen("G1") || isOpen("0")}); });
        });
    }
    ~AnswerRelayTest() override { KVKExtensionAnswerRelay::sharedAnswerRelay()->setHandler({}); }

    std::vector<Told> m_told; ///< Main thread.
};

TEST_F(AnswerRelayTest, AnAnswerIsToldAsItIsReturnedWhileItsPanelStands)
{
    const Dictionary config{{"input", Array{"SN"}}};
    auto &call = showView(0, config);
    ASSERT_TRUE(waitForPanel("0"));
    scan("A1");
    press("0", "OK");
    const Value result = call.result();
    ASSERT_EQ(m_told.size(), 1U);
    EXPECT_TRUE(m_told.front().panelStood);
    EXPECT_EQ(m_told.front().answer.result, result);
    EXPECT_EQ(result.toMap().value("SN"), Value("A1"));
    EXPECT_FALSE(result.toMap().contains("length"));
    EXPECT_EQ(m_told.front().answer.configuration, config);
    EXPECT_FALSE(m_told.front().answer.error);
    EXPECT_TRUE(waitForPanelGone("0"));
}

TEST_F(AnswerRelayTest, ACancelledSwitchPanelIsToldWithTheErrorThatIsReturned)
{
    auto &call = showGroup(0, {{"switch", Array{"S1"}}, {"button", Array{"Cancel", "OK"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "Cancel");
    const Value result = call.result();
    ASSERT_EQ(m_told.size(), 1U);
    EXPECT_EQ(m_told.front().answer.result, result);
    EXPECT_EQ(m_told.front().answer.error.has_value(), call.error().isPresent());
    EXPECT_EQ(m_told.front().answer.error.value_or(platform::Error{}).code, call.error().code);
}

TEST_F(AnswerRelayTest, ACallThatIsStoppedHasNoAnswerToTell)
{
    auto &call = showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    plugin().interruptWaitingCalls();
    EXPECT_EQ(call.error().code, 401);
    EXPECT_TRUE(m_told.empty());
}

} // namespace
