#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"

#include <QTemporaryDir>

#include <condition_variable>
#include <functional>
#include <mutex>

namespace testsupport {

/// A Lua script in a file of its own, run as a sequence, and what its host is told.
///
/// Thread: the test's; the waiting verbs block and fail the test after a generous limit.
class SequenceRun : public KVKLuaSequenceObserver
{
public:
    /// The script's file may lie in a folder below the run's own.
    explicit SequenceRun(const QByteArray &script, const QString &name = QStringLiteral("script.lua"),
                         const QString &folder = {});
    ~SequenceRun() override;

    /// The methods that the script can call, and what it finds besides. Set before the start.
    KVKLuaSequence::Description description;

    void start();
    void stop();
    [[nodiscard]] bool hasEnded() const { return m_sequence->hasEnded(); }
    /// Starts the sequence if need be and waits for its end.
    KVKLuaEnd end();
    /// Waits until a call of the function has begun.
    void waitForCall(const QString &name);
    /// Waits until the sequence has told that it waits for this, also when it does not any more.
    void waitForWait(const QString &what);
    /// What the sequence has told that it waits for, empty texts for the ends of waits included.
    [[nodiscard]] QStringList waits() const;
    /// The calls that have ended.
    [[nodiscard]] std::vector<KVKLuaCall> calls() const;
    /// Where the script lies.
    [[nodiscard]] QString folder() const { return m_scriptFolder; }
    /// Another file beside the script, or in a folder there.
    void addFile(const QString &name, const QByteArray &text);

    void sequenceCalls(const QString &name) override;
    void sequenceCalled(const KVKLuaCall &call) override;
    void sequenceWaits(const KVKLuaWait &wait) override;
    void sequenceEnded(const KVKLuaEnd &end) override;

private:
    void waitFor(const std::function<bool()> &condition, const char *what);

    QTemporaryDir m_folder;
    QString m_scriptFolder;
    std::unique_ptr<KVKLuaSequence> m_sequence;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    QStringList m_begun;
    QStringList m_waits;
    std::vector<KVKLuaCall> m_calls;
    std::optional<KVKLuaEnd> m_end;
};

} // namespace testsupport
