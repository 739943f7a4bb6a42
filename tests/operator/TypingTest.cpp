#include "platform/MainQueue.h"
#include "tests/operator/OperatorFixture.h"
#include "tests/support/Wait.h"

#include <QTimer>

using platform::Rect;
using platform::TextField;

namespace {

class Typing : public testsupport::OperatorFixture
{
protected:
    TextField *focusedField()
    {
        TextField *made = field(split, {10, 300, 200, 25}, "G1-SharedInput");
        EXPECT_TRUE(made->becomeFirstResponder());
        return made;
    }
};

} // namespace

TEST_F(Typing, PutsTheTextIntoTheFieldThatHasTheFocus)
{
    const TextField *target = focusedField();
    runs("operator.type('SN-0042 ab')");
    EXPECT_EQ(target->stringValue(), "SN-0042 ab");
    EXPECT_TRUE(entered.isEmpty());
}

TEST_F(Typing, LineEndIsReturn)
{
    focusedField();
    runs("operator.type('one\\n')");
    EXPECT_EQ(entered, QStringList("one"));
}

TEST_F(Typing, ScanEndsWithReturn)
{
    focusedField();
    runs("operator.scan('SN1')");
    EXPECT_EQ(entered, QStringList("SN1"));
}

TEST_F(Typing, TakesAnyCharacterOfUnicode)
{
    const TextField *target = focusedField();
    runs("operator.type('Ä€漢\\u{1F600}')");
    EXPECT_EQ(target->stringValue(), QString::fromUtf8("Ä€漢\xf0\x9f\x98\x80"));
}

TEST_F(Typing, NumberIsTypedAsItsDigits)
{
    const TextField *target = focusedField();
    runs("operator.type(42)");
    EXPECT_EQ(target->stringValue(), "42");
}

TEST_F(Typing, ControlLetterSelectsAllSoThatTheNextKeyReplaces)
{
    TextField *target = focusedField();
    target->setStringValue("old");
    runs("operator.type('\\1new')");
    EXPECT_EQ(target->stringValue(), "new");
}

TEST_F(Typing, FollowsTheFocusWithinOneBurst)
{
    TextField *first = field(split, {10, 300, 200, 25}, "first");
    TextField *second = field(split, {10, 260, 200, 25}, "second");
    first->setTarget(&context, "enter:", [second](platform::View *) { second->becomeFirstResponder(); });
    first->becomeFirstResponder();
    runs("operator.type('one\\ntwo')");
    EXPECT_EQ(first->stringValue(), "one");
    EXPECT_EQ(second->stringValue(), "two");
}

TEST_F(Typing, BurstLeavesNoRoomForOtherWorkOfTheMainThread)
{
    TextField *target = focusedField();
    QStringList seen;
    target->setTarget(&context, "enter:", [&](platform::View *) {
        entered.append(target->stringValue());
        // Whatever is queued by the first entry may run only after the last character.
        QTimer::singleShot(0, &context, [&] { seen.append(entered.join(',')); });
        platform::MainQueue::async([&] { seen.append(entered.join(',')); });
        target->setStringValue({});
    });
    runs(R"(operator.type('a\nb\nc\n'))");
    ASSERT_TRUE(testsupport::waitUntil([&] { return seen.size() == 6; }));
    EXPECT_EQ(entered, QStringList({"a", "b", "c"}));
    for (const QString &line : seen)
        EXPECT_EQ(line, "a,b,c");
}

TEST_F(Typing, WithoutAFocusIsLost)
{
    TextField *target = field(split, {10, 300, 200, 25}, "field");
    if (QWidget *focused = window.focusWidget())
        focused->clearFocus();
    runs("operator.type('x')");
    EXPECT_EQ(target->stringValue(), QString());
}

TEST_F(Typing, IntoAWindowThatIsNotShownFails)
{
    window.hide();
    EXPECT_EQ(fails("operator.type('x')"), "operator.lua:1: the station window is not shown");
}

TEST_F(Typing, TextThatIsNoneIsRefusedByName)
{
    EXPECT_EQ(fails("operator.type({})"),
              "operator.lua:1: operator.type: argument 1 (text) must be a text, not table");
    EXPECT_EQ(fails("operator.scan()"),
              "operator.lua:1: operator.scan: argument 1 (text) must be a text, not no value");
}
