#include "kovan/KovanLogging/KVKLogging.h"
#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/Box.h"
#include "platform/Button.h"
#include "platform/MainQueue.h"
#include "platform/SplitView.h"
#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"
#include "tests/support/Wait.h"

#include <algorithm>
#include <stdexcept>

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

const QString called =
    QStringLiteral("Called: -[InteractiveView showInteractiveView:systemIndex:config:error:]");
const QString method = QStringLiteral("-[InteractiveView showInteractiveView:systemIndex:config:error:]");
const Dictionary question{{"button", Array{"No", "Yes"}}};

/// What a show call does from its entry until the operator sees the panel.
class ShowCallTest : public testsupport::PluginFixture
{};

TEST_F(ShowCallTest, TheCallForASystemIsLoggedWithItsIndexAndConfiguration)
{
    showView(3, {{"input", Array{"SN"}}, {"length", 8}});
    ASSERT_TRUE(waitForPanel("3"));
    EXPECT_TRUE(
        loggedOnce(KVKLogLevel::Default, called + ", systemIndex: 3, config: {input = (SN); length = 8}"));
}

TEST_F(ShowCallTest, TheCallForAGroupIsLoggedWithoutASystemIndex)
{
    showGroup(1, {{"input", Array{"S1", "S2"}}});
    ASSERT_TRUE(waitForPanel("G2"));
    EXPECT_TRUE(
        loggedOnce(KVKLogLevel::Default, called + ", systemIndex: (null), config: {input = (S1, S2)}"));
}

TEST_F(ShowCallTest, NothingIsDoneOrLoggedBeforeTheSharedCall)
{
    start();
    log.clear();
    showView(0, question);
    ASSERT_TRUE(waitForPanel("0"));
    EXPECT_EQ(log.proxyLines().front().message, called + ", systemIndex: 0, config: {button = (No, Yes)}");
    EXPECT_EQ(timesLoggedFrom("Called: "), 1);
}

TEST_F(ShowCallTest, AGroupsPanelIsKeyedByTheGroupOfThatNumberAmongTheDistinctOnes)
{
    station.systemGroups = Array{"B", "B", "A", "A"};
    station.systemSlots = Array{"S1", "S2", "S1", "S2"};
    showGroup(1, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("A"));
    EXPECT_FALSE(isOpen("B"));
    EXPECT_TRUE(panel("A")->identifier().isSameInstance(groupButton("A")->identifier()));
}

TEST_F(ShowCallTest, ASystemsPanelIsKeyedByTheDigitsOfItsIndex)
{
    showView(5.0, question);
    ASSERT_TRUE(waitForPanel("5"));
    EXPECT_TRUE(plugin().savedData().contains("5"));
    const platform::Identifier key = panel("5")->identifier();
    press("5", "No");
    showView(5, question);
    ASSERT_TRUE(waitForPanel("5"));
    EXPECT_TRUE(panel("5")->identifier().isSameInstance(key));
}

TEST_F(ShowCallTest, AGroupNumberBeyondTheGroupsIsARangeException)
{
    const QString text = showGroup(7, {{"input", Array{"S1"}}}).thrown<std::out_of_range>();
    EXPECT_TRUE(text.contains("7")) << text.toStdString();
    EXPECT_TRUE(text.contains("1") || text.contains("2")) << text.toStdString();
}

TEST_F(ShowCallTest, ANegativeGroupNumberIsARangeException)
{
    EXPECT_TRUE(showGroup(-1, {{"input", Array{"S1"}}}).thrown<std::out_of_range>().contains("-1"));
}

TEST_F(ShowCallTest, ASystemBeyondTheStationIsAnsweredByAnErrorAtOnce)
{
    start();
    for (const int index : {99, 8, -1}) {
        const QString text =
            method + ": system index " + QString::number(index) + " is beyond the station's systems (0 to 7)";
        expectError(text);
        // Looked at before anything else: neither the wrong type nor the message of a group counts.
        auto &call = showView(index, {{"switch", "S1"}, {"input", Array{"length"}}});
        EXPECT_EQ(call.result(), Value()) << index;
        EXPECT_EQ(call.error(), (platform::Error{interactive::InteractivePluginErrorDomain, 404, text}));
        EXPECT_TRUE(loggedOnce(KVKLogLevel::Error, text)) << index;
    }
    EXPECT_TRUE(highlights.empty());
    EXPECT_EQ(plugin().savedData(), Dictionary());
    EXPECT_TRUE(splitView()->subviews().isEmpty());
}

TEST_F(ShowCallTest, ASystemBeyondAStationOfOneIsToldWhichThereIs)
{
    station.systemGroups = Array{"A"};
    station.systemSlots = Array{"S1"};
    const QString text = method + ": system index 1 is beyond the station's systems (0 to 0)";
    expectError(text);
    EXPECT_EQ(showView(1, question).error(),
              (platform::Error{interactive::InteractivePluginErrorDomain, 404, text}));
}

