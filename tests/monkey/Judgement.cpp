#include "tests/monkey/Promises.h"

#include <QSet>

using platform::Dictionary;
using platform::Error;
using platform::Value;

namespace monkey {
namespace {

constexpr int Interrupted = 401;
constexpr int NothingToDraw = 402;
constexpr int Beyond = 404;
const QString ClickedButton = QStringLiteral("clickedButton");

[[noreturn]] void broken(Call &call, const QString &what)
{
    const Error error = call.error();
    QString gaveBack = platform::description(call.result());
    if (error.isPresent())
        gaveBack += QStringLiteral(", error %1: %2").arg(error.code).arg(error.localizedDescription);
    throw BrokenPromise{call.inWords() + QLatin1String(", gave back ") + gaveBack + QLatin1String(": ") +
                        what};
}

bool isRefusalCode(int code)
{
    return (code >= 100 && code <= 105) || code == 405;
}

bool isStoredAnswer(const World &world, Call &call)
{
    const Value result = call.result();
    const auto stored = world.answers.constFind(questionOf(call.request));
    return world.wasLoopOn && !call.wasAsked() && !call.error().isPresent() &&
           stored != world.answers.cend() && *stored == result;
}

void judgeData(World &world, Call &call)
{
    if (call.request.function == Function::IsLoopFinished && call.result() == Value(1))
        world.forgetAnswersOf(call.request.subject.toInt());
    if (call.request.function != Function::GetData || call.hasThrown() || call.error().isPresent())
        return;
    const int system = call.request.subject.toInt();
    const QString slot = world.shape.slotNames.at(system % world.shape.slotNames.size());
    const QString place = world.shape.groups.at(world.shape.groupOf(system)) + QLatin1Char(' ') + slot;
    if (!world.entered.value(place).contains(call.result().toString()))
        broken(call, "that was never entered there");
}

/// A call whose panel was never up.
void judgeUnasked(World &world, Call &call)
{
    const int code = call.error().code;
    if (call.isStopped && code == Interrupted && !call.result().isValid())
        return;
    if (isStoredAnswer(world, call))
        return;
    const bool isRight = (call.fate == Fate::Beyond && code == Beyond) ||
                         (call.fate == Fate::CannotDraw && code == NothingToDraw) ||
                         (call.fate == Fate::Message && code == 0 && call.result() == Value(Dictionary()));
    if (!isRight)
        broken(call, "nobody was asked");
}

void judgeInputs(World &world, Call &call, const Dictionary &answer)
{
    const PressedPanel &pressed = *call.pressed;
    const bool forGroup = call.request.function == Function::ShowGroupView;
    for (auto entry = answer.cbegin(); entry != answer.cend(); ++entry) {
        if (entry.key() == ClickedButton)
            continue;
        const QString text = entry.value().toString();
        if (pressed.texts.value(entry.key()) != text)
            broken(call, QStringLiteral("\"%1\" was not to be seen when it was pressed").arg(text));
        world.handedBack.append({call.panelKey, text});
        world.entered[call.panelKey + QLatin1Char(' ') + entry.key()].insert(text);
    }
    if (pressed.title != QLatin1String("OK"))
        return;
    for (const QString &label : labelsIn(call.request.config, "input")) {
        const bool isAsked = !forGroup || pressed.on.contains(label);
        if (isAsked && !answer.contains(label))
            broken(call, label + QLatin1String(" is missing"));
        if (isAsked && forGroup && answer.value(label).toString().isEmpty())
            broken(call, label + QLatin1String(" is empty"));
    }
}

void judgeSwitches(Call &call, const Dictionary &answer)
{
    if (call.request.function != Function::ShowGroupView)
        return;
    for (const QString &slot : labelsIn(call.request.config, "switch")) {
        if (call.pressed->on.contains(slot) != answer.contains(slot))
            broken(call, slot + QLatin1String(" was switched otherwise"));
    }
}

void judgeAnswer(World &world, Call &call)
{
    if (call.error().isPresent())
        broken(call, "an error though it was answered");
    const Value result = call.result();
    if (call.pressed->title == QLatin1String("Cancel")) {
        if (result.isValid())
            broken(call, "an answer though it was cancelled");
        world.answers.remove(questionOf(call.request));
        return;
    }
    const bool asksInputs = !labelsIn(call.request.config, "input").isEmpty();
    const bool asksSwitches = !labelsIn(call.request.config, "switch").isEmpty();
    if (!asksInputs && !asksSwitches) {
        if (result != Value(call.pressed->isLast))
            broken(call, "not what the pressed button means");
        return;
    }
    if (!platform::isDictionary(result) || result.toMap().contains("length"))
        broken(call, "no answer to what was asked");
    if (asksSwitches)
        judgeSwitches(call, result.toMap());
    else
        judgeInputs(world, call, result.toMap());
    world.answers.insert(questionOf(call.request), result);
}

/// A call whose panel was up.
void judgeAsked(World &world, Call &call)
{
    const Error error = call.error();
    if (call.isStopped && error.code == Interrupted) {
        if (call.result().isValid())
            broken(call, "an answer though it was stopped");
        return;
    }
    if (!call.pressed)
        broken(call, "its panel was not pressed");
    if (call.fate == Fate::Asks)
        judgeAnswer(world, call);
    else if (call.fate != Fate::Refused || call.result().isValid() ||
             (error.isPresent() && !isRefusalCode(error.code)))
        broken(call, "it was refused");
}

} // namespace

void judgeEnded(World &world, Call &call)
{
    if (call.fate == Fate::Returns) {
        judgeData(world, call);
        return;
    }
    if (call.hasThrown() != (call.fate == Fate::Throws))
        broken(call, "an exception, or none where one was due");
    if (call.fate == Fate::Throws)
        return;
    if (call.wasAsked())
        judgeAsked(world, call);
    else
        judgeUnasked(world, call);
}

} // namespace monkey
