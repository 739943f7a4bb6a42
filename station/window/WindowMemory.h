#pragma once

#include "station/look/MemoryFile.h"
#include "station/look/Theme.h"

#include <QRect>

#include <optional>

namespace station {

/// What a person has chosen for the window as a whole: its place, the shares of its panes, whether the log is
/// folded, light or dark.
///
/// Thread: the main thread.
class WindowMemory
{
public:
    WindowMemory() = default;
    explicit WindowMemory(const QString &file);

    /// Where the window was when it was not maximised, without its frame; nothing that could be no window.
    [[nodiscard]] std::optional<QRect> place() const;
    void setPlace(const QRect &place) const;
    [[nodiscard]] bool isMaximized() const;
    void setMaximized(bool maximized) const;
    /// In pixels; 0 where nobody has moved the bar.
    [[nodiscard]] int tableWidth() const;
    void setTableWidth(int width) const;
    [[nodiscard]] int logHeight() const;
    void setLogHeight(int height) const;
    /// True unless somebody has unfolded it.
    [[nodiscard]] bool isLogFolded() const;
    void setLogFolded(bool folded) const;
    [[nodiscard]] ThemeChoice theme() const;
    void setTheme(ThemeChoice choice) const;

private:
    MemoryFile m_file;
};

/// Where a window that was at this place opens now: on the screen that shows most of it, or on the first one
/// where none does; no larger than what the screen has to offer inside of a frame, and whole on it. Thread:
/// any.
[[nodiscard]] QRect placeOnScreens(QRect place, const QList<QRect> &screens);

} // namespace station
