#include "station/check/StationCheck.h"

#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "kovan/KovanUIExtension/KVKExtensionInteractiveView.h"
#include "station/PluginHost.h"
#include "station/RunningSequence.h"
#include "station/StationConfig.h"
#include "station/base/StationError.h"
#include "station/check/CallCheck.h"
#include "station/check/LuaScript.h"
#include "station/check/NameCheck.h"
#include "station/operator/OperatorFunctions.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <deque>
#include <map>
#include <memory>
#include <utility>

namespace station {
namespace {

const QString UsualPlugin = QStringLiteral("InteractiveView");
const QString OperatorName = QStringLiteral("operator");

bool isScript(const QString &file)
{
    return file.endsWith(QLatin1String(".lua"), Qt::CaseInsensitive);
}

/// The name of a file as a person would write it from here.
QString shownPath(const QString &path)
{
    const QString relative = QDir::current().relativeFilePath(path);
    return relative.startsWith(QLatin1String("..")) ? path : relative;
}

/// Functions of Lua's libraries that leave a table which they are given as it is.
bool libraryOnlyReads(const QString &function)
{
    static const QStringList names{
        QStringLiteral("pairs"),        QStringLiteral("ipairs"),       QStringLiteral("next"),
        QStringLiteral("print"),        QStringLiteral("type"),         QStringLiteral("tostring"),
        QStringLiteral("table.concat"), QStringLiteral("table.unpack"), QStringLiteral("log")};
    return names.contains(function);
}

platform::Array toArray(const QStringList &texts)
{
    platform::Array array;
    for (const QString &text : texts)
        array.append(text);
    return array;
}

/// The globals that a sequence finds, by whom it runs for: as the station itself gives them.
QStringList globalsOf(SequenceKind kind)
{
    StationConfig config;
    config.systemGroups = QStringList{QStringLiteral("G")};
    config.systemSlots = QStringList{QStringLiteral("S")};
    config.sequences = {{QStringLiteral("sequence.lua"), kind}};
    return planSequences(config).constFirst().globals.keys();
}

/// Looks at the scripts of one station.
class StationLook
{
public:
    StationLook(StationConfig config, const QStringList &givenPlugins)
        : m_config(std::move(config))
        , m_plugins(loadPlugins(givenPlugins,
                                m_config.plugins.isEmpty() ? QStringList{UsualPlugin} : m_config.plugins))
    {
        KVKConfigEngine *engine = KVKConfigEngine::sharedConfigEngine();
        engine->setSystemIndexToGroupMapping(toArray(m_config.systemGroups));
        engine->setSystemIndexToSlotMapping(toArray(m_config.systemSlots));
        engine->setLocale(m_config.locale);
        m_sequenceNames.library = KVKLuaLibraryVocabulary(m_config.lua);
        m_sequenceNames.reader = QStringLiteral("a sequence");
        for (const QString &name : KVKSequencerNames())
            m_sequenceNames.globals.insert(name);
        static_cast<void>(bindFunctions(m_plugins)); // refuses a function that two of them give
        for (const LoadedPlugin &plugin : m_plugins)
            addPlugin(plugin);
        makeOperatorNames();
    }

    void checkSequences()
    {
        for (const SequenceEntry &entry : std::as_const(m_config.sequences))
            checkSequence(entry.script, {entry.kind});
    }

    /// A sequence of which it is not known for whom it runs, or an operator's script.
    void checkScript(const QString &path)
    {
        const LuaScript script = read(path);
        const auto &calls = script.calls();
        const bool isOperators = std::any_of(calls.begin(), calls.end(), [&](const LuaScript::Call &call) {
            return call.name.startsWith(OperatorName + QLatin1Char('.'));
        });
        if (isOperators && !script.assigned().contains(OperatorName))
            checkOperatorScript(path);
        else
            checkSequence(path, {SequenceKind::System, SequenceKind::Group, SequenceKind::Station});
    }

    void checkOperatorScript(const QString &path)
    {
        QStringList keys = m_config.groups();
        for (qsizetype i = 0; i < m_config.systemGroups.size(); ++i)
            keys.append(QString::number(i));
        checkWithModules(path, m_operatorNames, [&](LuaScript &script, const QSet<QString> &own) {
            if (!m_config.systemGroups.isEmpty() && !own.contains(OperatorName))
                checkPanelKeys(script, keys);
        });
    }

