#include "station/AnswerText.h"

#include "tests/support/Printing.h"

#include <gtest/gtest.h>

using platform::Dictionary;
using platform::Value;
using station::answerText;

namespace {

QString textOf(const Value &result, const QString &slotName = QStringLiteral("S1"))
{
    return answerText({QStringLiteral("showView"), {}, result, std::nullopt}, slotName);
}

TEST(AnswerText, AnEntryAndItsButton)
{
    EXPECT_EQ(textOf(Dictionary{{"SN", "SN260001"}, {"clickedButton", "OK"}}),
              QStringLiteral("SN260001 · OK"));
    EXPECT_EQ(textOf(Dictionary{{"A", "1"}, {"B", 2}, {"C", ""}}), QStringLiteral("1 · 2"));
}

TEST(AnswerText, OfAGroupsAnswerWhatTheSlotHasGiven)
{
    const Dictionary answer{{"S1", "a"}, {"S2", "b"}, {"S3", true}, {"S4", false}, {"clickedButton", "OK"}};
    EXPECT_EQ(textOf(answer, "S2"), QStringLiteral("b · OK"));
    EXPECT_EQ(textOf(answer, "S3"), QStringLiteral("on · OK"));
    EXPECT_EQ(textOf(answer, "S4"), QStringLiteral("off · OK"));
}

TEST(AnswerText, AChoiceAMissingAnswerAndAnError)
{
    EXPECT_EQ(textOf(true), "Yes");
    EXPECT_EQ(textOf(false), "No");
    EXPECT_EQ(textOf({}), "No answer");
    platform::Error error;
    error.domain = "here";
    error.code = 401;
    error.localizedDescription = "The station stopped";
    EXPECT_EQ(answerText({QStringLiteral("showView"), {}, {}, error}, {}), "Error 401: The station stopped");
}

TEST(AnswerText, OnlyWhatIsShownToTheOperatorIsAnswered)
{
    EXPECT_TRUE(station::isShown({QStringLiteral("showGroupView"), {}, {}, std::nullopt}));
    EXPECT_FALSE(station::isShown({QStringLiteral("setLoop"), {}, {}, std::nullopt}));
}

} // namespace
