#include "station/PluginHost.h"

#include "kovan/KovanUIExtension/KVKExtensionInteractiveView.h"
#include "tests/station/StationFiles.h"

#include <QFileInfo>

using station::findPlugin;
using station::LoadedPlugin;

namespace {

/// A plug-in that is wrong in one way.
QString fixture(const QString &name)
{
    return QStringLiteral(FIXTURE_PLUGINS_PATH "/lib%1.so").arg(name);
}

/// What is said of a library after its path.
QString refusalOfLoading(const QString &path)
{
    const QString refusal = testsupport::refusalOf([&] { const LoadedPlugin plugin(path); });
    const QString beginning = "plug-in " + path + ": ";
    EXPECT_TRUE(refusal.startsWith(beginning)) << refusal.toStdString();
    EXPECT_FALSE(refusal.contains('\n')) << refusal.toStdString();
    return refusal.mid(beginning.size());
}

TEST(PluginLoading, TheRealPluginIsLoadedWithAllThatItOffers)
{
    const LoadedPlugin plugin(PLUGIN_PATH);
    EXPECT_EQ(plugin.name(), "InteractiveView");
    EXPECT_NE(plugin.extension(), nullptr);
    EXPECT_NE(plugin.interruption(), nullptr);
    ASSERT_NE(plugin.view(), nullptr);
    QStringList names;
    for (const KVKBoundFunction &function : plugin.bindFunctions())
        names.append(function.name());
    names.sort();
    EXPECT_EQ(names, (QStringList{"getData", "getLoopConfig", "isLoopFinished", "setLoop", "showGroupView",
                                  "showView"}));
}

TEST(PluginLoading, AnotherVersionOfTheInterfaceIsRefusedWithBoth)
{
    EXPECT_EQ(refusalOfLoading(fixture("WrongVersion")),
              "offers the interface org.kovan.UIExtension.InteractiveView/9.0, this station needs " +
                  QStringLiteral(KVKExtensionInteractiveView_iid));
}

TEST(PluginLoading, AnExceptionWhileLoadingIsToldWithItsText)
{
    EXPECT_EQ(refusalOfLoading(fixture("ThrowsWhileLoading")),
              "failed while loading: no licence for this station");
}

TEST(PluginLoading, AnObjectWithoutTheInterfaceIsRefused)
{
    EXPECT_EQ(refusalOfLoading(fixture("OtherObject")),
              "does not implement " + QStringLiteral(KVKExtensionInteractiveView_iid));
}

TEST(PluginLoading, ALibraryThatIsNoPluginIsRefused)
{
    EXPECT_EQ(refusalOfLoading(fixture("NoPlugin")), "is not a plug-in");
}

TEST(PluginLoading, ATextFileAnEmptyFileAndAFolderAreNoPlugins)
{
    const testsupport::StationFiles files;
    EXPECT_EQ(refusalOfLoading(files.write("libText.so", "no library at all\n")), "is not a plug-in");
    EXPECT_EQ(refusalOfLoading(files.write("libEmpty.so", "")), "is not a plug-in");
    EXPECT_EQ(refusalOfLoading(files.folder()), "is not a plug-in");
    EXPECT_EQ(refusalOfLoading(files.path("libNone.so")), "is not a plug-in");
}

TEST(PluginLoading, AFunctionThatThePluginDoesNotHaveIsNamed)
{
    const LoadedPlugin plugin(fixture("MissingFunction"));
    const QString refusal = testsupport::refusalOf([&] { static_cast<void>(plugin.bindFunctions()); });
    EXPECT_TRUE(refusal.startsWith("plug-in " + fixture("MissingFunction") + ": ")) << refusal.toStdString();
    EXPECT_TRUE(refusal.contains("'measure'") || refusal.contains("measure")) << refusal.toStdString();
    EXPECT_FALSE(refusal.contains('\n'));
}

TEST(PluginLoading, APluginNeedNotOfferAnInterruption)
{
    const LoadedPlugin plugin(fixture("MissingFunction"));
    EXPECT_EQ(plugin.interruption(), nullptr);
}

TEST(PluginSearch, ABareNameIsLookedForInTheFoldersInOrder)
{
    const testsupport::StationFiles files;
    const QString second = files.write("b/libThing.so", "");
    EXPECT_EQ(findPlugin("Thing", {files.path("a"), files.path("b")}), second);
    const QString first = files.write("a/libThing.so", "");
    EXPECT_EQ(findPlugin("Thing", {files.path("a"), files.path("b")}), first);
}

TEST(PluginSearch, ALibraryIsFoundWithAndWithoutItsPrefix)
{
    const testsupport::StationFiles files;
    const QString plain = files.write("Thing.so", "");
    EXPECT_EQ(findPlugin("Thing", {files.folder()}), plain);
    const QString prefixed = files.write("libThing.so", "");
    EXPECT_EQ(findPlugin("Thing", {files.folder()}), prefixed);
}

TEST(PluginSearch, TheFoundPathIsClean)
{
    const testsupport::StationFiles files;
    const QString found = files.write("a/libThing.so", "");
    EXPECT_EQ(findPlugin("Thing", {files.path("b/../a")}), found);
}

TEST(PluginSearch, AFolderOfTheNameIsNoLibrary)
{
    const testsupport::StationFiles files;
    files.write("libThing.so/inside", "");
    EXPECT_EQ(testsupport::refusalOf([&] { static_cast<void>(findPlugin("Thing", {files.folder()})); }),
              "plug-in Thing: not found in " + files.folder());
}

TEST(PluginSearch, ANameThatIsNowhereIsToldWithAllFolders)
{
    EXPECT_EQ(testsupport::refusalOf([] {
                  static_cast<void>(findPlugin("Thing", {"/here", "/there"}));
              }),
              "plug-in Thing: not found in /here, /there");
}

TEST(PluginSearch, APathIsTakenAsItIs)
{
    const testsupport::StationFiles files;
    const QString path = files.write("any.name", "");
    EXPECT_EQ(findPlugin(path, {"/here"}), path);
    EXPECT_EQ(testsupport::refusalOf([] { static_cast<void>(findPlugin("/nowhere/libX.so", {"/here"})); }),
              "plug-in /nowhere/libX.so: there is no such file");
}

} // namespace
