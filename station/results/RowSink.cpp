#include "station/results/RowSink.h"

#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"

#include <algorithm>

namespace station {

namespace {

constexpr std::chrono::seconds BetweenTries{1};

} // namespace

void RowSink::write(const RunBegun &run)
{
    m_queue.post([this, rows = rowsOf(run, stationId())] { keepOrOwe(rows); });
}

void RowSink::write(const SequenceBegun &sequence)
{
    m_queue.post([this, rows = rowsOf(sequence)] { keepOrOwe(rows); });
}

void RowSink::write(const CallDone &call)
{
    const ResultRows rows = rowsOf(call);
    m_queue.wait([this, &rows] { keepOrOwe(rows); });
}

void RowSink::write(const SequenceDone &sequence)
{
    const ResultRows rows = rowsOf(sequence);
    m_queue.wait([this, &rows] { keepOrOwe(rows); });
}

void RowSink::write(const EntryRefused &refusal)
{
    m_queue.post([this, rows = rowsOf(refusal)] { keepOrOwe(rows); });
}

void RowSink::tryAgain()
{
    // One at a time: each may wait for a database that is locked.
    if (m_isTrying.exchange(true))
        return;
    m_queue.post([this] {
        keepOwed();
        m_isTrying = false;
    });
}

void RowSink::settle()
{
    m_queue.wait([this] {
        keepOwed();
        if (!m_why.isEmpty())
            lose(name(), m_why);
    });
}

void RowSink::keepOrOwe(const ResultRows &rows)
{
    const bool waits = !m_owed.empty() && std::chrono::steady_clock::now() < m_nextTry;
    m_owed.push_back(rows);
    if (waits)
        tellUnwritten(name(), static_cast<qsizetype>(m_owed.size()), m_why);
    else
        keepOwed();
    if (!m_owed.empty())
        noteKept(name(), textOf(rows));
}

/// In their order, and each by itself: what is written stays so, whatever comes of the next one.
void RowSink::keepOwed()
{
    m_why.clear();
    try {
        findPlace();
        while (!m_owed.empty()) {
            keep(m_owed.front());
            m_owed.pop_front();
        }
    } catch (...) {
        m_why = KVKTextOfException(std::current_exception());
        m_nextTry = std::chrono::steady_clock::now() + BetweenTries;
    }
    const auto count = static_cast<qsizetype>(m_owed.size());
    tellUnwritten(name(), m_why.isEmpty() ? 0 : std::max<qsizetype>(count, 1), m_why);
}

} // namespace station
