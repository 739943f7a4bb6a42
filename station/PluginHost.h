#pragma once

#include "kovan/KovanLuaSequencer/KVKFunctionTable.h"
#include "platform/ViewController.h"

#include <QPluginLoader>
#include <QStringList>

#include <memory>
#include <vector>

class KVKExtensionInteractiveView;
class KVKExtensionInterruption;

namespace station {

/// A plug-in that was found, checked and loaded.
///
/// Thread: the main thread. Ownership: the plug-in's object lives until the process ends.
class LoadedPlugin
{
public:
    /// Loads a library. Errors: throws StationError naming the file and what is wrong with it.
    explicit LoadedPlugin(const QString &path);

    [[nodiscard]] QString name() const { return m_name; }
    [[nodiscard]] platform::ViewController *controller() const { return m_controller; }
    [[nodiscard]] KVKExtensionInteractiveView *extension() const { return m_extension; }
    /// Null when the plug-in offers no such thing.
    [[nodiscard]] KVKExtensionInterruption *interruption() const { return m_interruption; }
    /// Bound to the context; valid after the view was loaded.
    [[nodiscard]] std::vector<KVKBoundFunction> bindFunctions() const;

private:
    std::unique_ptr<QPluginLoader> m_loader;
    QString m_path;
    QString m_name;
    platform::ViewController *m_controller = nullptr;
    KVKExtensionInteractiveView *m_extension = nullptr;
    KVKExtensionInterruption *m_interruption = nullptr;
};

/// The library of a plug-in: a path as it is, a bare name in the folders, in order. Errors: throws
/// StationError when there is none.
[[nodiscard]] QString findPlugin(const QString &plugin, const QStringList &folders);

} // namespace station
