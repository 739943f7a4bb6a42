#pragma once

#include "station/results/LockedFile.h"

#include <QByteArray>
#include <QString>

namespace station {

/// A file that one program at a time adds lines to: what is in it stays, and it is locked against others.
///
/// A line that was not written whole, by this program or by an earlier one that crashed, is ended before the
/// next one, so that it spoils itself alone. Pipes and devices are neither locked nor looked after.
///
/// Thread: one at a time.
class AppendedFile
{
public:
    /// Opens the file, and makes it where there is none. Errors: throws StationError with "path: why", when
    /// another one has it open too.
    explicit AppendedFile(const QString &path);

    [[nodiscard]] const QString &path() const { return m_file.path(); }
    /// Adds the line and its end. Returns why it is lost to whoever reads the file; nothing when it is there.
    [[nodiscard]] QString append(const QByteArray &line);

private:
    [[nodiscard]] bool endsWithinLine() const;
    [[nodiscard]] QString write(const QByteArray &bytes);

    LockedFile m_file;
    bool m_withinLine;
};

} // namespace station
