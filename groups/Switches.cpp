#include "groups/Switches.h"

#include "platform/Box.h"
#include "platform/Button.h"
#include "presentation/MouseTrackedTextField.h"

#include "common/Identifiers.h"
#include "common/Log.h"
#include "common/Messages.h"
#include "common/Selectors.h"

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
    // From the front, so that the slot, which comes last, keeps a separator that it holds itself.
    const platform::Identifier rest = after(Separator, identifier);
    const qint64 tag = platform::integerValue(before(Separator, rest).text());
    return {before(Separator, identifier), static_cast<int>(tag), after(Separator, rest).text()};
}

} // namespace

Switches::Switches(const StationMap &station, PanelRecords &records, SlotStates &slotStates,
                   const PanelSettings &settings, PanelViews &views, const SlotColors &colors, Focus &focus,
                   Defaults &defaults, AutoConfirm &autoConfirm)
    : m_station(station)
    , m_records(records)
    , m_slotStates(slotStates)
    , m_settings(settings)
    , m_views(views)
    , m_colors(colors)
    , m_focus(focus)
    , m_defaults(defaults)
    , m_autoConfirm(autoConfirm)
{}

void Switches::switchBtnClicked(platform::View *sender)
{
    auto *button = qobject_cast<platform::Button *>(sender);
    if (!button)
        return;
    const SwitchName name = takeApart(button->identifier());
    const bool on = button->state() == platform::Button::On;
    // Whatever was entered for the slot is discarded on every click, in both directions.
    static_cast<void>(m_records.discard(name.panelKey.text(), name.slotKey));
    recordSwitch(name.panelKey, name.slotKey, identifiers::systemOfTag(name.tag), on);
    if (!button->identifier().isNull() && button->superview())
        showSwitch(*button->superview(), name.panelKey, name.tag, on);
    // Another slot may be the next one to wait, or none may wait any more.
    m_defaults.offer(name.panelKey);
    m_autoConfirm.look(name.panelKey);
}

void Switches::recordSwitch(const platform::Identifier &key, const QString &slotKey, qint64 systemIndex,
                            bool on)
{
    // A group's states are kept under the station's slot names, whatever the switch calls the slot.
    const platform::Value slotName = m_station.slotOf(systemIndex);
    const bool byStation = m_views.isGroupView(key) && slotName.isValid();
    const QString slot = byStation ? platform::description(slotName) : slotKey;
    if (on)
        m_slotStates.switchOn(key.text(), slot);
    else
        m_slotStates.switchOff(key.text(), slot);
    log::standard(messages::EnableStatus,
                  {selectors::bracketed(selectors::SwitchBtnClicked), platform::Value(m_slotStates.all())});
}

/// Shows the slot's state by its field and its box; a field that had the focus and takes no input any more
/// hands it on.
void Switches::showSwitch(platform::View &content, const platform::Identifier &key, int tag, bool on)
{
    // By the tag where the slot has no field to say it.
    platform::Value systemIndex = static_cast<qlonglong>(identifiers::systemOfTag(tag));
    // The switch bears the tag of its field, which was added first and is therefore found first. A panel of
    // switches alone has no field: there the switch finds itself, and is no field.
    if (auto *field = qobject_cast<MouseTrackedTextField *>(content.viewWithTag(tag))) {
        const bool hadFocus = field->isFirstResponder();
        field->setEnabled(on);
        field->setStringValue(QString());
        systemIndex = field->systemIndex();
        if (hadFocus && !on)
            m_focus.handOn(key);
    }
    if (auto *box = qobject_cast<platform::Box *>(content.superview())) {
        const PanelLook look = m_views.lookOf(key.text(), m_settings.look());
        box->setFillColor(on ? m_colors.boxColor(systemIndex, look) : platform::Color::windowBackground());
    }
}

} // namespace interactive
