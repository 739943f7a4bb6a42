#include "tests/support/PanelFixture.h"

using platform::Array;
using platform::Color;
using platform::Dictionary;
using platform::Value;

namespace {

/// The settings that a configuration may change and that hold until another one changes them again.
class PanelSettingsTest : public testsupport::PanelFixture
{
protected:
    static Dictionary asking(const QString &key, const Value &value)
    {
        return {{"input", Array{"SN"}}, {key, value}};
    }
};

TEST_F(PanelSettingsTest, TheOpacityOfBackgroundsIsTakenFromTheConfigurationAndKept)
{
    EXPECT_EQ(plugin().backgroundAlpha(), 0.3);
    drawSlot(0, asking("backgroundAlpha", "0.5"));
    EXPECT_EQ(plugin().backgroundAlpha(), 0.5);
    drawSlot(1, asking("label", "SN"));
    EXPECT_EQ(plugin().backgroundAlpha(), 0.5);
    drawSlot(2, asking("backgroundAlpha", 0.25));
    EXPECT_EQ(plugin().backgroundAlpha(), 0.25);
}

TEST_F(PanelSettingsTest, AnEmptyOpacityChangesNothingAndATextWithoutANumberIsZero)
{
    drawSlot(0, asking("backgroundAlpha", ""));
    EXPECT_EQ(plugin().backgroundAlpha(), 0.3);
    drawSlot(0, asking("backgroundAlpha", "faint"));
    EXPECT_EQ(plugin().backgroundAlpha(), 0.0);
}

TEST_F(PanelSettingsTest, ShadowsAreTakenFromTheConfigurationAndKept)
{
    EXPECT_FALSE(plugin().drawShadow());
    drawSlot(0, asking("drawShadow", "YES"));
    EXPECT_TRUE(plugin().drawShadow());
    drawSlot(1, asking("drawShadow", ""));
    EXPECT_TRUE(plugin().drawShadow());
    drawSlot(2, asking("drawShadow", false));
    EXPECT_FALSE(plugin().drawShadow());
    drawSlot(3, asking("drawShadow", true));
    EXPECT_TRUE(plugin().drawShadow());
    drawSlot(4, asking("drawShadow", "no"));
    EXPECT_FALSE(plugin().drawShadow());
}

TEST_F(PanelSettingsTest, TheColumnsInForceAreThoseOfTheLastPanel)
{
    EXPECT_EQ(plugin().columns(), 0u);
    drawSlot(0, {{"input", Array{"SN"}}});
    EXPECT_EQ(plugin().columns(), 4u);
    drawGroup(0, {{"input", Array{"S1"}}, {"column", 3}});
    EXPECT_EQ(plugin().columns(), 3u);
    drawGroup(1, {{"input", Array{"S1"}}});
    EXPECT_EQ(plugin().columns(), 3u);
    ASSERT_NE(pane("G2"), nullptr);
    EXPECT_EQ(pane("G2")->frame().height(), 236.0);
}

TEST_F(PanelSettingsTest, TheSettingsOfAPanelColourItsOwnBoxes)
{
    drawSlot(0, asking("backgroundAlpha", 0.5));
    ASSERT_NE(box("G1", 0), nullptr);
    EXPECT_EQ(box("G1", 0)->fillColor(), Color::white().withAlphaComponent(0.5));
}

TEST_F(PanelSettingsTest, NoPanelCanBeDrawnForAStationWithoutSlots)
{
    station.systemGroups = Array{"G1"};
    station.systemSlots = Array{};
    expectError("-[InteractiveView showInteractiveView:systemIndex:config:error:]: ");
    EXPECT_EQ(showGroup(0, {}).error().code, 402);
}

TEST_F(PanelSettingsTest, ColumnsThatTheGeometryCannotTakeAreAProblem)
{
    expectError("-[InteractiveView showInteractiveView:systemIndex:config:error:]: ");
    for (const platform::Value &columns : {platform::Value(-1), platform::Value("4000000000")}) {
        auto &call = showView(0, {{"column", columns}});
        EXPECT_EQ(call.error().code, 402);
        EXPECT_TRUE(call.error().localizedDescription.contains(columns.toString()))
            << call.error().localizedDescription.toStdString();
    }
    showView(0, {{"column", 4}});
    EXPECT_TRUE(waitForPanel("0"));
}

} // namespace
