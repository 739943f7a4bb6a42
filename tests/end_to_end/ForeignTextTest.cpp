#include "tests/end_to_end/StationRun.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

/// A text from a scanner, a badge, a configuration or a sequence that would be something else if it were read
/// as markup, a format, SQL, a path or Lua.
struct Foreign
{
    const char *name;
    const char *text;
};

void PrintTo(const Foreign &foreign, std::ostream *stream)
{
    *stream << foreign.name;
}

/// The text as it stands in Lua, whatever it holds.
QString inLua(const QString &text)
{
    QString written;
    for (const char unit : text.toUtf8())
        written += QStringLiteral("\\%1").arg(static_cast<int>(static_cast<unsigned char>(unit)), 3, 10,
                                              QLatin1Char('0'));
    return '"' + written + '"';
}

/// The same for TOML.
QString inToml(const QString &text)
{
    QString written;
    for (const QChar unit : text)
        written += QStringLiteral("\\u%1").arg(static_cast<int>(unit.unicode()), 4, 16, QLatin1Char('0'));
    return '"' + written + '"';
}

QString contentOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

class ForeignText : public ::testing::TestWithParam<Foreign>
{
protected:
    [[nodiscard]] QString text() const { return QString::fromUtf8(GetParam().text); }

    /// A station that bears the text wherever a text can be given, and a sequence that shows it wherever it
    /// can be shown and asks for it.
    void furnish(StationRun &station) const
    {
        const QString name = inToml(text());
        station.config(QStringLiteral("[station]\nname = %1\ngroups = [%1]\nslots = [%1]\n"
                                      "[results]\ndatabase = 'r.sqlite'\n[[sequence]]\nscript = 's.lua'\n")
                           .arg(name));
        const QString lua =
            QStringLiteral("local text = %1 log(text) assert(operatorBadge == text and slotName == text and "
                           "groupName == text) "
                           "local answer = showView(systemIndex, { input = { text }, label = text, title = "
                           "text, hint = text, "
                           "placeholder = text, validate = function(entry) return entry == text, text end, "
                           "button = { 'Cancel', 'OK' } }) "
                           "local lit = showView(systemIndex, { message = text, button = { text, 'OK' } }) "
                           "return lit == true and answer[text] == text");
        static_cast<void>(station.file("s.lua", lua.arg(inLua(text()))));
        for (const QString &argument :
             {QStringLiteral("--badge"), text(), QStringLiteral("--record"), station.path("record.lua")})
            station.argument(argument);
    }

    [[nodiscard]] QString operatorScript() const
    {
        return QStringLiteral("operator.waitForPanel('0', 30) operator.scan('another') operator.scan(%1) "
                              "operator.click({ panel = '0', title = 'OK' }) "
                              "operator.waitForPanelGone('0', 30) operator.waitForPanel('0', 30) "
                              "operator.click({ panel = '0', title = 'OK' })")
            .arg(inLua(text()));
    }

    [[nodiscard]] QStringList report(const StationRun &station, QStringList arguments) const
    {
        arguments.prepend(station.path("r.sqlite"));
        arguments.prepend("report");
        QProcess program;
        program.start(QStringLiteral(STATION_PATH), arguments);
        EXPECT_TRUE(program.waitForFinished(60'000));
        EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
        return QString::fromUtf8(program.readAllStandardOutput()).split('\n');
    }

    /// Every text of every column of the database's tables.
    [[nodiscard]] static QStringList textsOf(const QString &path)
    {
        QStringList texts;
        {
            QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "foreign");
            database.setDatabaseName(path);
            EXPECT_TRUE(database.open());
            for (const QString &table : database.tables()) {
                QSqlQuery rows(QStringLiteral("SELECT * FROM \"%1\"").arg(table), database);
                while (rows.next()) {
                    for (int column = 0; column < rows.record().count(); ++column)
                        texts.append(rows.value(column).toString());
                }
            }
        }
        QSqlDatabase::removeDatabase("foreign");
        return texts;
    }
};

TEST_P(ForeignText, IsKeptAsItIsAndNeverRead)
{
    StationRun station;
    furnish(station);
    station.operatorDoes(operatorScript()).passes();
    ASSERT_EQ(station.calls("showView", "0").size(), 2) << station.everything().toStdString();
    const QJsonObject answer = station.calls("showView", "0").first().value("result").toObject();
    EXPECT_EQ(answer.value(text()).toString(), text());
    EXPECT_TRUE(station.log().contains(text())) << station.log().toStdString();
    const QStringList stored = textsOf(station.path("r.sqlite"));
    EXPECT_GE(stored.count(text()), 4) << "station, slot, badge, answer: " << stored.join('|').toStdString();
    // Nothing was written but what was asked for.
    EXPECT_EQ(QDir(QFileInfo(station.path("s.lua")).path()).entryList(QDir::Files, QDir::Name),
              (QStringList{"operator.lua", "r.sqlite", "record.lua", "results.jsonl", "s.lua", "station.log",
                           "station.toml"}));

    StationRun again;
    furnish(again);
    again.operatorDoes(contentOf(station.path("record.lua"))).passes();
    EXPECT_EQ(again.calls("showView", "0").first().value("result").toObject(), answer)
        << contentOf(station.path("record.lua")).toStdString();
}

TEST_P(ForeignText, IsFoundAndShownByReportsAsItIs)
{
    StationRun station;
    furnish(station);
    station.operatorDoes(operatorScript()).passes();
    EXPECT_GE(report(station, {"--serial", text()}).size(), 3);
    static_cast<void>(report(station, {"--html", station.path("page")}));
    const QString page = contentOf(station.path("page/index.html")).replace("&#39;", "'");
    EXPECT_TRUE(page.contains(text().toHtmlEscaped()));
    if (text().toHtmlEscaped() != text()) {
        EXPECT_FALSE(page.contains(text()));
    }
    EXPECT_EQ(QFileInfo(station.path("page/index.html")).permissions() &
                  (QFile::ReadGroup | QFile::ReadOther),
              QFile::Permissions());
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, ForeignText,
    ::testing::Values(Foreign{"Markup", "<b>bold</b><script>alert(1)</script>&amp;<img src=x>"},
                      Foreign{"Format", "%s %n {} {0} %1 %2 %@ %d%%"},
                      Foreign{"Sql", "'; DROP TABLE calls; /* \" \\"}, Foreign{"Path", "../../x"},
                      Foreign{"Lua", "]]..os.exit(3)..[[ \"..os.exit(4)..\" \\"}),
    [](const auto &testCase) { return std::string(testCase.param.name); });

} // namespace
