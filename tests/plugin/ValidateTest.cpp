#include "platform/MainQueue.h"
#include "platform/TextField.h"
#include "presentation/SlotColors.h"
#include "tests/support/GatedFunction.h"
#include "tests/support/PluginFixture.h"
#include "tests/support/Wait.h"

using interactive::SlotColors;
using platform::Array;
using platform::Color;
using platform::Dictionary;
using platform::Value;
using testsupport::GatedFunction;
using testsupport::SequencerCall;

namespace {

/// `validate`: a call's own function judges each entry on the call's thread, with real keys.
class ValidateTest : public testsupport::PluginFixture
{
protected:
    void TearDown() override
    {
        gate->open();
        PluginFixture::TearDown();
    }

    Dictionary with(Dictionary config, const QStringList &labels)
    {
        config.insert("input", Array(labels.cbegin(), labels.cend()));
        config.insert("validate", Value::fromValue<std::shared_ptr<platform::Callback>>(gate));
        return config;
    }
    SequencerCall &askSystem(int system, const Dictionary &config = {})
    {
        SequencerCall &call = showView(system, with(config, {"SN"}));
        EXPECT_TRUE(waitForPanel(QString::number(system)));
        return call;
    }
    SequencerCall &askGroup(const Dictionary &config = {}, const QStringList &labels = {"S1", "S2"})
    {
        SequencerCall &call = showGroup(0, with(config, labels));
        EXPECT_TRUE(waitForPanel("G1"));
        return call;
    }
    QString told(const QString &panelKey) { return field(panelKey + "-StatusLine")->stringValue(); }
    bool waitForCalls(const QStringList &calls)
    {
        const bool came = testsupport::waitUntil([&] { return gate->calls() == calls; });
        EXPECT_TRUE(came) << gate->calls().join(" ").toStdString();
        return came;
    }
    bool waitForChecked(const QString &panelKey)
    {
        const bool came = testsupport::waitUntil([&] { return !rooms().checks.arePending(panelKey); });
        EXPECT_TRUE(came) << "a check did not come back";
        return came;
    }
    Color background(const QString &identifier) { return field(identifier)->backgroundColor(); }

    /// Takes what does not begin with "x", and tells why it does not.
    std::shared_ptr<GatedFunction> gate =
        std::make_shared<GatedFunction>([](const Value &text, const QString &slot) {
            if (!text.toString().startsWith("x"))
                return Array{true};
            return Array{false, QString("no such unit for %1").arg(slot)};
        });
};

TEST_F(ValidateTest, AGoodEntryIsTheAnswer)
{
    SequencerCall &call = askSystem(0);
    scan("A");
    waitForChecked("0");
    EXPECT_EQ(background("0-SN"), Color::white());
    EXPECT_EQ(told("0"), "");
    press("0", "OK");
    EXPECT_EQ(call.result().toMap(), (Dictionary{{"SN", "A"}, {"clickedButton", "Pass"}}));
    EXPECT_EQ(gate->calls(), QStringList{"(A, SN)"}) << "\"OK\" does not ask again";
}

TEST_F(ValidateTest, AnEntryShowsThatItIsBeingChecked)
{
    gate->close();
    askSystem(0);
    scan("A");
    EXPECT_EQ(background("0-SN"), SlotColors::checkingColor());
    EXPECT_EQ(told("0"), "\"A\" is being checked ...");
    gate->open();
    waitForChecked("0");
    EXPECT_EQ(background("0-SN"), Color::white());
    EXPECT_EQ(told("0"), "");
}

TEST_F(ValidateTest, ARefusedEntryIsTakenBackAndToldInWords)
{
    expectError("Invalid input: 0-SN = xA");
    SequencerCall &call = askSystem(0);
    scan("xA");
    waitForChecked("0");
    EXPECT_EQ(background("0-SN"), Color::standardRed());
    EXPECT_EQ(told("0"), "\"xA\" is refused: no such unit for SN");
    EXPECT_EQ(field("0-SN")->selectedText(), "xA");
    EXPECT_EQ(record("0"), (Dictionary{{"length", 0}}));
    scan("A");
    waitForChecked("0");
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("A"));
}

