#include "bench/Serve.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QEventLoop>
#include <QTimer>

#include <chrono>

namespace bench {

namespace {

constexpr std::chrono::minutes Patience(5);
constexpr std::chrono::milliseconds BetweenLooks(500);

} // namespace

void serveUntil(const std::function<bool()> &condition)
{
    const QDeadlineTimer limit(Patience);
    // For the limit alone: nothing measured may wait for it.
    QTimer heartbeat;
    heartbeat.start(BetweenLooks);
    while (!condition()) {
        if (limit.hasExpired())
            qFatal("waited in vain");
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void serveAll()
{
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void serveFor(std::chrono::milliseconds time)
{
    QTimer alarm;
    alarm.setSingleShot(true);
    alarm.start(time);
    serveUntil([&] { return !alarm.isActive(); });
}

} // namespace bench
