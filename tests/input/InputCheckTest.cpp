#include "input/EntryRules.h"
#include "platform/Button.h"
#include "platform/TextField.h"
#include "presentation/MouseTrackedTextField.h"
#include "tests/input/InputRoom.h"
#include "tests/support/PluginFixture.h"

using platform::Array;
using platform::Color;
using platform::Dictionary;
using platform::Identifier;
using platform::TextField;
using platform::Value;

namespace {

const QString method = QStringLiteral("-[InteractiveView checkInput:]");

/// Entries into the field of a single system's panel.
class InputCheckTest : public testsupport::PluginFixture
{
protected:
    /// Opens the panel of system 0 with its field.
    void ask(const Dictionary &settings)
    {
        Dictionary config = settings;
        config.insert("input", Array{"SN"});
        showView(0, config);
        ASSERT_TRUE(waitForPanel("0"));
    }

    void expectRejected(TextField *target, const QString &text)
    {
        EXPECT_EQ(target->backgroundColor(), Color::standardRed());
        EXPECT_EQ(target->stringValue(), text);
        EXPECT_EQ(target->selectedText(), text);
    }
};

TEST_F(InputCheckTest, AnEntryIsStoredUnderItsFieldsNameAndTheFieldTurnsWhite)
{
    ask({{"length", 3}});
    scan("ABC");
    EXPECT_EQ(record("0"), (Dictionary{{"SN", "ABC"}, {"length", 3}}));
    EXPECT_EQ(field("0-SN")->backgroundColor(), Color::white());
    EXPECT_EQ(field("0-SN")->stringValue(), "ABC");
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default, method + ": viewIdentifier: 0, TextField: 0-SN, SN = ABC."));
}

TEST_F(InputCheckTest, AnEntryThatIsTooShortIsRejectedAndSelected)
{
    ask({{"length", 10}});
    expectError("Invalid input: 0-SN = ");
    scan("123456789");
    expectRejected(field("0-SN"), "123456789");
    EXPECT_EQ(record("0"), (Dictionary{{"length", 10}}));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error, method + ": Invalid input: 0-SN = 123456789"));
}

TEST_F(InputCheckTest, AnEntryThatIsTooLongIsRejected)
{
    ask({{"length", 10}});
    expectError("Invalid input: 0-SN = ");
    scan("12345678901");
    expectRejected(field("0-SN"), "12345678901");
}

TEST_F(InputCheckTest, AnEntryOfTheExactLengthIsAccepted)
{
    ask({{"length", 10}});
    scan("1234567890");
    EXPECT_EQ(record("0").value("SN"), Value("1234567890"));
}

TEST_F(InputCheckTest, TheNextEntryReplacesARejectedOneAndTheFieldTurnsWhiteAgain)
{
    ask({{"length", 3}});
    expectError("Invalid input: 0-SN = ");
    scan("AB");
    scan("XYZ");
    EXPECT_EQ(record("0").value("SN"), Value("XYZ"));
    EXPECT_EQ(field("0-SN")->backgroundColor(), Color::white());
}

TEST_F(InputCheckTest, WithoutALengthTheEmptyEntryIsAccepted)
{
    ask({{"length", 0}});
    scan("");
    EXPECT_EQ(record("0"), (Dictionary{{"SN", ""}, {"length", 0}}));
    EXPECT_EQ(field("0-SN")->backgroundColor(), Color::white());
}

TEST_F(InputCheckTest, ANegativeLengthMeansAnyLength)
{
    ask({{"length", -5}});
    scan("ABCDEFG");
    EXPECT_EQ(record("0").value("SN"), Value("ABCDEFG"));
}

TEST_F(InputCheckTest, WithALengthTheEmptyEntryIsRejected)
{
    ask({{"length", 3}});
    expectError("Invalid input: 0-SN = ");
    scan("");
    EXPECT_EQ(field("0-SN")->backgroundColor(), Color::standardRed());
    EXPECT_FALSE(record("0").contains("SN"));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error, method + ": Invalid input: 0-SN = "));
}

TEST_F(InputCheckTest, TheTextIsTakenAsItStands)
{
    ask({{"length", 5}});
    scan(" a-B ");
    EXPECT_EQ(record("0").value("SN"), Value(" a-B "));
}