TEST_F(ValidateTest, NothingAndFalseRefuseWithTheHintOrWithout)
{
    expectError("Invalid input: 0-SN = A");
    expectError("Invalid input: 0-SN = B");
    expectError("Invalid input: 1-SN = C");
    bool nothing = false;
    gate = std::make_shared<GatedFunction>(
        [&](const Value &, const QString &) { return nothing ? Array() : Array{false}; });
    askSystem(0, {{"hint", "Scan the label"}});
    scan("A");
    waitForChecked("0");
    EXPECT_EQ(told("0"), "Scan the label (the sequence does not take it)");
    nothing = true;
    scan("B");
    waitForChecked("0");
    EXPECT_EQ(background("0-SN"), Color::standardRed());
    askSystem(1);
    ASSERT_TRUE(field("1-SN")->becomeFirstResponder());
    scan("C");
    waitForChecked("1");
    EXPECT_EQ(told("1"), "\"C\" is refused: the sequence does not take it");
}

TEST_F(ValidateTest, EntriesOfAGroupAreCheckedInTheirOrderWhileMoreAreScanned)
{
    gate->close();
    SequencerCall &call = askGroup();
    scan("A");
    ASSERT_TRUE(waitForCalls({"(A, S1)"}));
    scan("B");
    EXPECT_EQ(field("G1-S1")->stringValue(), "A");
    EXPECT_EQ(field("G1-S2")->stringValue(), "B");
    EXPECT_EQ(background("G1-S1"), SlotColors::checkingColor());
    EXPECT_EQ(background("G1-S2"), SlotColors::checkingColor());
    EXPECT_EQ(gate->calls().size(), 1);
    gate->open();
    waitForChecked("G1");
    EXPECT_EQ(gate->calls(), (QStringList{"(A, S1)", "(B, S2)"}));
    EXPECT_NE(background("G1-S1"), SlotColors::checkingColor());
    press("G1", "OK");
    EXPECT_EQ(call.result().toMap().value("S1"), Value("A"));
    EXPECT_EQ(call.result().toMap().value("S2"), Value("B"));
}

TEST_F(ValidateTest, ARefusedSlotTakesTheNextScan)
{
    expectError("Invalid input: G1-S1 = xA");
    SequencerCall &call = askGroup();
    gate->close();
    scan("xA");
    scan("B");
    gate->open();
    waitForChecked("G1");
    EXPECT_EQ(background("G1-S1"), Color::standardRed());
    EXPECT_EQ(told("G1"), "\"xA\" is refused: no such unit for S1") << "and stays over B's verdict";
    scan("C");
    waitForChecked("G1");
    EXPECT_EQ(field("G1-S1")->stringValue(), "C");
    EXPECT_NE(background("G1-S1"), Color::standardRed());
    EXPECT_EQ(told("G1"), "");
    press("G1", "OK");
    EXPECT_EQ(call.result().toMap().value("S1"), Value("C"));
    EXPECT_EQ(call.result().toMap().value("S2"), Value("B"));
}

TEST_F(ValidateTest, WhatIsBeingCheckedIsADuplicateAlready)
{
    expectError("Duplicated input detected");
    expectError("Invalid input: G1-SharedInput = A");
    gate->close();
    askGroup();
    scan("A");
    scan("A");
    EXPECT_EQ(told("G1"), "\"A\" is refused: it was given before");
    EXPECT_EQ(field("G1-S2")->stringValue(), "");
}

TEST_F(ValidateTest, TheOtherRulesComeFirst)
{
    expectError("Invalid input: 0-SN = AB");
    askSystem(0, {{"length", 3}, {"pattern", "[A-Z]+"}});
    scan("AB");
    EXPECT_EQ(told("0"), "\"AB\" is refused: it has 2 characters instead of 3");
    scan("ABC");
    ASSERT_TRUE(waitForCalls({"(ABC, SN)"}));
}

