#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "plugin/InteractiveView.h"
#include "plugin/Selectors.h"

namespace interactive {

namespace {

struct TableEntry
{
    const char *luaName;
    const char *selector;
    std::vector<KVKArgType> arguments;
};

std::vector<TableEntry> tableEntries()
{
    using enum KVKArgType;
    return {
        {"showGroupView", selectors::ShowGroupView, {NSNumber, NSDictionary}},
        {"showView", selectors::ShowView, {NSNumber, NSDictionary}},
        {"getData", selectors::GetData, {NSNumber}},
        {"getLoopConfig", selectors::GetLoopConfig, {}},
        {"setLoop", selectors::SetLoop, {NSNumber}},
        {"isLoopFinished", selectors::IsLoopFinished, {NSNumber}},
    };
}

} // namespace

QObject *InteractiveView::pluginContext()
{
    return this;
}

platform::Dictionary InteractiveView::pluginConstants()
{
    return {};
}

platform::Dictionary InteractiveView::pluginFunctionTable()
{
    platform::Dictionary table;
    for (const TableEntry &entry : tableEntries()) {
        platform::Array labels{__kviGetSelectorLabel(entry.selector)};
        for (const KVKArgType type : entry.arguments)
            labels.append(__kviArgTypeLabel(type));
        table.insert(QLatin1String(entry.luaName), labels);
    }
    return table;
}

double InteractiveView::minHeightHint()
{
    return m_rootView ? m_rootView->frame().height() : 0.0;
}

double InteractiveView::minWidthHint()
{
    return m_rootView ? m_rootView->frame().width() : 0.0;
}

platform::Value InteractiveView::showGroupView(const platform::Value &groupNumber,
                                               const platform::Dictionary &config, platform::Error *error)
{
    return showInteractiveView(groupNumber, {}, config, error);
}

platform::Value InteractiveView::showView(const platform::Value &systemIndex,
                                          const platform::Dictionary &config, platform::Error *error)
{
    return showInteractiveView({}, systemIndex, config, error);
}

void InteractiveView::interruptWaitingCalls()
{
    m_interrupted = true;
    const Conditions conditions = m_conditions.copy();
    for (const std::shared_ptr<platform::Condition> &condition : conditions)
        condition->interruptAll();
}

void InteractiveView::acceptCalls()
{
    m_interrupted = false;
}

} // namespace interactive
