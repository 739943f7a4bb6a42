#include "station/window/WindowMemory.h"

namespace station {
namespace {

const QString X = QStringLiteral("window/x");
const QString Y = QStringLiteral("window/y");
const QString Width = QStringLiteral("window/width");
const QString Height = QStringLiteral("window/height");
const QString Maximized = QStringLiteral("window/maximized");
const QString TableWidth = QStringLiteral("table/width");
const QString LogHeight = QStringLiteral("log/height");
const QString LogFolded = QStringLiteral("log/folded");
const QString ThemeKey = QStringLiteral("window/theme");

/// No screen is wider; a file may have been written by something else.
constexpr int Largest = 30'000;
constexpr int LeastWindow = 100;
constexpr int Nowhere = -Largest - 1;
/// What a window manager puts around a window is not known before it is shown.
constexpr QMargins Frame{4, 32, 4, 4};

int area(const QRect &rect)
{
    return rect.isEmpty() ? 0 : rect.width() * rect.height();
}

} // namespace

WindowMemory::WindowMemory(const QString &file)
    : m_file(file)
{}

std::optional<QRect> WindowMemory::place() const
{
    const int x = m_file.number(X, -Largest, Largest, Nowhere);
    const int y = m_file.number(Y, -Largest, Largest, Nowhere);
    const int width = m_file.number(Width, LeastWindow, Largest, 0);
    const int height = m_file.number(Height, LeastWindow, Largest, 0);
    if (x == Nowhere || y == Nowhere || width == 0 || height == 0)
        return std::nullopt;
    return QRect(x, y, width, height);
}

void WindowMemory::setPlace(const QRect &place) const
{
    m_file.keep(X, place.x());
    m_file.keep(Y, place.y());
    m_file.keep(Width, place.width());
    m_file.keep(Height, place.height());
}

bool WindowMemory::isMaximized() const
{
    return m_file.value(Maximized).toBool();
}

void WindowMemory::setMaximized(bool maximized) const
{
    m_file.keep(Maximized, maximized);
}

int WindowMemory::tableWidth() const
{
    return m_file.number(TableWidth, 0, Largest, 0);
}

void WindowMemory::setTableWidth(int width) const
{
    m_file.keep(TableWidth, width);
}

int WindowMemory::logHeight() const
{
    return m_file.number(LogHeight, 0, Largest, 0);
}

void WindowMemory::setLogHeight(int height) const
{
    m_file.keep(LogHeight, height);
}

bool WindowMemory::isLogFolded() const
{
    const QVariant folded = m_file.value(LogFolded);
    return !folded.isValid() || folded.toString() != QLatin1String("false");
}

void WindowMemory::setLogFolded(bool folded) const
{
    m_file.keep(LogFolded, folded);
}

ThemeChoice WindowMemory::theme() const
{
    return themeFromText(m_file.value(ThemeKey).toString()).value_or(ThemeChoice::Auto);
}

void WindowMemory::setTheme(ThemeChoice choice) const
{
    m_file.keep(ThemeKey, themeText(choice));
}

QRect placeOnScreens(QRect place, const QList<QRect> &screens)
{
    if (screens.isEmpty())
        return place;
    QRect best = screens.first();
    for (const QRect &screen : screens) {
        if (area(screen & place) > area(best & place))
            best = screen;
    }
    const QRect room = best.marginsRemoved(Frame);
    place.setSize(place.size().boundedTo(room.size()));
    place.moveLeft(qBound(room.left(), place.left(), room.right() - place.width() + 1));
    place.moveTop(qBound(room.top(), place.top(), room.bottom() - place.height() + 1));
    return place;
}

} // namespace station
