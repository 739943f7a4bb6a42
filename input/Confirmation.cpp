#include "input/EntryRules.h"
#include "input/Identifiers.h"
#include "platform/Button.h"
#include "platform/MainQueue.h"
#include "plugin/InteractiveView.h"
#include "plugin/Log.h"
#include "plugin/Messages.h"
#include "plugin/RecordKeys.h"
#include "plugin/Selectors.h"
#include "presentation/MouseTrackedTextField.h"

#include <exception>

namespace interactive {

using platform::MainQueue;

namespace {

const QString OkTitle = QStringLiteral("OK");
const QString ClearTitle = QStringLiteral("Clear");
const QString CancelTitle = QStringLiteral("Cancel");

/// A field that is gone left the window with its panel, and counts as what it was.
bool endsInInputField(const InteractiveView::Responders &fields)
{
    return !fields.isEmpty() && MainQueue::sync([&] {
        return !fields.last() || qobject_cast<MouseTrackedTextField *>(fields.last().data());
    });
}

} // namespace

/// One press of a button, as things stood when it was pressed.
struct InteractiveView::Press
{
    QPointer<platform::Button> button;
    QString title;
    platform::Identifier identifier;
    std::shared_ptr<platform::Condition> condition; ///< The panel's; null when it has none.
    platform::Condition::Ticket ticket;             ///< The wait that the press can end.
};

void InteractiveView::confirmBtnClicked(platform::View *sender)
{
    auto *button = qobject_cast<platform::Button *>(sender);
    if (!button) {
        log::error(messages::InvalidSender,
                   {selectors::bracketed(selectors::ConfirmBtnClicked), log::describe(sender)});
        return;
    }
    Press press{button, button->title(), button->identifier(), nullptr, {}};
    if (const platform::View *parent = button->superview())
        press.condition = findCondition(identifiers::before(identifiers::Separator, parent->identifier()));
    if (press.condition)
        press.ticket = press.condition->ticket();
    m_confirmations.async([this, press] {
        try {
            confirm(press);
        } catch (const std::exception &problem) {
            log::error(messages::Named, {selectors::blockName(selectors::ConfirmBtnClicked), problem.what()});
        }
    });
}

void InteractiveView::confirm(const Press &press)
{
    platform::Identifier parent;
    QString fields;
    MainQueue::sync([&] {
        parent = getParentIdentifier(press.button);
        fields = describeResponders();
    });
    log::debug(messages::Confirming, {selectors::blockName(selectors::ConfirmBtnClicked), parent, fields});
    if (parent.isNull())
        return;
    const platform::Identifier key = identifiers::before(identifiers::Separator, parent);
    // A press whose call has been answered meanwhile, by an earlier press, has nothing to say any more.
    if (press.condition && !press.condition->accepts(press.ticket))
        return;
    {
        const auto savedData = m_savedData.lock();
        platform::Dictionary record = savedData->value(key.text()).toMap();
        record.insert(keys::ClickedButton, press.identifier.text());
        savedData->insert(key.text(), record);
    }
    const std::shared_ptr<platform::Condition> condition = getCondition(key);
    if (!condition)
        return;
    if (press.title == OkTitle) {
        confirmOk(press, key, *condition);
    } else if (press.title == ClearTitle) {
        clearPanel(key);
    } else {
        if (press.title == CancelTitle)
            m_savedData.lock()->remove(key.text());
        condition->signal(press.ticket);
    }
}

void InteractiveView::confirmOk(const Press &press, const platform::Identifier &key,
                                platform::Condition &condition)
{
    if (!checkAllInputs(key))
        return;
    const int state = MainQueue::sync([&] { return getGroupButtonState(key); });
    if (state == platform::Button::Off) {
        log::error(messages::GroupDisabled, {selectors::blockName(selectors::ConfirmBtnClicked)});
        return;
    }
    MainQueue::sync([&] { enableGroupButton(false, key); });
    condition.signal(press.ticket);
}

void InteractiveView::clearPanel(const platform::Identifier &key)
{
    {
        const auto savedData = m_savedData.lock();
        const auto found = savedData->find(key.text());
        if (found != savedData->end()) {
            const platform::Dictionary kept = entries::cleared(found->toMap());
            if (kept.isEmpty())
                savedData->erase(found);
            else
                *found = kept;
        }
    }
    clearAllInputs(key);
}

bool InteractiveView::checkAllInputs(const platform::Identifier &key)
{
    if (!hasResponders(key.text()))
        return true;
    const Responders fields = responders(key.text());
    const platform::Value record = m_savedData.lock()->value(key.text());
    if (isGroupView(key)) {
        if (!endsInInputField(fields))
            return true;
        if (!entries::holdsAnySlot(record.toMap(), m_systemIndexToSlotMapping))
            return false;
    } else if (!checkEachField(fields)) {
        return false;
    }
    if (!record.isValid())
        return true;
    platform::Array filled;
    for (const QString &slot : record.toMap().keys())
        filled.append(slot);
    if (!nextEnabledSlot(filled, key).isValid())
        return true;
    MainQueue::sync([&] { activateResponder(fields.isEmpty() ? nullptr : fields.last().data()); });
    return false;
}

/// The first field that fails keeps the colour and the selection: later ones are not looked at.
bool InteractiveView::checkEachField(const Responders &fields)
{
    for (const QPointer<platform::TextField> &field : fields) {
        // A field that is gone left the window with its panel.
        if (!MainQueue::sync([&] { return !field || checkInput(field); }))
            return false;
    }
    return true;
}

void InteractiveView::clearAllInputs(const platform::Identifier &key)
{
    bool focused = false;
    for (const QPointer<platform::TextField> &field : responders(key.text())) {
        MainQueue::sync([&] {
            auto *input = qobject_cast<MouseTrackedTextField *>(field.data());
            if (!input)
                return;
            input->setStringValue(QString());
            if (!input->isEnabled())
                return;
            input->setBackgroundColor(platform::Color::white().withAlphaComponent(2.0 * backgroundAlpha()));
            if (!focused) {
                input->becomeFirstResponder();
                focused = true;
            }
        });
    }
}

QString InteractiveView::describeResponders()
{
    platform::Dictionary description;
    const auto guard = m_responders.lock();
    for (auto entry = guard->cbegin(); entry != guard->cend(); ++entry) {
        platform::Array fields;
        for (const QPointer<platform::TextField> &field : entry.value())
            fields.append(log::describe(field));
        description.insert(entry.key(), fields);
    }
    return platform::description(description);
}

bool InteractiveView::isAnswered(const platform::Identifier &key)
{
    const std::shared_ptr<platform::Condition> condition = findCondition(key);
    return condition && !condition->accepts(condition->ticket());
}

} // namespace interactive
