#pragma once

#include "platform/Color.h"
#include "platform/Value.h"

#include <functional>
#include <optional>

/// The colours that the host shows each system in.
///
/// Thread: any.
class KVKColorEngine
{
public:
    using Provider = std::function<std::optional<platform::Color>(const platform::Value &systemIndex)>;

    KVKColorEngine() = delete;

    /// The colour of the system (a number), or nothing when the host has none for it.
    [[nodiscard]] static std::optional<platform::Color>
    backgroundColorForIndex(const platform::Value &systemIndex);
    [[nodiscard]] static std::optional<platform::Color> textColorForIndex(const platform::Value &systemIndex);

    /// Host: sets where the colours come from; an empty provider has none. Providers are called on the thread
    /// that asks.
    static void setProviders(Provider background, Provider text);
};
