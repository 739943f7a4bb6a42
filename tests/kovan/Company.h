#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaRun.h"
#include "tests/kovan/Instrument.h"
#include "tests/kovan/SequenceRun.h"

#include <map>
#include <memory>
#include <vector>

namespace testsupport {

/// Several scripts as the sequences of one run, named "system 0", "system 1" and so on. Each finds `gate()`,
/// which returns when the test opens it.
///
/// Thread: the test's.
class Company
{
public:
    /// Adds a sequence; an empty group makes it one of the station.
    Company &add(const QByteArray &script, const QString &group = QStringLiteral("G1"));
    /// The same script for several sequences of a group.
    Company &add(int count, const QByteArray &script);

    /// Starts all of them.
    void start();
    /// Starts one. The run is made with the first one, and has all that were added.
    void start(std::size_t which);
    void openGate() { m_instrument.letGo(); }
    [[nodiscard]] SequenceRun &at(std::size_t which) { return *m_sequences.at(which); }
    /// Starts a sequence if need be, and waits for its end.
    KVKLuaEnd end(std::size_t which);
    /// Starts all that have not been, and expects each to pass.
    void pass();

private:
    void makeRun();

    Instrument m_instrument;
    std::vector<KVKLuaPartner> m_partners;
    std::shared_ptr<KVKLuaRun> m_run;
    std::vector<std::unique_ptr<SequenceRun>> m_sequences;
    std::vector<bool> m_started;
    std::map<std::size_t, KVKLuaEnd> m_ends;
};

} // namespace testsupport
