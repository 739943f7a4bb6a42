#include "station/window/WindowLook.h"

#include "platform/Color.h"
#include "station/window/ElidedLabel.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace station {
namespace {

constexpr int IconPixels = 44;

QPixmap drawn(const QPainterPath &path, const QColor &color)
{
    QPixmap pixmap(IconPixels, IconPixels);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(path, color);
    return pixmap;
}

QIcon icon(const QPainterPath &path, const QColor &color)
{
    QIcon result(drawn(path, color));
    result.addPixmap(drawn(path, QColor(170, 170, 176)), QIcon::Disabled);
    return result;
}

} // namespace

QPalette windowPalette()
{
    QPalette palette(platform::Color::windowBackground().toQColor());
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, QColor(20, 20, 24));
    palette.setColor(QPalette::WindowText, QColor(20, 20, 24));
    palette.setColor(QPalette::ButtonText, QColor(20, 20, 24));
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(150, 150, 156));
    palette.setColor(QPalette::Highlight, QColor(0, 98, 204));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

QFont windowFont(int pixels, bool bold)
{
    QFont font;
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

QIcon runIcon()
{
    QPainterPath triangle;
    triangle.moveTo(9, 5);
    triangle.lineTo(39, 22);
    triangle.lineTo(9, 39);
    triangle.closeSubpath();
    return icon(triangle, QColor(24, 128, 56));
}

QIcon stopIcon()
{
    QPainterPath square;
    square.addRoundedRect(8, 8, 28, 28, 3, 3);
    return icon(square, QColor(196, 28, 28));
}

ElidedLabel *titleLabel(const QString &text)
{
    auto *label = new ElidedLabel(QStringLiteral("Station"), text);
    label->setFont(windowFont(18, true));
    label->setContentsMargins(10, 0, 18, 0);
    return label;
}

ElidedLabel *statusLabel()
{
    auto *label = new ElidedLabel(QStringLiteral("Status"));
    label->setObjectName(QStringLiteral("status"));
    label->setFont(windowFont(18));
    label->setContentsMargins(18, 0, 10, 0);
    label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    return label;
}

ElidedLabel *messageLabel()
{
    auto *label = new ElidedLabel(QStringLiteral("Message"));
    label->setObjectName(QStringLiteral("message"));
    label->setFont(windowFont(16, true));
    label->setContentsMargins(10, 0, 10, 0);
    // Amber under dark letters; the label is filled while it has something to say.
    QPalette palette = label->palette();
    palette.setColor(QPalette::Window, QColor(255, 213, 79));
    palette.setColor(QPalette::WindowText, QColor(20, 20, 24));
    label->setPalette(palette);
    // The panes keep their height when a line comes and goes, in the midst of somebody's click.
    label->setFixedHeight(28);
    return label;
}

} // namespace station
