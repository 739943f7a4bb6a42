#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "tests/support/PluginFixture.h"

#include <QMetaMethod>

#include <vector>

using interactive::InteractiveView;
using platform::Array;
using platform::Dictionary;

namespace {

struct TableRow
{
    const char *luaName;
    const char *selector;
    std::vector<KVKArgType> arguments;
};

const std::vector<TableRow> table = {
    {"showGroupView", "showGroupView:config:error:", {KVKArgType::NSNumber, KVKArgType::NSDictionary}},
    {"showView", "showView:config:error:", {KVKArgType::NSNumber, KVKArgType::NSDictionary}},
    {"getData", "getData:error:", {KVKArgType::NSNumber}},
    {"getLoopConfig", "getLoopConfig:", {}},
    {"setLoop", "setLoop:error:", {KVKArgType::NSNumber}},
    {"isLoopFinished", "isLoopFinished:error:", {KVKArgType::NSNumber}},
};

class FunctionTableTest : public testsupport::PluginFixture
{};

class FunctionTableRowTest : public testsupport::PluginFixture, public ::testing::WithParamInterface<TableRow>
{};

TEST_F(FunctionTableTest, TheContextOfTheFunctionsIsTheControllerItself)
{
    EXPECT_EQ(plugin().pluginContext(), &plugin());
}

TEST_F(FunctionTableTest, ThereAreNoConstantsForLua)
{
    EXPECT_EQ(plugin().pluginConstants(), Dictionary());
}

TEST_F(FunctionTableTest, HoldsExactlySixFunctions)
{
    const QStringList names{"getData", "getLoopConfig", "isLoopFinished",
                            "setLoop", "showGroupView", "showView"};
    EXPECT_EQ(plugin().pluginFunctionTable().keys(), names);
}

TEST_F(FunctionTableTest, IsMadeAfreshForEveryCall)
{
    const Dictionary first = plugin().pluginFunctionTable();
    const Dictionary second = plugin().pluginFunctionTable();
    EXPECT_EQ(first, second);
    EXPECT_FALSE(first.isSharedWith(second));
}

TEST_F(FunctionTableTest, TheFunctionWithoutArgumentsIsItsSelectorAlone)
{
    EXPECT_EQ(plugin().pluginFunctionTable().value("getLoopConfig").toList(),
              Array{__kviGetSelectorLabel("getLoopConfig:")});
}

TEST_F(FunctionTableTest, IsThereBeforeTheViewIsLoaded)
{
    InteractiveView unloaded;
    EXPECT_EQ(unloaded.pluginFunctionTable().size(), 6);
    EXPECT_FALSE(unloaded.isViewLoaded());
}

TEST_F(FunctionTableTest, TheSharedShowCallIsNotOfferedToLua)
{
    for (const platform::Value &entry : plugin().pluginFunctionTable()) {
        EXPECT_NE(entry.toList().value(0),
                  platform::Value(__kviGetSelectorLabel("showInteractiveView:systemIndex:config:error:")));
    }
}

TEST_F(FunctionTableTest, TheSizeHintsAreZeroBeforeTheViewIsLoaded)
{
    InteractiveView unloaded;
    EXPECT_EQ(unloaded.minHeightHint(), 0.0);
    EXPECT_EQ(unloaded.minWidthHint(), 0.0);
    EXPECT_FALSE(unloaded.isViewLoaded());
}

TEST_F(FunctionTableTest, TheSizeHintsAreTheRootViewsSizeOfTheMoment)
{
    station.windowSize = QSize(1100, 700);
    start();
    EXPECT_EQ(plugin().minWidthHint(), 1100.0);
    EXPECT_EQ(plugin().minHeightHint(), 700.0);

    rootView()->setFrame(platform::Rect(0.0, 0.0, 640.5, 480.25));
    EXPECT_EQ(plugin().minWidthHint(), 640.5);
    EXPECT_EQ(plugin().minHeightHint(), 480.25);
}

TEST_F(FunctionTableTest, TheSizeHintsAreZeroWhenTheViewWentWithItsWindow)
{
    InteractiveView controller;
    {
        QWidget window;
        controller.view()->setParent(&window);
        controller.view()->setFrame(platform::Rect(0.0, 0.0, 640.0, 480.0));
        EXPECT_EQ(controller.minHeightHint(), 480.0);
    }
    EXPECT_EQ(controller.minHeightHint(), 0.0);
    EXPECT_EQ(controller.minWidthHint(), 0.0);
}

TEST_P(FunctionTableRowTest, NamesTheSelectorAndTheArgumentsInOrder)
{
    Array expected{__kviGetSelectorLabel(GetParam().selector)};
    for (const KVKArgType type : GetParam().arguments)
        expected.append(__kviArgTypeLabel(type));
    EXPECT_EQ(plugin().pluginFunctionTable().value(GetParam().luaName).toList(), expected);
}

TEST_P(FunctionTableRowTest, TheContextHasTheMethodAsAnInvokableOne)
{
    const QByteArray selector = GetParam().selector;
    const QByteArray name = selector.left(selector.indexOf(':'));
    const QMetaObject *type = plugin().pluginContext()->metaObject();
    bool found = false;
    for (int i = 0; i < type->methodCount(); ++i) {
        const QMetaMethod method = type->method(i);
        if (method.name() != name)
            continue;
        found = true;
        EXPECT_EQ(method.parameterCount(), static_cast<int>(GetParam().arguments.size()) + 1);
    }
    EXPECT_TRUE(found) << name.toStdString();
}

INSTANTIATE_TEST_SUITE_P(EachFunction, FunctionTableRowTest, ::testing::ValuesIn(table),
                         [](const auto &row) { return std::string(row.param.luaName); });

} // namespace
