#include "soak/Figures.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTextStream>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <malloc.h>
#include <utility>

#include "soak/Arguments.h"

namespace soak {
namespace {

const QString Memory = QStringLiteral("memory (KiB)");
constexpr double MemoryTolerance = 0.02;

qint64 entriesOf(const char *folder)
{
    return QDir(QLatin1String(folder), {}, {}, QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
        .count();
}

qint64 objectsOf(const QWidgetList &windows)
{
    qint64 count = 0;
    for (const QWidget *window : windows) {
        if (!window->parent())
            count += window->findChildren<QObject *>().size();
    }
    return count;
}

bool isKept(const QString &name, qint64 first, qint64 last)
{
    if (name != Memory)
        return first == last;
    return std::abs(static_cast<double>(last - first)) <= MemoryTolerance * static_cast<double>(first);
}

} // namespace

/// What has been given back to the allocator is given back to the system first: what is left is in use.
qint64 Figures::residentMemory()
{
    malloc_trim(0);
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        qFatal("no figures about the process");
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.simplified().split(' ').value(1).toLongLong();
    }
    qFatal("no figure of the memory");
}

Figures::Figures(Further further)
    : m_further(std::move(further))
{}

void Figures::look(qint64 repetitions)
{
    Look look{repetitions, m_further ? m_further() : QMap<QString, qint64>()};
    look.values.insert(QStringLiteral("widgets"), QApplication::allWidgets().size());
    look.values.insert(QStringLiteral("objects"), objectsOf(QApplication::topLevelWidgets()));
    look.values.insert(QStringLiteral("threads"), entriesOf("/proc/self/task"));
    look.values.insert(QStringLiteral("files"), entriesOf("/proc/self/fd"));
    look.values.insert(Memory, residentMemory());
    m_looks.append(look);
}

void Figures::write(const QString &path) const
{
    QFile file(path);
    if (m_looks.isEmpty() || !file.open(QIODevice::WriteOnly))
        qFatal("cannot write the figures");
    QTextStream text(&file);
    const QStringList names = m_looks.first().values.keys();
    text << "repetitions;" << names.join(QLatin1Char(';')) << '\n';
    for (const Look &look : m_looks) {
        text << look.repetitions;
        for (const QString &name : names)
            text << ';' << look.values.value(name);
        text << '\n';
    }
}

void Figures::judge(const QString &what) const
{
    const Look &first = m_looks.first();
    const Look &last = m_looks.last();
    qint64 failed = 0;
    for (auto value = first.values.cbegin(); value != first.values.cend(); ++value) {
        const qint64 now = last.values.value(value.key());
        const bool isSame = isKept(value.key(), value.value(), now);
        failed += isSame ? 0 : 1;
        say(QStringLiteral("%1 %2 %3 %4")
                .arg(isSame ? QStringLiteral("ok   ") : QStringLiteral("WRONG"),
                     value.key().leftJustified(14))
                .arg(value.value(), 9)
                .arg(now, 9));
    }
    tell(QStringLiteral("after %1 %2 as much is held as after %3 (%4 KiB, then %5 KiB; the rest equal: %6)")
             .arg(last.repetitions)
             .arg(what)
             .arg(first.repetitions)
             .arg(first.values.value(Memory))
             .arg(last.values.value(Memory))
             .arg(QStringList(first.values.keys()).join(QStringLiteral(", "))),
         first.values.size(), failed);
}

} // namespace soak
