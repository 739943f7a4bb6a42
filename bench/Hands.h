#pragma once

#include <QString>

class QWidget;

/// Key and mouse events that enter through a widget's native window, for the station's window and for a bare
/// one alike. Nothing is looked for and nothing is checked: the hands are not to cost what they measure.
///
/// Thread: the main thread. Requires: the window stands.
namespace bench::hands {

/// Presses and releases the key of each character; "\n" is Return.
void type(QWidget *window, const QString &text);
/// The mouse's left button on the widget's centre, which has to be in sight.
void press(QWidget *widget);
void release(QWidget *widget);
void click(QWidget *widget);

} // namespace bench::hands
