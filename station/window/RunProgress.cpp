#include "station/window/RunProgress.h"

#include "station/look/WindowLook.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace station {
namespace {

constexpr int Letters = 15;
constexpr int Height = 34;
constexpr int LeastWidth = 120;
constexpr int Margin = 10;
constexpr double Corner = 5.0;
constexpr double BarHeight = 7.0;
const QString LongestText = QStringLiteral("88 of 88 systems done \u00b7 pass 8 of 8");

} // namespace

RunProgress::RunProgress(QWidget *parent)
    : QProgressBar(parent)
{
    setObjectName(QStringLiteral("progress"));
    setFont(windowFont(Letters));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFocusPolicy(Qt::NoFocus);
    tell();
}

void RunProgress::begin()
{
    const auto hasFinished = [](qint64 passes) { return passes > 0; };
    if (std::any_of(m_finished.cbegin(), m_finished.cend(), hasFinished))
        m_passes = 0;
    m_done = 0;
    m_stopped = 0;
    tell();
}

void RunProgress::setSystems(int done, int stopped, int all)
{
    m_done = done;
    m_stopped = stopped;
    m_all = all;
    tell();
}

void RunProgress::setPasses(qint64 maximum, const QList<qint64> &finished)
{
    m_passes = maximum;
    m_finished = finished;
    tell();
}

/// Groups go through their passes each at its own speed.
QString RunProgress::passText() const
{
    if (m_passes < 2 || m_finished.isEmpty())
        return {};
    const auto [least, most] = std::minmax_element(m_finished.cbegin(), m_finished.cend());
    const qint64 first = std::min(*least + 1, m_passes);
    const qint64 last = std::min(*most + 1, m_passes);
    return first == last ? QStringLiteral("pass %1 of %2").arg(first).arg(m_passes)
                         : QStringLiteral("passes %1\u2013%2 of %3").arg(first).arg(last).arg(m_passes);
}

QString RunProgress::text() const
{
    return textWith(m_all == 1 ? QStringLiteral("system ") : QStringLiteral("systems "));
}

QString RunProgress::shownText() const
{
    const int room = width() - 2 * Margin;
    if (fontMetrics().horizontalAdvance(text()) <= room)
        return text();
    return fontMetrics().elidedText(textWith({}), Qt::ElideRight, room);
}

QString RunProgress::textWith(const QString &noun) const
{
    QStringList parts;
    if (m_all > 0)
        parts.append(QStringLiteral("%1 of %2 %3done").arg(m_done).arg(m_all).arg(noun));
    if (m_stopped > 0)
        parts.append(QStringLiteral("%1 stopped").arg(m_stopped));
    if (const QString passes = passText(); !passes.isEmpty())
        parts.append(passes);
    return parts.join(QStringLiteral(" \u00b7 "));
}

void RunProgress::tell()
{
    // The toolkit would paint the bar, and all else that waits to be painted, for each step.
    setUpdatesEnabled(false);
    setRange(0, std::max(1, m_all));
    setValue(m_done);
    setUpdatesEnabled(true);
    setAccessibleName(QStringLiteral("Progress: ") + text());
    setToolTip(text());
}

QSize RunProgress::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(LongestText) + 2 * Margin, Height};
}

QSize RunProgress::minimumSizeHint() const
{
    return {LeastWidth, Height};
}

/// The bar runs below the text and not behind it: half a digit on each of two colours could not be read from
/// afar.
void RunProgress::paintEvent(QPaintEvent *)
{
    if (text().isEmpty())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath outline;
    outline.addRoundedRect(frame, Corner, Corner);
    painter.fillPath(outline, palette().color(QPalette::Base));
    const double share = maximum() > 0 ? static_cast<double>(value()) / maximum() : 0.0;
    QRectF done = frame;
    done.setTop(frame.bottom() - BarHeight);
    done.setWidth(frame.width() * share);
    painter.save();
    painter.setClipRect(done);
    painter.fillPath(outline, palette().color(QPalette::Highlight));
    painter.restore();
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(rect().adjusted(Margin, 0, -Margin, -static_cast<int>(BarHeight)), Qt::AlignCenter,
                     shownText());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawPath(outline);
}

} // namespace station
