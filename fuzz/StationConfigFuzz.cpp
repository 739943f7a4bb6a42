#include "station/StationConfig.h"
#include "station/base/StationError.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <optional>
#include <set>

#include "fuzz/Surroundings.h"
#include "fuzz/Target.h"

using station::SequenceNeed;
using station::StationConfig;

namespace {

using fuzz::Input;
using fuzz::must;

void isWhole(const StationConfig &config, SequenceNeed need)
{
    const qsizetype systems = config.systemGroups.size();
    must(config.systemSlots.size() == systems, "each system has a group and a slot");
    must(config.colors.size() == systems, "each system has its colours");
    std::set<std::pair<QString, QString>> places;
    for (const station::SystemRow &row : config.systems()) {
        must(!row.group.isEmpty() && !row.slotName.isEmpty(), "no name is empty");
        must(!row.group.contains('-'), "no group's name holds the separator", row.group);
        must(places.emplace(row.group, row.slotName).second, "no place is there twice",
             row.group + ' ' + row.slotName);
    }
    must(need == SequenceNeed::None || !config.sequences.isEmpty(), "there is something to run");
    must(config.sounds.volume >= 0 && config.sounds.volume <= 100, "the volume is in its range");
    must(!config.scanner.terminators.isEmpty(), "a scan can end");
    must(!config.resultsOutbox.isEmpty(), "there is a place for the outbox");
    for (const QString &folder : config.imageFolders)
        must(QDir::isAbsolutePath(folder), "folders are absolute", folder);
}

class StationConfigTarget : public fuzz::Target
{
public:
    StationConfigTarget()
        : m_path(QDir(fuzz::Surroundings::folder()).filePath(QStringLiteral("station.toml")))
    {
        const QDir folder(fuzz::Surroundings::folder());
        folder.mkdir(QStringLiteral("images"));
        write(folder.filePath(QStringLiteral("a.lua")), "return true\n");
    }

    void feed(Input input) override
    {
        const QByteArray text = input.rest();
        write(m_path, text);
        m_lines = static_cast<int>(text.count('\n')) + 1;
        for (const SequenceNeed need : {SequenceNeed::AtLeastOne, SequenceNeed::None})
            isReadOrRefused(need);
    }

private:
    static void write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        must(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
             "a file can be written");
    }

    void namesItsLine(const QString &problem) const
    {
        static const QRegularExpression form(QStringLiteral("^:(\\d+): \\S.*$"));
        must(problem.startsWith(m_path), "a refusal names the file", problem);
        const QRegularExpressionMatch match = form.match(problem.mid(m_path.size()));
        must(match.hasMatch() && !problem.contains('\n') && !problem.contains('\r'), "a refusal is one line",
             problem);
        const int line = match.captured(1).toInt();
        must(line >= 1 && line <= m_lines, "a refusal names a line of the file", problem);
    }

    void isReadOrRefused(SequenceNeed need) const
    {
        std::optional<QString> refusal;
        try {
            isWhole(station::readStationConfig(m_path, need), need);
        } catch (const station::StationError &error) {
            refusal = error.text();
            namesItsLine(*refusal);
        }
        QStringList problems;
        static_cast<void>(station::checkStationConfig(m_path, need, problems));
        must(problems.isEmpty() == !refusal, "the check refuses what the station refuses",
             problems.join('\n'));
        must(!refusal || problems.contains(*refusal), "the check says what the station says",
             problems.join('\n'));
        for (const QString &problem : problems)
            namesItsLine(problem);
    }

    QString m_path;
    int m_lines = 1;
};

} // namespace

std::unique_ptr<fuzz::Target> fuzz::makeTarget()
{
    return std::make_unique<StationConfigTarget>();
}
