#pragma once

#include "platform/Error.h"
#include "platform/Value.h"

#include <QObject>

#include <condition_variable>
#include <mutex>

namespace bench {

/// Lets sequences begin a round all at once: their function `pass()` returns true when it is opened, once for
/// each time, and false when it is closed.
///
/// Thread: any. Requires: nobody waits when it goes.
class Gate : public QObject
{
    Q_OBJECT
public:
    /// As KVKBindFunctions() wants it.
    [[nodiscard]] static platform::Dictionary functionTable();
    Q_INVOKABLE platform::Value pass(platform::Error *error);

    void open();
    void close();
    /// How many wait.
    [[nodiscard]] int waiting() const;

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_round = 0;
    int m_waiting = 0;
    bool m_closed = false;
};

} // namespace bench
