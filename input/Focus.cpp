#include "input/Focus.h"

#include "input/EntryRules.h"
#include "presentation/MouseTrackedTextField.h"
#include "presentation/SlotColors.h"

#include "common/Identifiers.h"
#include "common/Log.h"
#include "common/Messages.h"
#include "common/Selectors.h"
#include "common/SlotLabels.h"

namespace interactive {

using platform::TextField;
using platform::View;

Focus::Focus(const StationMap &station, const PanelRecords &records, const SlotStates &slotStates,
             PanelViews &views, const PanelSettings &settings)
    : m_station(station)
    , m_records(records)
    , m_slotStates(slotStates)
    , m_views(views)
    , m_settings(settings)
{}

void Focus::setupResponderChain(const Responders &fields)
{
    // The last field keeps its superview as next responder: the chain ends at the window and is no circle.
    for (qsizetype i = 0; i + 1 < fields.size(); ++i) {
        if (!fields.at(i))
            continue;
        fields.at(i)->setNextResponder(fields.at(i + 1));
        fields.at(i)->setNextKeyView(fields.at(i + 1));
    }
}

void Focus::activateResponder(View *responder)
{
    for (View *view = responder; view; view = view->nextResponder()) {
        view->becomeFirstResponder();
        auto *field = qobject_cast<MouseTrackedTextField *>(view);
        if (field && field->isEnabled()) {
            field->selectText();
            return;
        }
    }
}

platform::Value Focus::nextEnabledSlot(const platform::Array &filled, const platform::Identifier &key) const
{
    const platform::Dictionary states = m_slotStates.of(key.text()).toMap();
    const platform::Array sortedKeys = labels::ordered(
        labels::enabledSlots(states), m_station.systemIndexToSlotMapping(), m_station.slotCount());
    log::debug(messages::SortedKeys, {key, filled, sortedKeys});
    return labels::firstUnfilled(sortedKeys, filled);
}

void Focus::unhideUI(const platform::Identifier &identifier)
{
    if (!m_views.show(identifier))
        return;
    const Responders fields = m_views.responders(identifier.text());
    // The last field is the one that takes entries: a group panel's shared one, a slot panel's only one.
    if (!fields.isEmpty() && !begunEntry())
        activateResponder(fields.last());
}

void Focus::textFieldMouseDown(const platform::Notification &notification, PanelRecords &records)
{
    const QString method = selectors::bracketed(selectors::TextFieldMouseDown);
    auto *field = qobject_cast<TextField *>(notification.object.data());
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

    const Responders fields = m_views.responders(key);
    // A click before this one may have left a slot yellow; only the latest is to be seen so. The shared
    // field, the last, keeps its own colour.
    for (qsizetype i = 0; i + 1 < fields.size(); ++i) {
        if (fields.at(i))
            fields.at(i)->setBackgroundColor(SlotColors::valueColor(m_views.lookOf(key, m_settings.look())));
    }
    if (!fields.isEmpty())
        activateResponder(fields.last());
    reopenSlot(*field, key, slot, records);
}

void Focus::reopenSlot(TextField &field, const QString &key, const QString &slot, PanelRecords &records) const
{
    if (!records.contains(key))
        return;
    if (!records.discard(key, slot)) {
        log::standard(messages::NoSavedData,
                      {selectors::bracketed(selectors::TextFieldMouseDown), key, slot});
        return;
    }
    field.setBackgroundColor(platform::Color::systemYellow());
    field.setStringValue(QString());
}

bool Focus::modifyInput(View *sender, PanelRecords &records)
{
    auto *field = qobject_cast<MouseTrackedTextField *>(sender);
    if (!field)
        return false;
    const platform::Identifier identifier = field->identifier();
    const QString key = identifiers::panelPart(identifier);
    const QString slot = identifiers::slotPart(identifier);
    log::standard(messages::InputModified,
                  {selectors::bracketed(selectors::ModifyInput), identifier, key, slot});
    records.makeRoom(key, key);
    records.makeRoom(key, slot);
    const Responders fields = m_views.responders(key);
    // The search asks for the panel's own name, so it finds a field only where a slot is named like the
    // panel.
    for (const QPointer<TextField> &candidate : fields) {
        if (!candidate || identifiers::slotPart(candidate->identifier()) != key)
            continue;
        if (!candidate->isEnabled())
            return false;
        activateResponder(fields.last());
        return true;
    }
    return false;
}

void Focus::panelOpened(const platform::Identifier &key)
{
    // A panel that is drawn anew waits since now, and goes behind those that have waited longer.
    forget(key.text());
    m_open.insert(++m_drawn, key.text());
    m_drawnAt.insert(key.text(), m_drawn);
    TextField *begun = begunEntry();
    const Responders fields = m_views.responders(key.text());
    // A group's panel has the focus by now: unhideUI() finds its container by the group's name, which the
    // container of slot panels does not bear.
    if (!begun && !m_views.isGroupView(key) && !fields.isEmpty() && fields.last())
        fields.last()->becomeFirstResponder();
}

void Focus::panelGone(const platform::Identifier &key)
{
    forget(key.text());
    const QWidget *window = m_views.rootView() ? m_views.rootView()->window() : nullptr;
    const QWidget *focused = window ? window->focusWidget() : nullptr;
    // A field that went left the focus with the window; anywhere else somebody is typing.
    if (!focused || focused == window)
        goOn();
}

void Focus::forget(const QString &panelKey)
{
    if (const auto drawnAt = m_drawnAt.constFind(panelKey); drawnAt != m_drawnAt.constEnd()) {
        m_open.remove(*drawnAt);
        m_drawnAt.erase(drawnAt);
    }
}

void Focus::entryAccepted(const platform::Identifier &key)
{
    if (!needsEntry(key.text()))
        goOn();
}

void Focus::handOn(const platform::Identifier &key)
{
    TextField *field = entryField(key.text());
    if (!field || !field->becomeFirstResponder())
        goOn();
}

bool Focus::goOn()
{
    if (begunEntry())
        return false;
    TextField *field = waitingField();
    return field && field->becomeFirstResponder();
}

TextField *Focus::waitingField()
{
    for (const QString &key : std::as_const(m_open)) {
        if (needsEntry(key))
            return entryField(key);
    }
    return nullptr;
}

TextField *Focus::entryField(const QString &key)
{
    const Responders fields = m_views.responders(key);
    TextField *field = fields.isEmpty() ? nullptr : fields.last().data();
    // A group that is switched off has its panel hidden: keys must not go where nobody sees them.
    const bool canBeUsed = field && field->isEditable() && field->isEnabled() && field->isVisible();
    return canBeUsed ? field : nullptr;
}

bool Focus::needsEntry(const QString &key)
{
    const TextField *field = entryField(key);
    const std::optional<platform::Dictionary> record = m_records.record(key);
    if (!field || !record)
        return false;
    // An instance of its own serves here: both questions below compare the text.
    const platform::Identifier panelKey(key);
    if (!m_views.isGroupView(panelKey))
        return !record->contains(identifiers::slotPart(field->identifier()));
    return nextEnabledSlot(entries::filledSlots(*record), panelKey).isValid();
}

TextField *Focus::begunEntry() const
{
    TextField *field = m_views.focusedField();
    return field && field->hasBegunEntry() ? field : nullptr;
}

} // namespace interactive