    [[nodiscard]] const QList<Problem> &problems() const { return m_problems; }

private:
    void addPlugin(const LoadedPlugin &plugin)
    {
        const platform::Dictionary constants = plugin.constants();
        for (auto constant = constants.cbegin(); constant != constants.cend(); ++constant) {
            m_sequenceNames.globals.insert(constant.key());
            if (platform::isDictionary(constant.value()))
                m_sequenceNames.fields.insert(constant.key(), constant.value().toMap().keys());
        }
        for (const KVKBoundFunction &function : plugin.bindFunctions()) {
            m_sequenceNames.globals.insert(function.name());
            m_functions.insert(function.name(), std::make_shared<KnownFunction>(
                                                    KnownFunction{function, plugin.configurationCheck()}));
        }
    }

    void makeOperatorNames()
    {
        const KVKLuaVocabulary own = KVKLuaVocabularyOf(registerOperatorFunctions);
        m_operatorNames.library = m_sequenceNames.library;
        m_operatorNames.reader = QStringLiteral("an operator's script");
        m_operatorNames.globals = QSet<QString>(own.names.cbegin(), own.names.cend());
        m_operatorNames.fields = own.fields;
        for (const QString &name : std::as_const(m_sequenceNames.globals))
            m_operatorNames.elsewhere.insert(name, QStringLiteral("a sequence"));
        for (const QString &name : globalsOf(SequenceKind::System))
            m_operatorNames.elsewhere.insert(name, QStringLiteral("a sequence"));
        for (const QString &name : own.names) {
            if (!m_sequenceNames.globals.contains(name))
                m_sequenceNames.elsewhere.insert(name, QStringLiteral("an operator's script"));
        }
    }

    void checkSequence(const QString &path, const QList<SequenceKind> &kinds)
    {
        KnownNames names = m_sequenceNames;
        for (const QString &name : globalsOf(SequenceKind::Group))
            names.elsewhere.insert(name, QStringLiteral("a sequence that runs per system or per group"));
        for (const QString &name : globalsOf(SequenceKind::System)) {
            if (!names.elsewhere.contains(name))
                names.elsewhere.insert(name, QStringLiteral("a sequence that runs per system"));
        }
        for (const SequenceKind kind : kinds) {
            for (const QString &name : globalsOf(kind))
                names.globals.insert(name);
        }
        const QStringList folders = QStringList{QFileInfo(path).absolutePath()} + m_config.imageFolders;
        checkWithModules(path, names, [&](LuaScript &script, const QSet<QString> &own) {
            checkCalls(script, m_functions, own, folders);
        });
    }

    [[nodiscard]] LuaScript read(const QString &path) const
    {
        return {path, shownPath(path), [this](const QString &function) {
                    return m_functions.contains(function) || libraryOnlyReads(function);
                }};
    }

    /// A script and the modules beside it are looked at together: what one defines, the others find.
    void checkWithModules(const QString &path, const KnownNames &names,
                          const std::function<void(LuaScript &, const QSet<QString> &)> &checkMore)
    {
        std::deque<LuaScript> scripts;
        scripts.push_back(read(path));
        QStringList paths{QFileInfo(path).canonicalFilePath()};
        const QDir folder = QFileInfo(path).absoluteDir();
        for (std::size_t i = 0; i < scripts.size(); ++i)
            readModules(scripts, i, paths, folder);
        QSet<QString> own;
        bool definesAnything = false;
        for (const LuaScript &script : scripts) {
            own.unite(script.assigned());
            definesAnything = definesAnything || script.definesAnything() || !script.isReadable();
        }
        for (LuaScript &script : scripts) {
            if (script.isReadable()) {
                checkNames(script, names, own, definesAnything);
                checkMore(script, own);
            }
            m_problems += script.problems();
        }
    }

    static QString moduleFile(const QDir &folder, const QString &name)
    {
        return folder.absoluteFilePath(QString(name).replace(QLatin1Char('.'), QLatin1Char('/')) +
                                       QLatin1String(".lua"));
    }

