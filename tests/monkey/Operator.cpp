#include "tests/monkey/Operator.h"

#include "plugin/InteractiveView.h"
#include "station/operator/OperatorFailure.h"
#include "tests/monkey/Press.h"
#include "tests/monkey/Promises.h"
#include "tests/monkey/Scan.h"

#include <QHash>
#include <QWidget>

#include <algorithm>

using platform::Button;
using platform::View;

namespace monkey {
namespace {

constexpr int TooLong = 5000;

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

Operator::Operator(World &world)
    : m_world(world)
    , m_hands(&world.window)
{}

bool Operator::perform(const Step &step)
{
    using Deed = void (Operator::*)(const Step &);
    static const QHash<QString, Deed> deeds{
        {"scan", &Operator::scan},
        {"press", &Operator::press},
        {"press by key", &Operator::pressByKey},
        {"click field", &Operator::clickField},
        {"flip", &Operator::flip},
        {"click nowhere", &Operator::clickNowhere},
        {"resize", &Operator::resize},
        {"switch group", &Operator::switchGroup},
        {"begin", &Operator::beginEntry},
        {"type loop", &Operator::typeLoopNumber},
        {"tab", &Operator::tab},
        {"return", &Operator::pressReturn},
        {"walk choices", &Operator::walkChoices},
        {"stop", &Operator::stop},
    };
    const Deed deed = deeds.value(step.verb);
    if (deed)
        (this->*deed)(step);
    return deed != nullptr;
}

bool Operator::click(View *view)
{
    try {
        m_hands.click(view);
        return true;
    } catch (const station::OperatorFailure &) {
        return false;
    }
}

SeenPanel Operator::panelOf(const Step &step) const
{
    const QList<SeenPanel> panels = visiblePanels(m_world);
    const SeenPanel *panel = panelWithKey(panels, step.text("panel"));
    return panel ? *panel : SeenPanel();
}

void Operator::scan(const Step &step)
{
    const QString mark = step.text("text");
    const QString behind = step.text("behind");
    if (!mark.isEmpty())
        scan(mark + (behind == QLatin1String("too long") ? QString(TooLong, QLatin1Char('x')) : behind),
             mark);
}

void Operator::scan(const QString &entry, const QString &mark)
{
    Scan scan(m_world, entry, mark);
    type(entry + QLatin1Char('\n'));
    settle(m_world);
    scan.judge();
}

void Operator::press(const Step &step)
{
    const SeenPanel panel = panelOf(step);
    Button *button = panel.buttons.value(step.number("at"));
    if (!button || button->title() != step.text("button"))
        button = buttonWithTitle(panel, step.text("button"));
    if (button)
        press(panel, button, step.text("scan"));
}

void Operator::press(const SeenPanel &panel, Button *button, const QString &andScan)
{
    std::optional<Scan> scan;
    if (!andScan.isEmpty()) {
        scan.emplace(m_world, andScan, andScan);
        scan->forecastNothing();
    }
    const QString title = button->title();
    Press press(m_world, panel, button);
    if (!click(button)) {
        // Its time may be over just now.
        if (press.isLimited())
            return settle(m_world);
        throw BrokenPromise{QStringLiteral("\"%1\" of panel %2 cannot be pressed").arg(title, panel.key)};
    }
    if (scan)
        type(andScan + QLatin1Char('\n'));
    press.settle();
    if (scan)
        scan->judge();
}

/// A key presses the button that has the focus.
void Operator::pressByKey(const Step &)
{
    for (const SeenPanel &panel : visiblePanels(m_world)) {
        for (const auto &button : panel.buttons) {
            if (!button->isFirstResponder())
                continue;
            Press press(m_world, panel, button);
            // "Clear" by Return, which does not wait whether more keys follow: nobody is told when it is
            // done.
            type(button->title() == QLatin1String("Clear") ? QStringLiteral("\n") : QStringLiteral(" "));
            press.settle();
            return;
        }
    }
}

void Operator::clickField(const Step &step)
{
    for (const SeenField &field : panelOf(step).visibleFields()) {
        if (field.label != step.text("label"))
            continue;
        m_world.isFocusChosen = true;
        if (click(field.field))
            settle(m_world);
        return;
    }
}

void Operator::flip(const Step &step)
{
    const QString text = step.text("scan");
    std::optional<Scan> scan;
    if (!text.isEmpty()) {
        scan.emplace(m_world, text, text);
        scan->forecastNothing();
    }
    for (const SeenSwitch &seen : panelOf(step).switches) {
        if (seen.slot == step.text("slot") && seen.button->isVisible() && click(seen.button))
            settle(m_world);
    }
    if (!scan)
        return;
    type(text + QLatin1Char('\n'));
    settle(m_world);
    scan->judge();
}

/// Texts that no step has, for what is left at the end.
QString Operator::lastText(qint64 length)
{
    constexpr qint64 Usual = 7;
    const auto digits = static_cast<int>((length >= 6 ? length : Usual) - 1);
    return QLatin1Char('Y') + QString::number(++m_texts).rightJustified(digits, QLatin1Char('0'));
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
        m_world.isFocusChosen = true;
        if (!click(panel.entry->field))
            throw BrokenPromise{QStringLiteral("the field of panel %1 cannot be clicked").arg(panel.key)};
        settle(m_world);
        type(QString(panel.entry->field->stringValue().size(), QLatin1Char('\b')));
        const QString text = easyEntry(call->request.config);
        scan(text, text);
    }
    for (const SeenPanel &now : visiblePanels(m_world)) {
        if (now.key == panel.key && now.buttons.contains(button))
            press(now, button);
    }
    return true;
}

} // namespace monkey
