#include "station/instruction/PictureLabel.h"

#include "station/look/WindowLook.h"

#include <QPainter>
#include <QPixmap>

namespace station {
namespace {

constexpr int WarningPixels = 14;
/// Of the longest edge of what is shown: memory that a zoom may take.
constexpr int LongestShown = 4096;

} // namespace

PictureLabel::PictureLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setFont(windowFont(WarningPixels));
    setPalette(messagePalette(palette()));
    // Not that of what it lies on.
    setBackgroundRole(QPalette::Window);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    hide();
}

void PictureLabel::setPicture(const QString &name, const QString &about, const Picture &picture)
{
    m_picture = picture;
    m_name = name;
    m_shownSize = {};
    setVisible(!name.isEmpty() && (!picture.image.isNull() || hasWarning()));
    setAutoFillBackground(hasWarning());
    setMargin(hasWarning() ? 8 : 0);
    setMinimumSize(0, 0);
    setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    if (hasWarning()) {
        setText(QStringLiteral("\u26a0 %1: %2").arg(name, picture.problem));
        setAccessibleName(QStringLiteral("Warning: %1: %2").arg(name, picture.problem));
        return;
    }
    setText({});
    setAccessibleName(QStringLiteral("Picture for %1: %2").arg(about, name));
}

void PictureLabel::fit(int width, double zoom)
{
    if (m_picture.image.isNull())
        return;
    const QSizeF own = m_picture.image.deviceIndependentSize();
    const QSizeF fitted = own.width() > width ? own.scaled(width, own.height(), Qt::KeepAspectRatio) : own;
    QSizeF zoomed = fitted * zoom;
    if (qMax(zoomed.width(), zoomed.height()) > LongestShown)
        zoomed.scale(LongestShown, LongestShown, Qt::KeepAspectRatio);
    const QSize size = zoomed.toSize().expandedTo({1, 1});
    if (size == m_shownSize)
        return;
    m_shownSize = size;
    const double ratio = devicePixelRatioF();
    QImage scaled = m_picture.image.scaled((QSizeF(size) * ratio).toSize(), Qt::IgnoreAspectRatio,
                                           Qt::SmoothTransformation);
    // It keeps the ratio of what it was made from, by which it would be drawn smaller than the pixels it has.
    scaled.setDevicePixelRatio(1.0);
    QPixmap pixmap(scaled.size());
    // Black lines on nothing are drawn for paper, and could not be seen on a dark pane.
    pixmap.fill(Qt::white);
    QPainter(&pixmap).drawImage(0, 0, scaled);
    pixmap.setDevicePixelRatio(ratio);
    setPixmap(pixmap);
    setFixedSize(size);
}

} // namespace station
