#include "platform/RoundedFrame.h"

#include "platform/Box.h"
#include "tests/platform/ViewFixture.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

using platform::RoundedFrame;

namespace {

constexpr double Radius = 5.0;
const QColor Line(0, 0, 0, 40);
const QColor Filling(200, 40, 90, 128);

void paintDirectly(QPainter &painter, const QRectF &area)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Line, 1.0));
    painter.setBrush(Filling);
    painter.drawRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), Radius, Radius);
}

struct Case
{
    QRectF area;
    double scale = 1.0;
    QPointF offset;
    double zoom = 1.0;
};

QImage painted(const Case &given, const std::function<void(QPainter &, const QRectF &)> &paint)
{
    QImage image(QSize(320, 200), QImage::Format_RGB32);
    image.setDevicePixelRatio(given.scale);
    image.fill(QColor(230, 240, 250));
    QPainter painter(&image);
    painter.translate(given.offset);
    painter.scale(given.zoom, given.zoom);
    paint(painter, given.area);
    return image;
}

int greatestDifference(const QImage &one, const QImage &other)
{
    int greatest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QColor a = one.pixelColor(x, y);
            const QColor b = other.pixelColor(x, y);
            greatest = std::max({greatest, std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                                 std::abs(a.blue() - b.blue())});
        }
    }
    return greatest;
}

class RoundedFrames : public ::testing::TestWithParam<Case>
{};

} // namespace

TEST_P(RoundedFrames, LookLikeThoseThatArePaintedAtOnce)
{
    const RoundedFrame frame{{"test"}, 6, Filling, paintDirectly};
    const auto inPieces = [&](QPainter &painter, const QRectF &area) { paintFrame(painter, area, frame); };
    const QImage expected = painted(GetParam(), paintDirectly);
    for (int time = 0; time < 2; ++time) {
        // Translucent colours are rounded once more in a picture.
        EXPECT_LE(greatestDifference(painted(GetParam(), inPieces), expected), 2);
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, RoundedFrames,
    ::testing::Values(Case{{10, 10, 100, 60}, 1.0, {}}, Case{{10, 10, 100, 60}, 2.0, {}},
                      Case{{10, 10, 13, 13}, 1.0, {}}, Case{{10, 10, 12, 50}, 1.0, {}},
                      Case{{3, 4, 250, 110}, 1.0, {7, 9}}, Case{{10.5, 10, 100, 60}, 1.0, {}},
                      Case{{10, 10, 100, 60}, 1.0, {0.5, 0.25}}, Case{{10, 10, 100, 60}, 1.5, {}},
                      Case{{10, 10, 60, 40}, 1.0, {}, 1.7}, Case{{10, 10, 0, 0}, 1.0, {}}),
    [](const ::testing::TestParamInfo<Case> &each) { return "Case" + std::to_string(each.index); });

TEST(RoundedFrame, IsPaintedOnceForManyOfAKind)
{
    int painting = 0;
    const RoundedFrame frame{{"many"}, 6, Filling, [&](QPainter &painter, const QRectF &area) {
                                 ++painting;
                                 paintDirectly(painter, area);
                             }};
    QImage image(QSize(320, 200), QImage::Format_RGB32);
    QPainter painter(&image);
    for (int width = 20; width < 300; ++width)
        paintFrame(painter, QRectF(0, 0, width, 50), frame);
    EXPECT_EQ(painting, 1);
}

TEST(RoundedFrame, LeavesThePainterAsItWas)
{
    QImage image(QSize(320, 200), QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setPen(Qt::red);
    const RoundedFrame frame{{"left"}, 6, Filling, paintDirectly};
    for (const QRectF area : {QRectF(0, 0, 100, 50), QRectF(0.5, 0, 100, 50)})
        paintFrame(painter, area, frame);
    EXPECT_EQ(painter.pen().color(), QColor(Qt::red));
    EXPECT_EQ(painter.brush().style(), Qt::NoBrush);
    EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing));
}

namespace {

using RoundedViews = testsupport::ViewFixture;

/// Somewhat beside the pixels, too little to be seen, each frame is painted at once.
QImage rendered(QWidget &view, double beside)
{
    QImage image(view.size(), QImage::Format_RGB32);
    image.fill(QColor(230, 240, 250));
    QPainter painter(&image);
    painter.translate(beside, 0.0);
    view.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

} // namespace

TEST_F(RoundedViews, LookTheSameInPiecesAndPaintedAtOnce)
{
    auto *glowing = add<platform::View>({20, 20, 90, 40});
    glowing->setShadow(platform::Shadow{platform::Color{0.0, 0.4, 1.0, 1.0}, 4.0, {1.0, -2.0}});
    auto *layer = add<platform::View>({150, 20, 90, 40});
    layer->setLayerBackgroundColor(platform::Color{0.8, 0.2, 0.2, 0.5});
    layer->setCornerRadius(9.0);
    auto *box = add<platform::Box>({20, 100, 120, 80});
    box->setFillColor(platform::Color{0.2, 0.8, 0.2, 1.0});
    box->setShadow(platform::Shadow{platform::Color{0.0, 0.0, 0.0, 0.6}, 2.5, {}});
    platform::TextField *field = addField({200, 100, 120, 30});
    field->setBordered(true);
    EXPECT_LE(greatestDifference(rendered(*root, 0.0), rendered(*root, 1e-6)), 3);
}
