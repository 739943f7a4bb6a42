#include "common/RulesInForce.h"

#include <utility>

namespace interactive {

void RulesInForce::put(const QString &panelKey, std::shared_ptr<const AskRules> rules)
{
    m_rules.lock()->insert(panelKey, std::move(rules));
}

void RulesInForce::remove(const QString &panelKey)
{
    m_rules.lock()->remove(panelKey);
}

std::shared_ptr<const AskRules> RulesInForce::of(const QString &panelKey) const
{
    static const auto none = std::make_shared<const AskRules>();
    return m_rules.lock()->value(panelKey, none);
}

QStringList RulesInForce::panels() const
{
    return m_rules.lock()->keys();
}

} // namespace interactive
