#include "platform/ValueTransformer.h"

#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

using platform::Value;
using platform::ValueTransformer;

namespace {

class Adding : public ValueTransformer
{
public:
    explicit Adding(int summand)
        : m_summand(summand)
    {}

    [[nodiscard]] Value transformedValue(const Value &value) const override
    {
        return value.toInt() + m_summand;
    }

private:
    int m_summand;
};

class Negating : public ValueTransformer
{
public:
    [[nodiscard]] Value transformedValue(const Value &value) const override { return -value.toInt(); }
    [[nodiscard]] bool allowsReverseTransformation() const override { return true; }
    [[nodiscard]] Value reverseTransformedValue(const Value &value) const override { return -value.toInt(); }
};

} // namespace

TEST(ValueTransformer, IsFoundByItsName)
{
    ValueTransformer::setValueTransformer(std::make_shared<Adding>(1), QStringLiteral("AddOne"));
    const auto found = ValueTransformer::forName(QStringLiteral("AddOne"));
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->transformedValue(5), Value(6));
}

TEST(ValueTransformer, ANameThatNobodyRegisteredHasNone)
{
    EXPECT_EQ(ValueTransformer::forName(QStringLiteral("Unknown")), nullptr);
}

TEST(ValueTransformer, ALaterOneOfTheSameNameReplacesIt)
{
    ValueTransformer::setValueTransformer(std::make_shared<Adding>(1), QStringLiteral("Replaced"));
    const auto before = ValueTransformer::forName(QStringLiteral("Replaced"));
    ValueTransformer::setValueTransformer(std::make_shared<Adding>(10), QStringLiteral("Replaced"));
    EXPECT_EQ(ValueTransformer::forName(QStringLiteral("Replaced"))->transformedValue(5), Value(15));
    EXPECT_EQ(before->transformedValue(5), Value(6));
}

TEST(ValueTransformer, OneThatAllowsNoReverseRefusesIt)
{
    const Adding adding(1);
    EXPECT_FALSE(adding.allowsReverseTransformation());
    EXPECT_THROW(static_cast<void>(adding.reverseTransformedValue(5)), std::logic_error);
}

TEST(ValueTransformer, OneThatAllowsReverseGivesIt)
{
    const Negating negating;
    EXPECT_TRUE(negating.allowsReverseTransformation());
    EXPECT_EQ(negating.reverseTransformedValue(5), Value(-5));
}

TEST(ValueTransformer, OneThatDoesNotSayWhatItGivesMayGiveAnything)
{
    EXPECT_FALSE(Negating().transformedValueClass().isValid());
}

TEST(ValueTransformer, MayBeRegisteredAndFoundOnManyThreads)
{
    std::atomic<int> found = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([&found, thread] {
            for (int round = 0; round < 100; ++round) {
                const QString name = QString::number(round % 7);
                ValueTransformer::setValueTransformer(std::make_shared<Adding>(thread), name);
                found += ValueTransformer::forName(name) ? 1 : 0;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(found, 800);
}
