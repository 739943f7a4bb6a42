#include "tests/end_to_end/StationRun.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace testsupport {
namespace {

/// Far more than any run takes, also under a sanitizer; less than what CTest allows a test.
constexpr int LimitMilliseconds = 100'000;

/// On one line, so that the lines of the script keep their numbers.
constexpr const char *OperatorPrelude =
    "local function eventually(condition, what) local limit = os.time() + 30; while not condition() do "
    "if os.time() > limit then error('in vain: ' .. what, 2) end; operator.sleep(0.01) end end; "
    "local function logged(text) for _, line in ipairs(operator.log(400)) do "
    "if line:find(text, 1, true) then return true end end return false end ";

QString tomlList(const QStringList &names)
{
    QStringList quoted;
    for (const QString &name : names)
        quoted.append(QStringLiteral("\"%1\"").arg(name));
    return QLatin1Char('[') + quoted.join(QLatin1String(", ")) + QLatin1Char(']');
}

QString contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The system, group or nothing that a line of the results is about, as text.
QString subjectOf(const QJsonObject &line)
{
    if (line.contains(QLatin1String("system")))
        return line.value(QLatin1String("system")).toVariant().toString();
    return line.value(QLatin1String("group")).toVariant().toString();
}

} // namespace

StationRun::StationRun()
    : m_plugin(QStringLiteral(PLUGIN_PATH))
{
    EXPECT_TRUE(m_folder.isValid()) << m_folder.errorString().toStdString();
}

StationRun &StationRun::groups(const QStringList &names)
{
    m_groups = names;
    return *this;
}

StationRun &StationRun::slotNames(const QStringList &names)
{
    m_slotNames = names;
    return *this;
}

StationRun &StationRun::sequence(const QString &per, const QString &lua)
{
    const QString name = QStringLiteral("sequence%1.lua").arg(++m_sequenceCount);
    file(name, lua);
    m_sequences += QStringLiteral("[[sequence]]\nscript = \"%1\"\nper = \"%2\"\n").arg(name, per);
    return *this;
}

StationRun &StationRun::operatorDoes(const QString &lua)
{
    m_operatorPath = file(QStringLiteral("operator.lua"), QLatin1String(OperatorPrelude) + lua);
    return *this;
}

StationRun &StationRun::table(const QString &toml)
{
    m_tables += toml + QLatin1Char('\n');
    return *this;
}

StationRun &StationRun::config(const QString &toml)
{
    m_config = toml;
    return *this;
}

StationRun &StationRun::example(const QString &folder)
{
    const QString root = QStringLiteral(EXAMPLES_PATH) + QLatin1Char('/') + folder;
    m_configPath = root + QLatin1String("/station.toml");
    m_operatorPath = root + QLatin1String("/operator.lua");
    return *this;
}

StationRun &StationRun::argument(const QString &text)
{
    m_arguments.append(text);
    return *this;
}

StationRun &StationRun::plugin(const QString &path)
{
    m_plugin = path;
    return *this;
}

QString StationRun::file(const QString &name, const QString &content) const
{
    QFile made(path(name));
    EXPECT_TRUE(made.open(QIODevice::WriteOnly)) << made.errorString().toStdString();
    made.write(content.toUtf8());
    return made.fileName();
}

QString StationRun::path(const QString &name) const
{
    return m_folder.filePath(name);
}

QString StationRun::madeConfig() const
{
    if (!m_config.isEmpty())
        return m_config;
    return QStringLiteral("[station]\nname = \"Test station\"\ngroups = %1\nslots = %2\n%3%4")
        .arg(tomlList(m_groups), tomlList(m_slotNames), m_sequences, m_tables);
}

