#include "plugin/ShowError.h"
#include "tests/support/LogTrap.h"
#include "tests/support/PanelFixture.h"
#include "tests/support/Wait.h"

#include <QWidget>

using platform::Array;
using platform::Color;
using platform::Dictionary;
using platform::Error;
using platform::Font;
using platform::Identifier;
using platform::TextField;
using platform::Value;
using platform::View;
using testsupport::ButtonLook;
using testsupport::inWords;
using testsupport::lookOf;
using testsupport::SequencerCall;
using testsupport::TextLook;

namespace {

const QString message = QStringLiteral("The fixture is open.");

/// A message in a panel's place that the operator acknowledges.
class ErrorPanelTest : public testsupport::PanelFixture
{
protected:
    ErrorPanelTest() { station.groups = {"G1", "G2", "G3"}; }

    SequencerCall &showError(const Dictionary &config, const Identifier &identifier)
    {
        interactive::Rooms &target = rooms();
        return onSequencer([&target, config, identifier](Error *) {
            return Value(interactive::showError(target, message, config, identifier, {}));
        });
    }
    SequencerCall &showError(const Dictionary &config, const QString &group)
    {
        return showError(config, rooms().waits.panelKey(group));
    }
    /// The geometry of the panel that an error draws for the group, in words.
    QString geometryOf(const QString &group, const Dictionary &config)
    {
        SequencerCall &call = showError(config, group);
        if (!waitForPanel(group))
            return {};
        const QString geometry = inWords(panel(group)->frame());
        // Not by the mouse: in a narrow window the button may stand outside.
        buttons(panel(group)).first()->sendAction();
        EXPECT_TRUE(call.waitUntilFinished());
        return geometry;
    }
    /// The text fields that stand in the split view beside the panels.
    QList<TextField *> titleFields() { return labels(splitView()); }
};

TEST_F(ErrorPanelTest, APanelStandsInItsGroupsBand)
{
    struct Case
    {
        QString group;
        Dictionary config;
        QString expected;
    };
    const Case cases[] = {
        {"G1", {}, "(0, 0, 1280, 126)"},
        {"G2", {}, "(0, 126, 1280, 126)"},
        {"G3", {{"column", 3}}, "(0, 472, 1280, 236)"},
        {"G2", {{"column", "1"}}, "(0, 456, 1280, 456)"},
        {"G1", {{"column", "none"}}, "(0, 0, 1280, 126)"},
        {"G1", {{"column", 6}}, "(0, 0, 1500, 126)"},
    };
    for (const Case &each : cases)
        EXPECT_EQ(geometryOf(each.group, each.config), each.expected)
            << platform::description(each.config).toStdString();
    EXPECT_EQ(plugin().columns(), 0u);
}

TEST_F(ErrorPanelTest, WithoutColumnsThePanelTakesThoseOfTheLastPanel)
{
    plugin().setColumns(2);
    EXPECT_EQ(geometryOf("G2", {}), "(0, 236, 1280, 236)");
    EXPECT_EQ(geometryOf("G2", {{"column", 4}}), "(0, 126, 1280, 126)");
}

TEST_F(ErrorPanelTest, InANarrowWindowThePanelIsAsWideAsItsColumns)
{
    station.windowSize = {600, 800};
    EXPECT_EQ(geometryOf("G1", {{"column", 2}}), "(0, 0, 600, 236)");
    EXPECT_EQ(geometryOf("G1", {}), "(0, 0, 1000, 126)");
}

TEST_F(ErrorPanelTest, TheMessageIsShownInRed)
{
    showError({}, "G2");
    ASSERT_TRUE(waitForPanel("G2"));
    ASSERT_EQ(labels(panel("G2")).size(), 1);
    EXPECT_EQ(lookOf(labels(panel("G2")).first()),
              (TextLook{.frame = {16, 62, 1280, 46},
                        .text = message,
                        .font = Font::system(15),
                        .textColor = Color::standardRed(),
                        .mask = platform::WidthSizable | platform::MinYMargin | platform::HeightSizable}));
}

TEST_F(ErrorPanelTest, TheTitleStandsInTheSplitViewAndNotInThePanel)
{
    showError({{"title", "Scan units"}}, "G2");
    ASSERT_TRUE(waitForPanel("G2"));
    ASSERT_EQ(titleFields().size(), 1);
    EXPECT_EQ(lookOf(titleFields().first()),
              (TextLook{.frame = {16, 86, 1280, 20},
                        .text = "Scan units",
                        .font = Font::boldSystem(15),
                        .mask = platform::WidthSizable | platform::MaxXMargin | platform::MinYMargin}));
}

TEST_F(ErrorPanelTest, WithoutATitleTheTitleFieldIsEmpty)
{
    showError({}, "G1");
    ASSERT_TRUE(waitForPanel("G1"));
    ASSERT_EQ(titleFields().size(), 1);
    EXPECT_EQ(titleFields().first()->stringValue(), "");
}

TEST_F(ErrorPanelTest, OkStandsSixteenPointsFromTheRightEdge)
{
    showError({}, "G1");
    ASSERT_TRUE(waitForPanel("G1"));
    ASSERT_EQ(buttons(panel("G1")).size(), 1);
    EXPECT_EQ(lookOf(buttons(panel("G1")).first()), (ButtonLook{.frame = {1184, 0, 80, 30},
                                                                .title = "OK",
                                                                .identifier = "Pass",
                                                                .font = Font::system(16),
                                                                .mask = platform::MaxYMargin}));
    EXPECT_EQ(buttons(panel("G1")).first()->target(), &plugin());
}

TEST_F(ErrorPanelTest, OkFollowsTheWidthOfAPanelWiderThanTheWindow)
{
    station.windowSize = {600, 800};
    showError({}, "G1");
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_EQ(inWords(buttons(panel("G1")).first()->frame()), "(904, 0, 80, 30)");
}

TEST_F(ErrorPanelTest, EveryGroupButTheFirstIsSeparatedByALine)
{
    const std::pair<QString, QString> cases[] = {{"G2", "(0, 124, 1280, 1)"}, {"G3", "(0, 124, 1280, 1)"}};
    for (const auto &[group, frame] : cases) {
        showError({}, group);
        ASSERT_TRUE(waitForPanel(group));
        ASSERT_EQ(panel(group)->subviews().size(), 3);
        View *line = panel(group)->subviews().last();
        EXPECT_EQ(inWords(line->frame()), frame);
        EXPECT_EQ(line->layerBackgroundColor(), Color::lightGray());
        EXPECT_EQ(line->autoresizingMask(), unsigned(platform::MinXMargin | platform::WidthSizable));
    }
}

TEST_F(ErrorPanelTest, TheFirstGroupHasNoLine)
{
    showError({}, "G1");
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_EQ(panel("G1")->subviews().size(), 2);
}

TEST_F(ErrorPanelTest, TheCallWaitsForOkAndTakesThePanelAway)
{
    SequencerCall &call = showError({}, "G2");
    ASSERT_TRUE(waitForPanel("G2"));
    settle();
    EXPECT_FALSE(call.finished());
    press("G2", "OK");
    EXPECT_EQ(call.result(), Value(true));
    EXPECT_EQ(pane("G2"), nullptr);
}

TEST_F(ErrorPanelTest, TheTitleStaysAfterTheAcknowledgement)
{
    SequencerCall &call = showError({{"title", "Scan units"}}, "G2");
    ASSERT_TRUE(waitForPanel("G2"));
    press("G2", "OK");
    ASSERT_TRUE(call.waitUntilFinished());
    letRemovedViewsGo();
    ASSERT_EQ(titleFields().size(), 1);
    EXPECT_EQ(titleFields().first()->stringValue(), "Scan units");
    EXPECT_TRUE(titleFields().first()->identifier().isNull());
}

TEST_F(ErrorPanelTest, TheNextErrorUsesTheSameTitleField)
{
    QPointer<TextField> first;
    for (const char *title : {"First", "Second", "Third"}) {
        SequencerCall &call = showError({{"title", title}}, "G2");
        ASSERT_TRUE(waitForPanel("G2"));
        ASSERT_EQ(titleFields().size(), 1);
        EXPECT_EQ(titleFields().first()->stringValue(), title);
        if (!first)
            first = titleFields().first();
        EXPECT_EQ(titleFields().first(), first);
        press("G2", "OK");
        ASSERT_TRUE(call.waitUntilFinished());
    }
}

TEST_F(ErrorPanelTest, APanelOfThatIdentifierIsTakenAwayFirst)
{
    drawGroup(1, {{"input", Array{"S1"}}});
    ASSERT_NE(field("G2-SharedInput"), nullptr);
    showError({}, "G2");
    ASSERT_TRUE(testsupport::waitUntil([&] { return field("G2-SharedInput") == nullptr; }));
    EXPECT_TRUE(waitForPanel("G2"));
    EXPECT_EQ(panes().count("G2"), 1);
}

TEST_F(ErrorPanelTest, FieldsOfAnEarlierPanelDoNotKeepOkFromEndingTheCall)
{
    SequencerCall &cancelled = showGroup(1, {{"input", Array{"S1", "S2"}}, {"label", "MAC"}});
    ASSERT_TRUE(waitForPanel("G2"));
    press("G2", "Cancel");
    ASSERT_TRUE(cancelled.waitUntilFinished());
    SequencerCall &call = showError({}, "G2");
    ASSERT_TRUE(waitForPanel("G2"));
    EXPECT_FALSE(knowsFieldsOf("G2"));
    press("G2", "OK");
    EXPECT_EQ(call.result(), Value(true));
}

TEST_F(ErrorPanelTest, AConditionIsMadeWhereThereIsNone)
{
    // A key that no show call has used.
    const Identifier key = rooms().waits.panelKey("X");
    showError({}, key);
    ASSERT_TRUE(testsupport::waitUntil([&] { return pane("X") != nullptr; }));
    EXPECT_NE(rooms().waits.getCondition(key), nullptr);
}

TEST_F(ErrorPanelTest, AnIdentifierThatNamesNoGroupIsDrawnFarOutsideWithALine)
{
    SequencerCall &call = showError({}, "X");
    ASSERT_TRUE(testsupport::waitUntil([&] { return pane("X") != nullptr; }));
    View *drawn = pane("X");
    EXPECT_GT(drawn->frame().y(), splitView()->frame().height());
    EXPECT_LE(drawn->frame().y(), double(QWIDGETSIZE_MAX));
    EXPECT_EQ(inWords(platform::Rect({}, drawn->frame().size())), "(0, 0, 1280, 126)");
    EXPECT_EQ(drawn->subviews().size(), 3);
    ASSERT_EQ(buttons(drawn).size(), 1);
    buttons(drawn).first()->sendAction();
    EXPECT_EQ(call.result(), Value(true));
    EXPECT_EQ(pane("X"), nullptr);
}

TEST_F(ErrorPanelTest, WithoutAnIdentifierTheMessageIsLoggedAndTheCallReturns)
{
    testsupport::expectError(message);
    SequencerCall &call = showError({}, Identifier());
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_TRUE(panes().isEmpty());
    const auto lines = log.proxyLines();
    EXPECT_TRUE(std::ranges::any_of(lines, [](const testsupport::LogRecorder::Line &line) {
        return line.level == KVKLogLevel::Error && line.message.contains(message);
    }));
}

TEST_F(ErrorPanelTest, TheCallIsLogged)
{
    showError({}, "G1");
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Debug,
                           "Called: -[InteractiveView showError:config:identifier:], message: " + message));
}

