#include "tests/kovan/SequenceRun.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <chrono>

namespace testsupport {

SequenceRun::SequenceRun(const QByteArray &script, const QString &name, const QString &folder)
    : m_scriptFolder(QDir::cleanPath(m_folder.filePath(folder)))
{
    addFile(name, script);
    description.scriptPath = m_scriptFolder + QLatin1Char('/') + name;
}

SequenceRun::~SequenceRun() = default;

void SequenceRun::addFile(const QString &name, const QByteArray &text)
{
    const QString path = m_scriptFolder + QLatin1Char('/') + name;
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
}

void SequenceRun::start()
{
    m_sequence = std::make_unique<KVKLuaSequence>(description, *this);
    m_sequence->start();
}

void SequenceRun::stop()
{
    m_sequence->requestStop();
}

void SequenceRun::waitFor(const std::function<bool()> &condition, const char *what)
{
    std::unique_lock lock(m_mutex);
    EXPECT_TRUE(m_changed.wait_for(lock, std::chrono::seconds(200), condition)) << "in vain: " << what;
}

KVKLuaEnd SequenceRun::end()
{
    if (!m_sequence)
        start();
    waitFor([this] { return m_end.has_value(); }, "the end of the sequence");
    m_sequence.reset();
    return m_end.value_or(KVKLuaEnd{});
}

void SequenceRun::waitForCall(const QString &name)
{
    waitFor([&] { return m_begun.contains(name); }, "a call");
}

void SequenceRun::waitForWait(const QString &what)
{
    waitFor([&] { return m_waits.contains(what); }, "a wait");
}

QStringList SequenceRun::waits() const
{
    const std::lock_guard lock(m_mutex);
    return m_waits;
}

std::vector<KVKLuaCall> SequenceRun::calls() const
{
    const std::lock_guard lock(m_mutex);
    return m_calls;
}

void SequenceRun::sequenceCalls(const QString &name)
{
    const std::lock_guard lock(m_mutex);
    m_begun.append(name);
    m_changed.notify_all();
}

void SequenceRun::sequenceCalled(const KVKLuaCall &call)
{
    const std::lock_guard lock(m_mutex);
    m_calls.push_back(call);
}

void SequenceRun::sequenceWaits(const KVKLuaWait &wait)
{
    const std::lock_guard lock(m_mutex);
    m_waits.append(wait.what);
    m_changed.notify_all();
}

void SequenceRun::sequenceEnded(const KVKLuaEnd &end)
{
    const std::lock_guard lock(m_mutex);
    m_end = end;
    m_changed.notify_all();
}

} // namespace testsupport
