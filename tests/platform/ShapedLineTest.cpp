#include "platform/ShapedLine.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <functional>

using platform::paintLine;

namespace {

using Paint = std::function<void(QPainter &, const QRectF &, int, const QString &)>;

struct Look
{
    QFont font = {};
    QColor color = Qt::black;
    QPointF offset = {};
    double scale = 1.0;
    Qt::LayoutDirection direction = Qt::LeftToRight;
};

QImage painted(const Paint &paint, const QRectF &area, int flags, const QString &text, const Look &look)
{
    QImage image((QSizeF(240, 60) * look.scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(look.scale);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(look.font);
    painter.setPen(look.color);
    painter.setLayoutDirection(look.direction);
    painter.translate(look.offset);
    paint(painter, area, flags, text);
    return image;
}

/// What the toolkit paints is what is to be seen, down to the pixel; twice, since the second time is another
/// way.
void expectAsToolkit(const QString &text, int flags, const Look &look, const QRectF &area = {10, 10, 200, 30})
{
    const auto toolkit = [](QPainter &painter, const QRectF &room, int how, const QString &line) {
        painter.drawText(room, how | Qt::TextSingleLine, line);
    };
    const QImage wanted = painted(toolkit, area, flags, text, look);
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(painted(paintLine, area, flags, text, look), wanted)
            << text.toStdString() << ", " << flags << ", time " << time;
}

const QList<int> Alignments{Qt::AlignLeft | Qt::AlignVCenter, Qt::AlignHCenter | Qt::AlignVCenter,
                            Qt::AlignRight | Qt::AlignBottom, Qt::AlignLeft | Qt::AlignTop};

QFont fontOf(int pixels, bool isBold = false)
{
    QFont font;
    font.setPixelSize(pixels);
    font.setBold(isBold);
    return font;
}

} // namespace

TEST(ShapedLine, IsPaintedAsTheToolkitPaintsIt)
{
    for (const int flags : Alignments) {
        for (const QString &text :
             {QStringLiteral("SN:"), QStringLiteral("Switch & LED"), QStringLiteral("<b>1 < 2</b>"),
              QStringLiteral("Prüfplatz Ål"), QStringLiteral("0123456789 AVA"), QStringLiteral("f")}) {
            expectAsToolkit(text, flags, {fontOf(13)});
            expectAsToolkit(text, flags, {fontOf(15, true), Qt::red});
            expectAsToolkit(text, flags | Qt::TextDontClip, {fontOf(11), Qt::blue, {3.5, 1.25}});
        }
    }
}

TEST(ShapedLine, IsPaintedAsTheToolkitPaintsItAtScaleTwo)
{
    for (const int flags : Alignments) {
        expectAsToolkit(QStringLiteral("Slot 1"), flags, {fontOf(13), Qt::black, {}, 2.0});
        expectAsToolkit(QStringLiteral("Slot 1"), flags, {fontOf(13), Qt::black, {0.5, 0.0}, 1.5});
    }
}

TEST(ShapedLine, OfOtherLettersAndDirectionsIsPaintedAsTheToolkitPaintsIt)
{
    for (const int flags : Alignments) {
        expectAsToolkit(QStringLiteral("測試 序號 12"), flags, {fontOf(13)});
        expectAsToolkit(QStringLiteral("שלום 12"), flags, {fontOf(13)});
        expectAsToolkit(QStringLiteral("abc (1)"), flags, {fontOf(13), Qt::black, {}, 1.0, Qt::RightToLeft});
    }
}

TEST(ShapedLine, ThatDoesNotFitIsCutAtTheRoomUnlessToldOtherwise)
{
    const QString text = QStringLiteral("longer than its room");
    const QRectF room(10, 10, 30, 8);
    for (const int flags : Alignments) {
        expectAsToolkit(text, flags, {fontOf(13)}, room);
        expectAsToolkit(text, flags | Qt::TextDontClip, {fontOf(13)}, room);
    }
}

TEST(ShapedLine, OfATextWithLineBreaksIsOneLine)
{
    for (const int flags : Alignments) {
        expectAsToolkit(QStringLiteral("one\ntwo"), flags, {fontOf(13)});
        expectAsToolkit(QStringLiteral("one\ttwo\r\x1d"), flags, {fontOf(13)});
        expectAsToolkit(QStringLiteral("one") + QChar(QChar::LineSeparator) + QStringLiteral("two"), flags,
                        {fontOf(13)});
    }
}

TEST(ShapedLine, OfTheSameTextFollowsFontAndColourOfThePainter)
{
    const QString text = QStringLiteral("4711");
    for (const int pixels : {10, 20, 10}) {
        for (const QColor &color : {QColor(Qt::black), QColor(Qt::green)})
            expectAsToolkit(text, Qt::AlignLeft | Qt::AlignVCenter, {fontOf(pixels), color});
    }
}

TEST(ShapedLine, OfAnyLengthAndOfNoneIsPainted)
{
    expectAsToolkit(QString(), Qt::AlignLeft, {fontOf(13)});
    expectAsToolkit(QString(100'000, QLatin1Char('x')), Qt::AlignLeft | Qt::AlignVCenter, {fontOf(13)});
}