TEST_F(ErrorPanelTest, ThePanelIsLoggedWhenItIsTakenAway)
{
    SequencerCall &call = showError({}, "G2");
    ASSERT_TRUE(waitForPanel("G2"));
    press("G2", "OK");
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default,
                           "G2 removed with subViews (<TextField: (null)>, <Button: Pass>, <View: (null)>)"));
}

TEST_F(ErrorPanelTest, ErrorsOfTwoGroupsAreAcknowledgedOneByOne)
{
    SequencerCall &first = showError({}, "G1");
    SequencerCall &second = showError({}, "G3");
    ASSERT_TRUE(waitForPanel("G1") && waitForPanel("G3"));
    press("G3", "OK");
    ASSERT_TRUE(second.waitUntilFinished());
    EXPECT_FALSE(first.finished());
    press("G1", "OK");
    EXPECT_TRUE(first.waitUntilFinished());
}

TEST_F(ErrorPanelTest, ARefusedColumnCountStillGetsAPanelThatCanBeAcknowledged)
{
    for (const int columns : {5, -1, 1'000'000}) {
        SequencerCall &call = showGroup(0, {{"input", Array{"S1"}}, {"column", columns}});
        ASSERT_TRUE(waitForPanel("G1")) << columns;
        ASSERT_LE(panel("G1")->frame().width(), 1280.0) << columns;
        press("G1", "OK");
        EXPECT_FALSE(call.result().isValid());
        EXPECT_EQ(call.error().code, 103) << columns;
    }
}

