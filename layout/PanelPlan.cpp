#include "layout/PanelPlan.h"

#include "common/ConfigValues.h"
#include "common/Identifiers.h"

namespace interactive::plan {

PanelPlan made(const PanelRequest &request, quint64 slotCount, PanelSettings &settings)
{
    const platform::Dictionary &config = request.config;
    PanelPlan plan;
    plan.subject = request.subject;
    plan.rules = request.rules;
    plan.guidance = request.guidance;
    plan.kind = request.subject.isGroup ? PanelKind::Group : PanelKind::Slot;
    plan.title = title(config, plan.subject.groupName.text(), plan.subject.slot);
    plan.label = config::label(config);
    plan.message = config::text(config::Message, config);
    plan.messageFontSize = messageFontSize(config);
    plan.messageColor = config::text(config::MessageColor, config);
    plan.messageAlignment = messageAlignment(config);
    plan.length = config::integer(config::Length, config);
    plan.columns = columns(config, settings.columns(), slotCount);
    plan.look = settings.takeLook(config);
    settings.setColumns(plan.columns);
    plan.inputs = request.inputs;
    plan.switchCount = request.switches.size();
    plan.buttons =
        buttonTitles(request.buttons, plan.kind, !request.inputs.isEmpty(), !request.switches.isEmpty());
    return plan;
}

quint64 columns(const platform::Dictionary &config, quint64 current, quint64 slotCount)
{
    const qint64 wanted = config::integer(config::Column, config);
    // 0 is what a text that is no number reads as. A negative number becomes so large that no window could
    // hold the panel, and is refused for that.
    if (wanted != 0)
        return static_cast<quint64>(wanted);
    return current != 0 ? current : slotCount;
}

double messageFontSize(const platform::Dictionary &config)
{
    constexpr double DefaultSize = 15.0;
    const qint64 size = config::integer(config::MessageFont, config);
    return size == 0 ? DefaultSize : static_cast<double>(size);
}

platform::TextAlignment messageAlignment(const platform::Dictionary &config)
{
    constexpr quint64 LastAlignment = 4;
    const QString text = config::text(config::MessageAlignment, config);
    // Taken unsigned, so that a negative number is none of the alignments.
    const auto number = static_cast<quint64>(platform::integerValue(text));
    if (text.isEmpty() || number > LastAlignment)
        return platform::TextAlignment::Center;
    return static_cast<platform::TextAlignment>(number);
}

QString title(const platform::Dictionary &config, const QString &groupName, const platform::Value &slot)
{
    const QString given = config::text(config::Title, config);
    if (!given.isEmpty())
        return given;
    return slot.isValid() ? QStringLiteral("%1: %2").arg(groupName, platform::description(slot)) : groupName;
}

QStringList buttonTitles(const platform::Value &configured, PanelKind kind, bool hasInputs, bool hasSwitches)
{
    // The affirmative button stands last, where the one that passes is looked for.
    if (hasSwitches)
        return {QStringLiteral("Cancel"), QStringLiteral("OK")};
    if (kind == PanelKind::Group && hasInputs)
        return {QStringLiteral("Cancel"), QStringLiteral("Clear"), QStringLiteral("OK")};
    QStringList titles;
    for (const platform::Value &title : configured.toList())
        titles.append(platform::description(title));
    return titles.isEmpty() ? QStringList{QStringLiteral("OK")} : titles;
}

platform::Identifier buttonIdentifier(const PanelPlan &plan, qsizetype i)
{
    // A panel of switches has its slots as inputs, too, and its "OK" keeps its name: by that the call tells a
    // confirmed panel from a cancelled one.
    const bool isLast = i + 1 == plan.buttons.size();
    if (isLast && !(plan.hasInputs() && plan.hasSwitches()))
        return platform::Identifier(identifiers::Pass);
    return identifiers::indexed(plan.subject.panelKey.text(), i, plan.buttons.at(i));
}

} // namespace interactive::plan
