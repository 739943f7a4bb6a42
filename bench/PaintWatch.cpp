#include "bench/PaintWatch.h"

#include <QApplication>
#include <QCheckBox>
#include <QEvent>
#include <QLineEdit>

#include "bench/Serve.h"

namespace bench {

PaintWatch::PaintWatch()
{
    qApp->installEventFilter(this);
}

void PaintWatch::begin()
{
    m_fields = 0;
    m_switches = 0;
    m_painted = false;
}

bool PaintWatch::hasPainted(int fields, int switches) const
{
    // What is painted is painted in one go, all that was shown before included.
    return m_painted && m_fields >= fields && m_switches >= switches &&
           (fields == 0 || qobject_cast<QLineEdit *>(QApplication::focusWidget()));
}

void PaintWatch::awaitPaint(QWidget *widget)
{
    begin();
    // What is to be painted anyhow is painted in the same go.
    widget->update();
    serveUntil([this] { return m_painted; });
}

bool PaintWatch::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint && watched->isWidgetType()) {
        m_painted = true;
    } else if (event->type() == QEvent::Show) {
        const bool isField = qobject_cast<QLineEdit *>(watched);
        const bool isSwitch = qobject_cast<QCheckBox *>(watched);
        m_fields += isField ? 1 : 0;
        m_switches += isSwitch ? 1 : 0;
        m_painted = m_painted && !isField && !isSwitch;
    }
    return false;
}

} // namespace bench
