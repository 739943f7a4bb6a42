#pragma once

#include <QList>
#include <QString>

#include <chrono>

/// The three levels at which plug-ins log.
enum class KVKLogLevel { Default, Debug, Error };

/// One line of the log, with what was so at the moment of its event.
struct KVKLogRecord
{
    KVKLogLevel level = KVKLogLevel::Default;
    QString message;
    std::chrono::system_clock::time_point time; ///< Of the wall's clock; never less than the one before it,
                                                ///< unless that clock was set back.
    std::size_t thread = 0; ///< The number that the system gives the thread that has logged it.
    QList<int> systems;     ///< Those that this thread worked for, see KVKLogProxy::setOwners.
};
