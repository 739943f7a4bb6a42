#pragma once

#include "platform/Value.h"

#include <QMetaType>

#include <memory>

namespace platform {

/// A function that a caller hands over with its arguments, to be called back while its call lasts.
///
/// Thread: called on the thread of the call that it was handed to, and only until that call returns. It may
/// be held and described on any thread, also after that.
class Callback
{
public:
    Callback() = default;
    virtual ~Callback() = default;
    Callback(const Callback &) = delete;
    Callback &operator=(const Callback &) = delete;

    /// Calls the function and returns its results. Errors: what the function raises is thrown as an exception
    /// whose text names it and where it came from.
    [[nodiscard]] virtual Array call(const Array &arguments) = 0;

    /// Whether a function that was handed over runs on the calling thread right now. What would wait for an
    /// operator or for others must not begin there: the call around it would wait for itself.
    [[nodiscard]] static bool isRunning();

protected:
    /// Marks the calling thread for as long as it lives.
    class Running
    {
    public:
        Running();
        ~Running();
        Running(const Running &) = delete;
        Running &operator=(const Running &) = delete;
    };
};

} // namespace platform

Q_DECLARE_METATYPE(std::shared_ptr<platform::Callback>)
