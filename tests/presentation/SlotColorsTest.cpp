#include "presentation/SlotColors.h"

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
    void SetUp() override
    {
        start(); // which tells the host's colours
        settings.setCustomColorEnabled(true);
        setBackgroundAlpha(0.3);
    }
    void setBackgroundAlpha(double alpha) { settings.setLook({alpha, settings.look().drawShadow}); }
    std::unique_ptr<Box> boxFor(const Value &index)
    {
        return std::unique_ptr<Box>(colors.bgView(Rect(5, 6, 70, 80), index));
    }

    interactive::PanelSettings settings;
    interactive::SlotColors colors{settings};
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
        setBackgroundAlpha(alpha);
        EXPECT_EQ(colors.textColor(3, settings.look().backgroundAlpha), expected) << alpha;
    }
}

TEST_F(SlotColorsTest, TextIsBlackWithoutASystemAHostsColourOrCustomColours)
{
    setBackgroundAlpha(1.0);
    EXPECT_EQ(colors.textColor(Value(), settings.look().backgroundAlpha), Color::black());
    EXPECT_EQ(colors.textColor(4, settings.look().backgroundAlpha), Color::black());
    settings.setCustomColorEnabled(false);
    EXPECT_EQ(colors.textColor(3, settings.look().backgroundAlpha), Color::black());
}

TEST_F(SlotColorsTest, ABackgroundHasTheHostsColourAsTheHostGivesIt)
{
    for (const double alpha : {0.0, 0.3, 1.0}) {
        setBackgroundAlpha(alpha);
        EXPECT_EQ(colors.bgColor(3), hostBackground);
    }
}

TEST_F(SlotColorsTest, ABackgroundIsOpaqueWhiteWithoutASystemAHostsColourOrCustomColours)
{
    EXPECT_EQ(colors.bgColor(Value()), Color::white());
    EXPECT_EQ(colors.bgColor(4), Color::white());
    settings.setCustomColorEnabled(false);
    EXPECT_EQ(colors.bgColor(3), Color::white());
}

TEST_F(SlotColorsTest, AFieldTakesTheColoursOfItsSystem)
{
    setBackgroundAlpha(0.5);
    platform::TextField field;
    colors.setTextFieldColor(&field, 3);
    EXPECT_EQ(field.backgroundColor(), hostBackground);
    EXPECT_EQ(field.textColor(), hostText);
    colors.setTextFieldColor(&field, Value());
    EXPECT_EQ(field.backgroundColor(), Color::white());
    EXPECT_EQ(field.textColor(), Color::black());
}

TEST_F(SlotColorsTest, WithoutCustomColoursAFieldIsBlackOnFaintWhite)
{
    settings.setCustomColorEnabled(false);
    setBackgroundAlpha(0.5);
    platform::TextField field;
    field.setTextColor(Color::standardRed());
    colors.setTextFieldColor(&field, 3);
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
    setBackgroundAlpha(0.7);
    EXPECT_EQ(boxFor(3)->layerBackgroundColor(), hostBackground.withAlphaComponent(0.7));
}

TEST_F(SlotColorsTest, ABoxIsLightGrayWithoutASystemOrCustomColours)
{
    EXPECT_EQ(boxFor(Value())->layerBackgroundColor(), Color::lightGray().withAlphaComponent(0.3));
    settings.setCustomColorEnabled(false);
    setBackgroundAlpha(0.6);
    EXPECT_EQ(boxFor(3)->layerBackgroundColor(), Color::lightGray().withAlphaComponent(0.6));
}

TEST_F(SlotColorsTest, ABoxHasNoColourWhenTheHostHasNone)
{
    EXPECT_EQ(boxFor(4)->layerBackgroundColor(), std::nullopt);
}

TEST_F(SlotColorsTest, ABoxHasAShadowOnlyWhenPanelsHaveOne)
{
    EXPECT_EQ(boxFor(3)->shadow(), std::nullopt);
    settings.setLook({0.3, true});
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
