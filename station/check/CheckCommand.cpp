#include "station/check/CheckCommand.h"

#include "station/base/StationError.h"
#include "station/check/StationCheck.h"

#include <QCommandLineParser>
#include <QTextStream>

#include <cstdlib>
#include <optional>

namespace station {
namespace {

constexpr char Statuses[] = "\nExit status: 0 no problem was found, 1 there are some, a line each, 2 the "
                            "command cannot be carried out.\n";

/// What to look at; nothing when the help was asked for, which is printed.
std::optional<CheckRequest> requestOf(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Reads configurations, their sequences and other scripts, runs nothing, and reports "
                       "every problem."));
    const QCommandLineOption operatorScript(QStringLiteral("operator"),
                                            QStringLiteral("A script that takes the operator's place."),
                                            QStringLiteral("FILE"));
    const QCommandLineOption plugin(QStringLiteral("plugin"),
                                    QStringLiteral("A plug-in's library, instead of those of the "
                                                   "configuration, or a folder to look for these in first."),
                                    QStringLiteral("PATH"));
    // Not the parser's own, which speaks of Qt as well.
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Says how it is used."));
    parser.addOptions({operatorScript, plugin, help});
    parser.addPositionalArgument(QStringLiteral("file"),
                                 QStringLiteral("Configurations (TOML), sequences and operator scripts "
                                                "(*.lua)."),
                                 QStringLiteral("FILE..."));
    if (!parser.parse(arguments)) {
        throw StationError(QStringLiteral("check: %1; see station check --help").arg(parser.errorText()));
    }
    if (parser.isSet(help)) {
        // The parser takes the program's path for the command's name.
        const QString text = parser.helpText();
        QTextStream(stdout) << "Usage: station check [options] FILE..." << text.mid(text.indexOf('\n'))
                            << Statuses;
        return std::nullopt;
    }
    CheckRequest request{parser.positionalArguments(), parser.values(operatorScript), parser.values(plugin)};
    if (request.files.isEmpty() && request.operatorScripts.isEmpty())
        throw StationError(QStringLiteral("check: names no file; see station check --help"));
    return request;
}

} // namespace

int runCheck(const QStringList &arguments)
{
    const std::optional<CheckRequest> request = requestOf(arguments);
    if (!request)
        return EXIT_SUCCESS;
    const QList<Problem> problems = checkFiles(*request);
    QTextStream out(stdout);
    for (const Problem &problem : problems)
        out << problem.asLine() << '\n';
    return problems.isEmpty() ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace station
