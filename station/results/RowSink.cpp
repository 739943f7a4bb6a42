#include "station/results/RowSink.h"

#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"

namespace station {

void RowSink::write(const RunBegun &run)
{
    m_queue.post([this, rows = rowsOf(run, stationId())] { keepOrLose(rows); });
}

void RowSink::write(const SequenceBegun &sequence)
{
    m_queue.post([this, rows = rowsOf(sequence)] { keepOrLose(rows); });
}

void RowSink::write(const CallDone &call)
{
    const ResultRows rows = rowsOf(call);
    m_queue.wait([this, &rows] { keepOrLose(rows); });
}

void RowSink::write(const SequenceDone &sequence)
{
    const ResultRows rows = rowsOf(sequence);
    m_queue.wait([this, &rows] { keepOrLose(rows); });
}

void RowSink::write(const EntryRefused &refusal)
{
    m_queue.post([this, rows = rowsOf(refusal)] { keepOrLose(rows); });
}

void RowSink::settle()
{
    m_queue.wait([] {});
}

/// An answer that is kept while its run is not would belong to nobody: what was owed goes with the next rows.
void RowSink::keepOrLose(const ResultRows &rows)
{
    try {
        keep(m_owed + rows);
        m_owed.clear();
    } catch (...) {
        lose(name(), KVKTextOfException(std::current_exception()));
        for (const ResultRow &row : rows) {
            if (row.kind == QLatin1String("run") || row.kind == QLatin1String("sequence"))
                m_owed.append(row);
        }
    }
}

} // namespace station
