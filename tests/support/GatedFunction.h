#pragma once

#include "platform/Callback.h"

#include <QStringList>

#include <condition_variable>
#include <functional>
#include <mutex>

namespace testsupport {

/// A function that a sequence hands over, and that returns when the test lets it.
///
/// Thread: called on the sequence's; everything else on any.
class GatedFunction : public platform::Callback
{
public:
    using Body = std::function<platform::Array(const platform::Value &text, const QString &slot)>;

    explicit GatedFunction(Body body)
        : m_body(std::move(body))
    {}

    [[nodiscard]] platform::Array call(const platform::Array &arguments) override
    {
        const Running running;
        {
            std::unique_lock lock(m_mutex);
            m_calls.append(platform::description(arguments));
            m_changed.wait(lock, [this] { return !m_closed; });
        }
        return m_body(arguments.value(0), arguments.value(1).toString());
    }

    /// From now on a call waits inside.
    void close()
    {
        const std::lock_guard lock(m_mutex);
        m_closed = true;
    }
    void open()
    {
        const std::lock_guard lock(m_mutex);
        m_closed = false;
        m_changed.notify_all();
    }
    /// The arguments of each call that has begun: "(A, S1)".
    [[nodiscard]] QStringList calls()
    {
        const std::lock_guard lock(m_mutex);
        return m_calls;
    }

private:
    Body m_body;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_closed = false;
    QStringList m_calls;
};

} // namespace testsupport
