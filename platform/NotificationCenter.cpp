#include "platform/NotificationCenter.h"

#include <utility>

namespace platform {

NotificationCenter &NotificationCenter::defaultCenter()
{
    static NotificationCenter center;
    return center;
}

void NotificationCenter::addObserver(QObject *context, const QString &name, Handler handler)
{
    std::erase_if(m_observers, [](const Observer &observer) { return !observer.context; });
    m_observers.push_back({context, name, std::move(handler)});
}

void NotificationCenter::post(const QString &name, QObject *object)
{
    // A copy, since a handler may add observers or end one.
    const std::vector<Observer> observers = m_observers;
    const Notification notification{name, object};
    for (const Observer &observer : observers) {
        if (observer.context && observer.name == name)
            observer.handler(notification);
    }
}

} // namespace platform
