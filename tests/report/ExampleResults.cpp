#include "tests/report/ExampleResults.h"

using platform::Value;

namespace testsupport {

ExampleResults::ExampleResults(const QString &path)
{
    m_results.emplace(path);
}

void ExampleResults::run(const QString &name, const QString &time, const QString &badge,
                         const QString &station)
{
    m_run = name;
    m_badge = badge;
    m_time = QDateTime::fromString(time, Qt::ISODateWithMs);
    m_sequences = 0;
    m_refusals = 0;
    keep(station::RunBegun{name, station, "/srv/station.toml", badge, m_time});
}

void ExampleResults::system(int system)
{
    begin({"ask.lua", system, {}, 0, system < 2 ? "G1" : "G2", {system % 2 == 0 ? "S1" : "S2"}});
}

void ExampleResults::group(const QString &name)
{
    begin({"group.lua", {}, name, 0, name, {"S1", "S2"}});
}

void ExampleResults::wholeStation()
{
    begin({"station.lua", {}, {}, 0, {}, {"S1", "S2"}});
}

void ExampleResults::answers(const Value &result, qint64 milliseconds, const QString &function)
{
    write(result, std::nullopt, function, milliseconds);
}

void ExampleResults::fails(qint64 milliseconds)
{
    write({}, platform::Error{"InteractiveView", 406, "too late"}, "showView", milliseconds);
}

void ExampleResults::ends(KVKLuaOutcome outcome)
{
    keep(station::SequenceDone{m_run, m_owner, {outcome, true, {}}, m_time});
}

void ExampleResults::refuses(const QString &kind)
{
    keep(station::EntryRefused{m_run, {kind, "A", "S1", 0, "G1"}, ++m_refusals, m_badge, m_time});
}

void ExampleResults::begin(const station::ResultOwner &owner)
{
    m_owner = owner;
    m_owner.number = m_sequences++;
    m_calls = 0;
    keep(station::SequenceBegun{m_run, m_owner, m_time});
}

void ExampleResults::write(const Value &result, const std::optional<platform::Error> &error,
                           const QString &function, qint64 milliseconds)
{
    const QDateTime start = m_time;
    m_time = m_time.addMSecs(milliseconds);
    keep(station::CallDone{
        m_run, m_owner, {function, {}, result, error}, ++m_calls, m_badge, start, m_time, milliseconds});
}

} // namespace testsupport
