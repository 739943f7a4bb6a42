#include "tests/monkey/World.h"

#include "plugin/InteractiveView.h"

#include <algorithm>

using platform::Button;
using platform::Dictionary;
using platform::TextField;
using platform::View;

namespace monkey {

View *World::root() const
{
    return qobject_cast<View *>(plugin.view());
}

bool World::isGroupOn(const QString &group) const
{
    const Button *button = groupButtonIn(root(), group);
    return button && button->state() == Button::On;
}

Call *World::callAt(const QString &panelKey) const
{
    const auto found = std::ranges::find_if(calls, [&](const auto &call) {
        return call->state() == Call::State::WaitsForOperator && call->panelKey == panelKey;
    });
    return found == calls.cend() ? nullptr : found->get();
}

bool World::isLoopOn() const
{
    return plugin.property("isLoopEnabled").toBool();
}

QString World::loopText() const
{
    const TextField *field = loopFieldIn(root());
    return field ? field->stringValue() : QString();
}

bool World::isAnyLimited() const
{
    return std::ranges::any_of(calls, [](const auto &call) { return call->isLimited(); });
}

void World::noteEntered()
{
    for (const SeenPanel &panel : panelsIn(root())) {
        const Dictionary stored = record(panel.key);
        for (auto entry = stored.cbegin(); entry != stored.cend(); ++entry)
            entered[panel.key + QLatin1Char(' ') + entry.key()].insert(entry.value().toString());
    }
}

Dictionary World::record(const QString &panelKey) const
{
    return plugin.property("savedData").toMap().value(panelKey).toMap();
}

bool World::hasErrorLine(const QString &part) const
{
    return std::ranges::any_of(log.proxyLines(), [&](const testsupport::LogRecorder::Line &line) {
        return line.level == KVKLogLevel::Error && line.message.contains(part);
    });
}

bool World::wasTold(const QString &part) const
{
    return !operatorLines.filter(part).isEmpty();
}

QString World::waitingInWords() const
{
    QStringList words;
    for (const auto &call : calls) {
        if (!call->hasEnded())
            words.append(QLatin1String("  ") + call->inWords());
    }
    return words.join(QLatin1Char('\n'));
}

void World::beginStep(int number)
{
    step = number;
    log.clear();
    operatorLines.clear();
    handedBack.clear();
    scanning.clear();
    hasTimedOut = false;
    mayLoseUnjudged = false;
    isWalking = false;
    mayLoopChange = false;
    returned = {};
    wasLoopOn = isLoopOn();
}

QString World::errorLines() const
{
    QStringList lines;
    for (const testsupport::LogRecorder::Line &line : log.proxyLines()) {
        if (line.level == KVKLogLevel::Error)
            lines.append(QLatin1String("  ") + line.message.left(200));
    }
    return lines.join(QLatin1Char('\n'));
}

Call &World::make(const Request &request)
{
    mayLoopChange = mayLoopChange || request.function == Function::SetLoop;
    wasLoopOn = wasLoopOn || request.function == Function::SetLoop;
    return *calls.emplace_back(std::make_unique<Call>(++callsMade, step, request, shape, plugin));
}

void World::forgetAnswersOf(int group)
{
    answers.removeIf([&](const QMap<QString, platform::Value>::iterator &answer) {
        const QString subject = answer.key().section(QLatin1Char(' '), 1, 1).chopped(1);
        const bool isGroups = answer.key().startsWith(QLatin1String("showGroupView"));
        return (isGroups ? subject.toInt() : shape.groupOf(subject.toInt())) == group;
    });
}

} // namespace monkey
