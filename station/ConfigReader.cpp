#include "station/ConfigTable.h"
#include "station/Palette.h"
#include "station/StationConfig.h"
#include "station/StationError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <map>

namespace station {

namespace {

void refuseDuplicatesAndBlanks(const ConfigTable &table, const char *key, const QStringList &names)
{
    QStringList seen;
    for (const QString &name : names) {
        if (name.isEmpty())
            table.fail(key, QStringLiteral("holds an empty name"));
        if (seen.contains(name))
            table.fail(key, QStringLiteral("holds '%1' twice").arg(name));
        seen.append(name);
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
void readMapping(StationConfig &config, const ConfigTable &table)
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
    if (groups->contains(QString()))
        table.fail("system_groups", QStringLiteral("holds an empty name"));
    if (slotNames->contains(QString()))
        table.fail("system_slots", QStringLiteral("holds an empty name"));
    config.systemGroups = *groups;
    config.systemSlots = *slotNames;
}

void readStation(StationConfig &config, const ConfigTable &table)
{
    table.allowOnly({QStringLiteral("name"), QStringLiteral("groups"), QStringLiteral("slots"),
                     QStringLiteral("custom_row_color"), QStringLiteral("system_groups"),
                     QStringLiteral("system_slots")});
    config.name = table.text("name").value_or(QStringLiteral("Station"));
    config.customRowColor = table.truth("custom_row_color").value_or(false);
    const bool byHand = table.has("system_groups") || table.has("system_slots");
    if (byHand && (table.has("groups") || table.has("slots")))
        table.fail(table.has("groups") ? "groups" : "slots",
                   QStringLiteral("cannot stand beside system_groups and system_slots"));
    if (byHand) {
        readMapping(config, table);
        return;
    }
    const auto groups = table.texts("groups");
    const auto slotNames = table.texts("slots");
    if (!groups)
        table.failMissing("groups");
    if (!slotNames)
        table.failMissing("slots");
    refuseDuplicatesAndBlanks(table, "groups", *groups);
    refuseDuplicatesAndBlanks(table, "slots", *slotNames);
    numberSystems(config, *groups, *slotNames);
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

void readSystem(StationConfig &config, QList<int> &seen, const ConfigTable &table)
{
    table.allowOnly({QStringLiteral("index"), QStringLiteral("background"), QStringLiteral("text")});
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
    colors.background = readColor(table, "background", colors.background);
    colors.text = readColor(table, "text", colors.text);
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

SequenceEntry readSequence(const ConfigTable &table, const QDir &folder)
{
    table.allowOnly({QStringLiteral("script"), QStringLiteral("per")});
    const auto script = table.text("script");
    if (!script)
        table.failMissing("script");
    const QString path = QDir::cleanPath(folder.absoluteFilePath(*script));
    if (!QFileInfo(path).isFile())
        table.fail("script", QStringLiteral("there is no file %1").arg(path));
    return {path, readKind(table)};
}

/// A path stands for a file beside the configuration; a bare name is looked for where plug-ins are.
QStringList pluginPaths(const QStringList &plugins, const QDir &folder)
{
    QStringList paths;
    for (const QString &plugin : plugins)
        paths.append(plugin.contains(QLatin1Char('/')) ? QDir::cleanPath(folder.absoluteFilePath(plugin))
                                                       : plugin);
    return paths;
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
        throw StationError(QStringLiteral("%1:%2: %3")
                               .arg(path)
                               .arg(problem.source().begin.line)
                               .arg(QString::fromUtf8(problem.description().data(),
                                                      static_cast<qsizetype>(problem.description().size()))));
    }
}

} // namespace

StationConfig readStationConfig(const QString &path)
{
    const toml::table content = parse(path);
    const QDir folder = QFileInfo(path).absoluteDir();
    const ConfigTable root(content, path, QString());
    root.allowOnly({QStringLiteral("station"), QStringLiteral("system"), QStringLiteral("sequence"),
                    QStringLiteral("plugins")});
    StationConfig config;
    const auto station = root.table("station");
    if (!station)
        root.failMissing("station");
    readStation(config, *station);
    for (int i = 0; i < config.systemGroups.size(); ++i)
        config.colors.insert(i, defaultColors(i));
    QList<int> seen;
    root.forEachTable("system", [&](const ConfigTable &table) { readSystem(config, seen, table); });
    root.forEachTable(
        "sequence", [&](const ConfigTable &table) { config.sequences.append(readSequence(table, folder)); });
    config.plugins =
        pluginPaths(root.texts("plugins").value_or(QStringList{QStringLiteral("InteractiveView")}), folder);
    return config;
}

} // namespace station