QStringList StationRun::commandLine()
{
    if (m_configPath.isEmpty())
        m_configPath = file(QStringLiteral("station.toml"), madeConfig());
    QStringList arguments{QStringLiteral("--config"),
                          m_configPath,
                          QStringLiteral("--headless"),
                          QStringLiteral("--results"),
                          path(QStringLiteral("results.jsonl")),
                          QStringLiteral("--log"),
                          path(QStringLiteral("station.log"))};
    if (!m_operatorPath.isEmpty())
        arguments += {QStringLiteral("--operator"), m_operatorPath};
    if (!m_plugin.isEmpty())
        arguments += {QStringLiteral("--plugin"), m_plugin};
    return arguments + m_arguments;
}

void StationRun::start()
{
    m_process.start(QStringLiteral(STATION_PATH), commandLine());
    if (!m_process.waitForStarted(LimitMilliseconds))
        ADD_FAILURE() << "the station does not start: " << m_process.errorString().toStdString();
}

void StationRun::finish()
{
    const bool inTime =
        m_process.state() == QProcess::NotRunning || m_process.waitForFinished(LimitMilliseconds);
    if (!inTime) {
        m_process.kill();
        m_process.waitForFinished();
    }
    m_errors = QString::fromUtf8(m_process.readAllStandardError());
    m_output = QString::fromUtf8(m_process.readAllStandardOutput());
    const bool ended = m_process.exitStatus() == QProcess::NormalExit;
    m_status = ended ? m_process.exitCode() : -1;
    if (!inTime) {
        ADD_FAILURE() << "the station did not end within its limit and was killed\n"
                      << everything().toStdString();
    } else if (!ended) {
        ADD_FAILURE() << "the station crashed\n" << everything().toStdString();
    }
}

void StationRun::run()
{
    start();
    finish();
}

void StationRun::passes()
{
    run();
    EXPECT_EQ(status(), 0) << everything().toStdString();
}

QString StationRun::errorLine() const
{
    const QString text = m_errors.trimmed();
    EXPECT_FALSE(text.isEmpty()) << "there is no line in the error stream";
    EXPECT_FALSE(text.contains(QLatin1Char('\n'))) << "there is more than one line:\n" << text.toStdString();
    return text;
}

QString StationRun::log() const
{
    return contentOf(path(QStringLiteral("station.log")));
}

QList<QJsonObject> StationRun::results() const
{
    QList<QJsonObject> lines;
    const QString content = contentOf(path(QStringLiteral("results.jsonl")));
    for (const QString &text : content.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const QJsonDocument line = QJsonDocument::fromJson(text.toUtf8());
        EXPECT_TRUE(line.isObject()) << "no JSON object: " << text.toStdString();
        lines.append(line.object());
    }
    return lines;
}

QList<QJsonObject> StationRun::calls(const QString &function, const QString &subject) const
{
    QList<QJsonObject> found;
    for (const QJsonObject &line : results()) {
        if (line.value(QLatin1String("call")).toString() == function && subjectOf(line) == subject)
            found.append(line);
    }
    return found;
}

QJsonValue StationRun::answer(const QString &function, const QString &subject) const
{
    const QList<QJsonObject> found = calls(function, subject);
    EXPECT_EQ(found.size(), 1) << function.toStdString() << " of " << subject.toStdString() << "\n"
                               << everything().toStdString();
    return found.isEmpty() ? QJsonValue(QJsonValue::Undefined) : found.first().value(QLatin1String("result"));
}

QJsonObject StationRun::end(const QString &subject) const
{
    QList<QJsonObject> found;
    for (const QJsonObject &line : results()) {
        if (line.contains(QLatin1String("outcome")) && subjectOf(line) == subject)
            found.append(line);
    }
    EXPECT_EQ(found.size(), 1) << "ends of " << subject.toStdString() << "\n" << everything().toStdString();
    return found.isEmpty() ? QJsonObject() : found.first();
}

QString StationRun::outcome(const QString &subject) const
{
    return end(subject).value(QLatin1String("outcome")).toString();
}

QString StationRun::everything() const
{
    const QString results = contentOf(path(QStringLiteral("results.jsonl")));
    return QStringLiteral("status %1\n--- errors\n%2--- results\n%3--- log\n%4")
        .arg(m_status)
        .arg(m_errors, results, log());
}

} // namespace testsupport
