#include "bench/BenchStation.h"

#include "platform/MainQueue.h"

#include <QApplication>

#include <algorithm>

#include "bench/Serve.h"

namespace bench {

namespace {

const QString Script = QStringLiteral(BENCH_FOLDER "/asking.lua");

} // namespace

BenchStation::BenchStation(int slotsPerGroup, int groups)
    : m_station(groups, slotsPerGroup)
    , m_slots(slotsPerGroup)
{}

BenchStation::~BenchStation()
{
    plugin().interruptWaitingCalls();
    finishSequence();
    m_gate.close();
    serveUntil([this] { return std::ranges::all_of(m_asking, &TimedSequence::hasEnded); });
    m_asking.clear();
    serveAll();
}

QWidget *BenchStation::window()
{
    return plugin().view()->window();
}

void BenchStation::startSequence(const std::function<void()> &work)
{
    m_ended = false;
    m_sequence = std::jthread([this, work] {
        work();
        m_ended = true;
        platform::MainQueue::async([] {});
    });
}

void BenchStation::finishSequence()
{
    serveUntil([this] { return m_ended.load(); });
}

void BenchStation::runSequence(const std::function<void()> &work)
{
    startSequence(work);
    finishSequence();
}

void BenchStation::startAsking(PanelKind kind, int systems)
{
    platform::Dictionary globals{{"slots", m_slots}};
    if (kind != PanelKind::Slot) {
        globals.insert("kind", kind == PanelKind::Group ? "group" : "switch");
        systems = 1;
    }
    for (int system = 0; system < systems; ++system) {
        globals.insert("system", system);
        m_asking.push_back(std::make_unique<TimedSequence>(plugin(), m_gate, Script, globals));
    }
    serveUntil([&] { return atGate() == systems; });
    serveAll();
}

Nanoseconds BenchStation::firstCall() const
{
    const auto called = [](const auto &sequence) { return sequence->called(); };
    return called(*std::ranges::min_element(m_asking, {}, called));
}

Nanoseconds BenchStation::lastReturn() const
{
    const auto returned = [](const auto &sequence) { return sequence->returned(); };
    return returned(*std::ranges::max_element(m_asking, {}, returned));
}

int BenchStation::returns() const
{
    int returns = 0;
    for (const auto &sequence : m_asking)
        returns += sequence->returns();
    return returns;
}

void BenchStation::endRound()
{
    plugin().interruptWaitingCalls();
    serveUntil([this] { return atGate() == static_cast<int>(m_asking.size()); });
    plugin().acceptCalls();
    serveAll();
}

platform::TextField *BenchStation::focusField()
{
    QWidget *widget = QApplication::focusWidget();
    while (widget && !qobject_cast<platform::TextField *>(widget))
        widget = widget->parentWidget();
    return static_cast<platform::TextField *>(widget);
}

QString BenchStation::slotName(int slot)
{
    return QStringLiteral("S%1").arg(slot);
}

bool hasPainted(const PaintWatch &watch, PanelKind kind, int slotCount)
{
    switch (kind) {
    case PanelKind::Slot:
        return watch.hasPainted(slotCount);
    case PanelKind::Group:
        return watch.hasPainted(1, std::min(slotCount, MostEntries));
    case PanelKind::Switch:
        return watch.hasPainted(0, slotCount);
    }
    return false;
}

} // namespace bench
