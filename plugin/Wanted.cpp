#include "plugin/Wanted.h"

#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "layout/PanelPlan.h"

#include <QLocale>

#include "common/ConfigValues.h"
#include "common/Messages.h"

namespace interactive {

Wanted wantedBy(const platform::Dictionary &config)
{
    Wanted wanted;
    wanted.switches = config.value(config::Switch);
    wanted.inputs = config.value(config::Input);
    wanted.buttons = config.value(config::Button);
    if (wanted.switches.isValid() && !platform::isArray(wanted.switches))
        wanted.wrongType = QLatin1String(messages::SwitchIsNotArray);
    else if (wanted.inputs.isValid() && !platform::isArray(wanted.inputs))
        wanted.wrongType = QLatin1String(messages::InputIsNotArray);
    if (wanted.buttons.isValid() && !platform::isArray(wanted.buttons)) {
        // Taken as none: a text must not become a button for each of its letters.
        wanted.buttonsAreNoList = true;
        wanted.buttons = {};
    }
    wanted.switchCount = wanted.switches.toList().size();
    wanted.inputCount = wanted.inputs.toList().size();
    return wanted;
}

bool isInformative(const platform::Dictionary &config, bool forGroup)
{
    return forGroup && !config::text(config::Message, config).isEmpty();
}

AskContext askContextOf(const platform::Dictionary &config, const Wanted &wanted, bool forGroup)
{
    AskContext context;
    context.forGroup = forGroup;
    context.isMessage = isInformative(config, forGroup);
    if (!context.isMessage && wanted.switchCount == 0) {
        for (const platform::Value &label : wanted.inputs.toList())
            context.labels.append(platform::description(label));
    }
    context.buttons = plan::buttonTitles(wanted.buttons, forGroup ? PanelKind::Group : PanelKind::Slot,
                                         wanted.inputCount > 0, wanted.switchCount > 0);
    context.length = config::integer(config::Length, config);
    const QString point = QLocale(KVKConfigEngine::sharedConfigEngine()->locale()).decimalPoint();
    context.decimalPoint = point.isEmpty() ? QLatin1Char('.') : point.at(0);
    return context;
}

} // namespace interactive
