#include "tests/monkey/Press.h"

#include "tests/monkey/AskModel.h"
#include "tests/monkey/Promises.h"

#include <algorithm>

namespace monkey {

Press::Press(World &world, const SeenPanel &panel, platform::Button *button)
    : m_world(world)
    , m_panelKey(panel.key)
    , m_title(button->title())
    , m_call(world.callAt(panel.key))
{
    if (!m_call)
        return;
    m_number = m_call->number;
    m_mayBeEarly = m_call->request.config.contains("validate");
    m_isAutomatic = m_call->request.config.value("autoConfirm").toBool();
    PressedPanel pressed{m_title, panel.buttons.last() == button, panel.texts()};
    // Keys that were not ended with Return are no entry; of all buttons "OK" alone ends them.
    if (panel.entry && panel.entry->field->hasBegunEntry()) {
        const QString label = panel.entry->label;
        if (m_title == QLatin1String("OK"))
            pressed.begun = panel.entry->text;
        else if (panel.shown.isEmpty())
            pressed.texts.insert(label, world.record(panel.key).value(label).toString());
    }
    for (const SeenSwitch &seen : panel.switches) {
        if (seen.isOn)
            pressed.on.append(seen.slot);
    }
    m_call->pressed = pressed;
    m_forecast = forecastOf(panel);
    m_needsReason = m_title == QLatin1String("OK") && (panel.shown.isEmpty() || pressed.on.isEmpty());
}

bool Press::asksNothing() const
{
    const platform::Dictionary &config = m_call->request.config;
    return labelsIn(config, "input").isEmpty() && labelsIn(config, "switch").isEmpty();
}

Press::Forecast Press::forecastOf(const SeenPanel &panel) const
{
    // A group's panel, that of a refusal included, can be confirmed once its group is switched on.
    if (m_title == QLatin1String("OK") && m_world.shape.groups.contains(m_panelKey) &&
        !m_world.isGroupOn(m_panelKey))
        return Forecast::Stays;
    if (m_call->fate == Fate::Refused)
        return Forecast::Ends;
    // A group's panel that asks for nothing is ended by each of its buttons.
    const bool endsByAny = m_call->request.function == Function::ShowGroupView && asksNothing();
    if (m_title == QLatin1String("Clear") && !endsByAny)
        return Forecast::Stays;
    return m_title == QLatin1String("OK") ? forecastOfOk(panel) : Forecast::Ends;
}

Press::Forecast Press::forecastOfOk(const SeenPanel &panel) const
{
    if (m_call->request.function == Function::ShowGroupView)
        return forecastOfGroupsOk(panel);
    if (!panel.entry)
        return Forecast::Ends;
    const platform::Dictionary &config = m_call->request.config;
    const std::optional<platform::Value> value = taken(panel.entry->text, config);
    if (!value)
        return Forecast::Stays;
    // Others may have been given the same since, and a function judges only now what nobody has ended.
    const bool stands = m_world.record(panel.key).value(panel.entry->label) == *value;
    if (config.contains("unique") || (config.contains("validate") && !stands))
        return Forecast::Unsure;
    return Forecast::Ends;
}

Press::Forecast Press::forecastOfGroupsOk(const SeenPanel &panel) const
{
    if (asksNothing())
        return Forecast::Ends;
    const auto isOn = [&](const QString &slot) { return panel.isSwitchedOn(slot); };
    if (!panel.entry) {
        const QStringList asked = labelsIn(m_call->request.config, "switch");
        return std::ranges::any_of(asked, isOn) ? Forecast::Ends : Forecast::Open;
    }
    // "OK" confirms them, one by one, and one of them may be given already.
    if (m_call->request.config.contains("default"))
        return Forecast::Unsure;
    // What is stored is shown, or the station would not be at rest; an entry may be empty.
    const platform::Dictionary record = m_world.record(panel.key);
    QStringList asked = labelsIn(m_call->request.config, "input");
    asked.removeIf([&](const QString &slot) { return !isOn(slot); });
    const bool isWhole = !asked.isEmpty() && std::ranges::all_of(asked, [&](const QString &slot) {
        return record.contains(slot);
    });
    return isWhole ? Forecast::Ends : Forecast::Stays;
}

void Press::settle()
{
    const QString press = QStringLiteral("the press of \"%1\" on panel %2").arg(m_title, m_panelKey);
    if (!m_call)
        throw BrokenPromise{press + QLatin1String(" has no call to end")};
    const QString stuck = QStringLiteral("%1 did not end %2").arg(press, m_call->inWords());
    m_world.endConfirmations();
    monkey::settle(m_world, stuck, [this] {
        const bool isRefused = m_forecast == Forecast::Open && m_world.hasErrorLine(QString());
        const bool isDue = m_forecast == Forecast::Ends || m_forecast == Forecast::Open;
        // The button waits a moment whether the key is the beginning of a scan.
        const bool isTold = !isDue && (!m_needsReason || m_world.hasErrorLine(QString()));
        return isTold || isRefused || cameTooEarly() || m_call->hasEnded();
    });
    judgeStaying(press);
}

/// A scan right behind the press may be the last entry that its panel has waited for.
bool Press::mayEndByItself() const
{
    return m_isAutomatic && !m_world.scanning.isEmpty();
}

/// A scan right behind the press is another entry, which nobody had seen when the button was pressed.
bool Press::cameTooEarly() const
{
    const bool isRefused = !m_world.scanning.isEmpty() && m_world.hasErrorLine(m_world.scanning);
    return m_mayBeEarly && (isRefused || m_world.wasTold(QStringLiteral("pressed before the entry")));
}

void Press::judgeStaying(const QString &press)
{
    const auto there =
        std::ranges::find_if(m_world.calls, [this](const auto &call) { return call->number == m_number; });
    if (there == m_world.calls.cend()) {
        if (m_forecast == Forecast::Stays && !m_world.hasTimedOut && !mayEndByItself())
            throw BrokenPromise{press + QLatin1String(" ended its call with half of what was asked")};
        return;
    }
    (*there)->pressed.reset();
    if (m_needsReason && !cameTooEarly() && !m_world.hasErrorLine(QString()))
        throw BrokenPromise{press + QLatin1String(" did nothing and did not say why")};
}

} // namespace monkey
