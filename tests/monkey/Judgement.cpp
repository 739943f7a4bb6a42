#include "tests/monkey/AskModel.h"
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
    return (code >= 100 && code <= 105) || (code >= 110 && code <= 121) || code == 405;
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

bool endsByItself(const Call &call)
{
    return call.request.config.value("autoConfirm") == Value(true);
}

/// Whether the operator has seen it as entered when the call ended, or as a default to be confirmed.
bool wasSeen(const World &world, const Call &call, const QString &label, const Value &value)
{
    const Dictionary &config = call.request.config;
    const auto standsFor = [&](const QString &text) {
        return text == value.toString() || taken(text, config) == value;
    };
    const QString byDefault = defaultOf(label, config);
    if (!call.pressed->begun.isEmpty() && standsFor(call.pressed->begun))
        return true;
    if (standsFor(call.pressed->texts.value(label)) || (!byDefault.isEmpty() && standsFor(byDefault)))
        return true;
    if (!endsByItself(call))
        return false;
    const QString text = value.toString();
    const QString field = call.panelKey + QLatin1Char(' ') + label;
    const bool isWalkedTo = world.isWalking && labelsIn(config, "choices").contains(text);
    const bool isReturned = world.returned.first == call.panelKey && standsFor(world.returned.second);
    return isWalkedTo || isReturned || world.entered.value(field).contains(text) ||
           (!world.scanning.isEmpty() && text.contains(world.scanning));
}

void judgeInputs(World &world, Call &call, const Dictionary &answer)
{
    const PressedPanel &pressed = *call.pressed;
    const bool forGroup = call.request.function == Function::ShowGroupView;
    for (auto entry = answer.cbegin(); entry != answer.cend(); ++entry) {
        if (entry.key() == ClickedButton)
            continue;
        const QString text = entry.value().toString();
        if (!wasSeen(world, call, entry.key(), entry.value()))
            broken(call, QStringLiteral("\"%1\" was not to be seen when it was pressed").arg(text));
        world.handedBack.append({call.panelKey, text});
        world.given.insert(platform::description(entry.value()));
        world.entered[call.panelKey + QLatin1Char(' ') + entry.key()].insert(text);
    }
    if (pressed.title != QLatin1String("OK"))
        return;
    for (const QString &label : labelsIn(call.request.config, "input")) {
        const bool isAsked = !forGroup || pressed.on.contains(label);
        if (isAsked && !answer.contains(label))
            broken(call, label + QLatin1String(" is missing"));
        // Return in an empty field is an entry, too.
        const bool mayBeEmpty =
            world.entered.value(call.panelKey + QLatin1Char(' ') + label).contains(QString());
        if (isAsked && forGroup && !mayBeEmpty && answer.value(label).toString().isEmpty())
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

/// Nobody answered it in time. What was entered is told with the error.
void judgeTimeOver(World &world, Call &call)
{
    const std::chrono::milliseconds limit(limitOf(call.request.config));
    if (!call.isLimited() || std::chrono::steady_clock::now() - call.made < limit)
        broken(call, "its time was not over");
    if (call.result().isValid())
        broken(call, "an answer though its time was over");
    world.hasTimedOut = true;
    world.mayLoseUnjudged = world.mayLoseUnjudged || call.request.config.contains("validate");
    const Dictionary entered = call.error().additions.value("answer").toMap();
    for (const Value &entry : entered)
        world.handedBack.append({call.panelKey, entry.toString()});
}

/// A call whose panel was up.
void judgeAsked(World &world, Call &call)
{
    const Error error = call.error();
    if (error.code == Call::TimeOver) {
        judgeTimeOver(world, call);
        return;
    }
    if (!call.pressed && endsByItself(call) && call.fate == Fate::Asks)
        call.pressed = PressedPanel{QStringLiteral("OK"), true, {}};
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
