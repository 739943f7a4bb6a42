#include "input/Identifiers.h"
#include "platform/Box.h"
#include "platform/Button.h"
#include "plugin/InteractiveView.h"
#include "plugin/Log.h"
#include "plugin/Messages.h"
#include "plugin/Selectors.h"
#include "presentation/MouseTrackedTextField.h"

namespace interactive {

namespace {

/// What the identifier of a switch says: "G1-103-S4".
struct SwitchName
{
    platform::Identifier panelKey;
    int tag = 0;
    QString slotKey;
};

SwitchName takeApart(const platform::Identifier &identifier)
{
    using namespace identifiers;
    const platform::Identifier rest = after(Separator, identifier);
    const qint64 tag = platform::integerValue(before(Separator, rest).text());
    return {before(Separator, identifier), static_cast<int>(tag), after(Separator, rest).text()};
}

} // namespace

void InteractiveView::switchBtnClicked(platform::View *sender)
{
    auto *button = qobject_cast<platform::Button *>(sender);
    if (!button)
        return;
    const SwitchName name = takeApart(button->identifier());
    platform::Value systemIndex = tagToSystemIndex(name.tag);
    const bool on = button->state() == platform::Button::On;
    {
        // Whatever was entered for the slot is discarded on every click, in both directions.
        const auto savedData = m_savedData.lock();
        const auto record = savedData->find(name.panelKey.text());
        if (record != savedData->end()) {
            platform::Dictionary changed = record->toMap();
            changed.remove(name.slotKey);
            *record = changed;
        }
    }
    recordSwitch(name.panelKey, name.slotKey, systemIndex, on);

    platform::View *content = button->superview();
    if (button->identifier().isNull() || !content)
        return;
    if (auto *field = qobject_cast<MouseTrackedTextField *>(content->viewWithTag(name.tag))) {
        field->setEnabled(on);
        field->setStringValue(QString());
        systemIndex = field->systemIndex();
    }
    if (auto *box = qobject_cast<platform::Box *>(content->superview())) {
        box->setFillColor(on ? bgColor(systemIndex).withAlphaComponent(backgroundAlpha())
                             : platform::Color::windowBackground());
    }
}

void InteractiveView::recordSwitch(const platform::Identifier &key, const QString &slotKey,
                                   const platform::Value &systemIndex, bool on)
{
    // A group's record is kept under the station's slot names, whatever the switch calls the slot.
    const QString slot = isGroupView(key)
                             ? platform::description(m_systemIndexToSlotMapping.value(
                                   static_cast<qsizetype>(platform::integerValue(systemIndex)), slotKey))
                             : slotKey;
    const auto enableStatus = m_enableStatus.lock();
    platform::Dictionary status = enableStatus->value(key.text()).toMap();
    if (on)
        status.insert(slot, true);
    else
        status.remove(slot);
    enableStatus->insert(key.text(), status);
    log::standard(messages::EnableStatus,
                  {selectors::bracketed(selectors::SwitchBtnClicked), platform::Value(*enableStatus)});
}

} // namespace interactive
