#include "platform/Button.h"
#include "tests/input/InputRoom.h"
#include "tests/support/PluginFixture.h"

using interactive::MouseTrackedTextField;
using platform::Array;
using platform::Dictionary;
using platform::Identifier;

namespace {

const QString method = QStringLiteral("-[InteractiveView modifyInput:]");

/// Forgetting the entry of a field's slot on request.
class ModifyInputTest : public testsupport::InputRoom
{
protected:
    bool modify(const QString &identifier)
    {
        MouseTrackedTextField sender;
        sender.setIdentifier(Identifier(identifier));
        return focus.modifyInput(&sender, records);
    }
};

TEST_F(ModifyInputTest, ForgetsTheSlotsEntryAndKeepsTheLength)
{
    records.restore({{"G1", Dictionary{{"S1", "A"}, {"S2", "B"}, {"length", 1}}}});
    EXPECT_FALSE(modify("G1-S1"));
    EXPECT_EQ(record("G1"), (Dictionary{{"S2", "B"}, {"length", 1}}));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default, method + ": G1-S1, G1, S1"));
}

TEST_F(ModifyInputTest, ForgetsAnEntryUnderThePanelsOwnNameToo)
{
    records.restore({{"G1", Dictionary{{"G1", "X"}, {"S2", "B"}, {"length", 1}}}});
    EXPECT_FALSE(modify("G1-S1"));
    EXPECT_EQ(record("G1"), (Dictionary{{"S2", "B"}, {"length", 1}}));
}

TEST_F(ModifyInputTest, AnotherSenderIsIgnoredWithoutAWord)
{
    records.restore({{"G1", Dictionary{{"S1", "A"}}}});
    log.clear();
    platform::Button button;
    button.setIdentifier(Identifier("G1-S1"));
    EXPECT_FALSE(focus.modifyInput(&button, records));
    EXPECT_FALSE(focus.modifyInput(nullptr, records));
    EXPECT_TRUE(log.systemLines().empty());
    EXPECT_TRUE(log.proxyLines().empty());
    EXPECT_EQ(record("G1"), (Dictionary{{"S1", "A"}}));
}

/// A drawn panel with the focus elsewhere, and a record and an order of fields of the test's own.
class ModifyOnAPanelTest : public testsupport::PluginFixture
{
protected:
    void ask()
    {
        const QString group = station.groups.first();
        showGroup(0, {{"input", Array{"S1", "S2"}}});
        ASSERT_TRUE(waitForPanel(group));
        for (const char *name : {"S1", "S2", "SharedInput"})
            fields.append(field(group + "-" + name));
        views.setResponders(group, fields);
        records.restore({{group, Dictionary{{"S1", "A"}}}});
        click(loopField());
    }
    bool modify(const QString &identifier) { return focus.modifyInput(field(identifier), records); }

    interactive::StationMap map;
    interactive::PanelRecords records;
    interactive::SlotStates slotStates;
    interactive::PanelSettings settings;
    interactive::PanelViews views{map};
    interactive::Focus focus{map, records, slotStates, views, settings};
    interactive::Responders fields;
};

TEST_F(ModifyOnAPanelTest, TheFocusStaysWhereItWas)
{
    ask();
    EXPECT_FALSE(modify("G1-S1"));
    EXPECT_TRUE(loopField()->isFirstResponder());
    EXPECT_EQ(records.record("G1"), Dictionary());
}

/// A station where a slot bears the name of its group.
class ModifyNamesakeTest : public ModifyOnAPanelTest
{
protected:
    ModifyNamesakeTest() { station.groups = {"S1", "G2"}; }
};

TEST_F(ModifyNamesakeTest, TheFieldThatBearsThePanelsNameBringsTheFocusToTheSharedField)
{
    ask();
    EXPECT_TRUE(modify("S1-S2"));
    EXPECT_TRUE(field("S1-SharedInput")->isFirstResponder());
}

TEST_F(ModifyNamesakeTest, ADisabledNamesakeDoesNot)
{
    ask();
    field("S1-S1")->setEnabled(false);
    EXPECT_FALSE(modify("S1-S2"));
    EXPECT_FALSE(field("S1-SharedInput")->isFirstResponder());
}

TEST_F(ModifyNamesakeTest, WithoutRegisteredFieldsTheEntryIsForgottenAllTheSame)
{
    ask();
    views.setResponders("S1", {});
    EXPECT_FALSE(modify("S1-S1"));
    EXPECT_EQ(records.record("S1"), Dictionary());
}

} // namespace
