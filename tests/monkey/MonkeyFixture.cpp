#include "tests/monkey/MonkeyFixture.h"

#include "tests/monkey/Monkey.h"
#include "tests/support/Wait.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>

namespace monkey {

World &MonkeyFixture::startWorld(const Shape &shape)
{
    station.groups = shape.groups;
    station.slotNames = shape.slotNames;
    testsupport::expectErrors(); // refusals say why in the log
    start();
    // From here on it is the calls themselves that are told.
    Call::listen(true);
    m_world.reset(new World{plugin(), window(), log, [this] { settle(); }, operatorLines, shape});
    if (prepare)
        prepare(*m_world);
    return *m_world;
}

QString MonkeyFixture::replay(const Shape &shape, const Steps &steps)
{
    QString broken;
    {
        Monkey monkey(startWorld(shape));
        broken = monkey.replay(steps);
    }
    endWorld();
    return broken;
}

void MonkeyFixture::TearDown()
{
    endWorld();
}

void MonkeyFixture::endWorld()
{
    if (m_world) {
        plugin().interruptWaitingCalls();
        const bool haveEnded = testsupport::waitUntil([this] {
            return std::ranges::all_of(m_world->calls, [](const auto &call) { return call->hasEnded(); });
        });
        if (!haveEnded) {
            // Neither joining nor destroying what the threads still use would end.
            std::cerr << "a call could not be interrupted:\n"
                      << m_world->waitingInWords().toStdString() << std::endl;
            std::_Exit(EXIT_FAILURE);
        }
        m_world.reset();
        Call::listen(false);
    }
    PluginFixture::TearDown();
}

} // namespace monkey
