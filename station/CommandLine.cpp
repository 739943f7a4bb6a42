#include "station/CommandLine.h"

#include "station/base/StationError.h"
#include "station/base/Version.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QTextStream>

namespace station {

namespace {

const QCommandLineOption Config(QStringLiteral("config"),
                                QStringLiteral("The station's configuration (TOML)."),
                                QStringLiteral("FILE"));
const QCommandLineOption
    Sequence(QStringLiteral("sequence"),
             QStringLiteral("A Lua sequence to run for each system, instead of those of the "
                            "configuration. May be given several times."),
             QStringLiteral("FILE"));
const QCommandLineOption
    OperatorScript(QStringLiteral("operator"),
                   QStringLiteral("A Lua script that takes the operator's place. The sequences "
                                  "start by themselves, and the station ends with them."),
                   QStringLiteral("FILE"));
const QCommandLineOption
    Headless(QStringLiteral("headless"),
             QStringLiteral("Needs no display. The sequences start by themselves, each answer "
                            "is printed, and the station ends with them."));
const QCommandLineOption
    Results(QStringLiteral("results"),
            QStringLiteral("Where each call and each end of a sequence is written (a database when it "
                           "ends with .sqlite, otherwise JSON lines)."),
            QStringLiteral("FILE"));
const QCommandLineOption Record(
    QStringLiteral("record"),
    QStringLiteral("Where what is done at the window is written as an operator's script. The file must "
                   "not be there yet, or be empty."),
    QStringLiteral("FILE"));
const QCommandLineOption Log(QStringLiteral("log"), QStringLiteral("Where the log's lines are written."),
                             QStringLiteral("FILE"));
const QCommandLineOption
    Plugin(QStringLiteral("plugin"),
           QStringLiteral("A plug-in's library, loaded instead of those of the configuration, or "
                          "a folder to look for these in first. May be given several times."),
           QStringLiteral("PATH"));

const QCommandLineOption
    Badge(QStringLiteral("badge"),
          QStringLiteral("The operator's badge, which is not asked for then. May be given "
                         "several times, for those whom an operator's script logs in."),
          QStringLiteral("TEXT"));

const QCommandLineOption
    Theme(QStringLiteral("theme"),
          QStringLiteral("Whether the window is light, dark, or as the desktop is (auto). "
                         "Otherwise what was chosen in its menu holds."),
          QStringLiteral("light|dark|auto"));

constexpr char Usage[] = "Usage: station --config FILE [options]\n"
                         "       station check|new|report ...; each tells more with --help";

std::optional<ThemeChoice> themeOf(const QCommandLineParser &parser)
{
    if (!parser.isSet(Theme))
        return std::nullopt;
    const auto choice = themeFromText(parser.value(Theme));
    if (!choice)
        throw StationError(
            QStringLiteral("--theme: is light, dark or auto, not '%1'").arg(parser.value(Theme)));
    return choice;
}

void requireFile(const QString &option, const QString &path)
{
    if (!QFileInfo(path).isFile())
        throw StationError(QStringLiteral("--%1: there is no file %2").arg(option, path));
}

/// What the parser does not understand, in one line that can be gone on with.
QString complaint(const QCommandLineParser &parser)
{
    QString text = parser.errorText().replace(QLatin1Char('\n'), QLatin1Char(' '));
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text;
}

CommandLine valuesOf(const QCommandLineParser &parser)
{
    CommandLine line;
    line.config = parser.value(Config);
    line.sequences = parser.values(Sequence);
    line.operatorScript = parser.value(OperatorScript);
    line.results = parser.value(Results);
    line.record = parser.value(Record);
    line.log = parser.value(Log);
    line.plugins = parser.values(Plugin);
    line.badges = parser.values(Badge);
    line.theme = themeOf(parser);
    line.headless = parser.isSet(Headless);
    return line;
}

void check(const CommandLine &line, const QCommandLineParser &parser)
{
    if (!parser.positionalArguments().isEmpty())
        throw StationError(
            QStringLiteral("does not take '%1'; see --help").arg(parser.positionalArguments().first()));
    if (line.config.isEmpty())
        throw StationError(QStringLiteral("needs --config FILE; see --help"));
    if (line.badges.contains(QString()))
        throw StationError(QStringLiteral("--badge: is empty"));
    // A slip in a path is told before anything is loaded or shown.
    requireFile(QStringLiteral("config"), line.config);
    for (const QString &sequence : line.sequences)
        requireFile(QStringLiteral("sequence"), sequence);
    if (!line.operatorScript.isEmpty())
        requireFile(QStringLiteral("operator"), line.operatorScript);
    for (const QString &plugin : line.plugins) {
        if (!QFileInfo::exists(plugin))
            throw StationError(QStringLiteral("--plugin: there is no %1").arg(plugin));
    }
}

} // namespace

std::optional<CommandLine> readCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Runs Lua test sequences for the systems of a station and asks its operator for input."));
    parser.addOptions(
        {Config, Sequence, OperatorScript, Headless, Results, Record, Log, Plugin, Badge, Theme});
    // Not the parser's own, which speaks of Qt as well.
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Says how it is used."));
    parser.addOption(help);
    const QCommandLineOption version = parser.addVersionOption();
    // Not process(), which ends the program by itself, with a status of its own.
    if (!parser.parse(arguments))
        throw StationError(complaint(parser) + QStringLiteral("; see --help"));
    if (parser.isSet(help)) {
        // The parser takes a name from an application, and there is none yet.
        const QString text = parser.helpText();
        QTextStream(stdout)
            << Usage << text.mid(text.indexOf(QLatin1Char('\n')))
            << "\nExit status: 0 every sequence passed, 1 one did not, 2 the station could not start.\n";
        return std::nullopt;
    }
    if (parser.isSet(version)) {
        QTextStream(stdout) << "station " << Version << '\n';
        return std::nullopt;
    }
    const CommandLine line = valuesOf(parser);
    check(line, parser);
    return line;
}

} // namespace station
