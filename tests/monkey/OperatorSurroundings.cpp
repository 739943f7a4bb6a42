#include "plugin/InteractiveView.h"
#include "tests/monkey/AskModel.h"
#include "tests/monkey/Operator.h"
#include "tests/monkey/Promises.h"
#include "tests/support/Wait.h"

#include <QTest>
#include <QWidget>
#include <QWindow>

#include <algorithm>

using platform::Button;
using platform::View;

namespace monkey {
namespace {

constexpr QSize LargeWindow(1600, 1000);

} // namespace

/// Where there is nothing but the view's own ground.
void Operator::clickNowhere(const Step &)
{
    constexpr int Apart = 8;
    const QWidget *root = m_world.root();
    for (int y = 1; y < root->height(); y += Apart) {
        for (int x = 1; x < root->width(); x += Apart) {
            const QPoint point = root->mapTo(&m_world.window, QPoint(x, y));
            if (m_world.window.childAt(point) != root)
                continue;
            QTest::mouseClick(m_world.window.windowHandle(), Qt::LeftButton, {}, point);
            settle(m_world);
            return;
        }
    }
}

void Operator::resize(const Step &step)
{
    m_world.window.resize(step.number("width"), step.number("height"));
    settle(m_world);
}

void Operator::switchGroup(const Step &step)
{
    Button *button = groupButtonIn(m_world.root(), step.text("group"));
    if (button && button->isEnabled() && click(button))
        settle(m_world);
}

/// Types the beginning of an entry, and then takes the hands off the keyboard.
void Operator::beginEntry(const Step &step)
{
    if (!focusIn(m_world.root()).isInEntry)
        return;
    // A begun entry keeps the keys, whatever waits elsewhere.
    m_world.isFocusChosen = true;
    type(step.text("text"));
    clickNowhere(step);
}

void Operator::typeLoopNumber(const Step &step)
{
    platform::TextField *field = loopFieldIn(m_world.root());
    m_world.isFocusChosen = true;
    m_world.mayLoopChange = true;
    if (!field || !click(field))
        return;
    settle(m_world);
    type(QString::number(step.number("passes")) + QLatin1Char('\n'));
    settle(m_world);
}

void Operator::tab(const Step &)
{
    m_world.isFocusChosen = true;
    type(QStringLiteral("\t"));
    settle(m_world);
}

/// Ends the entry that stands in the field, be it begun, offered or there already.
void Operator::pressReturn(const Step &)
{
    const Focus focus = focusIn(m_world.root());
    if (!focus.isInEntry)
        return;
    m_world.isFocusChosen = true;
    const QList<SeenPanel> panels = panelsIn(m_world.root());
    const SeenPanel *panel = panelWithKey(panels, focus.panelKey);
    if (panel && panel->entry)
        m_world.returned = {focus.panelKey, panel->entry->text};
    type(QStringLiteral("\n"));
    settle(m_world);
}

/// Takes a row of the list that a field with choices has.
void Operator::walkChoices(const Step &step)
{
    const Focus focus = focusIn(m_world.root());
    const Call *call = m_world.callAt(focus.panelKey);
    if (!focus.isInEntry || !call || !call->request.config.contains("choices"))
        return;
    m_world.isFocusChosen = true;
    m_world.isWalking = true;
    for (int row = 0; row < step.number("rows"); ++row)
        m_hands.press({station::KeyStroke{Qt::Key_Down, {}, {}}});
    type(QStringLiteral("\n"));
    settle(m_world);
}

void Operator::stop(const Step &)
{
    for (const auto &call : m_world.calls)
        call->isStopped = true;
    m_world.plugin.interruptWaitingCalls();
    const QString stuck = QStringLiteral("a call goes on after Stop");
    settle(m_world, stuck, [this] {
        return std::ranges::all_of(m_world.calls, [](const auto &call) { return call->hasEnded(); });
    });
    m_world.plugin.acceptCalls();
    m_world.answers.clear();
    m_world.given.clear();
}

void Operator::showAll()
{
    m_world.window.resize(LargeWindow);
    settle(m_world);
    for (const QString &group : m_world.shape.groups) {
        Button *button = groupButtonIn(m_world.root(), group);
        if (!m_world.isGroupOn(group) && button)
            click(button);
    }
    settle(m_world);
}

/// What the panel takes, of those that it does not hold yet.
QString Operator::easyEntry(const platform::Dictionary &config)
{
    const QString byDefault = defaultOf(QString(), config);
    const QStringList choices = labelsIn(config, "choices");
    for (int tries = 0; tries < 10; ++tries) {
        const QString text = lastText(lengthIn(config));
        const auto digits = static_cast<int>(std::max<qint64>(lengthIn(config), 4));
        const QString number =
            QLatin1String("4.") + QString::number(m_texts).rightJustified(digits - 2, QLatin1Char('0'));
        QStringList candidates{number, text, QLatin1Char('Z') + text.mid(1), QLatin1Char('4') + text.mid(1),
                               byDefault};
        candidates.append(choices);
        for (const QString &candidate : candidates) {
            if (!candidate.isEmpty() && taken(candidate, config) && passesFunction(candidate, config))
                return candidate;
        }
    }
    return {};
}

} // namespace monkey
