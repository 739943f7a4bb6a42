#include "station/MachineConfig.h"

namespace station {

namespace {

constexpr qint64 MebiByte = 1024 * 1024;
/// More than any machine has, and no number that could overflow.
constexpr qint64 MostMebiBytes = 1024 * 1024;

QString quotedList(const QStringList &names)
{
    return QLatin1Char('"') + names.join(QLatin1String("\", \"")) + QLatin1Char('"');
}

QStringList readAllowances(const ConfigTable &lua)
{
    const QStringList allowed = lua.texts("allow").value_or(QStringList());
    const QStringList known = KVKLuaAllowances();
    for (qsizetype i = 0; i < allowed.size(); ++i) {
        if (!known.contains(allowed.at(i)))
            lua.failElement("allow", i,
                            QStringLiteral("'%1' is nothing that could be allowed; there are %2")
                                .arg(allowed.at(i), quotedList(known)));
    }
    return allowed;
}

std::size_t readMemory(const ConfigTable &lua)
{
    const auto size = lua.integer("memory");
    if (!size)
        return KVKLuaLimits().memory;
    if (*size < 1 || *size > MostMebiBytes)
        lua.fail("memory", QStringLiteral("must be from 1 to %1 (MiB), not %2")
                               .arg(QString::number(MostMebiBytes), QString::number(*size)));
    return static_cast<std::size_t>(*size * MebiByte);
}

bool readSharesFiles(const ConfigTable &station)
{
    const QString files = station.text("files").value_or(QStringLiteral("private"));
    if (files != QLatin1String("private") && files != QLatin1String("shared"))
        station.fail("files", QStringLiteral("must be \"private\" or \"shared\", not \"%1\"").arg(files));
    return files == QLatin1String("shared");
}

} // namespace

void readMachine(StationConfig &config, const ConfigTable &root, const ConfigTable &station,
                 const Refusals &refusals)
{
    refusals.attempt([&] { config.sharesFiles = readSharesFiles(station); });
    refusals.attempt([&] {
        const auto lua = root.table("lua");
        if (!lua)
            return;
        lua->allowOnly({QStringLiteral("allow"), QStringLiteral("memory")}, refusals);
        refusals.attempt([&] { config.lua.allowed = readAllowances(*lua); });
        refusals.attempt([&] { config.lua.memory = readMemory(*lua); });
    });
}

} // namespace station
