#include "station/window/ShortcutGuard.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace station {
namespace {

bool isModifier(const QKeyEvent &key)
{
    return key.key() == Qt::Key_Shift || key.key() == Qt::Key_Control || key.key() == Qt::Key_Alt ||
           key.key() == Qt::Key_AltGr || key.key() == Qt::Key_Meta;
}

bool isLetter(const QKeyEvent &key)
{
    return key.key() >= Qt::Key_Space && key.key() < Qt::Key_Escape;
}

} // namespace

ShortcutGuard::ShortcutGuard(QWidget *window)
    : QObject(window)
    , m_window(window)
{
    // On the application: a shortcut is looked for before the widget that has the focus sees the key.
    QApplication::instance()->installEventFilter(this);
}

bool ShortcutGuard::eventFilter(QObject *watched, QEvent *event)
{
    // Asked of every event of the program, most of which are paintings.
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return false;
    const auto *widget = qobject_cast<QWidget *>(watched);
    if (!widget || widget->window() != m_window)
        return false;
    if (event->type() == QEvent::KeyPress)
        note(*static_cast<QKeyEvent *>(event));
    if (event->type() != QEvent::ShortcutOverride || !isPartOfText(*static_cast<QKeyEvent *>(event)))
        return false;
    // Who accepts it gets the key as one to type.
    event->accept();
    return true;
}

void ShortcutGuard::note(const QKeyEvent &key)
{
    if (isModifier(key))
        return;
    m_isInText = isLetter(key);
    m_lastCharacter = m_clock();
}

bool ShortcutGuard::isPartOfText(const QKeyEvent &key) const
{
    return m_isInText && isLetter(key) && (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) &&
           m_clock() - m_lastCharacter < FasterThanAHand;
}

} // namespace station
