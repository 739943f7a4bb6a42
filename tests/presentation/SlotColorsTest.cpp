#include "platform/Box.h"
#include "platform/TextField.h"
#include "platform/ValueTransformer.h"
#include "tests/support/PanelFixture.h"

using platform::Box;
using platform::Color;
using platform::Rect;
using platform::Shadow;
using platform::Value;
using testsupport::inWords;

namespace {

constexpr Color hostBackground{0.2, 0.4, 0.6, 0.9};
constexpr Color hostText{1.0, 1.0, 0.5, 0.8};

/// The colours of a system. The host has some for system 3 alone.
class SlotColorsTest : public testsupport::PanelFixture
{
protected:
    SlotColorsTest()
    {
        station.customColors = true;
        station.backgrounds = {{3, hostBackground}};
        station.texts = {{3, hostText}};
    }
    std::unique_ptr<Box> boxFor(const Value &index)
    {
        return std::unique_ptr<Box>(rooms().colors.bgView(Rect(5, 6, 70, 80), index));
    }
};

TEST_F(SlotColorsTest, TheStationSaysWhetherTheHostsColoursAreUsed)
{
    EXPECT_TRUE(plugin().customColorEnabled());
}

TEST_F(SlotColorsTest, TextHasTheHostsColourOnABackgroundThatIsStrongEnough)
{
    const std::pair<double, Color> cases[] = {{0.0, Color::black()},  {0.3, Color::black()},
                                              {0.39, Color::black()}, {0.4, hostText},
                                              {0.41, hostText},       {1.0, hostText}};
    for (const auto &[alpha, expected] : cases) {
        plugin().setBackgroundAlpha(alpha);
        EXPECT_EQ(rooms().colors.textColor(3, plugin().backgroundAlpha()), expected) << alpha;
    }
}

TEST_F(SlotColorsTest, TextIsBlackWithoutASystemAHostsColourOrCustomColours)
{
    plugin().setBackgroundAlpha(1.0);
    EXPECT_EQ(rooms().colors.textColor(Value(), plugin().backgroundAlpha()), Color::black());
    EXPECT_EQ(rooms().colors.textColor(4, plugin().backgroundAlpha()), Color::black());
    plugin().setCustomColorEnabled(false);
    EXPECT_EQ(rooms().colors.textColor(3, plugin().backgroundAlpha()), Color::black());
}

TEST_F(SlotColorsTest, ABackgroundHasTheHostsColourAsTheHostGivesIt)
{
    for (const double alpha : {0.0, 0.3, 1.0}) {
        plugin().setBackgroundAlpha(alpha);
        EXPECT_EQ(rooms().colors.bgColor(3), hostBackground);
    }
}

TEST_F(SlotColorsTest, ABackgroundIsOpaqueWhiteWithoutASystemAHostsColourOrCustomColours)
{
    EXPECT_EQ(rooms().colors.bgColor(Value()), Color::white());
    EXPECT_EQ(rooms().colors.bgColor(4), Color::white());
    plugin().setCustomColorEnabled(false);
    EXPECT_EQ(rooms().colors.bgColor(3), Color::white());
}

TEST_F(SlotColorsTest, AFieldTakesTheColoursOfItsSystem)
{
    plugin().setBackgroundAlpha(0.5);
    platform::TextField field;
    rooms().colors.setTextFieldColor(&field, 3);
    EXPECT_EQ(field.backgroundColor(), hostBackground);
    EXPECT_EQ(field.textColor(), hostText);
    rooms().colors.setTextFieldColor(&field, Value());
    EXPECT_EQ(field.backgroundColor(), Color::white());
    EXPECT_EQ(field.textColor(), Color::black());
}

TEST_F(SlotColorsTest, WithoutCustomColoursAFieldIsBlackOnFaintWhite)
{
    plugin().setCustomColorEnabled(false);
    plugin().setBackgroundAlpha(0.5);
    platform::TextField field;
    field.setTextColor(Color::standardRed());
    rooms().colors.setTextFieldColor(&field, 3);
    EXPECT_EQ(field.backgroundColor(), Color::white().withAlphaComponent(0.5));
    EXPECT_EQ(field.textColor(), Color::black());
}

TEST_F(SlotColorsTest, ABoxIsALayerWithRoundCornersThatClips)
{
    const auto box = boxFor(3);
    EXPECT_EQ(inWords(box->frame()), "(5, 6, 70, 80)");
    EXPECT_TRUE(box->masksToBounds());
    EXPECT_EQ(box->cornerRadius(), 4.0);
    EXPECT_EQ(box->superview(), nullptr);
}

TEST_F(SlotColorsTest, ABoxHasTheHostsColourAtThePanelsOpacity)
{
    EXPECT_EQ(boxFor(3)->layerBackgroundColor(), hostBackground.withAlphaComponent(0.3));
    plugin().setBackgroundAlpha(0.7);
    EXPECT_EQ(boxFor(3)->layerBackgroundColor(), hostBackground.withAlphaComponent(0.7));
}

TEST_F(SlotColorsTest, ABoxIsLightGrayWithoutASystemOrCustomColours)
{
    EXPECT_EQ(boxFor(Value())->layerBackgroundColor(), Color::lightGray().withAlphaComponent(0.3));
    plugin().setCustomColorEnabled(false);
    plugin().setBackgroundAlpha(0.6);
    EXPECT_EQ(boxFor(3)->layerBackgroundColor(), Color::lightGray().withAlphaComponent(0.6));
}

TEST_F(SlotColorsTest, ABoxHasNoColourWhenTheHostHasNone)
{
    EXPECT_EQ(boxFor(4)->layerBackgroundColor(), std::nullopt);
}

TEST_F(SlotColorsTest, ABoxHasAShadowOnlyWhenPanelsHaveOne)
{
    EXPECT_EQ(boxFor(3)->shadow(), std::nullopt);
    plugin().setDrawShadow(true);
    EXPECT_EQ(boxFor(3)->shadow(), (Shadow{Color::systemGray(), 2.0, {0.0, 0.0}}));
}

TEST_F(SlotColorsTest, EveryBoxIsLogged)
{
    boxFor(3);
    boxFor(Value());
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Debug, "Called: -[InteractiveView bgView:for:], message: 3"));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Debug, "Called: -[InteractiveView bgView:for:], message: (null)"));
}

TEST_F(SlotColorsTest, TheTransformersForTilesAreRegisteredAtStartUp)
{
    start();
    for (const char *name :
         {"SystemIndexToBackgroundColorValueTransformer", "SystemIndexToTextColorValueTransformer"}) {
        const auto transformer = platform::ValueTransformer::forName(name);
        ASSERT_NE(transformer, nullptr) << name;
        EXPECT_TRUE(transformer->transformedValue(3).isValid()) << name;
    }
}

TEST_F(SlotColorsTest, ABoxIsOtherwiseAsABoxIsFromTheStart)
{
    const auto box = boxFor(3);
    const Box plain;
    EXPECT_EQ(box->fillColor(), plain.fillColor());
    EXPECT_EQ(box->autoresizingMask(), plain.autoresizingMask());
    EXPECT_TRUE(box->contentView()->subviews().isEmpty());
    EXPECT_TRUE(box->identifier().isNull());
}

} // namespace
