#include "tests/support/GatedFunction.h"
#include "tests/support/PluginFixture.h"
#include "tests/support/Wait.h"

using platform::Array;
using platform::Value;
using testsupport::SequencerCall;

namespace {

/// What is scanned behind "OK" while the call's own function still judges what "OK" was pressed for.
class EntryAfterOkTest : public testsupport::PluginFixture
{
protected:
    void TearDown() override
    {
        gate->open();
        PluginFixture::TearDown();
    }

    std::shared_ptr<testsupport::GatedFunction> gate = std::make_shared<testsupport::GatedFunction>(
        [](const Value &, const QString &) { return Array{true}; });
};

TEST_F(EntryAfterOkTest, IsNotTakenForTheAnswer)
{
    gate->close();
    SequencerCall &call =
        showView(0, {{"input", Array{"SN"}},
                     {"validate", Value::fromValue<std::shared_ptr<platform::Callback>>(gate)}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("A");
    // Else the second entry could take the first one's place before anybody has looked at it.
    ASSERT_TRUE(testsupport::waitUntil([this] { return gate->calls().size() == 1; }));
    press("0", "OK");
    scan("B");
    gate->open();
    ASSERT_TRUE(testsupport::waitUntil([this] { return gate->calls().size() == 2; }));
    ASSERT_TRUE(testsupport::waitUntil([this] { return !rooms().checks.arePending("0"); }));
    settle();
    EXPECT_TRUE(isOpen("0"));
    EXPECT_FALSE(call.finished());
    EXPECT_EQ(operatorLines,
              QStringList{"0: the button was pressed before the entry that is being made. Press it again."});
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("B"));
}

} // namespace
