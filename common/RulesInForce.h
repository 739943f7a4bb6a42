#pragma once

#include "platform/Monitored.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>

#include "common/AskRules.h"

namespace interactive {

/// What each panel that waits for its operator asks of its entries, from the drawing until its call ends.
///
/// Thread: any.
class RulesInForce
{
public:
    void put(const QString &panelKey, std::shared_ptr<const AskRules> rules);
    void remove(const QString &panelKey);
    /// Never null: a panel that is not known asks for nothing in particular.
    [[nodiscard]] std::shared_ptr<const AskRules> of(const QString &panelKey) const;
    /// The panels that wait for their operator, in no order.
    [[nodiscard]] QStringList panels() const;

private:
    mutable platform::Monitored<QHash<QString, std::shared_ptr<const AskRules>>> m_rules;
};

} // namespace interactive
