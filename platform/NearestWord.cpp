#include "platform/NearestWord.h"

#include <algorithm>
#include <vector>

namespace platform {

namespace {

/// How many letters have to be put in, taken out or changed to make one word of the other.
qsizetype distance(const QString &a, const QString &b)
{
    std::vector<qsizetype> row(static_cast<std::size_t>(b.size()) + 1);
    for (std::size_t j = 0; j < row.size(); ++j)
        row[j] = static_cast<qsizetype>(j);
    for (qsizetype i = 0; i < a.size(); ++i) {
        qsizetype diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 1; j < row.size(); ++j) {
            const qsizetype changed =
                diagonal + (a.at(i).toLower() == b.at(static_cast<qsizetype>(j) - 1).toLower() ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({changed, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

} // namespace

QString nearestWord(const QString &word, const QStringList &known)
{
    // The comparison takes time with the product of the lengths, and a word this long is no slip of the pen.
    constexpr qsizetype LongestWord = 64;
    if (word.size() > LongestWord)
        return {};
    QString nearest;
    // A third of the letters may be wrong, and two in a short word: two that have changed places count as
    // two.
    qsizetype fewest = std::max<qsizetype>(2, word.size() / 3) + 1;
    for (const QString &each : known) {
        const qsizetype steps = distance(word, each);
        if (steps < fewest) {
            fewest = steps;
            nearest = each;
        }
    }
    return nearest;
}

} // namespace platform
