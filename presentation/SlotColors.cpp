#include "kovan/KovanUIExtension/KVKColorEngine.h"
#include "platform/Box.h"
#include "platform/TextField.h"
#include "plugin/InteractiveView.h"
#include "plugin/Log.h"
#include "plugin/Messages.h"
#include "plugin/Selectors.h"

namespace interactive {

namespace {

/// Below this opacity the background is too faint for a text colour that is meant for a strong one.
constexpr double ReadableBackgroundAlpha = 0.4;
constexpr double BoxCornerRadius = 4.0;

} // namespace

platform::Color InteractiveView::textColor(const platform::Value &systemIndex)
{
    if (systemIndex.isValid() && m_customColorEnabled) {
        const auto color = KVKColorEngine::textColorForIndex(systemIndex);
        if (color && m_backgroundAlpha >= ReadableBackgroundAlpha)
            return *color;
    }
    return platform::Color::black();
}

platform::Color InteractiveView::bgColor(const platform::Value &systemIndex)
{
    if (systemIndex.isValid() && m_customColorEnabled)
        return KVKColorEngine::backgroundColorForIndex(systemIndex).value_or(platform::Color::white());
    return platform::Color::white();
}

void InteractiveView::setTextFieldColor(platform::TextField *field, const platform::Value &systemIndex)
{
    if (!field)
        return;
    if (m_customColorEnabled) {
        field->setBackgroundColor(bgColor(systemIndex));
        field->setTextColor(textColor(systemIndex));
        return;
    }
    field->setBackgroundColor(platform::Color::white().withAlphaComponent(m_backgroundAlpha));
    field->setTextColor(platform::Color::black());
}

platform::Box *InteractiveView::bgView(const platform::Rect &frame, const platform::Value &systemIndex)
{
    log::debug(messages::MessageCalled, {selectors::bracketed(selectors::BgView), systemIndex});
    auto box = std::make_unique<platform::Box>(frame);
    box->setWantsLayer(true);
    box->setMasksToBounds(true);
    box->setCornerRadius(BoxCornerRadius);

    std::optional<platform::Color> color = platform::Color::lightGray();
    if (systemIndex.isValid() && m_customColorEnabled)
        color = KVKColorEngine::backgroundColorForIndex(systemIndex);
    if (color)
        box->setLayerBackgroundColor(color->withAlphaComponent(m_backgroundAlpha));
    if (m_drawShadow)
        box->setShadow(platform::Shadow{platform::Color::systemGray(), 2.0, {0.0, 0.0}});
    return box.release();
}

} // namespace interactive
