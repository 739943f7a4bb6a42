#include "platform/Button.h"
#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"

using platform::Array;
using platform::Dictionary;

namespace {

/// The title of a refused call, which stays when its message has gone.
class ErrorTitleTest : public testsupport::PluginFixture
{
protected:
    bool standsSomewhere(const QString &text)
    {
        for (platform::View *view : testsupport::descendants(rooms().views.rootView())) {
            const auto *label = qobject_cast<platform::TextField *>(view);
            if (label && label->isVisible() && label->stringValue() == text)
                return true;
        }
        return false;
    }
};

TEST_F(ErrorTitleTest, IsGoneWhenTheNextPanelIsDrawn)
{
    auto &refused = showView(0, {{"input", Array{"A", "B"}}, {"title", "Scan units"}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_TRUE(standsSomewhere("Scan units"));
    press("G1", "OK");
    ASSERT_TRUE(refused.waitUntilFinished());
    showView(4, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("4"));
    EXPECT_FALSE(standsSomewhere("Scan units"));
}

} // namespace
