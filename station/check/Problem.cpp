#include "station/check/Problem.h"

#include <QRegularExpression>

#include <algorithm>

namespace station {
namespace {

/// More of a line that holds anything but text helps nobody.
constexpr qsizetype LongestText = 400;

} // namespace

QString Problem::asLine() const
{
    QString shown;
    for (const QChar character : text.left(LongestText)) {
        const bool isPrintable = character.isPrint() || character.isSurrogate();
        shown += isPrintable ? character : QChar(QLatin1Char(' '));
    }
    if (text.size() > LongestText)
        shown += QChar(0x2026);
    const QString place = column > 0 ? QStringLiteral("%1:%2").arg(line).arg(column) : QString::number(line);
    return file + QLatin1Char(':') + place + QStringLiteral(": ") + shown;
}

QList<Problem> sortedProblems(QList<Problem> problems)
{
    std::sort(problems.begin(), problems.end());
    problems.erase(std::unique(problems.begin(), problems.end()), problems.end());
    return problems;
}

Problem problemOfConfiguration(const QString &file, const QString &refusal)
{
    Problem problem{file, 1, 0, refusal};
    if (!refusal.startsWith(file + QLatin1Char(':')))
        return problem;
    problem.text = refusal.mid(file.size() + 1).trimmed();
    static const QRegularExpression numbered(QStringLiteral("^(\\d+): (.*)$"),
                                             QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = numbered.match(problem.text);
    if (match.hasMatch()) {
        problem.line = match.captured(1).toInt();
        problem.text = match.captured(2);
    }
    return problem;
}

} // namespace station
