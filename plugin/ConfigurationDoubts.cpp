#include "platform/LogFormat.h"
#include "platform/NearestWord.h"
#include "platform/TextField.h"
#include "plugin/Configuration.h"
#include "presentation/ColorEngine.h"

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

QString unknownKey(const QString &key, const QString &method)
{
    const QString meant = platform::nearestWord(key, knownKeys());
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

QList<Doubt> keyedDoubtsAbout(const platform::Dictionary &config, const QString &method)
{
    QList<Doubt> doubts;
    const QStringList known = knownKeys();
    for (auto entry = config.cbegin(); entry != config.cend(); ++entry) {
        if (!known.contains(entry.key()))
            doubts.append({entry.key(), unknownKey(entry.key(), method)});
    }
    const QString length = config::text(config::Length, config);
    if (!length.isEmpty() && !isInteger(length))
        doubts.append(
            {config::Length, platform::formatMessage(messages::LengthIsNoNumber,
                                                     {method, length, platform::integerValue(length)})});
    const qint64 wanted = platform::integerValue(length);
    if (wanted > platform::TextField::MaximumEntryLength)
        doubts.append(
            {config::Length,
             platform::formatMessage(messages::LengthIsTooLong,
                                     {method, wanted, qint64{platform::TextField::MaximumEntryLength}})});
    const QString color = config::text(config::MessageColor, config);
    if (!color.isEmpty() && !ColorEngine::colorForName(color))
        doubts.append(
            {config::MessageColor, platform::formatMessage(messages::ColorIsUnknown, {method, color})});
    const QString alignment = config::text(config::MessageAlignment, config);
    const qint64 number = platform::integerValue(alignment);
    if (!alignment.isEmpty() && !isInteger(alignment))
        doubts.append({config::MessageAlignment,
                       platform::formatMessage(messages::AlignmentIsNoNumber, {method, alignment, number})});
    else if (!alignment.isEmpty() && (number < 0 || number > 4))
        doubts.append({config::MessageAlignment,
                       platform::formatMessage(messages::AlignmentOutOfRange, {method, alignment})});
    return doubts;
}

QStringList doubtsAbout(const platform::Dictionary &config, const QString &method)
{
    QStringList texts;
    for (const Doubt &doubt : keyedDoubtsAbout(config, method))
        texts.append(doubt.text);
    return texts;
}

} // namespace interactive
