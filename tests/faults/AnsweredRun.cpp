#include "tests/faults/AnsweredRun.h"

#include "tests/support/Wait.h"

#include <QFile>
#include <QJsonDocument>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <gtest/gtest.h>

#include <csignal>

namespace testsupport {

namespace {

const QString Asks = QStringLiteral(R"(
for call = 1, %1 do showView(systemIndex, { input = { "SN" }, autoConfirm = true, timeLimit = 600 }) end
-- A time limit that the clock of the wall has no part in.
local _, problem = showView(systemIndex, { input = { "SN" }, timeLimit = 0.2 })
return problem.code == 406)");

const QString Answers = QStringLiteral(R"(
local seen = assert(io.open("%2/seen.txt", "w"))
seen:setvbuf("no")
local function mayGoOn(number)
    local file = io.open("%2/go" .. number)
    return file and file:close()
end
for number = 1, %1 do
    operator.waitForPanel("0", 60)
    operator.enter("0-SN", string.format("%04d", number))
    operator.waitForPanelGone("0", 60)
    seen:write(number, "\n")
    if number % %3 == 0 and number < %1 then
        while not mayGoOn(number) do operator.sleep(0.01) end
    end
end)");

QStringList answersInLines(const QString &path)
{
    QStringList answers;
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QJsonDocument read = QJsonDocument::fromJson(line);
        EXPECT_TRUE(line.isEmpty() || read.isObject()) << line.toStdString();
        const QString answer =
            read.object().value(QStringLiteral("result")).toObject().value("SN").toString();
        if (!answer.isEmpty())
            answers.append(answer);
    }
    return answers;
}

QStringList answersInTables(const QString &path)
{
    QStringList answers;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "answers");
        database.setDatabaseName(path);
        EXPECT_TRUE(database.open()) << path.toStdString();
        QSqlQuery check("PRAGMA integrity_check", database);
        EXPECT_TRUE(check.next() && check.value(0).toString() == "ok") << path.toStdString();
        QSqlQuery query("SELECT value FROM answers ORDER BY call", database);
        while (query.next())
            answers.append(query.value(0).toString());
    }
    QSqlDatabase::removeDatabase("answers");
    return answers;
}

} // namespace

AnsweredRun::AnsweredRun(const QString &results)
    : m_results(results)
{
    perSystem(Asks.arg(All));
    QString answers = Answers;
    operatorDoes(answers.replace("%1", QString::number(All))
                     .replace("%2", path({}))
                     .replace("%3", QString::number(Rest)));
    argument("--results").argument(resultsPath()).argument("--log").argument("/dev/null");
    // A write beyond a limit is an error of the write, as on a full disk.
    process().setChildProcessModifier([] { std::signal(SIGXFSZ, SIG_IGN); });
}

bool AnsweredRun::waitForAnswers(int count) const
{
    const bool came = waitUntil([this, count] {
        QFile file(path("seen.txt"));
        return file.open(QIODevice::ReadOnly) && file.readAll().count('\n') >= count;
    });
    EXPECT_TRUE(came) << count << " answers are not accepted";
    return came;
}

void AnsweredRun::goOn(int count) const
{
    file(QStringLiteral("go%1").arg(count), {});
}

bool AnsweredRun::waitForError(const QString &text)
{
    const bool came = waitUntil([this, &text] { return said().contains(text); });
    EXPECT_TRUE(came) << text.toStdString() << " is not said, but:\n" << m_said.toStdString();
    return came;
}

QString AnsweredRun::said()
{
    m_said += QString::fromUtf8(process().readAllStandardError());
    return m_said;
}

QStringList AnsweredRun::answersIn(const QString &file)
{
    return file.endsWith(QLatin1String(".sqlite")) ? answersInTables(file) : answersInLines(file);
}

QStringList AnsweredRun::answersUpTo(int count)
{
    QStringList answers;
    for (int number = 1; number <= count; ++number)
        answers.append(QStringLiteral("%1").arg(number, 4, 10, QLatin1Char('0')));
    return answers;
}

} // namespace testsupport
