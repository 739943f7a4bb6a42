#include "station/report/HtmlPage.h"

#include "tests/support/Printing.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace station::report;

namespace {

Figures figuresWith(const QString &text)
{
    Figures figures;
    figures.file = text;
    figures.serial = text;
    RunFigures run{text, text, text, text, "2026-11-21T08:00:00.000Z", text, 1, {1, 1, 0, 0, 0}};
    figures.runs = {run};
    figures.groupYields = {{text, text, {}, {3, 1, 0, 0, 0}}};
    figures.slotYields = {{text, text, text, {1, 1, 1, 1, 1}}};
    figures.functions = {{text, text, {}, {}, 1, 0, 0, {700, 1500, 1600}}};
    figures.slotTimes = {{text, {}, text, text, 1, 0, 0, {1500}}};
    figures.refusals = {{text, 4, 1, text}, {"length", 1, 1, text}};
    figures.serialAnswers = {
        {text, text, text, text, text, text, text, text, text, text, text, text, text, true}};
    return figures;
}

QString page(const QString &text)
{
    return pageOf(figuresWith(text), QDateTime::fromString("2026-11-21T09:00:00Z", Qt::ISODate));
}

/// Where the rectangles of a class stand in the page, each as "x width" or "y height".
QStringList boxes(const QString &page, const QString &kind, const QString &from, const QString &extent)
{
    const QRegularExpression box("<rect class=\"" + kind + "\"[^>]* " + from + "=\"([0-9.]+)\"[^>]* " +
                                 extent + "=\"([0-9.]+)\"");
    QStringList found;
    for (const QRegularExpressionMatch &match : box.globalMatch(page))
        found.append(match.captured(1) + ' ' + match.captured(2));
    return found;
}

TEST(HtmlPageTest, EveryTextFromTheResultsIsEscaped)
{
    const QString text = "<script>alert(1)</script>\"'&\x1d%1%2";
    const QString html = page(text);
    EXPECT_FALSE(html.contains("<script"));
    EXPECT_FALSE(html.contains("alert(1)</"));
    EXPECT_TRUE(html.contains(QStringLiteral("&lt;script&gt;alert(1)&lt;/script&gt;&quot;&#39;&amp;␝%1%2")));
    // What is not text is the same whatever the texts are.
    const QString other = "QQQ, which is a long text too, without marks";
    EXPECT_EQ(
        QString(html).remove(QStringLiteral("&lt;script&gt;alert(1)&lt;/script&gt;&quot;&#39;&amp;␝%1%2")),
        QString(page(other)).remove(other));
}

TEST(HtmlPageTest, NothingIsLoadedAndNothingRuns)
{
    const QString html = page("A1");
    EXPECT_TRUE(html.startsWith(QString::fromLatin1(pageMark())));
    EXPECT_TRUE(html.contains("<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
                              "style-src 'unsafe-inline'\">"));
    for (const char *word :
         {"http:", "https:", "<script", "<link", "<img", "<iframe", "@import", "url(", " href=", " src="})
        EXPECT_FALSE(html.contains(word)) << word;
    EXPECT_FALSE(html.contains(QRegularExpression("<[^>]* on[a-z]+=")));
}

TEST(HtmlPageTest, BarsAreAsLongAsTheFiguresSay)
{
    const QString html = page("A1");
    // Three of four of the group; then the slot, which has one of each.
    EXPECT_EQ(boxes(html.section("id=\"groups\"", 1).section("</section>", 0, 0), "passed", "x", "width"),
              QStringList{"0 750"});
    EXPECT_EQ(boxes(html.section("id=\"groups\"", 1).section("</section>", 0, 0), "failed", "x", "width"),
              QStringList{"750 250"});
    const QString slot = html.section("id=\"slots\"", 1).section("</section>", 0, 0);
    EXPECT_EQ(boxes(slot, "(?:passed|failed|erred|stopped|open)", "x", "width"),
              (QStringList{"0 200", "200 200", "400 200", "600 200", "800 200"}));
    EXPECT_EQ(boxes(html.section("id=\"histogram\"", 1).section("</section>", 0, 0), "count", "x", "width"),
              (QStringList{"0 500", "0 1000"}));
    EXPECT_EQ(boxes(html.section("id=\"refusals\"", 1).section("</section>", 0, 0), "count", "x", "width"),
              (QStringList{"0 1000", "0 250"}));
}

TEST(HtmlPageTest, ColumnsOfRunsAreAsHighAsTheFiguresSay)
{
    Figures figures = figuresWith("A1");
    RunFigures passed = figures.runs.first();
    passed.sequences = {2, 0, 0, 0, 0};
    figures.runs += QList<RunFigures>(3, passed);
    passed.started = "2026-11-22T08:00:00.000Z";
    figures.runs.append(passed);
    const QString html = pageOf(figures, QDateTime::currentDateTimeUtc());
    EXPECT_EQ(boxes(html, "passed", "y", "height").mid(0, 2), (QStringList{"25 75", "75 25"}));
    EXPECT_EQ(boxes(html, "failed", "y", "height").first(), "0 25");
}

TEST(HtmlPageTest, AnEmptyReportIsAPageThatSaysSo)
{
    const QString html = pageOf({}, QDateTime::currentDateTimeUtc());
    EXPECT_TRUE(html.contains("There are no runs."));
    EXPECT_TRUE(html.contains("No entry was refused."));
    EXPECT_FALSE(html.contains("<rect"));
    EXPECT_FALSE(html.contains("nan"));
}

TEST(HtmlPageTest, OfManyRunsThePageHasTheLatest)
{
    Figures figures = figuresWith("A1");
    figures.runs = QList<RunFigures>(101, figures.runs.first());
    const QString html = pageOf(figures, QDateTime::currentDateTimeUtc());
    EXPECT_TRUE(html.contains("The latest 100 of 101."));
    EXPECT_EQ(html.section("id=\"runs\"", 1).count("2026-11-21 08:00:00"), 100);
}

} // namespace
