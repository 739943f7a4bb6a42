#include "input/Confirmation.h"

#include "input/EntryRules.h"
#include "input/KeyRouter.h"
#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/Button.h"
#include "platform/LogFormat.h"
#include "platform/MainQueue.h"
#include "presentation/MouseTrackedTextField.h"
#include "presentation/SlotColors.h"

#include <algorithm>
#include <exception>

#include "common/Identifiers.h"
#include "common/Log.h"
#include "common/Messages.h"
#include "common/Selectors.h"

namespace interactive {

using platform::Identifier;
using platform::MainQueue;

namespace {

/// What a button does is known by its title: one that a configuration calls "Cancel" cancels, too.
const QString OkTitle = QStringLiteral("OK");
const QString ClearTitle = QStringLiteral("Clear");
const QString CancelTitle = QStringLiteral("Cancel");

/// Whether a group's panel asks for entries: its last field is the one that takes them, or was one that is
/// gone with its panel.
bool asksForEntries(const Responders &fields)
{
    return !fields.isEmpty() && MainQueue::sync([&] {
        const auto *field = qobject_cast<MouseTrackedTextField *>(fields.last().data());
        return !fields.last() || (field && field->isEditable());
    });
}

/// Whether "Clear" empties its panel. Where it is the only button it ends the panel like any other: nobody
/// could otherwise.
bool clearsOnly(const platform::Button *button)
{
    const platform::View *panel = button ? button->superview() : nullptr;
    if (!panel)
        return false;
    const QList<platform::View *> siblings = panel->subviews();
    return std::any_of(siblings.cbegin(), siblings.cend(), [button](platform::View *sibling) {
        const auto *other = qobject_cast<platform::Button *>(sibling);
        return other && other->actionSelector() == button->actionSelector() && other->title() != ClearTitle;
    });
}

/// What stands in the field that takes a panel's entries.
QString lastWritten(const Responders &fields)
{
    return fields.isEmpty() || !fields.last() ? QString() : fields.last()->stringValue();
}

void say(const QString &message)
{
    // Not waited for: nothing depends on it, and the next press should not wait for the status line.
    MainQueue::async([message] { KVKExtensionStatusRelay::sharedStatusRelay()->showMessage(message); });
}

} // namespace

/// One press of a button, as things stood when it was pressed.
struct Confirmation::Press
{
    QPointer<platform::Button> button;
    bool stood = false; ///< Whether the button was on a panel.
    QString title;
    Identifier identifier;
    Waits::Press wait = {};
    quint64 asking = 0;   ///< Which asking's record the panel had.
    quint64 refusals = 0; ///< How many verdicts had refused an entry of the panel by then.
    QString written = {}; ///< What the panel's last field held when the press began to wait for verdicts.
};

Confirmation::Confirmation(const StationMap &station, PanelRecords &records, Waits &waits, Checks &checks,
                           const PanelSettings &settings, PanelViews &views, Focus &focus, Defaults &defaults,
                           Entries &entries, KeyRouter &keys)
    : m_station(station)
    , m_records(records)
    , m_waits(waits)
    , m_checks(checks)
    , m_settings(settings)
    , m_views(views)
    , m_focus(focus)
    , m_defaults(defaults)
    , m_entries(entries)
    , m_keys(keys)
{}

void Confirmation::confirmBtnClicked(platform::View *sender)
{
    auto *button = qobject_cast<platform::Button *>(sender);
    if (!button) {
        log::error(messages::InvalidSender,
                   {selectors::bracketed(selectors::ConfirmBtnClicked), log::describe(sender)});
        return;
    }
    // As things stand now: by the time the worker looks, the button may be gone and its panel another call's.
    Press press{button, button->superview() != nullptr, button->title(), button->identifier()};
    if (const platform::View *parent = button->superview()) {
        const Identifier key = identifiers::before(identifiers::Separator, parent->identifier());
        press.wait = m_waits.press(key);
        press.asking = m_records.asking(key.text());
        press.refusals = m_refusals.value(key.text());
    }
    perform(press);
}

void Confirmation::perform(const Press &press)
{
    // From here on and not when the work begins: a scanner may have sent its first characters by then.
    m_keys.hold();
    m_queue.async([this, press] {
        // Nothing that goes wrong may leave the job: the worker has the next press to serve, and the keys are
        // held.
        bool ended = false;
        try {
            // One job for all of it: to look, to check and to note is not worth a hand-over each, and a
            // sequence waits. What is called from here asks for the main thread, too, and has it.
            ended = MainQueue::sync([&] { return carryOut(press); });
        } catch (const std::exception &problem) {
            log::error(messages::Named, {selectors::blockName(selectors::ConfirmBtnClicked), problem.what()});
        } catch (...) {
            log::error(messages::Named,
                       {selectors::blockName(selectors::ConfirmBtnClicked), messages::UnknownException});
        }
        // A panel that was ended still stands for a moment: the call that takes it away lets the keys go.
        if (!ended)
            MainQueue::async([this] { m_keys.release(); });
    });
}

bool Confirmation::hasLeft(const Press &press)
{
    return press.stood && press.button && !press.button->superview();
}

/// Does what the press says; true when it has ended a call's wait.
bool Confirmation::carryOut(const Press &press)
{
    Identifier parent;
    platform::Dictionary fields;
    bool clears = false;
    // First of all: a panel that has ended by itself may be gone, with nobody left to name it by.
    const bool isOpen = MainQueue::sync([&] {
        if (!press.wait.isOpen())
            return false;
        // Whether a button that has left its panel since is deleted already must make no difference.
        const platform::Button *button = hasLeft(press) ? nullptr : press.button.data();
        parent = PanelViews::getParentIdentifier(button);
        if (log::isHeard(KVKLogLevel::Debug))
            fields = m_views.describeResponders();
        clears = press.title == ClearTitle && clearsOnly(button);
        return true;
    });
    // A press whose call has been answered meanwhile, by an earlier press, has nothing to say any more.
    if (!isOpen)
        return false;
    log::debug(messages::Confirming, {selectors::blockName(selectors::ConfirmBtnClicked), parent, fields});
    if (parent.isNull())
        return false;
    const Identifier key = identifiers::before(identifiers::Separator, parent);
    const bool records = press.wait.purpose() == Waits::Purpose::Answer;
    // No call has announced this panel, so there is no wait to end; that the button was pressed is noted.
    if (!m_waits.getCondition(key)) {
        static_cast<void>(m_records.press(key.text(), press.identifier.text(), press.asking));
        return false;
    }
    // A group's panel that asks for nothing has nothing to clear, and is ended by each of its buttons.
    const bool asksForNothing = m_views.isGroupView(key) && !asksForEntries(m_views.responders(key.text()));
    if (clears && records && !asksForNothing) {
        clear(press, key);
        return false;
    }
    if (press.title == OkTitle && records && !checkAllInputs(key))
        return false;
    // Behind the check, which may have found an entry that nobody has ended with Return.
    if (records && press.title != CancelTitle && waitsForChecks(press, key))
        return false;
    if (press.title == OkTitle && !confirm(press, key))
        return false;
    // Everything that the answer depends on is written before the wait ends; a press that is refused leaves
    // no mark. A time limit may have ended the wait since, and the next call begun.
    const QString &text = key.text();
    if (records &&
        !(press.title == CancelTitle ? m_records.forget(text, press.asking)
                                     : m_records.press(text, press.identifier.text(), press.asking)))
        return false;
    if (!press.wait.end())
        return false;
    m_checks.waitHasEnded(key.text(), true);
    return true;
}

/// Keeps the press when verdicts are to come, and drops it when one that has come since refused an entry.
/// Asked on the main thread, where verdicts come in: none is missed between the question and the keeping.
bool Confirmation::waitsForChecks(const Press &press, const Identifier &key)
{
    return MainQueue::sync([&] {
        if (m_refusals.value(key.text()) != press.refusals)
            return true;
        if (!m_checks.arePending(key.text()))
            return false;
        Press waiting = press;
        waiting.written = lastWritten(m_views.responders(key.text()));
        m_waiting.insert(key.text(), std::make_shared<const Press>(waiting));
        return true;
    });
}

void Confirmation::entryWasJudged(const Identifier &key, Entries::Judged judged)
{
    const bool mayEnd = judged != Entries::Judged::Refused;
    if (!mayEnd)
        ++m_refusals[key.text()];
    if (!m_waiting.contains(key.text()) || (mayEnd && m_checks.arePending(key.text())))
        return;
    const std::shared_ptr<const Press> press = m_waiting.take(key.text());
    if (!mayEnd)
        return;
    // Keys were not held since the press: what is being typed by now was not there when it was made, and must
    // not be taken for an answer half written.
    const Responders fields = m_views.responders(key.text());
    // On a slot's panel nor must another entry that was ended meanwhile: nobody had seen it when "OK" was
    // pressed. A group's shared field is emptied, or offers something, by itself.
    const bool isBegun = !fields.isEmpty() && fields.last() && fields.last()->hasBegunEntry();
    const bool mayDiffer = !isBegun && m_views.isGroupView(key);
    if (!mayDiffer && lastWritten(fields) != press->written)
        say(platform::formatMessage(messages::PressedBeforeEntry, {key}));
    else
        perform(*press);
}

/// In one job of the main thread, where panels come and go: the fields are those of the asking that was
/// pressed.
void Confirmation::clear(const Press &press, const Identifier &key)
{
    MainQueue::sync([&] {
        if (!m_records.clear(key.text(), press.asking))
            return;
        m_checks.drop(key.text());
        m_waiting.remove(key.text());
        clearAllInputs(key);
    });
}

/// Whether "OK", which finds nothing missing, may end the panel.
bool Confirmation::confirm(const Press &press, const Identifier &key)
{
    const bool isOn = MainQueue::sync([&] {
        if (!m_groups.isOn(key))
            return false;
        // Not the button of a group whose next call has begun.
        if (press.wait.isOpen())
            m_groups.confirmed(key);
        return true;
    });
    if (!isOn) {
        log::error(messages::GroupDisabled, {selectors::blockName(selectors::ConfirmBtnClicked)});
        say(platform::formatMessage(messages::GroupIsOff, {key}));
    }
    return isOn;
}

bool Confirmation::checkAllInputs(const Identifier &key)
{
    if (!m_views.hasResponders(key.text()))
        return true;
    const Responders fields = m_views.responders(key.text());
    if (!MainQueue::sync([&] { return m_entries.confirmDefaults(key); }))
        return false;
    const std::optional<platform::Dictionary> record = m_records.record(key.text());
    if (m_views.isGroupView(key)) {
        if (!asksForEntries(fields))
            return true;
        if (!entries::holdsAnySlot(record.value_or(platform::Dictionary()),
                                   m_station.systemIndexToSlotMapping())) {
            sayWhyNothingIsEntered(key);
            return false;
        }
    } else if (!checkEachField(fields)) {
        return false;
    }
    if (!record)
        return true;
    if (!m_focus.nextEnabledSlot(entries::filledSlots(*record), key).isValid())
        return true;
    // The last field is the one that the missing entry is made in.
    MainQueue::sync([&] { Focus::activateResponder(fields.isEmpty() ? nullptr : fields.last().data()); });
    return false;
}

void Confirmation::sayWhyNothingIsEntered(const Identifier &key) const
{
    const bool anyOn = m_focus.nextEnabledSlot({}, key).isValid();
    const QString why =
        platform::formatMessage(anyOn ? messages::NothingEntered : messages::AllSlotsOff, {key});
    // With a slot on, the empty field says by itself what is missing.
    if (!anyOn)
        log::error("%@", {why});
    say(why);
}

/// The first field that fails keeps the colour and the selection: later ones are not looked at.
bool Confirmation::checkEachField(const Responders &fields)
{
    for (const QPointer<platform::TextField> &field : fields) {
        // A field that is gone left the window with its panel.
        if (!MainQueue::sync([&] { return !field || m_entries.checkInput(field); }))
            return false;
    }
    return true;
}

void Confirmation::clearAllInputs(const Identifier &key)
{
    MainQueue::sync([&] {
        bool focused = false;
        m_views.tell(key.text(), QString());
        for (const QPointer<platform::TextField> &field : m_views.responders(key.text())) {
            auto *input = qobject_cast<MouseTrackedTextField *>(field.data());
            if (!input)
                continue;
            input->setStringValue(QString());
            // One that is switched off is emptied, but keeps the look of a field that is off.
            if (!input->isEnabled())
                continue;
            input->setBackgroundColor(SlotColors::valueColor(m_views.lookOf(key.text(), m_settings.look())));
            // A field in a box that takes no part cannot be seen and takes no focus; the next one does.
            focused = focused || input->becomeFirstResponder();
        }
        m_defaults.offer(key);
    });
}

} // namespace interactive
