#include "station/ConfigTable.h"
#include "station/MachineConfig.h"
#include "station/Palette.h"
#include "station/PersonConfig.h"
#include "station/Refusals.h"
#include "station/StationConfig.h"
#include "station/base/StationError.h"
#include "station/base/VisibleText.h"
#include "station/results/Outbox.h"
#include "station/results/ServerAddress.h"
#include "station/results/SqliteFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace station {

namespace {

void refuseBlanks(const ConfigTable &table, const char *key, const QStringList &names)
{
    const qsizetype blank = names.indexOf(QString());
    if (blank >= 0)
        table.failElement(key, blank, QStringLiteral("holds an empty name"));
}

void refuseDuplicates(const ConfigTable &table, const char *key, const QStringList &names)
{
    for (qsizetype i = 1; i < names.size(); ++i) {
        if (names.lastIndexOf(names.at(i), i - 1) >= 0)
            table.failElement(key, i, QStringLiteral("holds '%1' twice").arg(names.at(i)));
    }
}

/// A panel bears the name of its group or the number of its system, and its parts that name, a '-' and the
/// slot's: a group whose name could be taken for another's part or number could not be told apart from it.
void refuseUnusableGroups(const ConfigTable &table, const char *key, const QStringList &groups,
                          qsizetype systemCount)
{
    for (qsizetype i = 0; i < groups.size(); ++i) {
        const QString &name = groups.at(i);
        if (name.contains(QLatin1Char('-')))
            table.failElement(key, i, QStringLiteral("'%1' holds a '-'").arg(name));
        if (name == QLatin1String("Loop"))
            table.failElement(key, i, QStringLiteral("'Loop' is the name of the loop's field"));
        const int number = name.toInt();
        if (number >= 0 && number < systemCount && name == QString::number(number))
            table.failElement(key, i, QStringLiteral("'%1' is the number of a system").arg(name));
    }
}

/// An answer holds each slot's entry under the slot's name, beside what the panel keeps there itself.
void refuseUnusableSlots(const ConfigTable &table, const char *key, const QStringList &slotNames)
{
    static const QStringList taken{QStringLiteral("length"), QStringLiteral("clickedButton"),
                                   QStringLiteral("SharedInput")};
    for (qsizetype i = 0; i < slotNames.size(); ++i) {
        if (taken.contains(slotNames.at(i)))
            table.failElement(key, i, QStringLiteral("'%1' is a name that answers use").arg(slotNames.at(i)));
    }
}

void refusePositionTwice(const ConfigTable &table, const QStringList &groups, const QStringList &slotNames)
{
    std::map<std::pair<QString, QString>, qsizetype> seen;
    for (qsizetype i = 0; i < groups.size(); ++i) {
        const auto [first, isNew] = seen.emplace(std::pair(groups.at(i), slotNames.at(i)), i);
        if (!isNew) {
            table.failElement(
                "system_slots", i,
                QStringLiteral("system %1 is slot '%2' of group '%3', as system %4 is")
                    .arg(QString::number(i), slotNames.at(i), groups.at(i), QString::number(first->second)));
        }
    }
}

/// Systems numbered group by group.
void numberSystems(StationConfig &config, const QStringList &groups, const QStringList &slotNames)
{
    for (const QString &group : groups) {
        for (const QString &slot : slotNames) {
            config.systemGroups.append(group);
            config.systemSlots.append(slot);
        }
    }
}

/// A mapping laid out by hand.
void readMapping(StationConfig &config, const ConfigTable &table, const Refusals &refusals)
{
    const auto groups = table.texts("system_groups");
    const auto slotNames = table.texts("system_slots");
    if (!groups)
        table.fail("system_slots", QStringLiteral("needs system_groups beside it"));
    if (!slotNames)
        table.fail("system_groups", QStringLiteral("needs system_slots beside it"));
    if (groups->size() != slotNames->size()) {
        table.fail("system_slots", QStringLiteral("has %1 entries, but system_groups has %2")
                                       .arg(slotNames->size())
                                       .arg(groups->size()));
    }
    refusals.attempt([&] { refuseBlanks(table, "system_groups", *groups); });
    refusals.attempt([&] { refuseBlanks(table, "system_slots", *slotNames); });
    refusals.attempt([&] { refuseUnusableGroups(table, "system_groups", *groups, groups->size()); });
    refusals.attempt([&] { refuseUnusableSlots(table, "system_slots", *slotNames); });
    refusals.attempt([&] { refusePositionTwice(table, *groups, *slotNames); });
    config.systemGroups = *groups;
    config.systemSlots = *slotNames;
}

/// A misspelt locale would silently be taken for another one.
QString localeOf(const ConfigTable &table)
{
    const QString name = table.text("locale").value_or(QStringLiteral("C"));
    if (name != QLatin1String("C") && QLocale(name).language() == QLocale::C)
        table.fail("locale", QStringLiteral("'%1' is no locale; write \"C\", \"de\" or \"de_DE\"").arg(name));
    return name;
}

QStringList readImageFolders(const ConfigTable &table, const QDir &folder, const Refusals &refusals)
{
    const QStringList written = table.texts("images").value_or(QStringList());
    refuseBlanks(table, "images", written);
    QStringList paths;
    for (qsizetype i = 0; i < written.size(); ++i) {
        const QString path = QDir::cleanPath(folder.absoluteFilePath(written.at(i)));
        refusals.attempt([&] {
            if (!QFileInfo(path).isDir())
                table.failElement("images", i, QStringLiteral("there is no folder %1").arg(path));
        });
        paths.append(path);
    }
    return paths;
}

/// The groups and the slots that each of them has.
void readGroupsAndSlots(StationConfig &config, const ConfigTable &table, const Refusals &refusals)
{
    std::optional<QStringList> groups;
    std::optional<QStringList> slotNames;
    const auto read = [&](const char *key, std::optional<QStringList> &names) {
        names = table.texts(key);
        if (!names)
            table.failMissing(key);
    };
    const bool hasGroups = refusals.attempt([&] { read("groups", groups); });
    const bool hasSlots = refusals.attempt([&] { read("slots", slotNames); });
    if (hasGroups) {
        const qsizetype systems = groups->size() * (hasSlots ? slotNames->size() : 0);
        refusals.attempt([&] { refuseBlanks(table, "groups", *groups); });
        refusals.attempt([&] { refuseDuplicates(table, "groups", *groups); });
        refusals.attempt([&] { refuseUnusableGroups(table, "groups", *groups, systems); });
    }
    if (hasSlots) {
        refusals.attempt([&] { refuseBlanks(table, "slots", *slotNames); });
        refusals.attempt([&] { refuseDuplicates(table, "slots", *slotNames); });
        refusals.attempt([&] { refuseUnusableSlots(table, "slots", *slotNames); });
    }
    if (hasGroups && hasSlots)
        numberSystems(config, *groups, *slotNames);
}

void readStation(StationConfig &config, const ConfigTable &table, const QDir &folder,
                 const Refusals &refusals)
{
    table.allowOnly({QStringLiteral("name"), QStringLiteral("groups"), QStringLiteral("slots"),
                     QStringLiteral("custom_row_color"), QStringLiteral("locale"), QStringLiteral("images"),
                     QStringLiteral("system_groups"), QStringLiteral("system_slots"),
                     QStringLiteral("sounds"), QStringLiteral("volume"), QStringLiteral("ask_operator"),
                     QStringLiteral("badge_pattern"), QStringLiteral("files")},
                    refusals);
    refusals.attempt([&] { config.name = table.text("name").value_or(QStringLiteral("Station")); });
    refusals.attempt([&] { config.customRowColor = table.truth("custom_row_color").value_or(false); });
    refusals.attempt([&] { config.locale = localeOf(table); });
    refusals.attempt([&] { config.imageFolders = readImageFolders(table, folder, refusals); });
    const bool byHand = table.has("system_groups") || table.has("system_slots");
    if (byHand && (table.has("groups") || table.has("slots")))
        table.fail(table.has("groups") ? "groups" : "slots",
                   QStringLiteral("cannot stand beside system_groups and system_slots"));
    if (byHand)
        readMapping(config, table, refusals);
    else
        readGroupsAndSlots(config, table, refusals);
}

platform::Color readColor(const ConfigTable &table, const char *key, const platform::Color &otherwise)
{
    const auto text = table.text(key);
    if (!text)
        return otherwise;
    const auto color = colorFromText(*text);
    if (!color)
        table.fail(key,
                   QStringLiteral("'%1' is no colour; write #rrggbb, #rrggbbaa or a colour name").arg(*text));
    return *color;
}

void readSystem(StationConfig &config, QList<int> &seen, const ConfigTable &table, const Refusals &refusals)
{
    table.allowOnly({QStringLiteral("index"), QStringLiteral("background"), QStringLiteral("text")},
                    refusals);
    const auto index = table.integer("index");
    if (!index)
        table.failMissing("index");
    if (*index < 0 || *index >= config.systemGroups.size()) {
        table.fail("index", QStringLiteral("there is no system %1; the station has %2")
                                .arg(*index)
                                .arg(config.systemGroups.size()));
    }
    const int system = static_cast<int>(*index);
    if (seen.contains(system))
        table.fail("index", QStringLiteral("system %1 is given twice").arg(system));
    seen.append(system);
    SystemColors &colors = config.colors[system];
    refusals.attempt([&] { colors.background = readColor(table, "background", colors.background); });
    refusals.attempt([&] { colors.text = readColor(table, "text", colors.text); });
}

SequenceKind readKind(const ConfigTable &table)
{
    static const std::map<QString, SequenceKind> kinds{{QStringLiteral("system"), SequenceKind::System},
                                                       {QStringLiteral("group"), SequenceKind::Group},
                                                       {QStringLiteral("station"), SequenceKind::Station}};
    const QString per = table.text("per").value_or(QStringLiteral("system"));
    const auto found = kinds.find(per);
    if (found == kinds.end())
        table.fail("per",
                   QStringLiteral("must be \"system\", \"group\" or \"station\", not \"%1\"").arg(per));
    return found->second;
}

SequenceEntry readSequence(const ConfigTable &table, const QDir &folder, const Refusals &refusals)
{
    table.allowOnly({QStringLiteral("script"), QStringLiteral("per")}, refusals);
    const auto script = table.text("script");
    if (!script)
        table.failMissing("script");
    const QString path = QDir::cleanPath(folder.absoluteFilePath(*script));
    if (!QFileInfo(path).isFile())
        table.fail("script", QStringLiteral("there is no file %1").arg(path));
    SequenceEntry entry{path, SequenceKind::System};
    refusals.attempt([&] { entry.kind = readKind(table); });
    return entry;
}

/// A path stands for a file beside the configuration; a bare name is looked for where plug-ins are.
QStringList readPlugins(const ConfigTable &table, const QDir &folder)
{
    const auto plugins = table.texts("plugins");
    if (!plugins)
        return {QStringLiteral("InteractiveView")};
    refuseBlanks(table, "plugins", *plugins);
    QStringList paths;
    for (const QString &plugin : *plugins)
        paths.append(plugin.contains(QLatin1Char('/')) ? QDir::cleanPath(folder.absoluteFilePath(plugin))
                                                       : plugin);
    refuseDuplicates(table, "plugins", paths);
    return paths;
}

/// Read here to be refused with its line; the refusal holds nothing of the address.
void readServer(const ConfigTable &table, const QString &address)
{
    try {
        static_cast<void>(ServerAddress(address));
    } catch (const StationError &problem) {
        table.fail("database", problem.text());
    }
}

void readResults(StationConfig &config, const ConfigTable &table, const QDir &folder,
                 const Refusals &refusals)
{
    table.allowOnly({QStringLiteral("database"), QStringLiteral("outbox")}, refusals);
    const auto database = table.text("database");
    if (!database)
        table.failMissing("database");
    const auto outbox = table.text("outbox");
    if (isServerAddress(*database)) {
        readServer(table, *database);
        config.resultsDatabase = *database;
        if (outbox)
            config.resultsOutbox = QDir::cleanPath(folder.absoluteFilePath(*outbox));
        return;
    }
    if (!isSqlitePath(*database))
        table.fail("database", QStringLiteral("must be a file whose name ends with \".sqlite\", or "
                                              "\"postgresql://host/database\""));
    if (outbox)
        table.fail("outbox", QStringLiteral("is for a results server, and database is none"));
    config.resultsDatabase = QDir::cleanPath(folder.absoluteFilePath(*database));
}

toml::table parse(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw StationError(QStringLiteral("%1: %2").arg(path, file.errorString()));
    const QByteArray content = file.readAll();
    try {
        return toml::parse(std::string_view(content.constData(), static_cast<std::size_t>(content.size())));
    } catch (const toml::parse_error &problem) {
        const QString why = QString::fromUtf8(problem.description().data(),
                                              static_cast<qsizetype>(problem.description().size()));
        // What stands behind the mistake is quoted there, its line ends included.
        throw StationError(QStringLiteral("%1:%2: %3")
                               .arg(path, QString::number(problem.source().begin.line), visibleText(why)));
    }
}

} // namespace

