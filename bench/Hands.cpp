#include "bench/Hands.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointingDevice>
#include <QWidget>
#include <QWindow>

namespace bench::hands {

namespace {

void sendKey(QWindow *window, int key, const QString &text)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(window, &event);
    }
}

void sendMouse(QWidget *widget, QEvent::Type type)
{
    QWindow *window = widget->window()->windowHandle();
    const QPoint position = widget->mapTo(widget->window(), widget->rect().center());
    const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QMouseEvent event(type, position, position, window->mapToGlobal(position), Qt::LeftButton, held,
                      Qt::NoModifier, QPointingDevice::primaryPointingDevice());
    QCoreApplication::sendEvent(window, &event);
}

} // namespace

void type(QWidget *window, const QString &text)
{
    for (const QChar character : text) {
        if (character == QLatin1Char('\n'))
            sendKey(window->windowHandle(), Qt::Key_Return, QStringLiteral("\r"));
        else
            sendKey(window->windowHandle(), character.toUpper().unicode(), QString(character));
    }
}

void press(QWidget *widget)
{
    sendMouse(widget, QEvent::MouseButtonPress);
}

void release(QWidget *widget)
{
    sendMouse(widget, QEvent::MouseButtonRelease);
}

void click(QWidget *widget)
{
    press(widget);
    release(widget);
}

} // namespace bench::hands
