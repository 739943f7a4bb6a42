#include "tests/monkey/Scan.h"

#include "tests/monkey/AskModel.h"

#include <algorithm>

using platform::Dictionary;

namespace monkey {
namespace {

/// What the entry field will hold at Return; nothing when that cannot be told from outside.
std::optional<QString> entryWith(const SeenField &field, bool isInEntry, const QString &scanned)
{
    if (field.text.isEmpty() || field.field->selectedText() == field.text)
        return scanned;
    return isInEntry ? std::optional(field.text + scanned) : std::nullopt;
}

} // namespace

Scan::Scan(World &world, const QString &entry, const QString &mark)
    : m_world(world)
    , m_entry(entry)
    , m_mark(mark)
    , m_focus(focusIn(world.root()))
    , m_loopBefore(world.loopText())
    , m_wasFocusChosen(world.isFocusChosen)
    , m_placesBefore(placesOfText())
{
    for (const SeenPanel &panel : panelsIn(world.root()))
        m_recordsBefore.insert(panel.key, world.record(panel.key));
    forecast(m_focus);
    world.scanning = mark;
}

void Scan::forecastRefusal(const QString &why)
{
    m_forecast = Forecast::Refused;
    m_reason = why;
}

void Scan::forecast(const Focus &focus)
{
    if (focus.place != Focus::Place::Panel)
        return;
    const QList<SeenPanel> panels = panelsIn(m_world.root());
    const SeenPanel *panel = panelWithKey(panels, focus.panelKey);
    const Call *call = m_world.callAt(focus.panelKey);
    if (panel && call)
        forecastFor(*panel, *call, focus.isInEntry);
}

void Scan::forecastFor(const SeenPanel &panel, const Call &call, bool isInEntry)
{
    if (!panel.entry || !panel.entry->field->isEnabled()) {
        forecastRefusal("the panel has no field that takes it");
        return;
    }
    const std::optional<QString> entry = entryWith(*panel.entry, isInEntry, m_entry);
    if (!entry)
        return;
    if (!taken(*entry, call.request.config)) {
        forecastRefusal("it does not fit");
        return;
    }
    if (isGivenElsewhere(*entry, call)) {
        forecastRefusal("it was given elsewhere");
        return;
    }
    if (!passesFunction(*entry, call.request.config)) {
        forecastRefusal("the call's own function refuses it");
        return;
    }
    if (call.request.function == Function::ShowGroupView) {
        forecastForGroup(panel, call, *entry);
        return;
    }
    m_forecast = Forecast::Lands;
    m_expected = {panel.key, panel.entry->label};
}

bool Scan::isGivenElsewhere(const QString &entry, const Call &call) const
{
    const QString scope = call.request.config.value("unique").toString();
    if (scope != QLatin1String("station") && scope != QLatin1String("run"))
        return false;
    for (auto record = m_recordsBefore.cbegin(); record != m_recordsBefore.cend(); ++record) {
        if (record.key() == call.panelKey || !m_world.callAt(record.key()) ||
            m_world.callAt(record.key())->fate != Fate::Asks)
            continue;
        for (auto given = record->cbegin(); given != record->cend(); ++given) {
            if (given.key() != QLatin1String("length") && platform::description(given.value()) == entry)
                return true;
        }
    }
    return scope == QLatin1String("run") && m_world.given.contains(entry);
}

void Scan::forecastForGroup(const SeenPanel &panel, const Call &call, const QString &entry)
{
    QMap<QString, QString> texts = panel.texts();
    for (QString &text : texts) {
        // Stays to be seen, and is no entry.
        if (!passesFunction(text, call.request.config))
            text.clear();
    }
    if (!allowsEqual(call.request.config) && texts.values().contains(entry)) {
        forecastRefusal("another slot has it");
        return;
    }
    const QStringList asked = labelsIn(call.request.config, "input");
    for (const QString &slot : m_world.shape.slotNames) {
        const bool isFilled = m_recordsBefore.value(panel.key).contains(slot);
        if (asked.contains(slot) && panel.isSwitchedOn(slot) && !isFilled) {
            m_forecast = Forecast::Lands;
            m_expected = {panel.key, slot};
            return;
        }
    }
    forecastRefusal("no slot waits for it");
}

QSet<Scan::Place> Scan::placesOfText() const
{
    QSet<Place> places;
    for (const SeenPanel &panel : panelsIn(m_world.root())) {
        // Under an error's panel stands what its group has answered before.
        const Call *call = m_world.callAt(panel.key);
        if (call && call->fate != Fate::Asks)
            continue;
        const Dictionary record = m_world.record(panel.key);
        for (auto entry = record.cbegin(); entry != record.cend(); ++entry) {
            if (entry.value().toString().contains(m_mark))
                places.insert({panel.key, entry.key()});
        }
    }
    for (const HandedBack &answer : m_world.handedBack) {
        if (answer.text.contains(m_mark))
            places.insert({answer.panelKey, QStringLiteral("(answer)")});
    }
    return places;
}

bool Scan::isTakenByLoop() const
{
    return m_focus.place == Focus::Place::Loop && m_wasFocusChosen && m_world.loopText() != m_loopBefore;
}

void Scan::broken(const QString &what) const
{
    const QString focus = m_focus.widget.isEmpty() ? QStringLiteral("nothing") : m_focus.widget;
    throw BrokenPromise{
        QStringLiteral("the scan \"%1\", with the focus on %2, %3").arg(m_entry.left(40), focus, what)};
}

void Scan::judge()
{
    const QSet<Place> places = placesOfText() - m_placesBefore;
    const bool isRefused = m_world.hasErrorLine(m_mark);
    // Where a panel went by itself meanwhile, nobody can say what came first.
    if (m_world.hasTimedOut)
        forecastNothing();
    m_world.scanning.clear();
    if (isTakenByLoop()) {
        m_world.mayLoopChange = true;
        return;
    }
    if (m_world.loopText() != m_loopBefore)
        broken("changed the loop's number");
    if (places.size() > 1)
        broken("is in two places");
    if (places.isEmpty() && !isRefused && m_placesBefore.isEmpty() && !m_world.mayLoseUnjudged)
        broken("is nowhere, and no line says why");
    if (!places.isEmpty() && isRefused)
        broken("was refused and is stored as well");
    if (places.isEmpty() && m_forecast == Forecast::Lands && m_placesBefore.isEmpty())
        broken(QStringLiteral("was refused by panel %1, which waits for it").arg(m_expected.first));
    if (!places.isEmpty())
        judgeLanding(*places.cbegin());
}

void Scan::judgeLanding(const Place &place) const
{
    const QString where = QStringLiteral("landed in %1 of panel %2").arg(place.second, place.first);
    if (m_forecast == Forecast::Refused)
        broken(where + QLatin1String(" though ") + m_reason);
    const bool isAnswer = place == Place(m_expected.first, QStringLiteral("(answer)"));
    if (m_forecast == Forecast::Lands && place != m_expected && !isAnswer)
        broken(where + QStringLiteral(" and not in %1 of panel %2").arg(m_expected.second, m_expected.first));
    const QList<SeenPanel> panels = panelsIn(m_world.root());
    const SeenPanel *panel = panelWithKey(panels, place.first);
    if (!panel)
        return;
    // A panel that ended with its last entry has made place for the next one of its key.
    if (place.second == QLatin1String("(answer)"))
        return;
    if (!panel->texts().value(place.second).contains(m_mark))
        broken(where + QLatin1String(", which does not show it"));
    if (!panel->isVisible)
        broken(where + QLatin1String(", which is hidden"));
    m_world.entered[place.first + QLatin1Char(' ') + place.second].insert(
        m_world.record(place.first).value(place.second).toString());
    judgeReplacement(place);
    m_world.isFocusChosen = false;
}

/// Without the operator's choosing it, a filled field gets no entry while another panel waits for one.
void Scan::judgeReplacement(const Place &place) const
{
    if (m_isBehindPress || m_wasFocusChosen ||
        m_recordsBefore.value(place.first).value(place.second).toString().isEmpty())
        return;
    for (const SeenPanel &panel : panelsIn(m_world.root())) {
        const bool isWaiting = panel.isVisible && panel.entry && panel.shown.isEmpty() &&
                               !m_recordsBefore.value(panel.key).contains(panel.entry->label) &&
                               m_recordsBefore.contains(panel.key);
        if (isWaiting)
            broken(QStringLiteral("replaced the entry of panel %1 while panel %2 waits for one")
                       .arg(place.first, panel.key));
    }
}

} // namespace monkey
