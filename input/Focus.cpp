#include "input/Identifiers.h"
#include "input/SlotLabels.h"
#include "platform/TextField.h"
#include "plugin/InteractiveView.h"
#include "plugin/Log.h"
#include "plugin/Messages.h"
#include "plugin/Selectors.h"
#include "presentation/MouseTrackedTextField.h"

namespace interactive {

void InteractiveView::setupResponderChain(const Responders &fields)
{
    for (qsizetype i = 0; i + 1 < fields.size(); ++i) {
        if (!fields.at(i))
            continue;
        fields.at(i)->setNextResponder(fields.at(i + 1));
        fields.at(i)->setNextKeyView(fields.at(i + 1));
    }
}

void InteractiveView::activateResponder(platform::View *responder)
{
    for (platform::View *view = responder; view; view = view->nextResponder()) {
        view->becomeFirstResponder();
        auto *field = qobject_cast<MouseTrackedTextField *>(view);
        if (field && field->isEnabled()) {
            field->selectText();
            return;
        }
    }
}

platform::Value InteractiveView::nextEnabledSlot(const platform::Array &filled,
                                                 const platform::Identifier &key)
{
    const platform::Dictionary status = m_enableStatus.lock()->value(key.text()).toMap();
    const platform::Array sortedKeys = orderedArray(labels::enabledSlots(status));
    log::debug(messages::SortedKeys, {key, filled, sortedKeys});
    return labels::firstUnfilled(sortedKeys, filled);
}

void InteractiveView::textFieldMouseDown(const platform::Notification &notification)
{
    const QString method = selectors::bracketed(selectors::TextFieldMouseDown);
    auto *field = qobject_cast<platform::TextField *>(notification.object.data());
    log::debug(messages::FieldClicked, {method, log::describe(field), notification.name});
    if (!field)
        return;
    if (field->isEditable()) {
        field->becomeFirstResponder();
        return;
    }
    if (field->identifier().isNull())
        return;
    const QString slot = identifiers::slotPart(field->identifier());
    const QString key = identifiers::panelPart(field->identifier());

    const Responders fields = responders(key);
    for (qsizetype i = 0; i + 1 < fields.size(); ++i) {
        if (fields.at(i))
            fields.at(i)->setBackgroundColor(
                platform::Color::white().withAlphaComponent(2.0 * backgroundAlpha()));
    }
    if (!fields.isEmpty())
        activateResponder(fields.last());
    reopenSlot(*field, key, slot);
}

void InteractiveView::reopenSlot(platform::TextField &field, const QString &key, const QString &slot)
{
    {
        const auto savedData = m_savedData.lock();
        const auto found = savedData->find(key);
        if (found == savedData->end())
            return;
        platform::Dictionary record = found->toMap();
        if (record.remove(slot) == 0) {
            log::standard(messages::NoSavedData,
                          {selectors::bracketed(selectors::TextFieldMouseDown), key, slot});
            return;
        }
        *found = record;
    }
    field.setBackgroundColor(platform::Color::systemYellow());
    field.setStringValue(QString());
}

bool InteractiveView::modifyInput(platform::View *sender)
{
    auto *field = qobject_cast<MouseTrackedTextField *>(sender);
    if (!field)
        return false;
    const platform::Identifier identifier = field->identifier();
    const QString key = identifiers::panelPart(identifier);
    const QString slot = identifiers::slotPart(identifier);
    log::standard(messages::InputModified,
                  {selectors::bracketed(selectors::ModifyInput), identifier, key, slot});
    {
        const auto savedData = m_savedData.lock();
        platform::Dictionary record = savedData->value(key).toMap();
        record.remove(key);
        record.remove(slot);
        savedData->insert(key, record);
    }
    const Responders fields = responders(key);
    // The search asks for the panel's own name, so it finds a field only where a slot is named like the
    // panel.
    for (const QPointer<platform::TextField> &candidate : fields) {
        if (!candidate || identifiers::slotPart(candidate->identifier()) != key)
            continue;
        if (!candidate->isEnabled())
            return false;
        activateResponder(fields.last());
        return true;
    }
    return false;
}

} // namespace interactive