TEST_F(ShowCallTest, ARefusedCallHasMadeTheConditionOfItsPanelToo)
{
    showView(0, {{"input", "SN"}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_NE(rooms().waits.getCondition(platform::Identifier("0")), nullptr);
    EXPECT_EQ(rooms().waits.getCondition(platform::Identifier("1")), nullptr);
}

TEST_F(ShowCallTest, WhereNobodyCanLearnOfARefusalSwitchesTakeNoPartFromEntries)
{
    start();
    interactive::InteractiveView &target = plugin();
    const Dictionary both{{"input", Array{"S1", "S2"}}, {"switch", Array{"S1"}}};
    onSequencer([&](platform::Error *) { return target.showGroupView(0, both, nullptr); });
    ASSERT_TRUE(waitForPanel("G1"));
    const QList<platform::View *> all = testsupport::descendants(splitView());
    EXPECT_EQ(std::ranges::count_if(all,
                                    [](platform::View *view) {
                                        const auto *box = qobject_cast<platform::Box *>(view);
                                        return box && box->isVisible();
                                    }),
              2);
}

TEST_F(ShowCallTest, EnablesTheGroupsButton)
{
    groupButton("G1")->setEnabled(false);
    groupButton("G2")->setEnabled(false);
    showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_TRUE(groupButton("G1")->isEnabled());
    EXPECT_FALSE(groupButton("G2")->isEnabled());
}

TEST_F(ShowCallTest, ASystemsCallLeavesItsGroupsButtonAlone)
{
    groupButton("G1")->setEnabled(false);
    showView(0, question);
    ASSERT_TRUE(waitForPanel("0"));
    EXPECT_FALSE(groupButton("G1")->isEnabled());
}

TEST_F(ShowCallTest, HidesWhatIsThereOfAGroupThatIsOffBeforeItIsTakenAway)
{
    click(groupButton("G1"));
    ASSERT_TRUE(showGroup(0, {{"message", "Load the fixture"}}).waitUntilFinished());
    QPointer<platform::View> message = panel("G1");
    ASSERT_TRUE(message && !message->isHidden());

    bool hiddenInPlace = false;
    showGroup(0, {{"input", Array{"S1"}}});
    platform::MainQueue::drainUntil([&] {
        hiddenInPlace = hiddenInPlace || (message && message->superview() && message->isHidden());
        return hiddenInPlace || !message || !message->superview();
    });
    EXPECT_TRUE(hiddenInPlace);
}

TEST_F(ShowCallTest, DoesNotHideWhatIsThereOfAGroupThatIsOn)
{
    ASSERT_TRUE(showGroup(0, {{"message", "Load the fixture"}}).waitUntilFinished());
    QPointer<platform::View> message = panel("G1");
    ASSERT_TRUE(message);
    bool hiddenInPlace = false;
    showGroup(0, {{"input", Array{"S1"}}});
    platform::MainQueue::drainUntil([&] {
        hiddenInPlace = hiddenInPlace || (message && message->superview() && message->isHidden());
        return hiddenInPlace || !message || !message->superview();
    });
    EXPECT_FALSE(hiddenInPlace);
}

TEST_F(ShowCallTest, ThePanelOfAGroupThatIsOffIsDrawnAllTheSame)
{
    click(groupButton("G1"));
    showGroup(0, {{"input", Array{"S1"}}});
    EXPECT_TRUE(waitForPanel("G1"));
}

TEST_F(ShowCallTest, TakesTheEarlierPanelOfItsKeyAway)
{
    ASSERT_TRUE(showGroup(0, {{"message", "Load the fixture"}}).waitUntilFinished());
    QPointer<platform::View> message = panel("G1");
    ASSERT_TRUE(message);
    showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_TRUE(!message || !message->superview());
    EXPECT_EQ(splitView()->subviews().size(), 1);
}

TEST_F(ShowCallTest, LogsLoopModeAndWhatThereIsToAskFor)
{
    showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default, method + ": 0, 0, 1"));
}

TEST_F(ShowCallTest, LogsThatThereIsNothingButButtons)
{
    showView(0, question);
    ASSERT_TRUE(waitForPanel("0"));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default, method + ": 0, 1, 1"));
}

TEST_F(ShowCallTest, LogsLoopModeAndAnAnswerThatIsThere)
{
    setLoop(2);
    auto &first = showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("A");
    press("0", "OK");
    ASSERT_TRUE(first.waitUntilFinished());
    showView(0, question);
    ASSERT_TRUE(waitForPanel("0"));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default, method + ": 1, 1, 0"));
}

