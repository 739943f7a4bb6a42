#include "tests/support/PluginFixture.h"

#include <limits>
#include <string>
#include <vector>

using platform::Array;
using platform::Dictionary;
using platform::Error;
using platform::Value;

namespace {

/// A value as Lua gives it and what is read from it.
struct Reading
{
    std::string name;
    Value given;
    qint64 expected;
};

class LengthReadingTest : public testsupport::PluginFixture, public ::testing::WithParamInterface<Reading>
{};

TEST_P(LengthReadingTest, TheRecordHoldsTheLengthThatWasMeant)
{
    showView(0, {{"input", Array{"SN"}}, {"length", GetParam().given}});
    ASSERT_TRUE(waitForPanel("0"));
    const Value length = record("0").value("length");
    EXPECT_TRUE(platform::isNumber(length));
    EXPECT_EQ(length.toLongLong(), GetParam().expected);
}

const std::vector<Reading> lengths = {
    {"Number", 10, 10},
    {"Text", "10", 10},
    {"WholeDecimal", 8.0, 8},
    {"TextWithRest", "12abc", 12},
    {"TextWithBlank", " 7", 7},
    {"NoNumber", "abc", 0},
    {"Empty", "", 0},
    {"Negative", -3, -3},
    {"True", true, 1},
    {"False", false, 0},
    {"BeyondTheRange", "99999999999999999999", std::numeric_limits<qint64>::max()},
    {"Array", Array{5}, 0},
};

INSTANTIATE_TEST_SUITE_P(EachForm, LengthReadingTest, ::testing::ValuesIn(lengths),
                         [](const auto &row) { return row.param.name; });

class QuestionFixture : public testsupport::PluginFixture
{
protected:
    /// Draws a question with the settings and answers it.
    void drawWith(const Dictionary &config)
    {
        Dictionary asked = config;
        asked.insert("button", Array{"No", "Yes"});
        auto &call = showView(0, asked);
        ASSERT_TRUE(waitForPanel("0"));
        press("0", "Yes");
        ASSERT_TRUE(call.waitUntilFinished());
    }
};

class ShadowReadingTest : public QuestionFixture, public ::testing::WithParamInterface<Reading>
{};

TEST_P(ShadowReadingTest, TheTextDecides)
{
    plugin().setDrawShadow(GetParam().expected == 0);
    drawWith({{"drawShadow", GetParam().given}});
    EXPECT_EQ(plugin().drawShadow(), GetParam().expected == 1);
}

const std::vector<Reading> shadows = {
    {"True", true, 1},
    {"False", false, 0},
    {"One", 1, 1},
    {"Zero", 0, 0},
    {"Yes", "YES", 1},
    {"SmallYes", "yes", 1},
    {"TrueText", "True", 1},
    {"SmallTrue", "t", 1},
    {"No", "NO", 0},
    {"Nine", "9", 1},
    {"BlanksSignAndZeros", "  +0007", 1},
    {"MinusOne", "-1", 1},
    {"ZerosOnly", "000", 0},
    {"Word", "shadow", 0},
    {"BlankOnly", " ", 0},
};

INSTANTIATE_TEST_SUITE_P(EachForm, ShadowReadingTest, ::testing::ValuesIn(shadows),
                         [](const auto &row) { return row.param.name; });

class SettingsCarryOverTest : public QuestionFixture
{};

TEST_F(SettingsCarryOverTest, TheOpacityStaysInForceForLaterPanels)
{
    drawWith({{"backgroundAlpha", 0.5}});
    EXPECT_EQ(plugin().backgroundAlpha(), 0.5);
    drawWith({});
    EXPECT_EQ(plugin().backgroundAlpha(), 0.5);
    drawWith({{"backgroundAlpha", ""}});
    EXPECT_EQ(plugin().backgroundAlpha(), 0.5);
}

TEST_F(SettingsCarryOverTest, TheOpacityIsReadFromTextToo)
{
    drawWith({{"backgroundAlpha", " 0.25 of it"}});
    EXPECT_EQ(plugin().backgroundAlpha(), 0.25);
    drawWith({{"backgroundAlpha", "none"}});
    EXPECT_EQ(plugin().backgroundAlpha(), 0.0);
}

TEST_F(SettingsCarryOverTest, TheShadowStaysInForceForLaterPanels)
{
    drawWith({{"drawShadow", true}});
    EXPECT_TRUE(plugin().drawShadow());
    drawWith({});
    EXPECT_TRUE(plugin().drawShadow());
    drawWith({{"drawShadow", ""}});
    EXPECT_TRUE(plugin().drawShadow());
}

TEST_F(SettingsCarryOverTest, TheColumnsStayInForceUntilOthersAreGiven)
{
    drawWith({});
    EXPECT_EQ(plugin().columns(), 4U);
    drawWith({{"column", "2"}});
    EXPECT_EQ(plugin().columns(), 2U);
    drawWith({{"column", 0}});
    EXPECT_EQ(plugin().columns(), 2U);
}

TEST_F(SettingsCarryOverTest, ARefusedConfigurationSetsNothing)
{
    auto &call = showView(0, {{"input", Array{"A", "B"}}, {"backgroundAlpha", 0.9}, {"drawShadow", true}});
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "OK");
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_EQ(plugin().backgroundAlpha(), 0.3);
    EXPECT_FALSE(plugin().drawShadow());
}

