#pragma once

#include "platform/TextField.h"
#include "platform/View.h"
#include "tests/support/Printing.h"
#include "tests/support/Wait.h"

#include <QImage>
#include <QWidget>

#include <gtest/gtest.h>

#include <memory>
#include <ostream>

inline void PrintTo(const QRect &rect, std::ostream *stream)
{
    *stream << rect.x() << ", " << rect.y() << ", " << rect.width() << ", " << rect.height();
}

namespace testsupport {

/// An active window of 400 by 300 points with a root view that fills it, and an operator's hands.
///
/// Thread: the main thread.
class ViewFixture : public ::testing::Test
{
protected:
    ViewFixture();

    /// Adds a view of the kind to the root, or to another view.
    template <class Kind = platform::View>
    Kind *add(const platform::Rect &frame, platform::View *superview = nullptr)
    {
        auto view = std::make_unique<Kind>(frame);
        Kind *added = view.get();
        (superview ? superview : root)->addSubview(view.release());
        return added;
    }
    platform::TextField *addField(const platform::Rect &frame, const QString &text = {});

    /// Real key events to whatever has the focus, with no turn of the event loop between them.
    void type(const QString &text);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// A real press and release at the centre of the widget, wherever it leads.
    void click(const QWidget *widget, Qt::MouseButton button = Qt::LeftButton);
    void clickAt(const QPoint &position, Qt::MouseButton button = Qt::LeftButton);
    /// Turns the wheel over the centre of the widget by so many steps, upwards when positive.
    void turnWheel(const QWidget *widget, int steps, int sidewaysSteps = 0);
    /// Serves what is posted, deferred deletions included.
    void settle();
    /// What the window shows of a view.
    [[nodiscard]] QImage picture(platform::View *view);

    QWidget window;
    platform::View *root;
    /// A target for actions, alive as long as the test.
    QObject target;
};

} // namespace testsupport