TEST_F(InputCheckTest, TheLengthCountsUtf16CodeUnits)
{
    ask({{"length", 3}});
    const QString outsideThePlane = QString::fromUtf8("a\xF0\x9F\x98\x80");
    ASSERT_EQ(outsideThePlane.size(), 3);
    field("0-SN")->setStringValue(outsideThePlane);
    scan("");
    EXPECT_EQ(record("0").value("SN"), Value(outsideThePlane));
}

TEST_F(InputCheckTest, ALengthThatIsTextCounts)
{
    EXPECT_FALSE(interactive::entries::hasRequiredLength("AB", {{"length", "3"}}));
    EXPECT_TRUE(interactive::entries::hasRequiredLength("ABC", {{"length", "3"}}));
    ask({{"length", "3"}});
    expectError("Invalid input: 0-SN = AB");
    scan("AB");
    EXPECT_FALSE(record("0").contains("SN"));
    scan("ABC");
    EXPECT_EQ(record("0").value("SN"), Value("ABC"));
}

TEST_F(InputCheckTest, ASingleSystemsEntryMayRepeatWhatIsStored)
{
    ask({});
    scan("A");
    scan("A");
    EXPECT_EQ(record("0").value("SN"), Value("A"));
    EXPECT_EQ(field("0-SN")->backgroundColor(), Color::white());
}

TEST_F(InputCheckTest, AnEntryThatComesAfterTheAnswerIsRefused)
{
    ask({{"length", 3}});
    scan("ABC");
    const Dictionary answer = record("0");
    // The call has its answer, and takes the panel away as soon as this thread lets it.
    rooms().waits.getCondition(Identifier("0"))->signal();
    field("0-SN")->setStringValue("XYZ");
    expectError("Entry refused: XYZ");
    EXPECT_TRUE(rooms().entries.checkInput(field("0-SN")));
    EXPECT_EQ(record("0"), answer);
    EXPECT_EQ(timesLogged(KVKLogLevel::Default, method + ": viewIdentifier: 0, TextField: 0-SN, SN = XYZ."),
              0);
}

TEST_F(InputCheckTest, WithoutARecordOneIsMade)
{
    ask({{"length", 3}});
    rooms().records.restore({});
    scan("AB");
    EXPECT_EQ(record("0"), (Dictionary{{"SN", "AB"}}));
}

TEST_F(InputCheckTest, WithoutRegisteredFieldsNothingIsStored)
{
    ask({});
    rooms().views.setResponders("0", {});
    expectError("Entry refused: AB");
    scan("AB");
    EXPECT_EQ(record("0"), (Dictionary{{"length", 0}}));
    EXPECT_EQ(field("0-SN")->backgroundColor(), Color::white());
}

/// Who may send an entry.
class EntrySenderTest : public testsupport::InputRoom
{};

TEST_F(EntrySenderTest, AButtonIsNoInputField)
{
    testsupport::expectError("Invalid call for ");
    platform::Button button;
    button.setIdentifier(Identifier("Pass"));
    EXPECT_FALSE(entries.checkInput(&button));
    EXPECT_TRUE(
        loggedOnce(KVKLogLevel::Error, "Invalid call for " + method + " from sender: <Button: Pass>"));
    EXPECT_EQ(records.all(), Dictionary());
}

TEST_F(EntrySenderTest, APlainTextFieldIsNoInputField)
{
    testsupport::expectError("Invalid call for ");
    TextField plain;
    plain.setIdentifier(Identifier("G1-S1"));
    EXPECT_FALSE(entries.checkInput(&plain));
    EXPECT_TRUE(
        loggedOnce(KVKLogLevel::Error, "Invalid call for " + method + " from sender: <TextField: G1-S1>"));
    EXPECT_EQ(records.all(), Dictionary());
}

TEST_F(EntrySenderTest, NothingIsNoInputField)
{
    testsupport::expectError("Invalid call for ");
    EXPECT_FALSE(entries.checkInput(nullptr));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error, "Invalid call for " + method + " from sender: (null)"));
}

} // namespace
