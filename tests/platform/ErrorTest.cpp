#include "platform/Error.h"

#include "tests/support/Printing.h"

#include <gtest/gtest.h>

using platform::Error;
using platform::storeError;

TEST(Error, IsAbsentUntilItIsStored)
{
    Error error;
    EXPECT_FALSE(error.isPresent());
    storeError(&error, QStringLiteral("Domain"), 0, QString());
    EXPECT_TRUE(error.isPresent());
}

TEST(Error, IsStoredWithAllItSays)
{
    Error error;
    storeError(&error, QStringLiteral("Domain"), 101, QStringLiteral("why"));
    EXPECT_EQ(error, (Error{QStringLiteral("Domain"), 101, QStringLiteral("why")}));
}

TEST(Error, NobodyNeedsToAskForIt)
{
    EXPECT_NO_THROW(storeError(nullptr, QStringLiteral("Domain"), 101, QStringLiteral("why")));
}

TEST(Error, KeepsWhatElseThereIsToSayAndIsAnotherWithoutIt)
{
    platform::Error error;
    storeError(&error, QStringLiteral("Domain"), 406, QStringLiteral("why"), {{QStringLiteral("answer"), 5}});
    EXPECT_EQ(error.additions.value(QStringLiteral("answer")), platform::Value(5));
    platform::Error plain;
    storeError(&plain, QStringLiteral("Domain"), 406, QStringLiteral("why"));
    EXPECT_TRUE(plain.additions.isEmpty());
    EXPECT_FALSE(error == plain);
    storeError(&error, QStringLiteral("Domain"), 406, QStringLiteral("why"));
    EXPECT_EQ(error, plain) << "what an earlier error had to say does not stay";
}
