#include "platform/Identifier.h"

#include "tests/support/Printing.h"

#include <QSet>

#include <gtest/gtest.h>

using platform::Identifier;

TEST(Identifier, EqualTextsAreEqualButNotTheSameInstance)
{
    const Identifier first(QStringLiteral("G1"));
    const Identifier second(QStringLiteral("G1"));
    EXPECT_EQ(first, second);
    EXPECT_FALSE(first.isSameInstance(second));
}

TEST(Identifier, ACopyIsTheSameInstance)
{
    const Identifier original(QStringLiteral("G1"));
    const Identifier copy = original;
    EXPECT_TRUE(copy.isSameInstance(original));
    EXPECT_TRUE(original.isSameInstance(copy));
    EXPECT_TRUE(original.isSameInstance(original));
}

TEST(Identifier, AnAssignedIdentifierTakesTheInstanceOver)
{
    const Identifier original(QStringLiteral("G1"));
    Identifier other(QStringLiteral("G1"));
    other = original;
    EXPECT_TRUE(other.isSameInstance(original));
}

TEST(Identifier, TextsThatDifferInCaseDiffer)
{
    EXPECT_FALSE(Identifier(QStringLiteral("G1")) == Identifier(QStringLiteral("g1")));
}

TEST(Identifier, NoIdentifierHasAnEmptyTextAndIsNull)
{
    const Identifier none;
    EXPECT_TRUE(none.isNull());
    EXPECT_EQ(none.text(), QString());
}

TEST(Identifier, AnEmptyTextIsAnIdentifier)
{
    EXPECT_FALSE(Identifier(QString()).isNull());
    EXPECT_FALSE(Identifier(QStringLiteral("")).isNull());
}

TEST(Identifier, NoIdentifierEqualsNoneButNotAnEmptyOne)
{
    EXPECT_EQ(Identifier(), Identifier());
    EXPECT_FALSE(Identifier() == Identifier(QString()));
    EXPECT_FALSE(Identifier(QString()) == Identifier());
}

TEST(Identifier, NoIdentifierIsTheSameInstanceAsNothing)
{
    const Identifier none;
    const Identifier copy = none;
    EXPECT_FALSE(none.isSameInstance(none));
    EXPECT_FALSE(none.isSameInstance(copy));
    EXPECT_FALSE(none.isSameInstance(Identifier(QStringLiteral("G1"))));
    EXPECT_FALSE(Identifier(QStringLiteral("G1")).isSameInstance(none));
}

TEST(Identifier, ASetHoldsEachTextOnce)
{
    QSet<Identifier> set;
    set.insert(Identifier(QStringLiteral("G1")));
    set.insert(Identifier(QStringLiteral("G1")));
    set.insert(Identifier(QStringLiteral("G2")));
    EXPECT_EQ(set.size(), 2);
    EXPECT_TRUE(set.contains(Identifier(QStringLiteral("G2"))));
}
