#pragma once

#include <QList>
#include <QString>
#include <Qt>

namespace station {

/// What a scanner sends around the text that it has read.
///
/// Thread: a plain value.
struct ScannerSettings
{
    QString prefix; ///< Before the text; empty when it sends none.
    QString suffix; ///< Behind the text, before the terminator; empty when it sends none.
    /// The keys that end a scan: Qt::Key_Return, Qt::Key_Tab, Qt::Key_Enter (that of the keypad). Not empty;
    /// the simulated operator's scanner sends the first.
    QList<Qt::Key> terminators{Qt::Key_Return};

    /// Whether a scan is the text and Return, and nothing else.
    [[nodiscard]] bool isPlain() const
    {
        return prefix.isEmpty() && suffix.isEmpty() && terminators == QList<Qt::Key>{Qt::Key_Return};
    }
};

} // namespace station
