#pragma once

#include <mutex>
#include <utility>

namespace platform {

/// A value together with the recursive lock that guards it; the value can be reached through a guard only.
///
/// Thread: any. Locks are taken one at a time and never held across a wait or a MainQueue::sync; a thread
/// that holds the guard may take it again.
template <class T>
class Monitored
{
public:
    /// Holds the lock for its life time and gives access to the value.
    class Guard
    {
    public:
        explicit Guard(Monitored &owner)
            : m_lock(owner.m_mutex)
            , m_value(&owner.m_value)
        {}
        T *operator->() const { return m_value; }
        T &operator*() const { return *m_value; }

    private:
        std::unique_lock<std::recursive_mutex> m_lock;
        T *m_value;
    };

    Monitored() = default;
    explicit Monitored(T value)
        : m_value(std::move(value))
    {}
    Monitored(const Monitored &) = delete;
    Monitored &operator=(const Monitored &) = delete;

    [[nodiscard]] Guard lock() { return Guard(*this); }
    /// A copy of the value, made under the lock.
    [[nodiscard]] T copy()
    {
        const Guard guard(*this);
        return *guard;
    }

private:
    std::recursive_mutex m_mutex;
    T m_value{};
};

/// A lock that guards no single value but an operation.
struct Nothing
{};
using Monitor = Monitored<Nothing>;

} // namespace platform
