#include "station/operator/KeyStrokes.h"

#include <gtest/gtest.h>

using station::KeyStroke;
using station::keyStrokes;

namespace {

KeyStroke only(const QString &text)
{
    const QList<KeyStroke> strokes = keyStrokes(text);
    EXPECT_EQ(strokes.size(), 1);
    return strokes.value(0);
}

} // namespace

TEST(KeyStrokes, LowerCaseLetterIsTheLettersKey)
{
    EXPECT_EQ(only("a"), (KeyStroke{Qt::Key_A, Qt::NoModifier, "a"}));
}

TEST(KeyStrokes, UpperCaseLetterIsPressedWithShift)
{
    EXPECT_EQ(only("A"), (KeyStroke{Qt::Key_A, Qt::ShiftModifier, "A"}));
}

TEST(KeyStrokes, DigitAndPunctuationHaveTheirOwnKeys)
{
    EXPECT_EQ(only("7"), (KeyStroke{Qt::Key_7, Qt::NoModifier, "7"}));
    EXPECT_EQ(only("-"), (KeyStroke{Qt::Key_Minus, Qt::NoModifier, "-"}));
    EXPECT_EQ(only(" "), (KeyStroke{Qt::Key_Space, Qt::NoModifier, " "}));
}

TEST(KeyStrokes, EveryLineEndIsOneReturn)
{
    const KeyStroke enter{Qt::Key_Return, Qt::NoModifier, "\r"};
    EXPECT_EQ(only("\n"), enter);
    EXPECT_EQ(only("\r"), enter);
    EXPECT_EQ(only("\r\n"), enter);
}

TEST(KeyStrokes, NamedControlCharactersAreTheirKeys)
{
    EXPECT_EQ(only("\t").key, Qt::Key_Tab);
    EXPECT_EQ(only("\b").key, Qt::Key_Backspace);
    EXPECT_EQ(only("\x1b").key, Qt::Key_Escape);
    EXPECT_EQ(only("\x7f").key, Qt::Key_Delete);
}

TEST(KeyStrokes, OtherControlCharactersAreLettersWithControl)
{
    EXPECT_EQ(only("\x01"), (KeyStroke{Qt::Key_A, Qt::ControlModifier, "\x01"}));
    EXPECT_EQ(only("\x1a"), (KeyStroke{Qt::Key_Z, Qt::ControlModifier, "\x1a"}));
}

TEST(KeyStrokes, LetterWithAnAccentKeepsItsText)
{
    EXPECT_EQ(only(QStringLiteral("Ä")),
              (KeyStroke{Qt::Key_Adiaeresis, Qt::ShiftModifier, QStringLiteral("Ä")}));
    EXPECT_EQ(only(QStringLiteral("ä")),
              (KeyStroke{Qt::Key_Adiaeresis, Qt::NoModifier, QStringLiteral("ä")}));
}

TEST(KeyStrokes, CharacterBeyondTheBasicPlaneIsOneKey)
{
    const QString smile = QString::fromUtf8("\xf0\x9f\x98\x80");
    EXPECT_EQ(only(smile).text, smile);
}

TEST(KeyStrokes, TextBecomesItsKeysInOrder)
{
    const QList<KeyStroke> strokes = keyStrokes("aB\n");
    ASSERT_EQ(strokes.size(), 3);
    EXPECT_EQ(strokes[0].text, "a");
    EXPECT_EQ(strokes[1].text, "B");
    EXPECT_EQ(strokes[2].key, Qt::Key_Return);
}
