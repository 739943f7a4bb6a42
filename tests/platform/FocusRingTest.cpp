#include "platform/FocusRing.h"

#include "platform/Button.h"
#include "platform/Readable.h"
#include "tests/platform/ViewFixture.h"

#include <QPainter>

namespace {

using namespace platform;

/// What is painted where a control has the focus, on each ground and at both scales.
class FocusRingTest : public testsupport::ViewFixture
{
protected:
    static QImage pictureAt(QWidget &widget, double scale)
    {
        QImage image(widget.size() * scale, QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        widget.render(&image);
        return image;
    }
    /// The controls of each kind, side by side.
    QList<Control *> controls()
    {
        QList<Control *> all;
        auto *field = addField({10, 10, 100, 25}, "A1");
        field->setEditable(true);
        field->setBordered(true);
        field->setDrawsBackground(true);
        auto *choices = addField({10, 50, 100, 25}, "B2");
        choices->setEditable(true);
        choices->setBordered(true);
        choices->setDrawsBackground(true);
        choices->setChoices({"B2", "C3"});
        auto *value = addField({10, 90, 100, 25}, "C3");
        value->setFocusPolicy(Qt::TabFocus);
        value->setDrawsBackground(true);
        auto *button = add<Button>({200, 10, 80, 30});
        button->setTitle("OK");
        auto *pass = add<Button>({200, 60, 80, 30});
        pass->setTitle("Pass");
        pass->setShadow(Shadow{Color::systemBlue(), 2.0, {0.0, 0.0}});
        auto *toggle = add<Button>({200, 110, 30, 30});
        toggle->setButtonType(Button::Type::Switch);
        auto *group = add<Button>({300, 110, 80, 30});
        group->setButtonType(Button::Type::Switch);
        group->setTitle("G1");
        return {field, choices, value, button, pass, toggle, group};
    }
    /// The widths, in points, of the two rings at the middle of each edge, from outside inwards.
    static void expectRing(const QImage &image, const QRect &frame, double scale, const std::string &what)
    {
        const auto expectLine = [&](const QPointF &edge, const QPointF &inwards) {
            for (int step = 0; step < int(focusring::Width * scale); ++step) {
                const QPointF at = edge * scale + inwards * (step + 0.5);
                const QColor expected =
                    step < focusring::RingWidth * scale ? focusring::outer() : focusring::inner();
                EXPECT_EQ(image.pixelColor(int(at.x()), int(at.y())), expected)
                    << what << " " << at.x() << ", " << at.y() << " step " << step;
            }
        };
        const QPointF middle = QRectF(frame).center();
        const double half = 0.25;
        expectLine({double(frame.left()), middle.y()}, {1, 0});
        expectLine({middle.x(), double(frame.top())}, {0, 1});
        expectLine({frame.left() + frame.width() - half, middle.y()}, {-1, 0});
        expectLine({middle.x(), frame.top() + frame.height() - half}, {0, -1});
    }
};

TEST_F(FocusRingTest, OneOfItsTwoRingsStandsOutFromEveryColour)
{
    EXPECT_GE(focusring::RingWidth, 2.0);
    EXPECT_GE(readable::contrast(focusring::outer(), focusring::inner()), 3.0);
    for (int red = 0; red < 256; red += 15) {
        for (int green = 0; green < 256; green += 15) {
            for (int blue = 0; blue < 256; blue += 15) {
                const QColor beside(red, green, blue);
                ASSERT_GE(std::max(readable::contrast(beside, focusring::outer()),
                                   readable::contrast(beside, focusring::inner())),
                          3.0);
            }
        }
    }
}

TEST_F(FocusRingTest, StandsInsideEachControlThatHasTheFocusAndInNoOther)
{
    const QList<Control *> all = controls();
    for (const double scale : {1.0, 2.0}) {
        for (Control *focused : all) {
            const Rect frame = focused->frame();
            window.setFocus(Qt::OtherFocusReason);
            const QImage without = pictureAt(window, scale);
            ASSERT_TRUE(focused->becomeFirstResponder());
            const QImage with = pictureAt(window, scale);
            EXPECT_EQ(focused->frame(), frame);
            const QRect place(focused->mapTo(&window, QPoint()), focused->size());
            expectRing(with, place, scale, focused->metaObject()->className());
            // Outside of its frame nothing changes, so that it touches no neighbour.
            const QRect pixels(place.topLeft() * scale, place.size() * scale);
            for (int y = 0; y < with.height(); ++y) {
                for (int x = 0; x < with.width(); ++x) {
                    if (!pixels.contains(x, y)) {
                        ASSERT_EQ(with.pixel(x, y), without.pixel(x, y)) << x << ", " << y;
                    }
                }
            }
        }
    }
}

TEST_F(FocusRingTest, AGlowIsNoRing)
{
    auto *pass = add<Button>({200, 60, 80, 30});
    pass->setShadow(Shadow{Color::systemBlue(), 2.0, {0.0, 0.0}});
    window.setFocus(Qt::OtherFocusReason);
    const QImage image = pictureAt(window, 1.0);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            ASSERT_NE(image.pixelColor(x, y), focusring::outer());
    }
}

TEST_F(FocusRingTest, DisappearsWithTheFocus)
{
    auto *button = add<Button>({200, 10, 80, 30});
    window.setFocus(Qt::OtherFocusReason);
    const QImage before = pictureAt(window, 1.0);
    ASSERT_TRUE(button->becomeFirstResponder());
    EXPECT_NE(pictureAt(window, 1.0), before);
    window.setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(pictureAt(window, 1.0), before);
}

TEST(Readable, KeepsAColourThatCanBeReadAndChangesOneThatCannot)
{
    EXPECT_EQ(readable::text(Qt::black, Qt::white), QColor(Qt::black));
    EXPECT_EQ(readable::text(Qt::black, QColor(40, 40, 40)), QColor(Qt::white));
    const QColor red = readable::text(QColor(255, 0, 0), Qt::white);
    EXPECT_GE(readable::contrast(red, Qt::white), 4.5);
    EXPECT_GT(red.red(), 200);
    EXPECT_EQ(red.green(), 0);
}

TEST(Readable, FindsATextForEveryGround)
{
    for (int grey = 0; grey < 256; ++grey) {
        const QColor ground(grey, grey, grey);
        for (const QColor wanted : {QColor(255, 255, 0), QColor(0, 0, 255), QColor(128, 128, 128)}) {
            EXPECT_GE(readable::contrast(readable::text(wanted, ground), ground), 4.5);
            EXPECT_GE(readable::contrast(readable::faint(wanted, ground), ground), 4.5);
            EXPECT_GE(readable::contrast(readable::mark(wanted, ground), ground), 3.0);
        }
    }
}

TEST(Readable, MeasuresContrastAsTheGuidelinesDo)
{
    EXPECT_NEAR(readable::contrast(Qt::black, Qt::white), 21.0, 0.001);
    EXPECT_NEAR(readable::contrast(QColor(119, 119, 119), Qt::white), 4.48, 0.01);
}

} // namespace
