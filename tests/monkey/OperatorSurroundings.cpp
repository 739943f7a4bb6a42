#include "plugin/InteractiveView.h"
#include "station/operator/OperatorFailure.h"
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
void Operator::clickNowhere()
{
    constexpr int Step = 8;
    m_diary("click nowhere");
    const QWidget *root = m_world.root();
    for (int y = 1; y < root->height(); y += Step) {
        for (int x = 1; x < root->width(); x += Step) {
            const QPoint point = root->mapTo(&m_world.window, QPoint(x, y));
            if (m_world.window.childAt(point) != root)
                continue;
            QTest::mouseClick(m_world.window.windowHandle(), Qt::LeftButton, {}, point);
            settle(m_world);
            return;
        }
    }
}

void Operator::resize(Dice &dice)
{
    // The buttons of all groups may stand in a row each; below them there is room for a part of a panel.
    constexpr int RowOfAButton = 34;
    const int least = 120 + RowOfAButton * static_cast<int>(m_world.shape.groups.size());
    const QSize size(200 + dice.below(1400), least + dice.below(900));
    m_diary(QStringLiteral("resize the window to %1 x %2").arg(size.width()).arg(size.height()));
    m_world.window.resize(size);
    settle(m_world);
}

void Operator::toggleGroup(Dice &dice)
{
    const QString group = dice.pick(m_world.shape.groups);
    Button *button = groupButtonIn(m_world.root(), group);
    if (!button || !button->isEnabled())
        return;
    m_diary(QStringLiteral("click the button of group %1").arg(group));
    if (click(button))
        settle(m_world);
}

/// Types the beginning of an entry, and then takes the hands off the keyboard.
void Operator::beginEntry()
{
    if (!focusIn(m_world.root()).isInEntry)
        return;
    const QString text = newText(0).left(3);
    m_diary(QStringLiteral("begin to type \"%1\"").arg(text));
    type(text);
    clickNowhere();
}

void Operator::typeLoopNumber(Dice &dice)
{
    platform::TextField *field = loopFieldIn(m_world.root());
    const QString number = QString::number(dice.below(4));
    m_diary(QStringLiteral("type %1 into the loop's field").arg(number));
    m_world.isFocusChosen = true;
    m_world.mayLoopChange = true;
    if (!field || !click(field))
        return;
    settle(m_world);
    type(number + QLatin1Char('\n'));
    settle(m_world);
}

void Operator::tab()
{
    m_diary("press Tab");
    m_world.isFocusChosen = true;
    type(QStringLiteral("\t"));
    settle(m_world);
}

void Operator::stop()
{
    m_diary("stop the station and go on");
    for (const auto &call : m_world.calls)
        call->isStopped = true;
    m_world.plugin.interruptWaitingCalls();
    const QString stuck = QStringLiteral("a call goes on after Stop");
    settle(m_world, stuck, [this] {
        return std::ranges::all_of(m_world.calls, [](const auto &call) { return call->hasEnded(); });
    });
    m_world.plugin.acceptCalls();
    m_world.answers.clear();
}

void Operator::showAll()
{
    m_diary("enlarge the window and switch all groups on");
    m_world.window.resize(LargeWindow);
    settle(m_world);
    for (const QString &group : m_world.shape.groups) {
        Button *button = groupButtonIn(m_world.root(), group);
        if (!m_world.isGroupOn(group) && button)
            click(button);
    }
    settle(m_world);
}

} // namespace monkey
