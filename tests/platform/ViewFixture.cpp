#include "tests/platform/ViewFixture.h"

#include <QCoreApplication>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

namespace testsupport {

using platform::Rect;
using platform::TextField;
using platform::View;

ViewFixture::ViewFixture()
    : root(new View(&window))
{
    window.resize(400, 300);
    root->setFrame({0, 0, 400, 300});
    window.show();
    window.activateWindow();
    EXPECT_TRUE(waitUntil([this] { return window.isActiveWindow(); })) << "the window was not shown";
}

TextField *ViewFixture::addField(const Rect &frame, const QString &text)
{
    auto *field = add<TextField>(frame);
    field->setEditable(true);
    field->setBordered(true);
    field->setStringValue(text);
    return field;
}

void ViewFixture::type(const QString &text)
{
    for (const QChar character : text) {
        if (character == QLatin1Char('\n'))
            press(Qt::Key_Return);
        else
            QTest::sendKeyEvent(QTest::Click, window.windowHandle(), QTest::asciiToKey(character.toLatin1()),
                                QString(character), Qt::NoModifier);
    }
}

void ViewFixture::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(window.windowHandle(), key, modifiers);
}

void ViewFixture::click(const QWidget *widget, Qt::MouseButton button)
{
    clickAt(widget->mapTo(&window, widget->rect().center()), button);
}

void ViewFixture::clickAt(const QPoint &position, Qt::MouseButton button)
{
    QTest::mouseClick(window.windowHandle(), button, {}, position);
}

void ViewFixture::turnWheel(const QWidget *widget, int steps, int sidewaysSteps)
{
    constexpr int unitsPerStep = 120;
    const QPoint position = widget->mapTo(&window, widget->rect().center());
    QWheelEvent event(position, window.mapToGlobal(position), QPoint(),
                      QPoint(sidewaysSteps, steps) * unitsPerStep, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(window.windowHandle(), &event);
}

void ViewFixture::settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

QImage ViewFixture::picture(View *view)
{
    const QRect area(view->mapTo(&window, QPoint(0, 0)), view->size());
    return window.grab(area).toImage();
}

} // namespace testsupport
