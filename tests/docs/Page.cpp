#include "tests/docs/Page.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace testsupport {

QString sourceText(const QString &path)
{
    QFile file(QStringLiteral(SOURCE_PATH "/") + path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

std::vector<PageExample> examplesOf(const QString &path)
{
    static const QRegularExpression block(
        QStringLiteral("```lua\\n(.*?)```\\n(?:<!-- per (\\w+)\\n(.*?)-->\\n)?"),
        QRegularExpression::DotMatchesEverythingOption);
    const QString page = sourceText(path);
    std::vector<PageExample> examples;
    auto matches = block.globalMatch(page);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const int line = static_cast<int>(page.left(match.capturedStart()).count(QLatin1Char('\n'))) + 1;
        examples.push_back({line, match.captured(1), match.captured(2), match.captured(3)});
    }
    return examples;
}

QStringList matchesIn(const QString &path, const QString &pattern)
{
    QStringList found;
    auto matches = QRegularExpression(pattern).globalMatch(sourceText(path));
    while (matches.hasNext())
        found.append(matches.next().captured(1));
    return found;
}

QStringList sorted(QStringList texts)
{
    texts.sort();
    return texts;
}

} // namespace testsupport
