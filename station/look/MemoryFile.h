#pragma once

#include <QString>
#include <QVariant>

namespace station {

/// The file that keeps what a person has chosen at the window from one start of the station to the next. Each
/// kind of choice has a class of its own, which names the keys and knows what can be used.
///
/// Thread: the main thread. Errors: a file that cannot be read or written, or holds something else, counts as
/// nothing that was chosen. Two stations may share it; of what both choose the later one stays.
class MemoryFile
{
public:
    /// Without a file nothing is read, and nothing kept.
    explicit MemoryFile(QString file = {});

    /// Invalid where there is none.
    [[nodiscard]] QVariant value(const QString &key) const;
    /// The number where there is one and it lies within the bounds.
    [[nodiscard]] int number(const QString &key, int least, int largest, int otherwise) const;
    /// An invalid value takes the key away.
    void keep(const QString &key, const QVariant &value) const;

    /// The file beside the user's other configurations.
    [[nodiscard]] static QString usualFile();

private:
    QString m_file;
};

} // namespace station
