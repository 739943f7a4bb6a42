#pragma once

#include "platform/Callback.h"

#include <QHash>
#include <QString>

#include <chrono>
#include <memory>
#include <optional>

#include "common/EntryRule.h"

namespace interactive {

/// What a show call's configuration asks for beyond labels, length, switches and buttons.
///
/// Thread: a plain value; `validate` is called on the call's own thread alone.
struct AskRules
{
    /// Where an entry that was given before is refused.
    enum class Unique {
        Group,   ///< On the same group's panel.
        Station, ///< On all panels that are open.
        Run,     ///< There, and among the answers given since Run was pressed.
    };

    /// The rule of each label that the panel asks for.
    QHash<QString, EntryRule> entries;
    QString hint; ///< What the operator reads when an entry is refused.
    std::shared_ptr<platform::Callback> validate;
    Unique unique = Unique::Group;
    /// What the labels' fields are filled in with.
    QHash<QString, QString> defaults;
    QString placeholder;
    bool autoConfirm = false;
    std::optional<std::chrono::milliseconds> timeLimit;
    QString image;
    QString instruction;

    [[nodiscard]] const EntryRule &of(const QString &label) const;
    /// Whether refusals are told in words on the panel itself.
    [[nodiscard]] bool hasStatusLine() const;
};

} // namespace interactive
