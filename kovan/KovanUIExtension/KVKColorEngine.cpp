#include "kovan/KovanUIExtension/KVKColorEngine.h"

#include "platform/Monitored.h"

namespace {

struct Providers
{
    KVKColorEngine::Provider background;
    KVKColorEngine::Provider text;
};

platform::Monitored<Providers> &providers()
{
    static platform::Monitored<Providers> instance;
    return instance;
}

std::optional<platform::Color> ask(const KVKColorEngine::Provider &provider,
                                   const platform::Value &systemIndex)
{
    return provider ? provider(systemIndex) : std::nullopt;
}

} // namespace

std::optional<platform::Color> KVKColorEngine::backgroundColorForIndex(const platform::Value &systemIndex)
{
    return ask(providers().copy().background, systemIndex);
}

std::optional<platform::Color> KVKColorEngine::textColorForIndex(const platform::Value &systemIndex)
{
    return ask(providers().copy().text, systemIndex);
}

void KVKColorEngine::setProviders(Provider background, Provider text)
{
    *providers().lock() = {std::move(background), std::move(text)};
}