class LabelTest : public testsupport::PluginFixture
{
protected:
    /// Whether the group's focus order of the earlier call is still there when the next panel is drawn.
    bool focusOrderLivesUntilDrawing(const Dictionary &config)
    {
        auto &first = showGroup(0, config);
        if (!waitForPanel("G1"))
            return false;
        scan("A");
        press("G1", "OK");
        if (!first.waitUntilFinished())
            return false;

        bool lives = false;
        KVKLogProxy *proxy = KVKLogGetProxy();
        const KVKLogProxy::SinkId sink = proxy->addSink([&](const KVKLogProxy::Line &line) {
            if (line.message.startsWith("Entered: "))
                lives = rooms().views.hasResponders("G1");
        });
        showGroup(0, config);
        EXPECT_TRUE(waitForPanel("G1"));
        proxy->removeSink(sink);
        return lives;
    }
};

TEST_F(LabelTest, APanelForSerialNumbersForgetsTheEarlierFocusOrder)
{
    EXPECT_FALSE(focusOrderLivesUntilDrawing({{"input", Array{"S1"}}}));
}

TEST_F(LabelTest, APanelLabelledAsForSerialNumbersForgetsTheEarlierFocusOrder)
{
    EXPECT_FALSE(focusOrderLivesUntilDrawing({{"input", Array{"S1"}}, {"label", "SN"}}));
}

TEST_F(LabelTest, APanelForSomethingElseKeepsTheEarlierFocusOrder)
{
    EXPECT_TRUE(focusOrderLivesUntilDrawing({{"input", Array{"S1"}}, {"label", "MAC"}}));
}

TEST_F(LabelTest, AnEmptyLabelIsReadAsSerialNumbers)
{
    EXPECT_FALSE(focusOrderLivesUntilDrawing({{"input", Array{"S1"}}, {"label", ""}}));
}

TEST_F(LabelTest, ASystemsPanelForgetsTheEarlierFocusOrderWhateverItsLabel)
{
    rooms().views.setResponders("0", {});
    bool lives = true;
    KVKLogProxy *proxy = KVKLogGetProxy();
    const KVKLogProxy::SinkId sink = proxy->addSink([&](const KVKLogProxy::Line &line) {
        if (line.message.startsWith("Entered: "))
            lives = rooms().views.hasResponders("0");
    });
    showView(0, {{"input", Array{"SN"}}, {"label", "MAC"}});
    EXPECT_TRUE(waitForPanel("0"));
    proxy->removeSink(sink);
    EXPECT_FALSE(lives);
}

class ImpossiblePanelTest : public testsupport::PluginFixture
{
protected:
    void SetUp() override
    {
        expectError("-[InteractiveView showInteractiveView:systemIndex:config:error:]: ");
    }

    void expectProblem(testsupport::SequencerCall &call)
    {
        EXPECT_EQ(call.result(), Value());
        EXPECT_EQ(call.error().domain, interactive::InteractivePluginErrorDomain);
        EXPECT_FALSE(call.error().localizedDescription.isEmpty());
    }
};

TEST_F(ImpossiblePanelTest, AStationWithoutSlotsIsAnError)
{
    station.systemGroups = Array{};
    station.systemSlots = Array{};
    expectError("no conidtion found for: 0");
    expectProblem(showView(0, {{"button", Array{"No", "Yes"}}}));
}

TEST_F(ImpossiblePanelTest, AGroupOnAStationWithoutSlotNamesIsAnError)
{
    station.systemGroups = Array{"G1"};
    station.systemSlots = Array{};
    expectProblem(showGroup(0, {{"button", Array{"No", "Yes"}}}));
}

TEST_F(ImpossiblePanelTest, ColumnsThatNoPanelCanHaveAreAnError)
{
    expectProblem(
        showView(0, {{"button", Array{"No", "Yes"}}, {"column", std::numeric_limits<qint64>::max()}}));
    expectProblem(showView(0, {{"button", Array{"No", "Yes"}}, {"column", 1000000000}}));
    expectProblem(showView(0, {{"button", Array{"No", "Yes"}}, {"column", -1}}));
}

TEST_F(ImpossiblePanelTest, AfterwardsAPossiblePanelIsDrawn)
{
    expectProblem(showView(0, {{"button", Array{"No", "Yes"}}, {"column", -1}}));
    auto &call = showView(0, {{"button", Array{"No", "Yes"}}});
    ASSERT_TRUE(waitForPanel("0"));
    press("0", "Yes");
    EXPECT_EQ(call.result(), Value(true));
}

TEST_F(ImpossiblePanelTest, TheErrorAndTheLogSayWhatIsWrong)
{
    const QString problem = "Invalid config. Value for key 'column' is -1: a panel takes 1 to 67108 columns.";
    auto &call = showView(0, {{"button", Array{"No", "Yes"}}, {"column", -1}});
    EXPECT_EQ(call.error(), (Error{interactive::InteractivePluginErrorDomain, 402, problem}));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error,
                           "-[InteractiveView showInteractiveView:systemIndex:config:error:]: " + problem));
    EXPECT_TRUE(highlights.empty());
}

} // namespace
