#pragma once

#include "platform/Value.h"
#include "plugin/Configuration.h"

#include <QChar>
#include <QList>
#include <QStringList>

#include <optional>

#include "common/AskRules.h"
#include "common/StationMap.h"

namespace interactive {

/// What is known of a show call when its optional keys are read.
struct AskContext
{
    bool forGroup = false;
    /// A group's message, which nobody answers.
    bool isMessage = false;
    QStringList labels;                    ///< Those of "input"; empty where nothing is entered.
    QStringList buttons;                   ///< The titles of the panel's buttons.
    qint64 length = 0;                     ///< Required length of an entry; 0 or less takes any.
    QChar decimalPoint = QLatin1Char('.'); ///< Of the station's locale.
    /// Keys whose values are not known, when a script is looked at before it runs: nothing that depends on
    /// one is refused. With "input" among them, more labels may be asked for than are named here.
    QStringList unknown = {};
};

/// The optional keys of a configuration, read and checked before anything is drawn.
struct AskReading
{
    AskRules rules;
    /// The first value that its key does not take, in the order of the keys' codes; nothing when all are
    /// good.
    std::optional<Refusal> refusal;

    struct OfKey
    {
        QString key;
        Refusal refusal;
    };
    QList<OfKey> refusals; ///< All of them.
};

/// Thread: any.
[[nodiscard]] AskReading readAskRules(const platform::Dictionary &config, const AskContext &context,
                                      const StationMap &station);

} // namespace interactive