TEST_F(ValidateTest, GetsANumberAsANumberAndAChoiceWhole)
{
    QMetaType type;
    gate = std::make_shared<GatedFunction>([&](const Value &value, const QString &) {
        type = value.metaType();
        return Array{true};
    });
    SequencerCall &call = askSystem(0, {{"number", Dictionary{{"unit", "V"}}}});
    scan("3.50 V");
    ASSERT_TRUE(waitForCalls({"(3.5, SN)"}));
    EXPECT_EQ(type, QMetaType::fromType<double>());
    press("0", "OK");
    ASSERT_TRUE(call.waitUntilFinished());
    askSystem(1, {{"choices", Array{"Green", "Red"}}});
    scan("g");
    waitForCalls({"(3.5, SN)", "(Green, SN)"});
}

TEST_F(ValidateTest, OkWaitsForTheChecksAndHoldsNoKeys)
{
    gate->close();
    SequencerCall &call = askGroup({}, {"S1", "S2", "S3"});
    scan("A");
    scan("B");
    scan("C");
    press("G1", "OK");
    EXPECT_FALSE(rooms().keys.isHolding());
    EXPECT_TRUE(isOpen("G1"));
    EXPECT_FALSE(call.finished());
    gate->open();
    EXPECT_EQ(call.result().toMap().value("S3"), Value("C"));
    EXPECT_EQ(call.result().toMap().value("clickedButton"), Value("Pass"));
    EXPECT_FALSE(rooms().keys.isHolding());
}

TEST_F(ValidateTest, OkWaitsForAnEntryThatItEndsItself)
{
    gate->close();
    SequencerCall &call = askSystem(0);
    type("A");
    press("0", "OK");
    EXPECT_FALSE(call.finished());
    EXPECT_EQ(background("0-SN"), SlotColors::checkingColor());
    gate->open();
    EXPECT_EQ(call.result().toMap().value("SN"), Value("A"));
    EXPECT_EQ(gate->calls(), QStringList{"(A, SN)"});
}

TEST_F(ValidateTest, OkIsForgottenWhenOneIsRefused)
{
    expectError("Invalid input: G1-S1 = xA");
    gate->close();
    SequencerCall &call = askGroup();
    scan("xA");
    scan("B");
    press("G1", "OK");
    gate->open();
    waitForChecked("G1");
    scan("C");
    waitForChecked("G1");
    settle();
    EXPECT_TRUE(isOpen("G1")) << "the press was for the entry that was refused";
    EXPECT_FALSE(call.finished());
    press("G1", "OK");
    EXPECT_EQ(call.result().toMap().value("S1"), Value("C"));
}

TEST_F(ValidateTest, AnEntryThatWasBegunAfterOkIsNotTakenForTheAnswer)
{
    gate->close();
    SequencerCall &call = askSystem(0);
    scan("A");
    press("0", "OK");
    type("B");
    gate->open();
    waitForChecked("0");
    settle();
    EXPECT_TRUE(isOpen("0"));
    EXPECT_FALSE(call.finished());
    EXPECT_EQ(operatorLines,
              QStringList{"0: the button was pressed before the entry that is being made. Press it again."});
    type("\n");
    waitForChecked("0");
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("B"));
}

TEST_F(ValidateTest, CancelDoesNotWaitForTheFunction)
{
    gate->close();
    SequencerCall &call = askGroup();
    scan("A");
    ASSERT_TRUE(waitForCalls({"(A, S1)"}));
    click(button("G1", "Cancel"));
    // The function still runs; the panel goes, and the window takes keys again.
    EXPECT_TRUE(waitForPanelGone("G1"));
    EXPECT_TRUE(testsupport::waitUntil([&] { return !rooms().keys.isHolding(); }));
    EXPECT_FALSE(call.finished());
    gate->open();
    EXPECT_EQ(call.result(), Value());
    EXPECT_FALSE(call.error().isPresent());
    EXPECT_FALSE(rooms().keys.isHolding());
}

