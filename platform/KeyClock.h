#pragma once

#include <QtGlobal>

class QKeyEvent;

namespace platform {

/// Tells when keys come, so that those of a scanner, which follow one another closely, can be told from those
/// of a person.
///
/// A key has two times: when it was received here, and when it was sent by the keyboard or scanner, which the
/// window system notes. Where work on the main thread lies between two keys, only the latter are close
/// together.
/// Shapes and units: milliseconds; received() and sent() count from moments of their own.
/// Thread: the main thread. Ownership: whoever puts a clock in place keeps it until another one is in place.
class KeyClock
{
public:
    virtual ~KeyClock() = default;

    /// Now, by a clock that never goes back.
    [[nodiscard]] virtual qint64 received() const;
    /// When the key was sent; 0 when nobody noted it.
    [[nodiscard]] virtual quint64 sent(const QKeyEvent &event) const;

    /// The clock in place.
    [[nodiscard]] static const KeyClock &current();
    /// Puts a clock in place of the real one, which comes back with null.
    static void use(const KeyClock *clock);
};

} // namespace platform
