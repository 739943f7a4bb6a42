#include "station/PersonConfig.h"

#include <algorithm>
#include <map>

namespace station {

namespace {

constexpr qint64 Loudest = 100;

int readVolume(const ConfigTable &station, int usual)
{
    const qint64 volume = station.integer("volume").value_or(usual);
    if (volume < 0 || volume > Loudest)
        station.fail("volume", QStringLiteral("must be from 0 to %1, not %2").arg(Loudest).arg(volume));
    return static_cast<int>(volume);
}

QString readBadgePattern(const ConfigTable &station)
{
    const QString pattern = station.text("badge_pattern").value_or(QString());
    if (const auto why = BadgeRule::whyNoPattern(pattern))
        station.fail("badge_pattern", QStringLiteral("is no regular expression: %1").arg(*why));
    return pattern;
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

Qt::Key keyOf(const QString &name)
{
    static const std::map<QString, Qt::Key> keys{{QStringLiteral("return"), Qt::Key_Return},
                                                 {QStringLiteral("tab"), Qt::Key_Tab},
                                                 {QStringLiteral("enter"), Qt::Key_Enter}};
    const auto found = keys.find(name);
    return found == keys.end() ? Qt::Key_unknown : found->second;
}

QString whyNoKey(const QString &name)
{
    return QStringLiteral("must be \"return\", \"tab\" or \"enter\", not \"%1\"").arg(name);
}

QList<Qt::Key> readTerminators(const ConfigTable &scanner, const Refusals &refusals)
{
    if (!scanner.has("terminator"))
        return {Qt::Key_Return};
    const bool isOne = scanner.isText("terminator");
    const QStringList names = isOne ? QStringList{*scanner.text("terminator")} : *scanner.texts("terminator");
    if (names.isEmpty())
        scanner.fail("terminator", QStringLiteral("names no key"));
    QList<Qt::Key> terminators;
    for (qsizetype i = 0; i < names.size(); ++i) {
        refusals.attempt([&] {
            const Qt::Key key = keyOf(names.at(i));
            if (key == Qt::Key_unknown && isOne)
                scanner.fail("terminator", whyNoKey(names.at(i)));
            if (key == Qt::Key_unknown)
                scanner.failElement("terminator", i, whyNoKey(names.at(i)));
            terminators.append(key);
        });
    }
    return terminators;
}

} // namespace

void readPerson(StationConfig &config, const ConfigTable &station, const Refusals &refusals)
{
    refusals.attempt([&] { config.sounds.areOn = station.truth("sounds").value_or(false); });
    refusals.attempt([&] { config.sounds.volume = readVolume(station, config.sounds.volume); });
    refusals.attempt([&] { config.badge.isAsked = station.truth("ask_operator").value_or(false); });
    refusals.attempt([&] { config.badge.pattern = readBadgePattern(station); });
}

void readScanner(StationConfig &config, const ConfigTable &scanner, const Refusals &refusals)
{
    scanner.allowOnly({QStringLiteral("prefix"), QStringLiteral("suffix"), QStringLiteral("terminator")},
                      refusals);
    refusals.attempt([&] { config.scanner.prefix = readMark(scanner, "prefix"); });
    refusals.attempt([&] { config.scanner.suffix = readMark(scanner, "suffix"); });
    refusals.attempt([&] { config.scanner.terminators = readTerminators(scanner, refusals); });
}

} // namespace station