TEST_F(ValidateTest, CancelAfterOkEndsThePanelToo)
{
    gate->close();
    SequencerCall &call = askGroup();
    scan("A");
    scan("B");
    press("G1", "OK");
    click(button("G1", "Cancel"));
    EXPECT_TRUE(waitForPanelGone("G1"));
    gate->open();
    EXPECT_EQ(call.result(), Value());
    // The press that waited ends no later call.
    SequencerCall &next = askGroup();
    scan("C");
    scan("D");
    waitForChecked("G1");
    settle();
    EXPECT_FALSE(next.finished());
}

TEST_F(ValidateTest, ClearDropsTheChecks)
{
    gate->close();
    SequencerCall &call = askGroup();
    scan("xA");
    scan("B");
    ASSERT_TRUE(waitForCalls({"(xA, S1)"}));
    press("G1", "OK");
    press("G1", "Clear");
    EXPECT_EQ(told("G1"), "");
    EXPECT_EQ(field("G1-S1")->stringValue(), "");
    gate->open();
    scan("C");
    scan("D");
    waitForChecked("G1");
    settle();
    EXPECT_EQ(gate->calls(), (QStringList{"(xA, S1)", "(C, S1)", "(D, S2)"}));
    EXPECT_EQ(field("G1-S1")->stringValue(), "C");
    EXPECT_FALSE(call.finished()) << "the press was for what has been cleared";
    press("G1", "OK");
    EXPECT_EQ(call.result().toMap().value("S1"), Value("C"));
}

TEST_F(ValidateTest, AReplacedEntryIsJudgedByItsOwnVerdict)
{
    gate->close();
    SequencerCall &call = askSystem(0);
    scan("xA");
    ASSERT_TRUE(waitForCalls({"(xA, SN)"}));
    scan("B");
    gate->open();
    waitForChecked("0");
    EXPECT_EQ(background("0-SN"), Color::white());
    EXPECT_EQ(told("0"), "");
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("B"));
}

TEST_F(ValidateTest, ASlotThatIsOpenedAgainForgetsItsCheck)
{
    gate->close();
    SequencerCall &call = askGroup();
    scan("xA");
    scan("B");
    ASSERT_TRUE(waitForCalls({"(xA, S1)"}));
    click(field("G1-S1"));
    ASSERT_EQ(background("G1-S1"), Color::systemYellow());
    gate->open();
    waitForChecked("G1");
    EXPECT_EQ(background("G1-S1"), Color::systemYellow()) << "nothing stands there to be refused";
    scan("C");
    waitForChecked("G1");
    press("G1", "OK");
    EXPECT_EQ(call.result().toMap().value("S1"), Value("C"));
}

TEST_F(ValidateTest, AVerdictForAPanelThatIsGoneTouchesNoLaterOne)
{
    gate->close();
    SequencerCall &call = askGroup();
    scan("xA");
    ASSERT_TRUE(waitForCalls({"(xA, S1)"}));
    click(button("G1", "Cancel"));
    ASSERT_TRUE(waitForPanelGone("G1"));
    SequencerCall &next = showGroup(0, {{"input", Array{"S1"}}, {"hint", "x"}});
    EXPECT_TRUE(waitsForTurn(1)) << "the turn is the first call's as long as its function runs";
    gate->open();
    ASSERT_TRUE(call.waitUntilFinished());
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_EQ(told("G1"), "");
    scan("xA");
    press("G1", "OK");
    EXPECT_EQ(next.result().toMap().value("S1"), Value("xA")) << "a panel without the key checks nothing";
}

