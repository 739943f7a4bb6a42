#include "platform/Button.h"
#include "tests/support/PluginFixture.h"

using platform::Identifier;
using platform::View;

namespace {

class ParentIdentifierTest : public testsupport::PluginFixture
{
protected:
    ParentIdentifierTest()
    {
        child = new View(&parent);
        child->setIdentifier(Identifier(QStringLiteral("child")));
    }

    View parent;
    View *child = nullptr;
};

TEST_F(ParentIdentifierTest, IsTheSuperviewsAsTheSameInstance)
{
    const Identifier name(QStringLiteral("G1"));
    parent.setIdentifier(name);
    EXPECT_TRUE(interactive::PanelViews::getParentIdentifier(child).isSameInstance(name));
}

TEST_F(ParentIdentifierTest, OfNoViewIsNothingWithoutALine)
{
    plugin();
    EXPECT_TRUE(interactive::PanelViews::getParentIdentifier(nullptr).isNull());
    EXPECT_EQ(timesLoggedFrom("-[InteractiveView getParentIdentifier:]"), 0);
}

TEST_F(ParentIdentifierTest, IsMissingWhereTheSuperviewHasNone)
{
    plugin();
    expectError("no parent view found");
    EXPECT_TRUE(interactive::PanelViews::getParentIdentifier(child).isNull());
    EXPECT_TRUE(
        loggedOnce(KVKLogLevel::Error,
                   "-[InteractiveView getParentIdentifier:]: <View: child>(child), no parent view found"));
}

TEST_F(ParentIdentifierTest, IsMissingWhereThereIsNoSuperview)
{
    plugin();
    expectError("no parent view found");
    View alone;
    EXPECT_TRUE(interactive::PanelViews::getParentIdentifier(&alone).isNull());
    EXPECT_TRUE(
        loggedOnce(KVKLogLevel::Error,
                   "-[InteractiveView getParentIdentifier:]: <View: (null)>((null)), no parent view found"));
}

} // namespace
