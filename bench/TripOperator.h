#pragma once

#include "platform/TextField.h"

#include <QObject>
#include <QPointer>

#include <deque>

#include "bench/PaintWatch.h"

namespace bench {

/// An operator who answers panels in the order in which they were shown: writes five characters and Return
/// into the field, as soon as it can be seen, and clicks "OK". Notes fields come, so that nothing has to be
/// looked for.
///
/// Thread: the main thread. Requires: a QApplication, which it watches for as long as it lives.
class TripOperator : public QObject
{
public:
    TripOperator();

    /// Whether a panel waits to be answered.
    [[nodiscard]] bool isAsked() const;
    /// Answers the one that has waited longest, and returns when it has gone; "entries" fields of a group are
    /// filled one after another. Requires: isAsked().
    void answer(int entries);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    PaintWatch m_watch;
    std::deque<QPointer<platform::TextField>> m_waiting;
};

} // namespace bench
