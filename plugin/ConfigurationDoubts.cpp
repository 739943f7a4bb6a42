#include "platform/LogFormat.h"
#include "platform/TextField.h"
#include "plugin/Configuration.h"
#include "presentation/ColorEngine.h"

#include <algorithm>
#include <vector>

#include "common/ConfigValues.h"
#include "common/Messages.h"

namespace interactive {

namespace {

QStringList knownKeys()
{
    using namespace config;
    return {Input,       Switch,       Button,           Length,          Message,
            Label,       Title,        Column,           BackgroundAlpha, DrawShadow,
            MessageFont, MessageColor, MessageAlignment, Pattern,         Hint,
            Validate,    Unique,       Number,           Choices,         Default,
            Placeholder, AutoConfirm,  TimeLimit,        Image,           Instruction};
}

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

/// The known key that a word was probably meant to be; empty when none is near.
QString nearestKey(const QString &word)
{
    // The comparison takes time with the product of the lengths, and a word this long is no slip of the pen.
    constexpr qsizetype LongestWord = 64;
    if (word.size() > LongestWord)
        return {};
    QString nearest;
    // A third of the letters may be wrong, and two in a short word: two that have changed places count as
    // two.
    qsizetype fewest = std::max<qsizetype>(2, word.size() / 3) + 1;
    for (const QString &key : knownKeys()) {
        const qsizetype steps = distance(word, key);
        if (steps < fewest) {
            fewest = steps;
            nearest = key;
        }
    }
    return nearest;
}

QString unknownKey(const QString &key, const QString &method)
{
    const QString meant = nearestKey(key);
    return meant.isEmpty() ? platform::formatMessage(messages::UnknownKey, {method, key})
                           : platform::formatMessage(messages::UnknownKeyNearly, {method, key, meant});
}

/// Whether a text is an integer and nothing else, blanks around it aside.
bool isInteger(const QString &text)
{
    bool ok = false;
    // Stricter than the reading itself, which takes the digits that a text begins with: whoever wrote "12mm"
    // should hear of it.
    static_cast<void>(text.trimmed().toLongLong(&ok));
    return ok;
}

} // namespace

QStringList doubtsAbout(const platform::Dictionary &config, const QString &method)
{
    QStringList doubts;
    const QStringList known = knownKeys();
    for (auto entry = config.cbegin(); entry != config.cend(); ++entry) {
        if (!known.contains(entry.key()))
            doubts.append(unknownKey(entry.key(), method));
    }
    const QString length = config::text(config::Length, config);
    if (!length.isEmpty() && !isInteger(length))
        doubts.append(platform::formatMessage(messages::LengthIsNoNumber,
                                              {method, length, platform::integerValue(length)}));
    const qint64 wanted = platform::integerValue(length);
    if (wanted > platform::TextField::MaximumEntryLength)
        doubts.append(platform::formatMessage(
            messages::LengthIsTooLong, {method, wanted, qint64{platform::TextField::MaximumEntryLength}}));
    const QString color = config::text(config::MessageColor, config);
    if (!color.isEmpty() && !ColorEngine::colorForName(color))
        doubts.append(platform::formatMessage(messages::ColorIsUnknown, {method, color}));
    const QString alignment = config::text(config::MessageAlignment, config);
    const qint64 number = platform::integerValue(alignment);
    if (!alignment.isEmpty() && !isInteger(alignment))
        doubts.append(platform::formatMessage(messages::AlignmentIsNoNumber, {method, alignment, number}));
    else if (!alignment.isEmpty() && (number < 0 || number > 4))
        doubts.append(platform::formatMessage(messages::AlignmentOutOfRange, {method, alignment}));
    return doubts;
}

} // namespace interactive
