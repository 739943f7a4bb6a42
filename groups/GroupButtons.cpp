#include "input/Identifiers.h"
#include "platform/Button.h"
#include "plugin/InteractiveView.h"
#include "plugin/Log.h"
#include "plugin/Messages.h"
#include "plugin/Selectors.h"

#include <algorithm>

namespace interactive {

namespace {

constexpr double ButtonWidth = 80.0;
constexpr double ButtonHeight = 30.0;
constexpr double SetupPitch = 96.0;
constexpr double RelayoutPitch = 88.0;

bool matches(const platform::Button *button, const platform::Identifier &identifier)
{
    return !identifier.isNull() &&
           identifiers::before(identifiers::Separator, button->identifier()) == identifier;
}

platform::Button *firstMatch(const QList<platform::Button *> &buttons, const platform::Identifier &identifier)
{
    const auto found = std::find_if(buttons.cbegin(), buttons.cend(), [&](const platform::Button *button) {
        return matches(button, identifier);
    });
    return found == buttons.cend() ? nullptr : *found;
}

platform::Button *makeGroupButton(const platform::Point &origin, const platform::Identifier &name)
{
    auto button =
        std::make_unique<platform::Button>(platform::Rect(origin, platform::Size(ButtonWidth, ButtonHeight)));
    button->setButtonType(platform::Button::Type::Switch);
    button->setBezelStyle(platform::Button::BezelStyle::RegularSquare);
    button->setTitle(name.text());
    button->setIdentifier(name);
    button->setState(platform::Button::On);
    button->setAutoresizingMask(platform::MinXMargin | platform::MinYMargin);
    return button.release();
}

/// Every slot of a group, switched on.
platform::Dictionary allSlotsOn(const platform::Array &slotMapping, quint64 slotCount, quint64 group)
{
    platform::Dictionary status;
    for (quint64 j = 0; j < slotCount; ++j) {
        const quint64 system = slotCount * group + j;
        // A mapping laid out by hand may be shorter than groups times slots.
        if (system < static_cast<quint64>(slotMapping.size()))
            status.insert(platform::description(slotMapping.at(static_cast<qsizetype>(system))),
                          qlonglong{1});
    }
    return status;
}

} // namespace

void InteractiveView::setupGroupButtons()
{
    const auto guard = m_monitor.lock();
    if (!m_groupButtons.lock()->isEmpty())
        return;
    const platform::Rect bounds = m_rootView ? m_rootView->bounds() : platform::Rect();
    const platform::Array names = groupNames();
    for (quint64 i = 0; i < m_groupCount; ++i) {
        const platform::Identifier name =
            panelKey(platform::description(names.at(static_cast<qsizetype>(i))));
        const double x = bounds.width() - SetupPitch * static_cast<double>(m_groupCount - i);
        platform::Button *button = makeGroupButton({x, bounds.height() - ButtonHeight}, name);
        button->setTarget(this, selectors::GroupBtnClicked,
                          [this](platform::View *sender) { groupBtnClicked(sender); });
        if (m_rootView)
            m_rootView->addSubview(button);
        m_groupButtons.lock()->append(button);
        m_conditions.lock()->insert(name.text(), std::make_shared<platform::Condition>());
        const auto status = m_enableStatus.lock();
        if (!status->contains(name.text()))
            status->insert(name.text(), allSlotsOn(m_systemIndexToSlotMapping, m_slotCount, i));
    }
}

void InteractiveView::relayoutGroupButtons(double width)
{
    quint64 i = 0;
    for (platform::Button *button : groupButtons()) {
        const double x = width - RelayoutPitch * (static_cast<double>(m_groupCount) - static_cast<double>(i));
        button->setFrame({x, button->frame().y(), ButtonWidth, ButtonHeight});
        button->setHidden(false);
        ++i;
    }
}

void InteractiveView::groupBtnClicked(platform::View *sender)
{
    const QString method = selectors::bracketed(selectors::GroupBtnClicked);
    auto *button = qobject_cast<platform::Button *>(sender);
    if (!button) {
        log::error(messages::InvalidSender, {method, log::describe(sender)});
        return;
    }
    const platform::Identifier key = identifiers::before(identifiers::Separator, button->identifier());
    log::debug(messages::GroupClicked, {method, key, button->title(), static_cast<int>(button->state())});

    const QList<platform::Button *> buttons = groupButtons();
    const bool anyOn = std::any_of(buttons.cbegin(), buttons.cend(), [](const platform::Button *other) {
        return other->state() == platform::Button::On;
    });
    if (!anyOn) {
        button->setState(platform::Button::On);
        log::debug(messages::LastGroupKept, {method, button->title()});
    }
    if (button->state() == platform::Button::On) {
        unhideUI(key);
        return;
    }
    hideUI(key);
    log::standard(messages::GroupOff, {method, key});
}

bool InteractiveView::isGroupOn(const platform::Identifier &identifier)
{
    const platform::Button *button = firstMatch(groupButtons(), identifier);
    return !button || button->state() != platform::Button::Off;
}

bool InteractiveView::isGroupView(const platform::Identifier &identifier)
{
    const QList<platform::Button *> buttons = groupButtons();
    return std::any_of(buttons.cbegin(), buttons.cend(),
                       [&](const platform::Button *button) { return button->identifier() == identifier; });
}

void InteractiveView::enableGroupButton(bool enable, const platform::Identifier &identifier)
{
    if (platform::Button *button = firstMatch(groupButtons(), identifier))
        button->setEnabled(enable);
}

void InteractiveView::turnOnGroupButton(bool on, const platform::Identifier &identifier)
{
    if (platform::Button *button = firstMatch(groupButtons(), identifier))
        button->setState(on ? platform::Button::On : platform::Button::Off);
}

int InteractiveView::getGroupButtonState(const platform::Identifier &identifier)
{
    const platform::Button *button = firstMatch(groupButtons(), identifier);
    return button ? button->state() : platform::Button::On;
}

platform::Identifier InteractiveView::getParentIdentifier(platform::View *view)
{
    if (!view)
        return {};
    const platform::View *parent = view->superview();
    if (parent && !parent->identifier().isNull())
        return parent->identifier();
    log::error(messages::NoParentView, {selectors::bracketed(selectors::GetParentIdentifier),
                                        log::describe(view), view->identifier()});
    return {};
}

} // namespace interactive
