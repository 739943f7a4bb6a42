#include "tests/support/Wait.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace testsupport {

bool waitUntil(const std::function<bool()> &condition, std::chrono::seconds limit)
{
    const QDeadlineTimer deadline(limit);
    // Wakes the loop for conditions that change without an event.
    QTimer heartbeat;
    heartbeat.start(std::chrono::milliseconds(2));
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

} // namespace testsupport
