#include "station/window/UpperRow.h"

#include "station/instruction/InstructionPane.h"
#include "station/window/ViewArea.h"

#include <QScreen>

namespace station {

UpperRow::UpperRow(QWidget *table, ViewArea *views, InstructionPane *instructions)
    : QSplitter(Qt::Horizontal)
    , m_table(table)
    , m_views(views)
    , m_instructions(instructions)
{
    addWidget(m_table);
    addWidget(m_views);
    addWidget(m_instructions);
    setStretchFactor(1, 1);
    connect(this, &QSplitter::splitterMoved, this, [this](int, int handle) { moved(handle); });
    connect(m_instructions, &InstructionPane::roomChanged, this, &UpperRow::placeInstructions);
}

void UpperRow::moved(int handle)
{
    if (handle == 1) {
        m_chosenTable = m_table->width();
        Q_EMIT tableWidthChosen(m_chosenTable);
    } else {
        m_instructions->setChosenWidth(m_instructions->width());
    }
    shareNow();
}

void UpperRow::setChosenTableWidth(int width)
{
    m_chosenTable = width;
    shareNow();
}

/// How many of these pixels the window may become wider by.
int UpperRow::roomFor(int width) const
{
    const QWidget *around = window();
    if (!around->isVisible() || around->isMaximized() || around->isFullScreen())
        return 0;
    if (!m_isOnScreen)
        return width;
    // To its right alone: the panels stay under the mouse.
    return qBound(0, screen()->availableGeometry().right() - around->frameGeometry().right(), width);
}

int UpperRow::widened() const
{
    return window()->width() == m_widenedTo ? m_widenedBy : 0;
}

void UpperRow::widen(int pixels)
{
    const int before = widened();
    if (pixels == before)
        return;
    m_widenedBy = pixels;
    m_widenedTo = window()->width() - before + pixels;
    window()->resize(m_widenedTo, window()->height());
}

void UpperRow::placeInstructions()
{
    const int wanted = m_instructions->isInUse() ? m_instructions->wantedWidth() + handleWidth() : 0;
    const int before = widened();
    const int after = qMin(wanted, before + roomFor(qMax(0, wanted - before)));
    m_views->freeze();
    if (after < before)
        widen(after);
    m_instructions->setVisible(m_instructions->isInUse());
    shareNow();
    if (after > before)
        widen(after);
    shareNow();
}

void UpperRow::shareNow()
{
    const bool hasPane = m_instructions->isVisibleTo(this);
    const int whole = width() - handleWidth();
    const int withoutPane = whole - (hasPane ? widened() : 0);
    // With what the tabs have around them.
    const int wanted = qMax(m_wanted, m_views->widget()->minimumSizeHint().width());
    const int least = m_table->minimumSizeHint().width();
    const int most = qMax(least, withoutPane - m_views->minimumSizeHint().width());
    const int table = m_chosenTable > 0 ? qBound(least, m_chosenTable, most)
                                        : qBound(least, withoutPane - wanted, m_table->sizeHint().width());
    if (!hasPane) {
        setSizes({table, whole - table, 0});
        m_views->hold({});
        return;
    }
    m_views->hold({withoutPane - table, height()});
    const int forBoth = whole - handleWidth() - table;
    const int pane = qMin(m_instructions->wantedWidth(),
                          qMax(m_instructions->minimumWidth(), forBoth - m_views->minimumSizeHint().width()));
    setSizes({table, forBoth - pane, pane});
}

void UpperRow::resizeEvent(QResizeEvent *event)
{
    QSplitter::resizeEvent(event);
    share();
}

} // namespace station
