#include "station/results/OutboxLabel.h"

#include "platform/MainQueue.h"
#include "station/look/PlainToolTip.h"
#include "station/results/Results.h"

#include <QPointer>

namespace station {

OutboxLabel::OutboxLabel(Results &results)
{
    setObjectName(QStringLiteral("outbox"));
    // What a server says is no markup.
    setTextFormat(Qt::PlainText);
    // As large as what is read beside it, and clear of the window's edge.
    QFont letters = font();
    letters.setPixelSize(14);
    setFont(letters);
    setContentsMargins(10, 0, 10, 0);
    setVisible(false);
    results.onWaiting([label = QPointer<OutboxLabel>(this)](const QString &text, const QString &trouble) {
        platform::MainQueue::async([label, text, trouble] {
            if (label)
                label->showText(text, trouble);
        });
    });
}

void OutboxLabel::showText(const QString &text, const QString &trouble)
{
    setText(text);
    setToolTip(plainToolTip(trouble));
    setVisible(!text.isEmpty());
}

} // namespace station
