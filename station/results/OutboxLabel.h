#pragma once

#include <QLabel>

namespace station {

class Results;

/// Says in the window how much waits for the results server ("12 answers wait for the results server"), how
/// much it has refused, and in its tooltip why. There is nothing to be seen of it while the server keeps up,
/// or where there is none.
///
/// Thread: the main thread. Requires: platform::MainQueue is attached. Ownership: needs the results for its
/// making alone.
class OutboxLabel : public QLabel
{
    Q_OBJECT
public:
    explicit OutboxLabel(Results &results);

    /// Shows what waits, and in the tooltip why; nothing for an empty text.
    void showText(const QString &text, const QString &trouble);
};

} // namespace station
