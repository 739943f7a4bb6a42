#include "tests/end_to_end/StationRun.h"

#include <QSqlDatabase>
#include <QSqlQuery>

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

QStringList refusalsIn(const QString &file)
{
    QStringList rows;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "refused");
        database.setDatabaseName(file);
        EXPECT_TRUE(database.open());
        QSqlQuery query("SELECT kind, text, group_name, slot, operator FROM refusals ORDER BY refusal",
                        database);
        while (query.next()) {
            QStringList row;
            for (int column = 0; column < 5; ++column)
                row.append(query.value(column).toString());
            rows.append(row.join('|'));
        }
    }
    QSqlDatabase::removeDatabase("refused");
    return rows;
}

TEST(RefusedEntries, StandAmongTheResultsWithTheirKindAndWhoMadeThem)
{
    StationRun station;
    station.config(QStringLiteral("[station]\ngroups = [\"G1\"]\nslots = [\"S1\", \"S2\"]\n"
                                  "[results]\ndatabase = \"%1\"\n"
                                  "[[sequence]]\nscript = \"%2\"\nper = \"group\"\n")
                       .arg(station.path("results.sqlite"),
                            station.file("ask.lua", "showGroupView(groupNumber, { input = { 'S1', 'S2' }, "
                                                    "length = 3, autoConfirm = true })")));
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 30)
        operator.type("ab\n")
        operator.waitForText("G1-SharedInput", "ab", 30)
        operator.type("abc\n")
        operator.type("abc\n")
        operator.type("abd\n")
    )");
    station.argument("--badge").argument("B7");
    station.run();
    EXPECT_EQ(station.status(), 0) << station.everything().toStdString();
    EXPECT_EQ(refusalsIn(station.path("results.sqlite")),
              (QStringList{"length|ab|G1|S1|B7", "duplicate|abc|G1|S2|B7"}));
}

} // namespace
