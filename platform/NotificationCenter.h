#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <vector>

namespace platform {

/// A named event and the object it is about.
struct Notification
{
    QString name;
    QPointer<QObject> object;
};

/// Hands notifications to whoever asked for their name.
///
/// Thread: the main thread. An observer is served until its context object is destroyed; handlers run in the
/// order in which they were added, inside post().
class NotificationCenter : public QObject
{
    Q_OBJECT
public:
    using Handler = std::function<void(const Notification &)>;

    [[nodiscard]] static NotificationCenter &defaultCenter();

    /// Requires: context is not null.
    void addObserver(QObject *context, const QString &name, Handler handler);
    void post(const QString &name, QObject *object);

private:
    struct Observer
    {
        QPointer<QObject> context;
        QString name;
        Handler handler;
    };
    std::vector<Observer> m_observers;
};

} // namespace platform
