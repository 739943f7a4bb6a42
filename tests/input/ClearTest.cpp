#include "platform/Button.h"
#include "platform/TextField.h"
#include "presentation/MouseTrackedTextField.h"
#include "tests/input/InputRoom.h"
#include "tests/support/PluginFixture.h"

using interactive::InteractiveView;
using interactive::MouseTrackedTextField;
using platform::Array;
using platform::Color;
using platform::Dictionary;
using platform::Error;
using platform::Identifier;
using platform::TextField;
using platform::Value;

namespace {

const Color raisedWhite = Color::white().withAlphaComponent(0.6);

/// "Clear": the panel begins anew and its call keeps waiting.
class ClearTest : public testsupport::PluginFixture
{
protected:
    testsupport::SequencerCall &askGroup(int length = 1)
    {
        auto &call = showGroup(0, {{"input", Array{"S1", "S2"}}, {"length", length}});
        waitForPanel("G1");
        return call;
    }
};

TEST_F(ClearTest, TheRecordKeepsItsLengthAlone)
{
    auto &call = askGroup();
    scan("A");
    press("G1", "OK");
    ASSERT_EQ(record("G1"), (Dictionary{{"length", 1}, {"S1", "A"}}));
    press("G1", "Clear");
    EXPECT_EQ(record("G1"), (Dictionary{{"length", 1}}));
    EXPECT_FALSE(call.finished());
}

TEST_F(ClearTest, EveryFieldIsEmptiedAndTheFirstOneFocused)
{
    askGroup();
    scan("A");
    scan("B");
    type("C");
    press("G1", "Clear");
    for (const char *name : {"S1", "S2", "S3", "S4", "SharedInput"}) {
        const TextField *member = field(QString("G1-") + name);
        ASSERT_NE(member, nullptr) << name;
        EXPECT_EQ(member->stringValue(), "");
        EXPECT_EQ(member->backgroundColor(), raisedWhite);
    }
    EXPECT_TRUE(field("G1-S1")->isFirstResponder());
}

TEST_F(ClearTest, ARejectedEntryLosesItsRed)
{
    askGroup(3);
    expectError("Invalid input: G1-SharedInput = A");
    scan("A");
    ASSERT_EQ(field("G1-SharedInput")->backgroundColor(), Color::standardRed());
    press("G1", "Clear");
    EXPECT_EQ(field("G1-SharedInput")->backgroundColor(), raisedWhite);
    EXPECT_EQ(field("G1-SharedInput")->stringValue(), "");
}

TEST_F(ClearTest, AScanBegunRightAfterwardsLosesNoCharacter)
{
    auto &call = askGroup(3);
    scan("ABC");
    press("G1", "Clear");
    type("XYZ\nDEF\n");
    EXPECT_EQ(record("G1"), (Dictionary{{"S1", "XYZ"}, {"S2", "DEF"}, {"length", 3}}));
    press("G1", "OK");
    EXPECT_EQ(call.result(), Value(Dictionary{{"S1", "XYZ"}, {"S2", "DEF"}, {"clickedButton", "Pass"}}));
}

TEST_F(ClearTest, OnASystemsPanelTheFieldIsReadyForTheNextEntry)
{
    auto &call = showView(0, {{"input", Array{"SN"}}, {"button", Array{"Clear", "OK"}}, {"length", 1}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("A");
    press("0", "Clear");
    EXPECT_EQ(record("0"), (Dictionary{{"length", 1}}));
    EXPECT_EQ(field("0-SN")->stringValue(), "");
    EXPECT_TRUE(field("0-SN")->isFirstResponder());
    EXPECT_FALSE(call.finished());
    scan("B");
    press("0", "OK");
    EXPECT_EQ(call.result(), Value(Dictionary{{"SN", "B"}, {"clickedButton", "Pass"}}));
}

TEST_F(ClearTest, OtherPanelsAreLeftAlone)
{
    askGroup();
    scan("A");
    showGroup(1, {{"input", Array{"S1"}}, {"length", 1}});
    ASSERT_TRUE(waitForPanel("G2"));
    scan("B");
    press("G1", "Clear");
    EXPECT_EQ(record("G2"), (Dictionary{{"S1", "B"}, {"length", 1}}));
    EXPECT_EQ(field("G2-S1")->stringValue(), "B");
}

TEST_F(ClearTest, ADisabledFieldIsEmptiedButNeitherPaintedNorFocused)
{
    askGroup();
    scan("A");
    TextField *disabled = field("G1-S1");
    disabled->setEnabled(false);
    disabled->setBackgroundColor(Color::systemBlue());
    press("G1", "Clear");
    EXPECT_EQ(disabled->stringValue(), "");
    EXPECT_EQ(disabled->backgroundColor(), Color::systemBlue());
    EXPECT_TRUE(field("G1-S2")->isFirstResponder());
}

/// Fields as no panel has them.
class ClearFieldsTest : public testsupport::InputRoom
{
protected:
    /// clearAllInputs must not run on the main thread.
    void clearAllInputs(const QString &panelKey)
    {
        testsupport::SequencerCall call([this, panelKey](Error *) {
            confirmation.clearAllInputs(Identifier(panelKey));
            return Value();
        });
        ASSERT_TRUE(call.waitUntilFinished());
    }
};

TEST_F(ClearFieldsTest, AFieldThatIsNoInputFieldIsLeftAlone)
{
    TextField plain;
    plain.setStringValue("kept");
    MouseTrackedTextField input;
    input.setStringValue("lost");
    views.setResponders("0", {&plain, &input});
    clearAllInputs("0");
    EXPECT_EQ(plain.stringValue(), "kept");
    EXPECT_EQ(input.stringValue(), "");
}

TEST_F(ClearFieldsTest, AFieldThatIsGoneIsPassedOver)
{
    QPointer<TextField> gone = new MouseTrackedTextField;
    MouseTrackedTextField input;
    input.setStringValue("lost");
    views.setResponders("0", {gone, &input});
    delete gone.data();
    clearAllInputs("0");
    EXPECT_EQ(input.stringValue(), "");
}

TEST_F(ClearFieldsTest, WithoutRegisteredFieldsThereIsNothingToClear)
{
    records.restore({{"9", Dictionary{{"SN", "A"}}}});
    clearAllInputs("9");
    EXPECT_EQ(record("9"), (Dictionary{{"SN", "A"}}));
}

} // namespace
