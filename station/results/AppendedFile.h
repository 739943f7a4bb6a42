#pragma once

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

    [[nodiscard]] const QString &path() const { return m_path; }
    /// Adds the line and its end. Returns why it is lost to whoever reads the file; nothing when it is there.
    [[nodiscard]] QString append(const QByteArray &line);

private:
    void lock();
    [[nodiscard]] bool endsWithinLine() const;
    [[nodiscard]] QString write(const QByteArray &bytes);
    /// Why the path does not lead to the open file any more; nothing when it does.
    [[nodiscard]] QString lossOfPath() const;

    /// An open file; closed with it.
    class Descriptor
    {
    public:
        explicit Descriptor(int number)
            : m_number(number)
        {}
        ~Descriptor();
        Descriptor(const Descriptor &) = delete;
        Descriptor &operator=(const Descriptor &) = delete;
        [[nodiscard]] int number() const { return m_number; }

    private:
        int m_number;
    };

    QString m_path;
    Descriptor m_file;
    bool m_isRegular = false;
    bool m_withinLine = false;
};

} // namespace station
