#include "bench/baseline/BareWindow.h"

#include <QCoreApplication>
#include <QVBoxLayout>

namespace baseline {

BareWindow::BareWindow()
    : m_area(new QScrollArea)
{
    m_window.resize(1600, 1000);
    auto *layout = new QVBoxLayout(&m_window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_area);
    m_area->setWidget(new QWidget);
    m_area->widget()->resize(m_window.size());
    m_window.show();
    m_window.activateWindow();
    while (!m_window.isActiveWindow())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace baseline
