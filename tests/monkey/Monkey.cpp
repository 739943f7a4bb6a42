#include "tests/monkey/Monkey.h"

#include "tests/monkey/Promises.h"

#include <iostream>

namespace monkey {

Monkey::Monkey(World &world)
    : m_world(world)
    , m_operator(world)
{}

QString Monkey::run(quint64 seed, int steps)
{
    Chooser chooser(m_world, seed);
    return whatBreaks([&] {
        for (int number = 1; number <= steps; ++number)
            doStep(chooser.next(number));
    });
}

QString Monkey::replay(const Steps &steps)
{
    return whatBreaks([&] {
        for (const Step &step : steps)
            doStep(step);
    });
}

template <class Deeds>
QString Monkey::whatBreaks(const Deeds &deeds)
{
    try {
        deeds();
        answerEverything();
    } catch (const BrokenPromise &broken) {
        return QStringList{broken.words, "under way:", m_world.waitingInWords(),
                           "errors:", m_world.errorLines()}
            .join(QLatin1Char('\n'));
    }
    return {};
}

void Monkey::doStep(const Step &chosen)
{
    // As it is read from its line, so that what is done again is what was done.
    const Step step = Step::fromLine(chosen.line()).value_or(chosen);
    m_done.append(step);
    if (qEnvironmentVariableIsSet("MONKEY_DIARY"))
        std::cerr << m_done.size() << ": " << step.line().toStdString() << std::endl;
    m_world.beginStep(m_world.step + 1);
    const QString loopBefore = m_world.loopText();
    if (!m_operator.perform(step))
        makeCalls(step);
    if (!m_world.mayLoopChange && m_world.loopText() != loopBefore)
        throw BrokenPromise{
            QStringLiteral("the loop's number has changed to \"%1\"").arg(m_world.loopText())};
}

/// One call, or several at the same moment.
void Monkey::makeCalls(const Step &step)
{
    for (const platform::Value &request : step.with.value("calls").toList())
        m_world.make(Request::fromData(request.toMap()));
    settle(m_world);
}

void Monkey::answerEverything()
{
    m_world.beginStep(m_world.step + 1);
    m_operator.showAll();
    // A panel that asks for an entry may need a second press.
    std::size_t left = 2 * m_world.calls.size();
    while (!m_world.calls.empty()) {
        m_world.beginStep(m_world.step + 1);
        if (left-- == 0 || !m_operator.answerFirstPanel())
            throw BrokenPromise{QStringLiteral("what can be seen does not end every call")};
    }
}

} // namespace monkey
