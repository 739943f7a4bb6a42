#include "platform/TextField.h"
#include "presentation/MouseTrackedTextField.h"
#include "tests/support/PluginFixture.h"

#include <memory>
#include <vector>

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

/// Whether a panel may be closed.
class CheckAllInputsTest : public testsupport::PluginFixture
{
protected:
    bool mayClose(const QString &panelKey)
    {
        interactive::Rooms &target = rooms();
        return onSequencer([&target, panelKey](Error *) {
                   return Value(target.confirmation.checkAllInputs(target.waits.panelKey(panelKey)));
               })
            .result()
            .toBool();
    }

    /// Registers input fields with these names and texts for a panel, in the window.
    void addFields(const QString &panelKey, const std::vector<std::pair<QString, QString>> &fields)
    {
        interactive::Responders all;
        double x = 400.0;
        for (const auto &[name, text] : fields) {
            auto *made = new MouseTrackedTextField(platform::Rect(x, 300.0, 80.0, 25.0));
            made->setEditable(true);
            made->setIdentifier(Identifier(panelKey + "-" + name));
            made->setStringValue(text);
            made->setBackgroundColor(Color::systemBlue());
            rooms().views.rootView()->addSubview(made);
            all.append(made);
            x += 100.0;
        }
        rooms().views.setResponders(panelKey, all);
    }
};

TEST_F(CheckAllInputsTest, APanelWithoutRegisteredFieldsMayClose)
{
    EXPECT_TRUE(mayClose("0"));
    EXPECT_TRUE(mayClose("G1"));
}

TEST_F(CheckAllInputsTest, TheFirstInvalidFieldStopsTheCheck)
{
    rooms().records.restore({{"0", Dictionary{{"length", 3}}}});
    addFields("0", {{"A", "AAA"}, {"B", "BB"}, {"C", "CCC"}});
    expectError("Invalid input: 0-B = BB");
    EXPECT_FALSE(mayClose("0"));
    EXPECT_EQ(field("0-A")->backgroundColor(), Color::white());
    EXPECT_EQ(field("0-B")->backgroundColor(), Color::standardRed());
    EXPECT_EQ(field("0-B")->selectedText(), "BB");
    EXPECT_EQ(field("0-C")->backgroundColor(), Color::systemBlue());
    EXPECT_EQ(record("0"), (Dictionary{{"A", "AAA"}, {"length", 3}}));
}

TEST_F(CheckAllInputsTest, APanelWhoseFieldsAreAllValidMayClose)
{
    rooms().records.restore({{"0", Dictionary{{"length", 3}}}});
    addFields("0", {{"A", "AAA"}, {"B", "BBB"}});
    EXPECT_TRUE(mayClose("0"));
    EXPECT_EQ(record("0"), (Dictionary{{"A", "AAA"}, {"B", "BBB"}, {"length", 3}}));
}

TEST_F(CheckAllInputsTest, AFieldThatIsGoneDoesNotHoldThePanelUp)
{
    rooms().records.restore({{"0", Dictionary{{"length", 3}}}});
    addFields("0", {{"A", "AAA"}});
    delete field("0-A");
    expectError("Invalid call for ");
    mayClose("0");
    EXPECT_EQ(record("0"), (Dictionary{{"length", 3}}));
}

TEST_F(CheckAllInputsTest, AGroupWithoutAnyEntryMayNotClose)
{
    addFields("G1", {{"S1", ""}, {"SharedInput", ""}});
    EXPECT_FALSE(mayClose("G1"));
    rooms().records.restore({{"G1", Dictionary{{"length", 3}, {"clickedButton", "Pass"}}}});
    EXPECT_FALSE(mayClose("G1"));
}

TEST_F(CheckAllInputsTest, AGroupsFieldsAreNotCheckedAgain)
{
    rooms().slotStates.restore({{"G1", Dictionary{{"S1", 1}}}});
    rooms().records.restore({{"G1", Dictionary{{"S1", "AAA"}, {"length", 3}}}});
    addFields("G1", {{"S1", "AAA"}, {"SharedInput", "XX"}});
    EXPECT_TRUE(mayClose("G1"));
    EXPECT_EQ(field("G1-SharedInput")->backgroundColor(), Color::systemBlue());
}

TEST_F(CheckAllInputsTest, AGroupWithAnEnabledSlotStillEmptyMayNotCloseAndTheSharedFieldGetsTheFocus)
{
    rooms().slotStates.restore({{"G1", Dictionary{{"S1", 1}, {"S2", 1}, {"S3", -1}}}});
    rooms().records.restore({{"G1", Dictionary{{"S1", "A"}}}});
    addFields("G1", {{"S1", "A"}, {"SharedInput", "X"}});
    EXPECT_FALSE(mayClose("G1"));
    EXPECT_TRUE(field("G1-SharedInput")->isFirstResponder());
    EXPECT_EQ(field("G1-SharedInput")->selectedText(), "X");
}

TEST_F(CheckAllInputsTest, ASlotThatTakesNoInputDoesNotHoldTheGroupUp)
{
    rooms().slotStates.restore({{"G1", Dictionary{{"S1", 1}, {"S2", -1}}}});
    rooms().records.restore({{"G1", Dictionary{{"S1", "A"}}}});
    addFields("G1", {{"S1", "A"}, {"SharedInput", ""}});
    EXPECT_TRUE(mayClose("G1"));
}

TEST_F(CheckAllInputsTest, AGroupWhoseLastFieldIsNoInputFieldMayClose)
{
    auto *plain = new TextField(platform::Rect(400.0, 300.0, 80.0, 25.0));
    plain->setIdentifier(Identifier("G1-S1"));
    rooms().views.rootView()->addSubview(plain);
    rooms().views.setResponders("G1", {plain});
    EXPECT_TRUE(mayClose("G1"));
}

TEST_F(CheckAllInputsTest, AGroupWhoseListOfFieldsIsEmptyMayClose)
{
    rooms().views.setResponders("G1", {});
    EXPECT_TRUE(mayClose("G1"));
}

TEST_F(CheckAllInputsTest, ASystemsPanelWithASlotThatStillWaitsMayNotClose)
{
    rooms().slotStates.restore({{"0", Dictionary{{"S1", 1}, {"S2", 1}}}});
    rooms().records.restore({{"0", Dictionary{{"S1", "A"}}}});
    rooms().views.setResponders("0", {});
    EXPECT_FALSE(mayClose("0"));
}

TEST_F(CheckAllInputsTest, WithoutARecordNoSlotIsWaitedFor)
{
    rooms().slotStates.restore({{"0", Dictionary{{"S1", 1}}}});
    rooms().views.setResponders("0", {});
    EXPECT_TRUE(mayClose("0"));
}

} // namespace