TEST_F(ErrorPanelTest, APanelWiderThanTheWindowCanBeScrolledTo)
{
    station.windowSize = {600, 400};
    SequencerCall &call = showError({}, "G1");
    ASSERT_TRUE(waitForPanel("G1"));
    ASSERT_GE(scrollView()->documentView()->frame().width(), 1000.0);
    scrollView()->scrollToPoint({1000.0, 0.0});
    press("G1", "OK");
    EXPECT_EQ(call.result(), Value(true));
}

TEST_F(ErrorPanelTest, WithoutAnIdentifierBothLinesAreWhole)
{
    testsupport::expectError(message);
    EXPECT_EQ(showError({}, Identifier()).result(), Value(true));
    const QString method = "-[InteractiveView showError:config:identifier:]";
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Debug, "Called: " + method + ", message: " + message));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error, method + ": no panel to show the message on: " + message));
}

TEST_F(ErrorPanelTest, BehindAStopNothingIsDrawnAndNobodyHasReadIt)
{
    rooms().waits.interrupt();
    EXPECT_EQ(showError({}, "G1").result(), Value(false));
    EXPECT_TRUE(titleFields().isEmpty());
}

TEST_F(ErrorPanelTest, ThePanelLiesAboveTheTitle)
{
    for (int i = 0; i < 2; ++i) {
        SequencerCall &call = showError({}, "G2");
        ASSERT_TRUE(waitForPanel("G2"));
        EXPECT_EQ(panes(), (QStringList{"(null)", "G2"}));
        press("G2", "OK");
        ASSERT_TRUE(call.waitUntilFinished());
    }
}

TEST_F(ErrorPanelTest, EveryPanelOfThatTextIsShown)
{
    auto *hidden = new View(platform::Rect(0, 0, 10, 10));
    hidden->setIdentifier(Identifier("X"));
    hidden->setHidden(true);
    splitView()->addSubview(hidden);
    showError({}, "X");
    ASSERT_TRUE(testsupport::waitUntil([&] { return panes().count("X") == 2; }));
    EXPECT_FALSE(hidden->isHidden());
}

TEST_F(ErrorPanelTest, ThePanelBearsTheVeryKeyThatItWasShownFor)
{
    showError({}, "G2");
    ASSERT_TRUE(waitForPanel("G2"));
    EXPECT_TRUE(pane("G2")->identifier().isSameInstance(groupButton("G2")->identifier()));
}

} // namespace
