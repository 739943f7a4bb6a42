#pragma once

#include "station/results/LockedFile.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

namespace station {

/// A file that one program at a time adds lines to: what is in it stays, and it is locked against others.
///
/// A line that cannot be written whole is taken back. One that a program has left unfinished, since it
/// crashed, is ended before the next one, so that it spoils itself alone. Pipes and devices are neither
/// locked nor looked after.
///
/// Thread: one at a time.
class AppendedFile
{
public:
    /// Opens the file, and makes it where there is none. Errors: throws StationError with "path: why", when
    /// another one has it open too.
    explicit AppendedFile(const QString &path);

    [[nodiscard]] const QString &path() const { return m_file.path(); }
    /// Adds the line and its end to the open file. Returns why it is not there; nothing when it is.
    [[nodiscard]] QString add(const QByteArray &line);
    /// The same; also returns why the line is lost to whoever reads the file by its path.
    [[nodiscard]] QString append(const QByteArray &line);

    /// Why the path does not lead to the open file any more; nothing when it does.
    [[nodiscard]] QString lossOfPath() const { return m_file.lossOfPath(); }
    /// Whether no path leads to it any more: what it holds ends with this object.
    [[nodiscard]] bool isUnlinked() const { return m_file.isUnlinked(); }
    /// Whether another program has cut it since this was last asked.
    [[nodiscard]] bool wasCut();
    /// All of its whole lines, without their ends; none where it cannot be read.
    [[nodiscard]] QByteArrayList lines() const;

private:
    [[nodiscard]] bool endsWithinLine() const;
    [[nodiscard]] QString write(const QByteArray &bytes);
    void takeBack(qint64 size);

    LockedFile m_file;
    bool m_withinLine;
    qint64 m_size; ///< At the end of what was last written.
};

} // namespace station
