#include "platform/Button.h"
#include "tests/input/InputRoom.h"
#include "tests/support/Wait.h"

#include <optional>

namespace {

/// A press of a button whose panel's entries are judged in the same moment.
class JudgedPressTest : public testsupport::InputRoom
{
protected:
    JudgedPressTest()
    {
        panel.setIdentifier(key);
        auto *button = new platform::Button;
        button->setTitle("Yes");
        button->setIdentifier(platform::Identifier("Pass"));
        panel.addSubview(button);
        pressed = button;
        waits.makeCondition(key);
        wait.emplace(waits, key, interactive::Waits::Purpose::Answer);
    }
    /// Whether the press has been carried out: the keys are let go where it ends no wait.
    bool isDone() { return !keys.isHolding(); }

    platform::Identifier key = waits.panelKey("4");
    platform::View panel;
    platform::Button *pressed = nullptr; ///< The panel owns it.
    std::optional<interactive::Waits::Wait> wait;
};

TEST_F(JudgedPressTest, OneThatAVerdictRefusesMeanwhileEndsNothing)
{
    confirmation.confirmBtnClicked(pressed);
    // Before the worker gets its first word in: it has to ask this thread.
    confirmation.entryWasJudged(key, interactive::Entries::Judged::Refused);
    ASSERT_TRUE(testsupport::waitUntil([this] { return isDone(); }));
    EXPECT_FALSE(waits.isAnswered(key));
    EXPECT_FALSE(record("4").contains("clickedButton"));
}

TEST_F(JudgedPressTest, OneThatAVerdictAcceptsMeanwhileEndsItsWait)
{
    confirmation.confirmBtnClicked(pressed);
    confirmation.entryWasJudged(key, interactive::Entries::Judged::Good);
    EXPECT_TRUE(testsupport::waitUntil([this] { return waits.isAnswered(key); }));
}

} // namespace
