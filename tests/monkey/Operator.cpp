#include "tests/monkey/Operator.h"

#include "plugin/InteractiveView.h"
#include "station/operator/OperatorFailure.h"
#include "tests/monkey/Press.h"
#include "tests/monkey/Promises.h"
#include "tests/monkey/Scan.h"

#include <QWidget>

#include <algorithm>
#include <utility>

using platform::Button;
using platform::View;

namespace monkey {
namespace {

constexpr qint64 UsualLength = 7;
constexpr qint64 TooLong = 5000;

QList<SeenPanel> visiblePanels(const World &world)
{
    QList<SeenPanel> panels = panelsIn(world.root());
    panels.removeIf([](const SeenPanel &panel) { return !panel.isVisible; });
    return panels;
}

Button *buttonWithTitle(const SeenPanel &panel, const QString &title)
{
    for (const auto &button : panel.buttons) {
        if (button->title() == title)
            return button;
    }
    return nullptr;
}

/// The button that ends a panel with the least ado.
Button *easiestButton(const SeenPanel &panel)
{
    for (const char *title : {"Cancel", "OK"}) {
        if (Button *button = buttonWithTitle(panel, QLatin1String(title)))
            return button;
    }
    for (const auto &button : panel.buttons) {
        if (button->title() != QLatin1String("Clear"))
            return button;
    }
    return panel.buttons.last();
}

} // namespace

Operator::Operator(World &world, Diary diary)
    : m_world(world)
    , m_diary(std::move(diary))
    , m_hands(&world.window)
{}

void Operator::act(Dice &dice)
{
    const int what = dice.below(100);
    if (what < 34)
        scanSomething(dice);
    else if (what < 62)
        pressSomething(dice);
    else if (what < 68)
        pressAndScan(dice);
    else if (what < 70)
        pressByKey();
    else if (what < 75)
        clickField(dice);
    else if (what < 80)
        clickSwitch(dice);
    else if (what < 82)
        switchAndScan(dice);
    else if (what < 84)
        clickNowhere();
    else if (what < 87)
        resize(dice);
    else if (what < 92)
        toggleGroup(dice);
    else if (what < 95)
        beginEntry();
    else if (what < 97)
        typeLoopNumber(dice);
    else if (what < 99)
        tab();
    else
        stop();
}

void Operator::type(const QString &text)
{
    m_hands.type(text);
}

bool Operator::click(View *view)
{
    try {
        m_hands.click(view);
        return true;
    } catch (const station::OperatorFailure &why) {
        m_diary(QStringLiteral("  cannot be clicked: %1").arg(QString::fromUtf8(why.what())));
        return false;
    }
}

/// No text holds another one: each has its only letter that is no hexadecimal digit in front, and the digits
/// behind it are no beginning of a longer one's.
QString Operator::newText(qint64 length)
{
    constexpr int First = 0x10000;
    constexpr int Hexadecimal = 16;
    const auto digits = static_cast<int>((length >= 6 ? length : UsualLength) - 1);
    return QLatin1Char('Z') +
           QString::number(First + ++m_texts, Hexadecimal).rightJustified(digits, QLatin1Char('0')).toUpper();
}

qint64 Operator::wantedLength() const
{
    const Focus focus = focusIn(m_world.root());
    const Call *call = m_world.callAt(focus.panelKey);
    return call ? lengthIn(call->request.config) : UsualLength;
}

void Operator::scan(const QString &entry, const QString &mark)
{
    m_diary(QStringLiteral("scan \"%1\"").arg(entry.left(40)));
    Scan scan(m_world, entry, mark);
    type(entry + QLatin1Char('\n'));
    settle(m_world);
    scan.judge();
}

void Operator::scanSomething(Dice &dice)
{
    const qint64 length = wantedLength();
    const QString text = newText(dice.oneIn(8) ? length + 1 : length);
    switch (dice.below(24)) {
    case 0: {
        if (m_scanned.isEmpty())
            break;
        const QString again = dice.pick(m_scanned);
        scan(again, again);
        return;
    }
    case 1:
        scan(text + QString(TooLong, QLatin1Char('x')), text);
        return;
    case 2:
        scan(text + QChar(0x1E), text);
        return;
    case 3:
        scan(text + QChar(0x1D) + QLatin1Char('x'), text);
        return;
    default:
        break;
    }
    m_scanned.append(text);
    scan(text, text);
}

void Operator::press(const SeenPanel &panel, Button *button)
{
    m_diary(QStringLiteral("press \"%1\" on panel %2").arg(button->title(), panel.key));
    Press press(m_world, panel, button);
    if (!click(button))
        throw BrokenPromise{
            QStringLiteral("\"%1\" of panel %2 cannot be pressed").arg(button->title(), panel.key)};
    press.settle();
}

void Operator::pressSomething(Dice &dice)
{
    const QList<SeenPanel> panels = visiblePanels(m_world);
    if (panels.isEmpty())
        return;
    const SeenPanel panel = dice.pick(panels);
    press(panel, dice.pick(panel.buttons));
}

void Operator::pressAndScan(Dice &dice)
{
    const QList<SeenPanel> panels = visiblePanels(m_world);
    if (panels.isEmpty())
        return;
    const SeenPanel panel = dice.pick(panels);
    Button *button = dice.pick(panel.buttons);
    const QString text = newText(wantedLength());
    m_diary(QStringLiteral("press \"%1\" on panel %2 and scan \"%3\" at once")
                .arg(button->title(), panel.key, text));
    Scan scan(m_world, text, text);
    scan.forecastNothing();
    Press press(m_world, panel, button);
    if (!click(button))
        throw BrokenPromise{
            QStringLiteral("\"%1\" of panel %2 cannot be pressed").arg(button->title(), panel.key)};
    type(text + QLatin1Char('\n'));
    press.settle();
    scan.judge();
}

/// The space bar presses the button that has the focus.
void Operator::pressByKey()
{
    for (const SeenPanel &panel : visiblePanels(m_world)) {
        for (const auto &button : panel.buttons) {
            if (!button->isFirstResponder())
                continue;
            m_diary(QStringLiteral("press \"%1\" on panel %2 with the space bar")
                        .arg(button->title(), panel.key));
            Press press(m_world, panel, button);
            type(QStringLiteral(" "));
            press.settle();
            return;
        }
    }
}

void Operator::clickField(Dice &dice)
{
    const QList<SeenPanel> panels = visiblePanels(m_world);
    if (panels.isEmpty())
        return;
    const SeenPanel panel = dice.pick(panels);
    QList<SeenField> fields = panel.shown;
    if (panel.entry)
        fields.append(*panel.entry);
    fields.removeIf([](const SeenField &field) { return !field.field->isVisible(); });
    if (fields.isEmpty())
        return;
    const SeenField field = dice.pick(fields);
    m_diary(QStringLiteral("click field %1 of panel %2").arg(field.label, panel.key));
    m_world.isFocusChosen = true;
    if (click(field.field))
        settle(m_world);
}

void Operator::clickSwitch(Dice &dice)
{
    const QList<SeenPanel> panels = visiblePanels(m_world);
    if (panels.isEmpty())
        return;
    const SeenPanel panel = dice.pick(panels);
    QList<SeenSwitch> switches = panel.switches;
    switches.removeIf([](const SeenSwitch &seen) { return !seen.button->isVisible(); });
    if (switches.isEmpty())
        return;
    const SeenSwitch seen = dice.pick(switches);
    m_diary(QStringLiteral("click switch %1 of panel %2").arg(seen.slot, panel.key));
    if (click(seen.button))
        settle(m_world);
}

void Operator::switchAndScan(Dice &dice)
{
    const QString text = newText(wantedLength());
    Scan scan(m_world, text, text);
    scan.forecastNothing();
    clickSwitch(dice);
    m_diary(QStringLiteral("  and scan \"%1\" after it").arg(text));
    type(text + QLatin1Char('\n'));
    settle(m_world);
    scan.judge();
}

bool Operator::answerFirstPanel()
{
    const QList<SeenPanel> panels = visiblePanels(m_world);
    if (panels.isEmpty())
        return false;
    const SeenPanel &panel = panels.first();
    const Call *call = m_world.callAt(panel.key);
    Button *button = easiestButton(panel);
    if (call && panel.entry && button->title() == QLatin1String("OK")) {
        m_diary(QStringLiteral("click field %1 of panel %2").arg(panel.entry->label, panel.key));
        m_world.isFocusChosen = true;
        if (!click(panel.entry->field))
            throw BrokenPromise{QStringLiteral("the field of panel %1 cannot be clicked").arg(panel.key)};
        settle(m_world);
        type(QString(panel.entry->field->stringValue().size(), QLatin1Char('\b')));
        const QString text = newText(lengthIn(call->request.config));
        scan(text, text);
    }
    for (const SeenPanel &now : visiblePanels(m_world)) {
        if (now.key == panel.key && now.buttons.contains(button))
            press(now, button);
    }
    return true;
}

} // namespace monkey
