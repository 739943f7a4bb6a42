#include "kovan/KovanUIExtension/KVKColorEngine.h"
#include "presentation/SystemIndexTransformers.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <stdexcept>

using platform::Color;
using platform::Value;
using platform::ValueTransformer;

namespace {

constexpr Color brick{0.7, 0.2, 0.1, 1.0};
constexpr Color mist{0.8, 0.9, 1.0, 0.45};

/// The transformers as a view finds them: by name. The host has colours for system 3 alone.
class TransformersTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        KVKColorEngine::setProviders(colours(brick), colours(mist));
        interactive::registerSystemIndexTransformers();
        background = ValueTransformer::forName("SystemIndexToBackgroundColorValueTransformer");
        text = ValueTransformer::forName("SystemIndexToTextColorValueTransformer");
        ASSERT_NE(background, nullptr);
        ASSERT_NE(text, nullptr);
    }
    void TearDown() override { KVKColorEngine::setProviders({}, {}); }

    KVKColorEngine::Provider colours(const Color &color)
    {
        return [this, color](const Value &index) -> std::optional<Color> {
            asked.append(index);
            return index == Value(3) ? std::optional(color) : std::nullopt;
        };
    }

    std::shared_ptr<const ValueTransformer> background;
    std::shared_ptr<const ValueTransformer> text;
    platform::Array asked;
};

TEST_F(TransformersTest, ABackgroundIsTheHostsColourAtThirtyPerCent)
{
    EXPECT_EQ(background->transformedValue(3).value<Color>(), (Color{0.7, 0.2, 0.1, 0.3}));
}

TEST_F(TransformersTest, TheHostsOwnOpacityOfABackgroundIsReplaced)
{
    KVKColorEngine::setProviders(colours(mist), {});
    EXPECT_EQ(background->transformedValue(3).value<Color>(), (Color{0.8, 0.9, 1.0, 0.3}));
}

TEST_F(TransformersTest, ATextHasTheHostsColourUnchanged)
{
    EXPECT_EQ(text->transformedValue(3).value<Color>(), mist);
}

TEST_F(TransformersTest, NoIndexGivesNothingAndIsNotAskedFor)
{
    EXPECT_FALSE(background->transformedValue(Value()).isValid());
    EXPECT_FALSE(text->transformedValue(Value()).isValid());
    EXPECT_TRUE(asked.isEmpty());
}

TEST_F(TransformersTest, ASystemThatTheHostHasNoColourForGivesNothing)
{
    EXPECT_FALSE(background->transformedValue(4).isValid());
    EXPECT_FALSE(text->transformedValue(4).isValid());
}

TEST_F(TransformersTest, TheHostIsAskedWithTheIndexAsGiven)
{
    (void)background->transformedValue(7.5);
    (void)text->transformedValue(qint64{8});
    ASSERT_EQ(asked.size(), 2);
    EXPECT_EQ(asked[0].typeId(), QMetaType::Double);
    EXPECT_EQ(asked[0].toDouble(), 7.5);
    EXPECT_EQ(asked[1].typeId(), QMetaType::LongLong);
}

TEST_F(TransformersTest, NeitherCanBeReversed)
{
    for (const auto &transformer : {background, text}) {
        EXPECT_FALSE(transformer->allowsReverseTransformation());
        EXPECT_THROW((void)transformer->reverseTransformedValue(QVariant::fromValue(brick)),
                     std::logic_error);
    }
}

TEST_F(TransformersTest, OneSharedInstanceStaysRegistered)
{
    interactive::registerSystemIndexTransformers();
    EXPECT_EQ(ValueTransformer::forName("SystemIndexToBackgroundColorValueTransformer"), background);
    EXPECT_EQ(ValueTransformer::forName("SystemIndexToTextColorValueTransformer"), text);
}

TEST_F(TransformersTest, BothGiveColours)
{
    for (const auto &transformer : {background, text})
        EXPECT_EQ(transformer->transformedValueClass(), QMetaType::fromType<Color>());
    EXPECT_EQ(background->transformedValue(3).metaType(), QMetaType::fromType<Color>());
    EXPECT_EQ(text->transformedValue(3).metaType(), QMetaType::fromType<Color>());
}

} // namespace
