#pragma once

#include <QString>

#include <optional>

namespace platform {
class View;
} // namespace platform

namespace station {

/// What a script clicks: a view by its identifier, or in a panel a button by its title, or the field or
/// switch of a slot.
struct ClickTarget
{
    enum class Kind { Identifier, Title, Slot, Switch };

    Kind kind = Kind::Identifier;
    QString panel; ///< The panel's key; empty for a bare identifier.
    QString name;  ///< The identifier, title or slot.

    /// As a person would name it: `button "OK" of panel "3"`.
    [[nodiscard]] QString description() const;
};

/// The view that is meant. Of several the first that can be seen; a bare identifier means a control before a
/// plain view, since a group's panel and its button bear the same one; a slot's field is meant before its
/// switch.
///
/// Thread: the main thread. Errors: throws OperatorFailure when there is none; a view that is there and
/// hidden is returned.
[[nodiscard]] platform::View *findTarget(platform::View *root, const ClickTarget &target);
/// The target by which findTarget() finds the view, as a script's author would name it; nothing for a view
/// that no target leads to, such as the second of two buttons with one title.
///
/// Thread: the main thread.
[[nodiscard]] std::optional<ClickTarget> targetOf(platform::View *root, platform::View *view);

} // namespace station