    /// A module that does not lie beside the script.
    void checkFarModule(LuaScript &script, const QString &name, LuaPlace place) const
    {
        static const QString InC = QStringLiteral("package.loadlib");
        const KVKLuaModule module = KVKLuaFindModule(name.toUtf8());
        if (module == KVKLuaModule::Nowhere)
            script.add(place, QStringLiteral("there is no module '%1'").arg(name));
        else if (module == KVKLuaModule::C && !m_config.lua.allowed.contains(InC))
            script.add(place, QStringLiteral("module '%1' is written in C%2").arg(name, adviceFor(InC)));
    }

    void readModules(std::deque<LuaScript> &scripts, std::size_t number, QStringList &paths,
                     const QDir &folder) const
    {
        // A copy: the script may move when others are put beside it.
        const auto modules = scripts[number].modules();
        for (const auto &[name, place] : modules) {
            const QString file = moduleFile(folder, name);
            if (!QFileInfo(file).isFile()) {
                checkFarModule(scripts[number], name, place);
                continue;
            }
            const QString canonical = QFileInfo(file).canonicalFilePath();
            if (paths.contains(canonical))
                continue;
            paths.append(canonical);
            scripts.push_back(read(file));
        }
    }

    StationConfig m_config;
    std::list<LoadedPlugin> m_plugins;
    KnownNames m_sequenceNames;
    KnownNames m_operatorNames;
    KnownFunctions m_functions;
    QList<Problem> m_problems;
};

/// Sorts out what there is to look at, and looks at it station by station.
class FileCheck
{
public:
    explicit FileCheck(const CheckRequest &request)
        : m_request(request)
    {
        for (const QString &file : request.files)
            (isScript(file) ? m_scripts : m_configurations).append(file);
        m_scripts.removeDuplicates();
        m_configurations.removeDuplicates();
    }

    QList<Problem> check()
    {
        for (const QString &file : std::as_const(m_configurations))
            checkConfiguration(file);
        // One station's scripts were looked at with it.
        if (m_configurations.size() != 1 && hasScripts()) {
            StationLook look({}, m_request.plugins);
            checkScripts(look, {});
        }
        return sortedProblems(m_problems);
    }

private:
    [[nodiscard]] bool hasScripts() const
    {
        return !m_scripts.isEmpty() || !m_request.operatorScripts.isEmpty();
    }

    void checkConfiguration(const QString &file)
    {
        if (QFileInfo(file).isDir()) {
            m_problems.append({file, 1, 0, QStringLiteral("is a folder")});
            return checkBesideBroken({});
        }
        QStringList refusals;
        const bool isOnly = m_configurations.size() == 1;
        const StationConfig config = checkStationConfig(
            file, isOnly && !m_scripts.isEmpty() ? SequenceNeed::None : SequenceNeed::AtLeastOne, refusals);
        for (const QString &refusal : refusals)
            m_problems.append(problemOfConfiguration(file, refusal));
        try {
            StationLook look(config, m_request.plugins);
            look.checkSequences();
            if (isOnly)
                checkScripts(look, config.sequences);
            else
                m_problems += look.problems();
        } catch (const StationError &problem) {
            // What the command line asks for is no fault of the file.
            if (!m_request.plugins.isEmpty())
                throw;
            m_problems.append({file, 1, 0, problem.text()});
            checkBesideBroken(config);
        }
    }

    /// The scripts, where the configuration's own plug-ins cannot be asked.
    void checkBesideBroken(StationConfig config)
    {
        if (m_configurations.size() != 1 || !hasScripts())
            return;
        config.plugins.clear();
        StationLook look(config, m_request.plugins);
        checkScripts(look, {});
    }

    void checkScripts(StationLook &look, const QList<SequenceEntry> &alreadyLookedAt)
    {
        for (const QString &script : std::as_const(m_scripts)) {
            const QString path = QFileInfo(script).canonicalFilePath();
            const bool isKnown =
                !path.isEmpty() &&
                std::any_of(alreadyLookedAt.begin(), alreadyLookedAt.end(), [&](const SequenceEntry &entry) {
                    return QFileInfo(entry.script).canonicalFilePath() == path;
                });
            if (!isKnown)
                look.checkScript(script);
        }
        for (const QString &script : m_request.operatorScripts)
            look.checkOperatorScript(script);
        m_problems += look.problems();
    }

    const CheckRequest &m_request;
    QStringList m_scripts;
    QStringList m_configurations;
    QList<Problem> m_problems;
};

} // namespace

QList<Problem> checkFiles(const CheckRequest &request)
{
    return FileCheck(request).check();
}

} // namespace station
