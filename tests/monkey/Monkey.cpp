#include "tests/monkey/Monkey.h"

#include "tests/monkey/Promises.h"
#include "tests/monkey/Requests.h"

#include <iostream>

namespace monkey {
namespace {

constexpr std::size_t MostCalls = 9;
constexpr qsizetype DiaryLength = 40;

} // namespace

Monkey::Monkey(World &world, quint64 seed)
    : m_world(world)
    , m_seed(seed)
    , m_operator(world, [this](const QString &words) { note(words); })
{}

QString Monkey::run(int steps)
{
    try {
        for (int step = 1; step <= steps; ++step)
            doStep(step);
        answerEverything();
    } catch (const BrokenPromise &broken) {
        return QStringList{broken.words, "under way:", m_world.waitingInWords(),
                           "errors:", m_world.errorLines()}
            .join(QLatin1Char('\n'));
    }
    return {};
}

QString Monkey::lastSteps() const
{
    return m_diary.join(QLatin1Char('\n'));
}

void Monkey::doStep(int step)
{
    m_world.beginStep(step);
    Dice dice(m_seed, static_cast<quint64>(step));
    const QString loopBefore = m_world.loopText();
    const int chanceOfCalls = m_world.calls.empty() ? 80 : 30;
    if (m_world.calls.size() < MostCalls && dice.below(100) < chanceOfCalls)
        makeCalls(dice);
    else
        m_operator.act(dice);
    if (!m_world.mayLoopChange && m_world.loopText() != loopBefore)
        throw BrokenPromise{
            QStringLiteral("the loop's number has changed to \"%1\"").arg(m_world.loopText())};
}

/// One call, or several at the same moment.
void Monkey::makeCalls(Dice &dice)
{
    const int count = dice.oneIn(3) ? 2 + dice.below(3) : 1;
    QList<Request> requests;
    for (int i = 0; i < count; ++i) {
        requests.append(randomRequest(dice, m_world.shape));
        note(requests.last().inWords());
    }
    for (const Request &request : requests)
        m_world.make(request);
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

void Monkey::note(const QString &words)
{
    m_diary.append(QStringLiteral("%1: %2").arg(m_world.step).arg(words));
    if (m_diary.size() > DiaryLength)
        m_diary.removeFirst();
    if (qEnvironmentVariableIsSet("MONKEY_DIARY"))
        std::cerr << m_diary.last().toStdString() << std::endl;
}

} // namespace monkey
