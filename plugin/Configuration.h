#pragma once

#include "platform/Value.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

#include "common/StationMap.h"

namespace interactive {

/// Why a configuration is refused.
struct Refusal
{
    int code;
    QString message;

    friend bool operator==(const Refusal &, const Refusal &) = default;
};

/// The first rule that the configuration breaks, in the rules' order; nothing when it may be drawn.
/// `inputs` and `switches` are the configuration's values, nothing when absent. Thread: any.
[[nodiscard]] std::optional<Refusal> refusalOf(const platform::Dictionary &config, bool forGroup,
                                               const platform::Value &inputs, const platform::Value &switches,
                                               const StationMap &station);

/// Something that a configuration says of a key, in words for its author.
struct Doubt
{
    QString key;
    QString text;
};
[[nodiscard]] QList<Doubt> keyedDoubtsAbout(const platform::Dictionary &config, const QString &method);

/// What a configuration says and nobody uses, or that is taken for something else: a line for the log each.
/// `method` is the name that the lines begin with. Thread: any.
[[nodiscard]] QStringList doubtsAbout(const platform::Dictionary &config, const QString &method);

} // namespace interactive
