#include "station/report/TableWriters.h"

#include "tests/support/Printing.h"

#include <gtest/gtest.h>

using namespace station::report;

namespace {

ReportTable tableOf(const QString &value)
{
    return {"serial", "Answers", {}, {{"value", "Value"}}, {{value}}};
}

/// How a text stands in CSV, and how it is shown to people.
QString asCsv(const QString &value)
{
    return csvOf(tableOf(value)).mid(QStringLiteral("value\r\n").size());
}
QString asText(const QString &value)
{
    return textOf(tableOf(value)).section('\n', 1);
}

Figures twoRuns()
{
    Figures figures;
    figures.file = "results.sqlite";
    RunFigures run{"r1", "Line 3", "B7", "/srv/station.toml", "2026-11-21T08:00:00.000Z", {}, 2, {}};
    run.sequences = {3, 1, 0, 0, 0};
    figures.runs = {run, run};
    figures.answers = 5;
    figures.functions = {{"Line 3", "showView", {}, {}, 3, 1, 0, {1500, 75'000}}};
    return figures;
}

TEST(TableWritersTest, CsvHasNamesQuotesAndLineEndsAsTheStandardSays)
{
    const ReportTable table{"t",
                            "T",
                            {},
                            {{"text", "Text"},
                             {"count", "Count", CellKind::Count},
                             {"share", "Share", CellKind::Share},
                             {"ms", "Time", CellKind::Milliseconds}},
                            {{"a,b", 1, 0.25, 1500}, {"say \"x\"\r\nand go", {}, {}, {}}, {{}, 0, 1.0, -3}}};
    EXPECT_EQ(csvOf(table), "text,count,share,ms\r\n"
                            "\"a,b\",1,0.2500,1500\r\n"
                            "\"say \"\"x\"\"\r\nand go\",,,\r\n"
                            ",0,1.0000,-3\r\n");
}

TEST(TableWritersTest, WhatASpreadsheetWouldRunIsATextInCsv)
{
    EXPECT_EQ(asCsv("=1+1"), "\"'=1+1\"\r\n");
    EXPECT_EQ(asCsv("+cmd|' /C calc'!A0"), "\"'+cmd|' /C calc'!A0\"\r\n");
    EXPECT_EQ(asCsv("-2+3"), "\"'-2+3\"\r\n");
    EXPECT_EQ(asCsv("@SUM(A1)"), "\"'@SUM(A1)\"\r\n");
    EXPECT_EQ(asCsv(" =1+1"), "\"' =1+1\"\r\n");
    EXPECT_EQ(asCsv("\t=1"), "\"'\t=1\"\r\n");
    EXPECT_EQ(asCsv("\r=1"), "\"'\r=1\"\r\n");
    EXPECT_EQ(asCsv(QStringLiteral("＝1+1")), QStringLiteral("\"'＝1+1\"\r\n"));
    EXPECT_EQ(asCsv("-"), "\"'-\"\r\n");
    EXPECT_EQ(asCsv("-5\n=1"), "\"'-5\n=1\"\r\n");
    // Told from the same text without apostrophe.
    EXPECT_EQ(asCsv("'=1+1"), "\"''=1+1\"\r\n");
}

TEST(TableWritersTest, NumbersAndOtherTextsStayAsTheyAreInCsv)
{
    for (const QString &value :
         QStringList{"-12.5", "+3", "-1e-9", "-12,5", "A=1", "SN-1", "'quoted'", "", "a;b"})
        EXPECT_EQ(asCsv(value), '"' + value + "\"\r\n") << value.toStdString();
}

TEST(TableWritersTest, WhatSteersATerminalIsShownAsAPicture)
{
    EXPECT_EQ(asText("A\x1d"
                     "B\x1b[2J\n\x7f"),
              QStringLiteral("A␝B␛[2J␊␡\n"));
    EXPECT_EQ(asText(QString(QChar(0x9b)) + "1m" + QChar(0x202e) + "x"), "\\u009b1m\\u202ex\n");
    EXPECT_EQ(asText(QString(100, 'x')), QString(47, 'x') + QStringLiteral("…\n"));
}

TEST(TableWritersTest, TheTextHasAHeadAndItsTablesInColumns)
{
    const QString text = textOf(twoRuns());
    EXPECT_TRUE(text.startsWith("Report of results.sqlite\n"
                                "2 runs, 8 sequences, 5 answers; yield 75.0 %. Times are universal (UTC).\n"))
        << text.toStdString();
    EXPECT_TRUE(
        text.contains("\nStarted              Station  Operator  Systems  Outcome   Yield  Sequences  "
                      "Passed  Failed  Erred  Stopped  Open\n"
                      "2026-11-21 08:00:00  Line 3   B7              2  failed   75.0 %          4  "
                      "     3       1      0        0     0\n"))
        << text.toStdString();
    EXPECT_TRUE(text.contains("showView      3           1         0  1.50 s  75.0 s   75.0 s\n"))
        << text.toStdString();
    EXPECT_FALSE(text.contains("Refused"));
}

TEST(TableWritersTest, TheTextHasTheLatestRunsAndTheTableAll)
{
    Figures figures = twoRuns();
    figures.runs = QList<RunFigures>(21, figures.runs.first());
    EXPECT_EQ(textOf(figures).count("2026-11-21 08:00:00"), 20);
    EXPECT_EQ(textOf(tablesOf(figures).first()).count("2026-11-21 08:00:00"), 21);
    EXPECT_EQ(csvOf(tablesOf(figures).first()).count("2026-11-21T08:00:00.000Z"), 21);
}

TEST(TableWritersTest, AReportWithoutRunsSaysSo)
{
    Figures figures;
    figures.file = "results.sqlite";
    EXPECT_EQ(textOf(figures), "Report of results.sqlite\nThere are no runs.\n");
}

} // namespace
