#pragma once

#include <QString>
#include <QStringList>

namespace station {

/// Tells a scan from what is typed, key by key, by prefix and suffix alone and never by the time.
///
/// With a prefix a scan begins when the whole prefix has come; keys that may turn out to be its beginning are
/// held until that is known. Without one, whatever is written counts as scanned. Within a scan the keys that
/// may be the suffix are held until the terminator, or another key, has come. Thread: a plain class.
class ScanReader
{
public:
    ScanReader(QString prefix, QString suffix);

    /// What becomes of the keys that are held, the latest one included.
    struct Step
    {
        qsizetype release = 0; ///< So many from the front go on as they were typed.
        bool begins = false;   ///< The rest was the prefix: a scan has begun.
        bool isEmpty = false;  ///< The scan that has ended had no text.
    };

    /// A key that writes a text. `counts` says whether it may be part of an entry: a blank that works a
    /// button, or a command, is not.
    [[nodiscard]] Step take(const QString &text, bool counts = true);
    /// The terminator. Requires: isInScan(). What is not released was the suffix.
    [[nodiscard]] Step end();
    /// Anything else that is done meanwhile: everything that is held goes on, and no scan is under way.
    [[nodiscard]] Step leave();

    /// Whether a terminator would end a scan.
    [[nodiscard]] bool isInScan() const { return m_inScan; }
    [[nodiscard]] bool holdsAny() const { return !m_held.isEmpty(); }
    /// Whether a key with the text is a scanner's as far as can be known: it is not to work a shortcut.
    [[nodiscard]] bool wants(const QString &text) const;

private:
    [[nodiscard]] qsizetype releaseWhatIsNo(const QString &mark);

    QString m_prefix;
    QString m_suffix;
    QStringList m_held; ///< The texts of the keys that are held.
    bool m_inScan = false;
    bool m_isWritten = false; ///< Whether a text of the scan has gone on.
};

} // namespace station