TEST_F(ShowCallTest, TheFreshRecordHoldsTheLengthAlone)
{
    setLoop(2); // so that the former answer is still there
    auto &former = showView(3, {{"input", Array{"MAC"}}});
    ASSERT_TRUE(waitForPanel("3"));
    scan("OLD");
    press("3", "OK");
    ASSERT_TRUE(former.waitUntilFinished());
    ASSERT_EQ(record("3").value("MAC"), Value("OLD"));
    showView(3, {{"input", Array{"SN"}}, {"length", 8}});
    ASSERT_TRUE(waitForPanel("3"));
    EXPECT_EQ(record("3"), (Dictionary{{"length", 8}}));
}

TEST_F(ShowCallTest, TheFreshRecordOfAGroupHoldsTheLengthAloneWhateverItsLabel)
{
    answerGroup(0, {"S1"}, {"OLD"});
    answerGroup(1, {"S1"}, {"KEPT"});
    showGroup(0, {{"input", Array{"S1"}}, {"label", "MAC"}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_EQ(record("G1"), (Dictionary{{"length", 0}}));
    EXPECT_EQ(record("G2"), (Dictionary{{"S1", "KEPT"}, {"clickedButton", "Pass"}}));
}

TEST_F(ShowCallTest, ASystemsSwitchStatesAreForgotten)
{
    const Dictionary kept = plugin().enableStatus();
    Dictionary status = kept;
    status.insert("0", Dictionary{{"A", 1}});
    rooms().slotStates.restore(status);
    showView(0, {{"switch", Array{"A"}}});
    ASSERT_TRUE(waitForPanel("0"));
    EXPECT_EQ(plugin().enableStatus(), kept);
}

TEST_F(ShowCallTest, AGroupsSwitchStatesStay)
{
    const Dictionary kept = plugin().enableStatus();
    showGroup(0, {{"input", Array{"S1", "S2", "S3", "S4"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_EQ(plugin().enableStatus(), kept);
}

TEST_F(ShowCallTest, SwitchesWithoutInputsAreDrawnAsTheirOwnInputs)
{
    showGroup(0, {{"switch", Array{"S2", "S3"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    // Only what is among the inputs is shown on a group panel.
    platform::CollectionView *overview = overviewOf("G1");
    QList<bool> shown;
    for (int i = 0; i < 4; ++i)
        shown.append(overview->itemAtIndex(i)->view()->subviews().value(0)->isVisible());
    EXPECT_EQ(shown, (QList<bool>{false, true, true, false}));
}

TEST_F(ShowCallTest, HighlightsTheSystemFromBeforeThePanelUntilTheAnswer)
{
    auto &call = showView(5, question);
    ASSERT_TRUE(waitForPanel("5"));
    EXPECT_EQ(highlights, (std::vector<Highlight>{{5, true}}));
    press("5", "Yes");
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_EQ(highlights, (std::vector<Highlight>{{5, true}, {5, false}}));
}

TEST_F(ShowCallTest, AGroupsCallHighlightsNothing)
{
    auto &call = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "Cancel");
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_TRUE(highlights.empty());
}

TEST_F(ShowCallTest, TheHighlightBeginsBeforeThePanelIsThereAndEndsWhenItIsGone)
{
    start();
    std::vector<std::pair<bool, bool>> openAt;
    KVKExtensionStatusRelay::sharedStatusRelay()->setHandler(
        [&](quint64, bool highlighted) { openAt.emplace_back(highlighted, isOpen("5")); });
    auto &call = showView(5, question);
    ASSERT_TRUE(waitForPanel("5"));
    press("5", "Yes");
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_EQ(openAt, (std::vector<std::pair<bool, bool>>{{true, false}, {false, false}}));
}

TEST_F(ShowCallTest, TheRangeExceptionNamesTheMethodTheValueAndTheRange)
{
    EXPECT_EQ(showGroup(7, {{"input", Array{"S1"}}}).thrown<std::out_of_range>(),
              method + ": group number 7 is out of range, there are 2 (0 to 1)");
}

TEST_F(ShowCallTest, AGroupOfAStationWithoutGroupsIsARangeException)
{
    station.systemGroups = Array{};
    station.systemSlots = Array{};
    EXPECT_EQ(showGroup(0, {{"input", Array{"S1"}}}).thrown<std::out_of_range>(),
              method + ": group number 0 is out of range, there are none");
}

TEST_F(ShowCallTest, ANumberThatIsNoIntegerIsRefused)
{
    EXPECT_EQ(showGroup(0.5, question).thrown<std::invalid_argument>(),
              method + ": group number must be an integer, got 0.5");
    EXPECT_EQ(showView("0", question).thrown<std::invalid_argument>(),
              method + ": system index must be an integer, got 0");
    EXPECT_TRUE(splitView()->subviews().isEmpty());
}

} // namespace
