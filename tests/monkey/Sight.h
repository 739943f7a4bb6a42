#pragma once

#include "platform/Button.h"
#include "platform/TextField.h"

#include <QList>
#include <QMap>
#include <QString>

#include <optional>

/// What an operator sees in the window: panels that can be answered, what they show, where the keys go.
///
/// Thread: the main thread. What is seen is seen once; a view may be gone later.
namespace monkey {

struct SeenSwitch
{
    QPointer<platform::Button> button;
    QString slot;
    bool isOn = false;
};

struct SeenField
{
    QPointer<platform::TextField> field;
    QString label; ///< The slot or the input's label.
    QString text;
};

/// A panel with its buttons: a group's, a system's or an error's.
struct SeenPanel
{
    QString key;
    QPointer<platform::View> view;
    bool isVisible = false;
    std::optional<SeenField> entry; ///< The field that takes keys.
    QList<SeenField> shown;         ///< The read-only fields of a group's slots.
    QList<SeenSwitch> switches;
    QList<QPointer<platform::Button>> buttons;

    [[nodiscard]] bool isSwitchedOn(const QString &slot) const;
    /// Its fields that can be clicked.
    [[nodiscard]] QList<SeenField> visibleFields() const;
    /// What the panel shows as entered, by slot or label.
    [[nodiscard]] QMap<QString, QString> texts() const;
};

/// The panels below the root that have buttons to answer them, visible or not.
[[nodiscard]] QList<SeenPanel> panelsIn(platform::View *root);
[[nodiscard]] const SeenPanel *panelWithKey(const QList<SeenPanel> &panels, const QString &key);

[[nodiscard]] platform::TextField *loopFieldIn(platform::View *root);
/// The check box that shows and hides a group.
[[nodiscard]] platform::Button *groupButtonIn(platform::View *root, const QString &group);

/// Where keys go.
struct Focus
{
    enum class Place { Nowhere, Loop, Panel, Elsewhere };

    Place place = Place::Nowhere;
    QString panelKey{};
    bool isInEntry = false;
    QString widget; ///< What has it, by class and identifier.
};

[[nodiscard]] Focus focusIn(platform::View *root);

} // namespace monkey
