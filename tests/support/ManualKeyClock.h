#pragma once

#include "platform/KeyClock.h"
#include "platform/KeyRouting.h"

namespace testsupport {

/// The time at which keys come, moved by hand. In place as long as it lives.
///
/// Thread: the main thread.
class ManualKeyClock : public platform::KeyClock
{
public:
    ManualKeyClock() { use(this); }
    ~ManualKeyClock() override { use(nullptr); }
    ManualKeyClock(const ManualKeyClock &) = delete;
    ManualKeyClock &operator=(const ManualKeyClock &) = delete;

    /// As long as a person takes between two keys.
    void pause() { pause(platform::keys::ScannerGapMilliseconds + 1); }
    void pause(qint64 milliseconds)
    {
        m_received += milliseconds;
        m_sent += static_cast<quint64>(milliseconds);
    }
    /// The program was busy, while keys were sent close together.
    void beBusy(qint64 milliseconds) { m_received += milliseconds; }

    /// From now on nobody notes when keys were sent.
    void forgetSending() { m_notesSending = false; }

    [[nodiscard]] qint64 received() const override { return m_received; }
    [[nodiscard]] quint64 sent(const QKeyEvent &) const override { return m_notesSending ? m_sent : 0; }

private:
    qint64 m_received = 0;
    quint64 m_sent = 1;
    bool m_notesSending = true;
};

} // namespace testsupport
