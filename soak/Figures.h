#pragma once

#include <QList>
#include <QMap>
#include <QString>

#include <functional>

namespace soak {

/// How much a process holds, looked at again and again while it does the same thing.
///
/// Thread: the main thread.
class Figures
{
public:
    /// Further figures, by name; each has to be the same at the end as at the beginning.
    using Further = std::function<QMap<QString, qint64>()>;

    explicit Figures(Further further = {});

    /// What the process has in memory, in KiB, after all that it does not use was given back.
    [[nodiscard]] static qint64 residentMemory();

    /// Notes how much there is after so many repetitions.
    void look(qint64 repetitions);
    /// Writes all that was noted, one look a line, the names first.
    void write(const QString &file) const;
    /// Prints the first and the last figures, and tells for each name whether they are equal: memory within
    /// two percent, all others exactly. `what` is what was repeated.
    void judge(const QString &what) const;

private:
    struct Look
    {
        qint64 repetitions;
        QMap<QString, qint64> values;
    };

    Further m_further;
    QList<Look> m_looks;
};

} // namespace soak
