#pragma once

#include "platform/Value.h"

#include <QList>
#include <QString>

#include <optional>

namespace monkey {

/// One thing that was done, as data: what, and with which values. Done again on another station, or after
/// fewer steps before it, it does what can still be done, and nothing where its panel is not there.
struct Step
{
    QString verb; ///< "call", "scan", "press", …
    platform::Dictionary with;

    /// The step as one line of text, from which fromLine() makes the same step.
    [[nodiscard]] QString line() const;
    /// Nothing for a line that is no step.
    [[nodiscard]] static std::optional<Step> fromLine(const QString &line);

    [[nodiscard]] QString text(const char *name) const { return with.value(QLatin1String(name)).toString(); }
    [[nodiscard]] int number(const char *name) const { return with.value(QLatin1String(name)).toInt(); }
};

using Steps = QList<Step>;

} // namespace monkey