TEST_F(ValidateTest, AnErrorInItEndsTheCallAndTakesThePanelAway)
{
    gate = std::make_shared<GatedFunction>(
        [](const Value &, const QString &) -> Array { throw std::runtime_error("no connection"); });
    SequencerCall &call = askSystem(0);
    scan("A");
    EXPECT_EQ(call.thrown<std::runtime_error>(), "no connection");
    EXPECT_FALSE(isOpen("0"));
    EXPECT_EQ(record("0"), Dictionary());
    // The turn is passed on.
    SequencerCall &next = showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("B");
    press("0", "OK");
    EXPECT_EQ(next.result().toMap().value("SN"), Value("B"));
}

TEST_F(ValidateTest, AnErrorAfterAPressHoldsNoKeysForEver)
{
    gate = std::make_shared<GatedFunction>(
        [](const Value &, const QString &) -> Array { throw std::runtime_error("no connection"); });
    gate->close();
    SequencerCall &call = askGroup();
    scan("A");
    ASSERT_TRUE(waitForCalls({"(A, S1)"}));
    click(button("G1", "Cancel"));
    gate->open();
    EXPECT_EQ(call.thrown<std::runtime_error>(), "no connection");
    EXPECT_TRUE(testsupport::waitUntil([&] { return !rooms().keys.isHolding(); }));
}

TEST_F(ValidateTest, AStopWhileItRunsIsNoErrorOfTheFunction)
{
    gate = std::make_shared<GatedFunction>(
        [](const Value &, const QString &) -> Array { throw std::runtime_error("stopped"); });
    gate->close();
    SequencerCall &call = askSystem(0);
    scan("A");
    ASSERT_TRUE(waitForCalls({"(A, SN)"}));
    plugin().interruptWaitingCalls();
    gate->open();
    EXPECT_EQ(call.result(), Value());
    EXPECT_EQ(call.error().code, 401);
}

TEST_F(ValidateTest, AShowCallInsideItIsAnError)
{
    QString why;
    gate = std::make_shared<GatedFunction>([&](const Value &, const QString &) {
        try {
            static_cast<void>(plugin().showView(1, {{"input", Array{"SN"}}}, nullptr));
        } catch (const std::logic_error &problem) {
            why = QString::fromUtf8(problem.what());
        }
        static_cast<void>(plugin().getLoopConfig(nullptr));
        return Array{true};
    });
    SequencerCall &call = askSystem(0);
    scan("A");
    waitForChecked("0");
    EXPECT_EQ(why, "-[InteractiveView showInteractiveView:systemIndex:config:error:]: Must not be called "
                   "inside a function that was handed to a call, which would wait for itself: 1");
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("A")) << "data may be read in it";
}

TEST_F(ValidateTest, ARefusalLeadsNobodyAwayWhoScansElsewhere)
{
    expectError("Invalid input: 0-SN = xA");
    gate->close();
    askSystem(0);
    scan("xA");
    SequencerCall &other = askSystem(1);
    ASSERT_TRUE(field("1-SN")->isFirstResponder());
    gate->open();
    waitForChecked("0");
    EXPECT_TRUE(field("1-SN")->isFirstResponder());
    scan("B");
    waitForChecked("1");
    EXPECT_TRUE(field("0-SN")->isFirstResponder()) << "the entry that is missing is asked for next";
    press("1", "OK");
    EXPECT_EQ(other.result().toMap().value("SN"), Value("B"));
}

TEST_F(ValidateTest, ManyPanelsAtOnceKeepTheirVerdictsApart)
{
    std::vector<SequencerCall *> calls;
    for (int system = 0; system < 8; ++system)
        calls.push_back(&askSystem(system));
    for (int system = 0; system < 8; ++system) {
        const QString key = QString::number(system);
        ASSERT_TRUE(field(key + "-SN")->becomeFirstResponder());
        scan("A" + key);
        press(key, "OK");
    }
    for (int system = 0; system < 8; ++system)
        EXPECT_EQ(calls[static_cast<std::size_t>(system)]->result().toMap().value("SN"),
                  Value(QString("A%1").arg(system)));
}

} // namespace
