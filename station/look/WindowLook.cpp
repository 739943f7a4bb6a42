#include "station/look/WindowLook.h"

#include "platform/Color.h"
#include "station/look/ElidedLabel.h"
#include "station/look/Theme.h"

#include <QAbstractScrollArea>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QScrollBar>

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
    result.addPixmap(drawn(path, QColor(150, 150, 156)), QIcon::Disabled);
    return result;
}

/// The colours of one theme; the rest of a palette follows from them.
struct Shades
{
    QColor window;
    QColor base;
    QColor button;
    QColor text;
    QColor faint; ///< Of what cannot be pressed, and of a field's hint.
    QColor link;
};

QPalette paletteOf(const Shades &shades)
{
    QPalette palette(shades.button, shades.window);
    palette.setColor(QPalette::Base, shades.base);
    palette.setColor(QPalette::AlternateBase, shades.window);
    palette.setColor(QPalette::ToolTipBase, shades.base);
    for (const QPalette::ColorRole role :
         {QPalette::Text, QPalette::WindowText, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, shades.text);
    palette.setColor(QPalette::PlaceholderText, shades.faint);
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, shades.faint);
    palette.setColor(QPalette::Link, shades.link);
    palette.setColor(QPalette::Highlight, QColor(0, 98, 204));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

QPalette lightPalette()
{
    const QColor window = platform::Color::windowBackground().toQColor();
    return paletteOf(
        {window, Qt::white, window, QColor(20, 20, 24), QColor(108, 108, 114), QColor(0, 84, 176)});
}

QPalette darkPalette()
{
    return paletteOf({QColor(43, 43, 48), QColor(28, 28, 32), QColor(60, 60, 66), QColor(236, 236, 240),
                      QColor(158, 158, 166), QColor(130, 180, 255)});
}

} // namespace

QPalette windowPalette(bool dark)
{
    return dark ? darkPalette() : lightPalette();
}

QColor logColor(KVKLogLevel level, const QPalette &palette)
{
    const bool dark = isDark(palette);
    switch (level) {
    case KVKLogLevel::Debug:
        return dark ? QColor(164, 164, 172) : QColor(105, 105, 112);
    case KVKLogLevel::Error:
        return dark ? QColor(255, 138, 138) : QColor(190, 0, 20);
    case KVKLogLevel::Default:
        break;
    }
    return palette.color(QPalette::Text);
}

QColor focusColor(const QPalette &palette)
{
    return isDark(palette) ? QColor(110, 170, 255) : QColor(0, 98, 204);
}

QPalette errorPalette(QPalette palette)
{
    palette.setColor(QPalette::Button, QColor(196, 28, 28));
    palette.setColor(QPalette::ButtonText, Qt::white);
    return palette;
}

QPalette messagePalette(QPalette palette)
{
    palette.setColor(QPalette::Window, QColor(255, 213, 79));
    palette.setColor(QPalette::WindowText, QColor(20, 20, 24));
    return palette;
}

QFont windowFont(int pixels, bool bold)
{
    QFont font;
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

QIcon runIcon(const QPalette &palette)
{
    QPainterPath triangle;
    triangle.moveTo(9, 5);
    triangle.lineTo(39, 22);
    triangle.lineTo(9, 39);
    triangle.closeSubpath();
    return icon(triangle, isDark(palette) ? QColor(72, 190, 104) : QColor(24, 128, 56));
}

QIcon stopIcon(const QPalette &palette)
{
    QPainterPath square;
    square.addRoundedRect(8, 8, 28, 28, 3, 3);
    return icon(square, isDark(palette) ? QColor(240, 92, 92) : QColor(196, 28, 28));
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
    label->setPalette(messagePalette(label->palette()));
    // The panes keep their height when a line comes and goes, in the midst of somebody's click.
    label->setFixedHeight(28);
    return label;
}

void nameScrollBars(const QAbstractScrollArea &area)
{
    area.verticalScrollBar()->setAccessibleName(QStringLiteral("Scroll up and down"));
    area.horizontalScrollBar()->setAccessibleName(QStringLiteral("Scroll left and right"));
}

} // namespace station
