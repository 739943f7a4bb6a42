#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "plugin/CallCheck.h"
#include "plugin/InteractiveView.h"
#include "plugin/Rooms.h"

#include "common/Selectors.h"

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
    const platform::View *root = m_rooms->views.rootView();
    return root ? root->frame().height() : 0.0;
}

double InteractiveView::minWidthHint()
{
    const platform::View *root = m_rooms->views.rootView();
    return root ? root->frame().width() : 0.0;
}

void InteractiveView::interruptWaitingCalls()
{
    m_rooms->waits.interrupt();
}

void InteractiveView::acceptCalls()
{
    // Before calls are accepted: none of the new run may find an answer of the former one.
    m_rooms->records.forgetAllAnswers();
    m_rooms->answers.forget();
    m_rooms->waits.accept();
}

KVKCallReport InteractiveView::lookAtCall(const QString &function, const platform::Array &arguments)
{
    const KVKConfigEngine *engine = KVKConfigEngine::sharedConfigEngine();
    return reportOnCall(function, arguments,
                        StationMap(engine->systemIndexToGroupMapping(), engine->systemIndexToSlotMapping()));
}

} // namespace interactive
