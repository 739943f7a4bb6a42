#pragma once

#include "platform/Error.h"
#include "platform/Value.h"

#include <QObject>

#include <condition_variable>
#include <mutex>
#include <stdexcept>

namespace testsupport {

/// A plug-in's context, with a method of each kind that Lua can call.
class Instrument : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE platform::Value measureAt(const platform::Value &place, const platform::Dictionary &config,
                                          platform::Error *)
    {
        return place.toLongLong() * config.value(QStringLiteral("times")).toLongLong();
    }
    Q_INVOKABLE platform::Value give(const platform::Dictionary &config, platform::Error *) { return config; }
    Q_INVOKABLE platform::Value fail(platform::Error *error)
    {
        platform::storeError(error, QStringLiteral("Instrument"), 5, QStringLiteral("no contact"));
        return {};
    }
    Q_INVOKABLE platform::Value throwing(platform::Error *) { throw std::out_of_range("9 is out of range"); }
    Q_INVOKABLE platform::Value throwingNumber(platform::Error *) { throw 42; }
    /// A table in a table in a table, and so on.
    Q_INVOKABLE platform::Value deep(platform::Error *)
    {
        platform::Value value = 1;
        for (int i = 0; i < 1000; ++i)
            value = platform::Array{value};
        return value;
    }
    /// Returns when let go.
    Q_INVOKABLE platform::Value wait(platform::Error *)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_letGo; });
        return true;
    }

    void letGo()
    {
        const std::lock_guard lock(m_mutex);
        m_letGo = true;
        m_changed.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_letGo = false;
};

} // namespace testsupport
