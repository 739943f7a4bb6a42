#include "presentation/SystemIndexTransformers.h"

#include "kovan/KovanUIExtension/KVKColorEngine.h"

#include <mutex>

namespace interactive {

namespace {

/// Fixed, whatever the panels' setting is: the transformer belongs to the process, and no panel asks it. The
/// text colour stays opaque, since text that its background shines through cannot be read.
constexpr double BackgroundOpacity = 0.3;

} // namespace

QMetaType SystemIndexToBackgroundColorValueTransformer::transformedValueClass() const
{
    return QMetaType::fromType<platform::Color>();
}

platform::Value
SystemIndexToBackgroundColorValueTransformer::transformedValue(const platform::Value &systemIndex) const
{
    if (!systemIndex.isValid())
        return {};
    const auto color = KVKColorEngine::backgroundColorForIndex(systemIndex);
    return color ? QVariant::fromValue(color->withAlphaComponent(BackgroundOpacity)) : platform::Value();
}

QMetaType SystemIndexToTextColorValueTransformer::transformedValueClass() const
{
    return QMetaType::fromType<platform::Color>();
}

platform::Value
SystemIndexToTextColorValueTransformer::transformedValue(const platform::Value &systemIndex) const
{
    if (!systemIndex.isValid())
        return {};
    const auto color = KVKColorEngine::textColorForIndex(systemIndex);
    return color ? QVariant::fromValue(*color) : platform::Value();
}

void registerSystemIndexTransformers()
{
    // Every controller registers them, and the registry is the process's.
    static std::once_flag once;
    std::call_once(once, [] {
        using platform::ValueTransformer;
        ValueTransformer::setValueTransformer(
            std::make_shared<SystemIndexToBackgroundColorValueTransformer>(),
            SystemIndexToBackgroundColorValueTransformer::Name);
        ValueTransformer::setValueTransformer(std::make_shared<SystemIndexToTextColorValueTransformer>(),
                                              SystemIndexToTextColorValueTransformer::Name);
    });
}

} // namespace interactive
