#include "layout/CompareViews.h"

#include "platform/View.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <algorithm>

using interactive::compareViews;
using platform::Identifier;
using platform::View;

namespace {

int compared(const QString &first, const QString &second)
{
    View a;
    a.setIdentifier(Identifier(first));
    View b;
    b.setIdentifier(Identifier(second));
    return compareViews(&a, &b, nullptr);
}

TEST(CompareViewsTest, ViewsAreOrderedDescendingWithDigitRunsAsNumbers)
{
    struct Case
    {
        QString first;
        QString second;
        int expected;
    };
    const Case cases[] = {
        {"G1", "G2", 1},
        {"G2", "G1", -1},
        {"G2", "G10", 1},
        {"G10", "G2", -1},
        {"G10", "G1", -1},
        {"G1", "G1", 0},
        {"A2", "B1", 1},
        {"B1", "A2", -1},
        {"9", "10", 1},
        {"G1", "G1-group", 1},
        {"G1-10-OK", "G1-9-OK", -1},
        {"G12345678901234567890", "G9", -1},
    };
    for (const auto &[first, second, expected] : cases)
        EXPECT_EQ(compared(first, second), expected) << first.toStdString() << ", " << second.toStdString();
}

TEST(CompareViewsTest, SortingPutsTheHighestNumberFirst)
{
    QStringList names{"G2", "G10", "G1"};
    std::ranges::sort(names, [](const QString &a, const QString &b) { return compared(a, b) < 0; });
    EXPECT_EQ(names, (QStringList{"G10", "G2", "G1"}));
}

TEST(CompareViewsTest, TheContextIsNotUsed)
{
    View a;
    a.setIdentifier(Identifier("G1"));
    View b;
    b.setIdentifier(Identifier("G2"));
    int context = 7;
    EXPECT_EQ(compareViews(&a, &b, &context), compareViews(&a, &b, nullptr));
    EXPECT_EQ(context, 7);
}

} // namespace
