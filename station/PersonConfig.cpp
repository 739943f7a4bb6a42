#include "station/PersonConfig.h"

#include <algorithm>
#include <map>

namespace station {

namespace {

constexpr qint64 Loudest = 100;

SoundSettings readSounds(const ConfigTable &station)
{
    SoundSettings sounds;
    sounds.areOn = station.truth("sounds").value_or(false);
    const qint64 volume = station.integer("volume").value_or(sounds.volume);
    if (volume < 0 || volume > Loudest)
        station.fail("volume", QStringLiteral("must be from 0 to %1, not %2").arg(Loudest).arg(volume));
    sounds.volume = static_cast<int>(volume);
    return sounds;
}

BadgeRule readBadge(const ConfigTable &station)
{
    BadgeRule badge;
    badge.isAsked = station.truth("ask_operator").value_or(false);
    badge.pattern = station.text("badge_pattern").value_or(QString());
    if (const auto why = BadgeRule::whyNoPattern(badge.pattern))
        station.fail("badge_pattern", QStringLiteral("is no regular expression: %1").arg(*why));
    return badge;
}

/// A mark that held one of these would be taken for the key.
QString readMark(const ConfigTable &scanner, const char *key)
{
    const QString mark = scanner.text(key).value_or(QString());
    const bool worksAsKey = std::any_of(mark.cbegin(), mark.cend(), [](QChar character) {
        return QStringLiteral("\r\n\t\b\x7f").contains(character);
    });
    if (worksAsKey)
        scanner.fail(key,
                     QStringLiteral("holds a line end, a tabulator, backspace or delete, which are keys"));
    return mark;
}

QList<Qt::Key> readTerminators(const ConfigTable &scanner)
{
    static const std::map<QString, Qt::Key> keys{{QStringLiteral("return"), Qt::Key_Return},
                                                 {QStringLiteral("tab"), Qt::Key_Tab},
                                                 {QStringLiteral("enter"), Qt::Key_Enter}};
    if (!scanner.has("terminator"))
        return {Qt::Key_Return};
    const QStringList names = scanner.isText("terminator") ? QStringList{*scanner.text("terminator")}
                                                           : *scanner.texts("terminator");
    QList<Qt::Key> terminators;
    for (const QString &name : names) {
        const auto found = keys.find(name);
        if (found == keys.end())
            scanner.fail("terminator",
                         QStringLiteral("must be \"return\", \"tab\" or \"enter\", not \"%1\"").arg(name));
        terminators.append(found->second);
    }
    if (terminators.isEmpty())
        scanner.fail("terminator", QStringLiteral("names no key"));
    return terminators;
}

ScannerSettings readScanner(const ConfigTable &scanner)
{
    scanner.allowOnly({QStringLiteral("prefix"), QStringLiteral("suffix"), QStringLiteral("terminator")});
    return {readMark(scanner, "prefix"), readMark(scanner, "suffix"), readTerminators(scanner)};
}

} // namespace

void readPerson(StationConfig &config, const ConfigTable &root, const ConfigTable &station)
{
    config.sounds = readSounds(station);
    config.badge = readBadge(station);
    if (const auto scanner = root.table("scanner"))
        config.scanner = readScanner(*scanner);
}

} // namespace station
