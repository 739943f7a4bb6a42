#include "station/PluginHost.h"

#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"
#include "kovan/KovanUIExtension/KVKExtensionConfigurationCheck.h"
#include "kovan/KovanUIExtension/KVKExtensionInteractiveView.h"
#include "kovan/KovanUIExtension/KVKExtensionInterruption.h"
#include "kovan/KovanUIExtension/KVKExtensionVersion.h"
#include "station/base/StationError.h"
#include "station/base/Version.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QJsonObject>

namespace station {

namespace {

/// Of the library's file what its author has chosen: "libLamps.so" is "Lamps".
QString nameOf(const QString &path)
{
    const QString file = QFileInfo(path).completeBaseName();
    return file.startsWith(QLatin1String("lib")) ? file.mid(3) : file;
}

[[noreturn]] void refuse(const QString &path, const QString &why)
{
    throw StationError(QStringLiteral("plug-in %1: %2").arg(path, why));
}

/// The interface that the library was built with, which it says of itself before any of its code runs.
QString interfaceOf(const QPluginLoader &loader, const QString &path)
{
    const QString found = loader.metaData().value(QStringLiteral("IID")).toString();
    const QString wanted = QStringLiteral(KVKExtensionInteractiveView_iid);
    if (found.isEmpty())
        refuse(path, QStringLiteral("is not a plug-in"));
    if (!KVKInterfaceFits(found, wanted))
        refuse(path, QStringLiteral("offers the interface %1, this station needs %2").arg(found, wanted));
    return found;
}

/// What a plug-in answers. Nothing that it throws comes through, of whatever type.
template <class Question>
auto ask(const QString &path, const Question &question)
{
    try {
        return question();
        // Its own refusals are told as they are.
    } catch (const StationError &) {
        throw;
    } catch (...) {
        refuse(path,
               QStringLiteral("failed while loading: %1").arg(KVKTextOfException(std::current_exception())));
    }
}

QObject *makeInstance(QPluginLoader &loader, const QString &path)
{
    return ask(path, [&] {
        QObject *instance = loader.instance();
        if (!instance)
            refuse(path, loader.errorString());
        return instance;
    });
}

} // namespace

LoadedPlugin::LoadedPlugin(const QString &path)
    : m_loader(std::make_unique<QPluginLoader>(path))
    , m_path(path)
    , m_name(nameOf(path))
{
    const QString offered = interfaceOf(*m_loader, path);
    QObject *instance = makeInstance(*m_loader, path);
    m_root.object = instance;
    m_extension = KVKExtensionOf(instance, offered);
    m_interruption = qobject_cast<KVKExtensionInterruption *>(instance);
    m_check = qobject_cast<KVKExtensionConfigurationCheck *>(instance);
    m_controller = qobject_cast<platform::ViewController *>(instance);
    if (!m_extension)
        refuse(path,
               QStringLiteral("does not implement %1").arg(QStringLiteral(KVKExtensionInteractiveView_iid)));
    if (!m_controller)
        refuse(path, QStringLiteral("its root object is no view controller"));
}

platform::View *LoadedPlugin::view() const
{
    return ask(m_path, [this] { return m_controller->view(); });
}

QSizeF LoadedPlugin::minimumSize() const
{
    return ask(m_path, [this] { return QSizeF(m_extension->minWidthHint(), m_extension->minHeightHint()); });
}

platform::Dictionary LoadedPlugin::constants() const
{
    return ask(m_path, [this] {
        const platform::Dictionary constants = m_extension->pluginConstants();
        for (auto constant = constants.cbegin(); constant != constants.cend(); ++constant) {
            if (KVKSequencerGives(constant.key())) {
                refuse(m_path,
                       QStringLiteral("constant \"%1\": the sequencer gives it already").arg(constant.key()));
            }
        }
        return constants;
    });
}

std::vector<KVKBoundFunction> LoadedPlugin::bindFunctions() const
{
    return ask(m_path, [this] {
        QObject *context = m_extension->pluginContext();
        if (!context)
            refuse(m_path, QStringLiteral("has no context for its functions"));
        try {
            return KVKBindFunctions(context, m_extension->pluginFunctionTable());
        } catch (const KVKFunctionTableError &problem) {
            refuse(m_path, QString::fromUtf8(problem.what()));
        }
    });
}

std::vector<KVKBoundFunction> bindFunctions(const std::list<LoadedPlugin> &plugins)
{
    std::vector<KVKBoundFunction> functions;
    QHash<QString, QString> givers;
    for (const LoadedPlugin &plugin : plugins) {
        for (const KVKBoundFunction &function : plugin.bindFunctions()) {
            const auto giver = givers.constFind(function.name());
            if (giver != givers.constEnd()) {
                refuse(plugin.path(),
                       QStringLiteral("gives the function \"%1\", which plug-in %2 gives already")
                           .arg(function.name(), *giver));
            }
            givers.insert(function.name(), plugin.path());
            functions.push_back(function);
        }
    }
    return functions;
}

QString findPlugin(const QString &plugin, const QStringList &folders)
{
    if (plugin.contains(QLatin1Char('/'))) {
        if (!QFileInfo(plugin).isFile())
            refuse(plugin, QStringLiteral("there is no such file"));
        return plugin;
    }
    for (const QString &folder : folders) {
        for (const QString &pattern : {QStringLiteral("lib%1.so"), QStringLiteral("%1.so"),
                                       QStringLiteral("lib%1.dylib"), QStringLiteral("%1.dll")}) {
            const QString path = QDir(folder).absoluteFilePath(pattern.arg(plugin));
            if (QFileInfo(path).isFile())
                return QDir::cleanPath(path);
        }
    }
    refuse(plugin, QStringLiteral("not found in %1").arg(folders.join(QStringLiteral(", "))));
}

std::list<LoadedPlugin> loadPlugins(const QStringList &given, const QStringList &configured)
{
    const QString here = QCoreApplication::applicationDirPath();
    QStringList folders;
    QStringList libraries;
    for (const QString &path : given)
        (QFileInfo(path).isDir() ? folders : libraries).append(QFileInfo(path).absoluteFilePath());
    // Beside the program as it was built, and as it was installed.
    folders +=
        {here + QStringLiteral("/../lib"), here + QLatin1Char('/') + QLatin1String(PluginFolder), here};
    std::list<LoadedPlugin> plugins;
    QStringList files;
    for (const QString &plugin : libraries.isEmpty() ? configured : libraries) {
        const QString path = findPlugin(plugin, folders);
        // A name, a path and a link may mean one file, whose second instance would be the first one again.
        const QString file = QFileInfo(path).canonicalFilePath();
        if (files.contains(file))
            refuse(path, QStringLiteral("is named twice"));
        files.append(file);
        plugins.emplace_back(path);
    }
    return plugins;
}

} // namespace station
