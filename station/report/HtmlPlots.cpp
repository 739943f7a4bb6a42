#include "station/report/HtmlPlots.h"

#include "station/report/ReportTable.h"

#include <algorithm>
#include <array>

namespace station::report {

namespace {

/// What a bar's place is wide, in units of its own drawing, which is stretched to the place: texts stand
/// outside of drawings and keep their size on a narrow screen.
constexpr double Whole = 1000;
/// A plot of a few periods is drawn as if there were so many, so that no bar becomes a wall.
constexpr qsizetype FewestPeriods = 12;
constexpr qsizetype PeriodsWithMiddle = 12;

QString unit(double value)
{
    QString text = QString::number(value, 'f', 2);
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text;
}

struct Box
{
    double x;
    double y;
    double width;
    double height;
};

QString rectangle(const char *kind, const Box &box, const QString &title)
{
    return QStringLiteral("<rect class=\"") + QLatin1String(kind) + QStringLiteral("\" x=\"") + unit(box.x) +
           QStringLiteral("\" y=\"") + unit(box.y) + QStringLiteral("\" width=\"") + unit(box.width) +
           QStringLiteral("\" height=\"") + unit(box.height) + QStringLiteral("\"><title>") + escaped(title) +
           QStringLiteral("</title></rect>");
}

QString drawing(const char *kind, double height, const QString &label, const QString &content)
{
    return QStringLiteral("<svg class=\"") + QLatin1String(kind) + QStringLiteral("\" viewBox=\"0 0 1000 ") +
           unit(height) + QStringLiteral("\" preserveAspectRatio=\"none\" role=\"img\" aria-label=\"") +
           escaped(label) + QStringLiteral("\">") + content + QStringLiteral("</svg>");
}

QString countText(qint64 count, const QString &what)
{
    return QString::number(count) + QLatin1Char(' ') + what;
}

/// The periods' bars, in a drawing 100 high.
QString courseBars(const Course &course, qint64 largest)
{
    const double step = Whole / static_cast<double>(std::max(course.periods.size(), FewestPeriods));
    QString bars;
    for (qsizetype i = 0; i < course.periods.size(); ++i) {
        const Period &period = course.periods.at(i);
        const double x = step * (static_cast<double>(i) + 0.1);
        const double passed = 100.0 * static_cast<double>(period.passed) / static_cast<double>(largest);
        const double other = 100.0 * static_cast<double>(period.other) / static_cast<double>(largest);
        const QString day = period.first.toString(Qt::ISODate) + QStringLiteral(": ");
        if (period.passed > 0)
            bars += rectangle("passed", {x, 100 - passed, step * 0.8, passed},
                              day + countText(period.passed, QStringLiteral("passed")));
        if (period.other > 0)
            bars += rectangle("failed", {x, 100 - passed - other, step * 0.8, other},
                              day + countText(period.other, QStringLiteral("did not pass")));
    }
    return bars;
}

QString courseLabels(const Course &course)
{
    const QString first = course.periods.first().first.toString(Qt::ISODate);
    const QString last = course.periods.last().first.toString(Qt::ISODate);
    const qsizetype count = course.periods.size();
    if (count < PeriodsWithMiddle)
        return QStringLiteral("<span>") + (count == 1 ? first : first + QStringLiteral(" – ") + last) +
               QStringLiteral("</span>");
    const QString middle = course.periods.at(count / 2).first.toString(Qt::ISODate);
    return QStringLiteral("<span>") + first + QStringLiteral("</span><span>") + middle +
           QStringLiteral("</span><span>") + last + QStringLiteral("</span>");
}

} // namespace

QString escaped(const QString &text)
{
    // The apostrophe too, though every attribute here is in quotes.
    return visibleText(text).toHtmlEscaped().replace(QLatin1Char('\''), QStringLiteral("&#39;"));
}

QString outcomeBar(const Outcomes &outcomes)
{
    struct Part
    {
        const char *kind;
        qint64 count;
    };
    const std::array<Part, 5> parts{{{"passed", outcomes.passed},
                                     {"failed", outcomes.failed},
                                     {"erred", outcomes.erred},
                                     {"stopped", outcomes.stopped},
                                     {"open", outcomes.open}}};
    QString bars;
    QStringList label;
    qint64 before = 0;
    for (const Part &part : parts) {
        if (part.count == 0)
            continue;
        const double scale = Whole / static_cast<double>(outcomes.total());
        label.append(countText(part.count, QLatin1String(part.kind)));
        bars += rectangle(
            part.kind, {static_cast<double>(before) * scale, 0, static_cast<double>(part.count) * scale, 10},
            label.last());
        before += part.count;
    }
    return drawing("bar", 10, label.join(QStringLiteral(", ")), bars);
}

QString countBar(qint64 value, qint64 largest)
{
    const double width = largest == 0 ? 0 : Whole * static_cast<double>(value) / static_cast<double>(largest);
    const QString label = QString::number(value);
    return drawing("bar", 10, label, value == 0 ? QString() : rectangle("count", {0, 0, width, 10}, label));
}

QString outcomeLegend()
{
    QString legend = QStringLiteral("<p class=\"legend\">");
    for (const char *kind : {"passed", "failed", "erred", "stopped", "open"})
        legend += QStringLiteral("<span><i class=\"") + QLatin1String(kind) + QStringLiteral("\"></i>") +
                  QLatin1String(kind) + QStringLiteral("</span>");
    return legend + QStringLiteral("</p>\n");
}

QString coursePlot(const Course &course)
{
    if (course.periods.isEmpty())
        return {};
    const auto most =
        std::max_element(course.periods.begin(), course.periods.end(),
                         [](const Period &a, const Period &b) { return a.total() < b.total(); });
    const qint64 largest = std::max<qint64>(most->total(), 1);
    return QStringLiteral("<p class=\"legend\"><span><i class=\"passed\"></i>every sequence "
                          "passed</span><span><i class=\"failed\"></i>one did not</span></p>\n"
                          "<div class=\"course\"><div class=\"scale\"><span>") +
           QString::number(largest) + QStringLiteral("</span><span>0</span></div>") +
           drawing("columns", 100, QStringLiteral("Runs per ") + course.unit, courseBars(course, largest)) +
           QStringLiteral("<div class=\"dates\">") + courseLabels(course) +
           QStringLiteral("</div></div>\n<p class=\"note\">A bar is a ") + course.unit +
           QStringLiteral(" (UTC).</p>\n");
}

} // namespace station::report
