#include "presentation/SlotColors.h"

#include "kovan/KovanUIExtension/KVKColorEngine.h"
#include "platform/Box.h"
#include "platform/TextField.h"

#include "common/Log.h"
#include "common/Messages.h"
#include "common/Selectors.h"

namespace interactive {

using platform::Color;
using platform::Value;

namespace {

/// Below this opacity the background is too faint for a text colour that is meant for a strong one.
constexpr double ReadableBackgroundAlpha = 0.4;
constexpr double BoxCornerRadius = 4.0;

} // namespace

Color SlotColors::textColor(const Value &systemIndex, double backgroundAlpha) const
{
    if (systemIndex.isValid() && m_settings.customColorEnabled()) {
        const auto color = KVKColorEngine::textColorForIndex(systemIndex);
        if (color && backgroundAlpha >= ReadableBackgroundAlpha)
            return *color;
    }
    return Color::black();
}

Color SlotColors::bgColor(const Value &systemIndex) const
{
    if (systemIndex.isValid() && m_settings.customColorEnabled())
        return KVKColorEngine::backgroundColorForIndex(systemIndex).value_or(Color::white());
    return Color::white();
}

void SlotColors::setTextFieldColor(platform::TextField *field, const Value &systemIndex) const
{
    if (!field)
        return;
    const double alpha = m_settings.look().backgroundAlpha;
    if (m_settings.customColorEnabled()) {
        field->setBackgroundColor(bgColor(systemIndex));
        field->setTextColor(textColor(systemIndex, alpha));
        return;
    }
    // Only the white that stands in for a colour is made translucent: the host's own is meant as it is.
    field->setBackgroundColor(Color::white().withAlphaComponent(alpha));
    field->setTextColor(Color::black());
}

platform::Box *SlotColors::bgView(const platform::Rect &frame, const Value &systemIndex) const
{
    log::debug(messages::MessageCalled, {selectors::bracketed(selectors::BgView), systemIndex});
    const PanelLook look = m_settings.look();
    auto box = std::make_unique<platform::Box>(frame);
    box->setMasksToBounds(true);
    box->setCornerRadius(BoxCornerRadius);

    // Grey is for a box of no system. A system that the host has no colour for leaves its box without one.
    std::optional<Color> color = Color::lightGray();
    if (systemIndex.isValid() && m_settings.customColorEnabled())
        color = KVKColorEngine::backgroundColorForIndex(systemIndex);
    if (color)
        box->setLayerBackgroundColor(color->withAlphaComponent(look.backgroundAlpha));
    if (look.drawShadow)
        box->setShadow(boxShadow());
    return box.release();
}

platform::Shadow SlotColors::boxShadow()
{
    return {Color::systemGray(), 2.0, {0.0, 0.0}};
}

Color SlotColors::boxColor(const Value &systemIndex, const PanelLook &look) const
{
    return bgColor(systemIndex).withAlphaComponent(look.backgroundAlpha);
}

Color SlotColors::valueColor(const PanelLook &look)
{
    // From an opacity of one half on the product is more than opaque, which painting takes as opaque.
    return Color::white().withAlphaComponent(2.0 * look.backgroundAlpha);
}

} // namespace interactive
