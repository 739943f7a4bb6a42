#include "tests/monkey/Chooser.h"

#include "tests/monkey/Requests.h"

namespace monkey {
namespace {

constexpr std::size_t MostCalls = 9;
constexpr qint64 UsualLength = 7;

QList<SeenPanel> visiblePanels(const World &world)
{
    QList<SeenPanel> panels = panelsIn(world.root());
    panels.removeIf([](const SeenPanel &panel) { return !panel.isVisible; });
    return panels;
}

} // namespace

Chooser::Chooser(const World &world, quint64 seed)
    : m_world(world)
    , m_seed(seed)
{}

Step Chooser::next(int number)
{
    Dice dice(m_seed, static_cast<quint64>(number));
    const int chanceOfCalls = m_world.calls.empty() ? 80 : 30;
    if (m_world.calls.size() < MostCalls && dice.below(100) < chanceOfCalls)
        return calls(dice);
    return act(dice);
}

/// One call, or several at the same moment.
Step Chooser::calls(Dice &dice) const
{
    const int count = dice.oneIn(3) ? 2 + dice.below(3) : 1;
    platform::Array requests;
    for (int i = 0; i < count; ++i)
        requests.append(randomRequest(dice, m_world.shape).toData());
    return {"call", {{"calls", requests}}};
}

Step Chooser::act(Dice &dice)
{
    const int what = dice.below(100);
    if (what < 33)
        return scan(dice);
    if (what < 59)
        return press(dice, false);
    if (what < 65)
        return press(dice, true);
    if (what < 67)
        return {"press by key", {}};
    if (what < 72)
        return clickField(dice);
    if (what < 79)
        return flip(dice, what >= 77);
    if (what < 81)
        return {"click nowhere", {}};
    if (what < 84)
        return resize(dice);
    if (what < 89)
        return {"switch group", {{"group", dice.pick(m_world.shape.groups)}}};
    if (what < 91)
        return {"begin", {{"text", newText(0).left(3)}}};
    if (what < 93)
        return {"type loop", {{"passes", dice.below(4)}}};
    if (what < 95)
        return {"tab", {}};
    if (what < 97)
        return {"return", {}};
    if (what < 99)
        return {"walk choices", {{"rows", 1 + dice.below(3)}}};
    return {"stop", {}};
}

Step Chooser::scan(Dice &dice)
{
    const QString text = fittingText(dice);
    switch (dice.below(24)) {
    case 0:
        return {"scan", {{"text", m_scanned.isEmpty() ? text : dice.pick(m_scanned)}}};
    case 1:
        return {"scan", {{"text", text}, {"behind", "too long"}}};
    case 2:
        return {"scan", {{"text", text}, {"behind", QString(QChar(0x1E))}}};
    case 3:
        return {"scan", {{"text", text}, {"behind", QString(QChar(0x1D)) + QLatin1Char('x')}}};
    default:
        break;
    }
    m_scanned.append(text);
    return {"scan", {{"text", text}}};
}

Step Chooser::press(Dice &dice, bool andScan)
{
    const QList<SeenPanel> panels = visiblePanels(m_world);
    if (panels.isEmpty())
        return {"press", {}};
    const SeenPanel panel = dice.pick(panels);
    const int at = dice.below(panel.buttons.size());
    Step step{"press", {{"panel", panel.key}, {"button", panel.buttons.at(at)->title()}, {"at", at}}};
    if (andScan)
        step.with.insert("scan", newText(wantedLength()));
    return step;
}

Step Chooser::clickField(Dice &dice) const
{
    const QList<SeenPanel> panels = visiblePanels(m_world);
    if (panels.isEmpty())
        return {"click field", {}};
    const SeenPanel panel = dice.pick(panels);
    const QList<SeenField> fields = panel.visibleFields();
    if (fields.isEmpty())
        return {"click field", {}};
    return {"click field", {{"panel", panel.key}, {"label", dice.pick(fields).label}}};
}

Step Chooser::flip(Dice &dice, bool andScan)
{
    Step step{"flip", {}};
    if (andScan)
        step.with.insert("scan", newText(wantedLength()));
    const QList<SeenPanel> panels = visiblePanels(m_world);
    if (panels.isEmpty())
        return step;
    const SeenPanel panel = dice.pick(panels);
    if (panel.switches.isEmpty())
        return step;
    step.with.insert("panel", panel.key);
    step.with.insert("slot", dice.pick(panel.switches).slot);
    return step;
}

Step Chooser::resize(Dice &dice) const
{
    // The buttons of all groups may stand in a row each; below them there is room for a part of a panel.
    constexpr int RowOfAButton = 34;
    const int least = 120 + RowOfAButton * static_cast<int>(m_world.shape.groups.size());
    return {"resize", {{"width", 200 + dice.below(1400)}, {"height", least + dice.below(900)}}};
}

const Call *Chooser::callWithFocus() const
{
    return m_world.callAt(focusIn(m_world.root()).panelKey);
}

qint64 Chooser::wantedLength() const
{
    const Call *call = callWithFocus();
    return call ? lengthIn(call->request.config) : UsualLength;
}

/// No text holds another one: each has its only letter that is no hexadecimal digit in front, and the digits
/// behind it are no beginning of a longer one's.
QString Chooser::newText(qint64 length)
{
    constexpr int First = 0x10000;
    constexpr int Hexadecimal = 16;
    const auto digits = static_cast<int>((length >= 6 ? length : UsualLength) - 1);
    return QLatin1Char('Z') +
           QString::number(First + ++m_texts, Hexadecimal).rightJustified(digits, QLatin1Char('0')).toUpper();
}

/// All of one length, so that none holds another one; a number and its text read alike.
QString Chooser::newNumber(Dice &dice, const platform::Dictionary &rule)
{
    constexpr int Digits = 6;
    const QString digits = QString::number(++m_texts).rightJustified(Digits, QLatin1Char('0'));
    if (rule.contains("decimals"))
        return QLatin1Char('7') + digits + QLatin1Char('7');
    return (dice.oneIn(5) ? QLatin1String("9.") : QLatin1String("3.")) + digits + QLatin1Char('7');
}

QString Chooser::fittingText(Dice &dice)
{
    const Call *call = callWithFocus();
    const platform::Dictionary config = call ? call->request.config : platform::Dictionary();
    if (platform::isDictionary(config.value("number")) && !dice.oneIn(6))
        return newNumber(dice, config.value("number").toMap());
    const QStringList choices = labelsIn(config, "choices");
    if (!choices.isEmpty() && !dice.oneIn(6))
        return dice.pick(choices).left(dice.oneIn(2) ? 2 : -1);
    const qint64 length = wantedLength();
    return newText(dice.oneIn(8) ? length + 1 : length);
}

} // namespace monkey
