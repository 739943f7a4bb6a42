#include "tests/monkey/Press.h"

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
    PressedPanel pressed{m_title, panel.buttons.last() == button, panel.texts(), {}};
    // Keys that were not ended with Return are no entry; of all buttons "OK" alone ends them.
    if (m_title != QLatin1String("OK") && panel.shown.isEmpty() && panel.entry &&
        panel.entry->field->hasBegunEntry()) {
        const QString label = panel.entry->label;
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
    if (!panel.entry || fits(panel.entry->text, lengthIn(m_call->request.config)))
        return Forecast::Ends;
    return Forecast::Stays;
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
    const QMap<QString, QString> texts = panel.texts();
    QStringList asked = labelsIn(m_call->request.config, "input");
    asked.removeIf([&](const QString &slot) { return !isOn(slot); });
    const bool isWhole = !asked.isEmpty() && std::ranges::none_of(asked, [&](const QString &slot) {
        return texts.value(slot).isEmpty();
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
        return m_forecast == Forecast::Stays || isRefused || m_call->hasEnded();
    });
    judgeStaying(press);
}

void Press::judgeStaying(const QString &press)
{
    const auto there =
        std::ranges::find_if(m_world.calls, [this](const auto &call) { return call->number == m_number; });
    if (there == m_world.calls.cend()) {
        if (m_forecast == Forecast::Stays)
            throw BrokenPromise{press + QLatin1String(" ended its call with half of what was asked")};
        return;
    }
    (*there)->pressed.reset();
    if (m_needsReason && !m_world.hasErrorLine(QString()))
        throw BrokenPromise{press + QLatin1String(" did nothing and did not say why")};
}

} // namespace monkey