namespace {

StationConfig read(const QString &path, SequenceNeed need, const Refusals &refusals)
{
    const toml::table content = parse(path);
    const QDir folder = QFileInfo(path).absoluteDir();
    const ConfigTable root(content, path, QString());
    root.allowOnly({QStringLiteral("station"), QStringLiteral("system"), QStringLiteral("sequence"),
                    QStringLiteral("plugins"), QStringLiteral("scanner"), QStringLiteral("results"),
                    QStringLiteral("lua")},
                   refusals);
    StationConfig config;
    refusals.attempt([&] {
        const auto station = root.table("station");
        if (!station)
            root.failMissing("station");
        refusals.attempt([&] { readStation(config, *station, folder, refusals); });
        readPerson(config, *station, refusals);
        readMachine(config, root, *station, refusals);
    });
    refusals.attempt([&] {
        if (const auto scanner = root.table("scanner"))
            readScanner(config, *scanner, refusals);
    });
    for (int i = 0; i < config.systemGroups.size(); ++i)
        config.colors.insert(i, defaultColors(i));
    QList<int> seen;
    // Where the systems themselves are not known, what is said of one cannot be judged.
    if (!config.systemGroups.isEmpty() || !refusals.haveAny()) {
        refusals.attempt([&] {
            root.forEachTable("system", [&](const ConfigTable &table) {
                refusals.attempt([&] { readSystem(config, seen, table, refusals); });
            });
        });
    }
    bool namesNone = true;
    refusals.attempt([&] {
        root.forEachTable("sequence", [&](const ConfigTable &table) {
            namesNone = false;
            refusals.attempt([&] { config.sequences.append(readSequence(table, folder, refusals)); });
        });
    });
    refusals.attempt([&] { config.plugins = readPlugins(root, folder); });
    refusals.attempt([&] {
        if (const auto results = root.table("results"))
            readResults(config, *results, folder, refusals);
    });
    if (config.resultsOutbox.isEmpty())
        config.resultsOutbox = usualOutbox(path);
    refusals.attempt([&] {
        if (namesNone && need == SequenceNeed::AtLeastOne)
            root.fail("sequence", QStringLiteral("is missing; there is nothing to run"));
    });
    return config;
}

} // namespace

StationConfig readStationConfig(const QString &path, SequenceNeed need)
{
    return read(path, need, {});
}

StationConfig checkStationConfig(const QString &path, SequenceNeed need, QStringList &problems)
{
    StationConfig config;
    const Refusals refusals(problems);
    refusals.attempt([&] { config = read(path, need, refusals); });
    return config;
}

} // namespace station
