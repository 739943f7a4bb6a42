#include "station/starter/NewCommand.h"

#include "station/base/StationError.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <cstdlib>
#include <optional>

// Outside of any namespace, as the macro wants it: a static library's resources are taken in by a call.
static void takeInTemplates()
{
    Q_INIT_RESOURCE(starter);
}

namespace station {
namespace {

const QStringList Files{QStringLiteral("station.toml"), QStringLiteral("sequence.lua"),
                        QStringLiteral("operator.lua"), QStringLiteral("README.md")};

constexpr char Help[] = "\nNothing is overwritten: a folder that holds one of the files is refused.\n"
                        "Exit status: 0 the files were written, 2 they were not.\n";

/// The folder to write to; nothing when the help was asked for, which is printed.
std::optional<QString> folderOf(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Writes a small station that runs: %1.").arg(Files.join(QStringLiteral(", "))));
    // Not the parser's own, which speaks of Qt as well.
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Says how it is used."));
    parser.addOption(help);
    parser.addPositionalArgument(QStringLiteral("dir"),
                                 QStringLiteral("The folder; it is made when it is not there."),
                                 QStringLiteral("DIR"));
    if (!parser.parse(arguments))
        throw StationError(QStringLiteral("new: %1; see station new --help").arg(parser.errorText()));
    if (parser.isSet(help)) {
        // The parser takes a name from an application, and there is none here.
        const QString text = parser.helpText();
        QTextStream(stdout) << "Usage: station new DIR" << text.mid(text.indexOf('\n')) << Help;
        return std::nullopt;
    }
    if (parser.positionalArguments().size() != 1 || parser.positionalArguments().constFirst().isEmpty())
        throw StationError(QStringLiteral("new: needs one folder; see station new --help"));
    return parser.positionalArguments().constFirst();
}

[[noreturn]] void refuse(const QString &path, const QString &why)
{
    throw StationError(QStringLiteral("new: %1: %2").arg(path, why));
}

/// Takes back what it has written, unless it is told to keep it.
class Writer
{
public:
    explicit Writer(QString folder)
        : m_folder(std::move(folder))
    {}
    ~Writer()
    {
        for (const QString &path : std::as_const(m_written))
            QFile::remove(path);
    }
    Writer(const Writer &) = delete;
    Writer &operator=(const Writer &) = delete;

    void write(const QString &name)
    {
        QFile source(QStringLiteral(":/starter/") + name);
        if (!source.open(QIODevice::ReadOnly))
            refuse(name, source.errorString());
        const QByteArray content = source.readAll();
        const QString path = QDir(m_folder).filePath(name);
        QFile target(path);
        // Only as a new file: one that has come between the look and now is left alone as well.
        if (!target.open(QIODevice::WriteOnly | QIODevice::NewOnly))
            refuse(path, QFileInfo::exists(path) ? QStringLiteral("is there already") : target.errorString());
        m_written.append(path);
        if (target.write(content) != content.size() || !target.flush())
            refuse(path, target.errorString());
    }
    void keep() { m_written.clear(); }

private:
    QString m_folder;
    QStringList m_written;
};

/// A link that leads nowhere counts as a file: to write to it would make one elsewhere.
bool isThere(const QString &path)
{
    return QFileInfo::exists(path) || QFileInfo(path).isSymLink();
}

void writeStation(const QString &folder)
{
    for (const QString &name : Files) {
        const QString path = QDir(folder).filePath(name);
        if (isThere(path))
            refuse(path, QStringLiteral("is there already, and nothing was written"));
    }
    if (QFileInfo(folder).isFile() || !QDir().mkpath(folder))
        refuse(folder, QStringLiteral("the folder cannot be made"));
    Writer writer(folder);
    for (const QString &name : Files)
        writer.write(name);
    writer.keep();
}

} // namespace

int runNew(const QStringList &arguments)
{
    const std::optional<QString> folder = folderOf(arguments);
    if (!folder)
        return EXIT_SUCCESS;
    takeInTemplates();
    writeStation(*folder);
    const QString shown = QDir(*folder).filePath(QStringLiteral("station.toml"));
    QTextStream(stdout) << "Written to " << *folder << ": " << Files.join(QStringLiteral(", "))
                        << "\nRun it: station --config " << shown << '\n';
    return EXIT_SUCCESS;
}

} // namespace station
