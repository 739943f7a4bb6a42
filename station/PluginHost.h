#pragma once

#include "kovan/KovanLuaSequencer/KVKFunctionTable.h"
#include "platform/ViewController.h"

#include <QPluginLoader>
#include <QPointer>
#include <QSizeF>
#include <QStringList>

#include <list>
#include <memory>
#include <vector>

class KVKExtensionConfigurationCheck;
class KVKExtensionInteractiveView;
class KVKExtensionInterruption;

namespace station {

/// A plug-in that was found, checked and loaded.
///
/// Thread: the main thread. Ownership: the plug-in's root object is deleted with this, before the window that
/// has taken its view; the library stays loaded until the process ends, since views of its classes may be
/// left. Errors: every function throws StationError naming the file and what is wrong with it, an exception
/// of the plug-in included.
class LoadedPlugin
{
public:
    /// Loads a library.
    explicit LoadedPlugin(const QString &path);
    LoadedPlugin(const LoadedPlugin &) = delete;
    LoadedPlugin &operator=(const LoadedPlugin &) = delete;

    /// As a person calls it: without what a library's file has around it.
    [[nodiscard]] QString name() const { return m_name; }
    [[nodiscard]] QString path() const { return m_path; }
    [[nodiscard]] KVKExtensionInteractiveView *extension() const { return m_extension; }
    /// Loaded on the first call.
    [[nodiscard]] platform::View *view() const;
    /// What the plug-in wants for its view, in points.
    [[nodiscard]] QSizeF minimumSize() const;
    [[nodiscard]] platform::Dictionary constants() const;
    /// Null when the plug-in offers no such thing.
    [[nodiscard]] KVKExtensionInterruption *interruption() const { return m_interruption; }
    /// Null when the plug-in offers no such thing.
    [[nodiscard]] KVKExtensionConfigurationCheck *configurationCheck() const { return m_check; }
    /// Bound to the context; to be called after the view was loaded.
    [[nodiscard]] std::vector<KVKBoundFunction> bindFunctions() const;

private:
    /// Deleted here, since the loader would do so when the process ends, with the application long gone.
    struct Root
    {
        ~Root() { delete object.data(); }
        QPointer<QObject> object;
    };

    std::unique_ptr<QPluginLoader> m_loader;
    QString m_path;
    QString m_name;
    Root m_root;
    platform::ViewController *m_controller = nullptr;
    KVKExtensionInteractiveView *m_extension = nullptr;
    KVKExtensionInterruption *m_interruption = nullptr;
    KVKExtensionConfigurationCheck *m_check = nullptr;
};

/// The functions of all plug-ins. Errors: throws StationError also for a name that two of them give.
[[nodiscard]] std::vector<KVKBoundFunction> bindFunctions(const std::list<LoadedPlugin> &plugins);

/// The library of a plug-in: a path as it is, a bare name in the folders, in order. Errors: throws
/// StationError when there is none.
[[nodiscard]] QString findPlugin(const QString &plugin, const QStringList &folders);

/// The plug-ins of a configuration. `given` are the paths of the command line: libraries, which are loaded in
/// their place, and folders to look for them in first. Errors: throws StationError also for one that is named
/// twice.
[[nodiscard]] std::list<LoadedPlugin> loadPlugins(const QStringList &given, const QStringList &configured);

} // namespace station
