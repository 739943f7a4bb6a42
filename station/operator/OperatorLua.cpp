#include "station/operator/OperatorLua.h"

#include "station/operator/OperatorActions.h"
#include "station/operator/OperatorFunctions.h"

namespace station {
namespace {

class Runner : public KVKLuaRunner
{
public:
    Runner(const KVKLuaLimits &limits, OperatorActions &actions)
        : KVKLuaRunner({"an operator's script", false}, limits)
        , m_actions(actions)
    {}

    [[nodiscard]] OperatorActions &actions() const { return m_actions; }
    [[nodiscard]] bool isStopped() const override { return m_actions.isStopped(); }

protected:
    void bind(lua_State *state) override { registerOperatorFunctions(state); }

private:
    OperatorActions &m_actions;
};

} // namespace

OperatorActions &actionsOf(lua_State *state)
{
    return static_cast<Runner &>(KVKLuaRunner::of(state)).actions();
}

KVKLuaRunner::End runOperatorScript(const QString &path, const KVKLuaLimits &limits, OperatorActions &actions)
{
    return Runner(limits, actions).run(path);
}

} // namespace station
