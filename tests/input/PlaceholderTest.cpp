#include "platform/TextField.h"
#include "tests/support/FieldKeys.h"

#include <QLineEdit>

#include <cmath>

using platform::Array;
using platform::Color;
using platform::Dictionary;
using platform::Value;
using testsupport::SequencerCall;

namespace {

double luminance(const QColor &color)
{
    const auto part = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
}

double contrast(const QColor &a, const QColor &b)
{
    const double first = luminance(a) + 0.05;
    const double second = luminance(b) + 0.05;
    return first > second ? first / second : second / first;
}

class PlaceholderTest : public testsupport::FieldKeysFixture
{
protected:
    QLineEdit *editor(const QString &identifier)
    {
        return qobject_cast<QLineEdit *>(field(identifier)->focusTarget());
    }
};

TEST_F(PlaceholderTest, ItStandsInTheFieldThatTakesEntriesAndIsNoText)
{
    showView(4, {{"input", Array{"SN"}}, {"placeholder", "Scan the label"}});
    showGroup(0, {{"input", Array{"S1"}}, {"placeholder", "Scan the board"}});
    ASSERT_TRUE(waitForPanel("4"));
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_EQ(editor("4-SN")->placeholderText(), "Scan the label");
    EXPECT_EQ(editor("G1-SharedInput")->placeholderText(), "Scan the board");
    EXPECT_EQ(text("4-SN"), "");
    EXPECT_EQ(field("G1-S1")->placeholder(), "");
}

TEST_F(PlaceholderTest, OkDoesNotTakeItForAnEntry)
{
    expectError("Invalid input: 0-SN = ");
    SequencerCall &call = showView(0, {{"input", Array{"SN"}}, {"length", 4}, {"placeholder", "ABCD"}});
    ASSERT_TRUE(waitForPanel("0"));
    press("0", "OK");
    EXPECT_FALSE(call.finished());
    EXPECT_FALSE(record("0").contains("SN"));
    scan("1234");
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("1234"));
}

TEST_F(PlaceholderTest, AnEmptyEntryIsNotThePlaceholder)
{
    SequencerCall &call = showView(0, {{"input", Array{"SN"}}, {"placeholder", "ABCD"}});
    ASSERT_TRUE(waitForPanel("0"));
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value(""));
}

TEST_F(PlaceholderTest, ItCanBeReadOnWhiteAndOnRed)
{
    showView(0, {{"input", Array{"SN"}}, {"placeholder", "ABCD"}});
    ASSERT_TRUE(waitForPanel("0"));
    for (const Color &ground : {Color::white(), Color::standardRed(), Color::systemYellow()}) {
        field("0-SN")->setBackgroundColor(ground);
        EXPECT_GE(contrast(editor("0-SN")->palette().color(QPalette::PlaceholderText), ground.toQColor()),
                  4.5);
    }
    field("0-SN")->setBackgroundColor(Color::white());
    // And told from what was entered.
    EXPECT_NE(editor("0-SN")->palette().color(QPalette::PlaceholderText),
              editor("0-SN")->palette().color(QPalette::Text));
}

} // namespace
