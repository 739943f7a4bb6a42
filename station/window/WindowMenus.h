#pragma once

#include "station/look/Theme.h"

#include <QKeySequence>
#include <QObject>

#include <array>
#include <functional>

class QAction;
class QMainWindow;
class QMenu;

namespace station {

/// What the window can be asked for, by its menus and by keys: each entry and each tooltip tells its key.
///
/// The entries of a menu have no letters of their own, since what is scanned into an open menu would press
/// them. Thread: the main thread. Ownership: a child of the window.
class WindowMenus : public QObject
{
    Q_OBJECT
public:
    explicit WindowMenus(QMainWindow *window);

    /// What the columns' menu is filled by each time it opens.
    void setColumnsFilledBy(std::function<void(QMenu *)> fill);
    void setTheme(ThemeChoice choice);

    [[nodiscard]] QAction *run() const { return m_run; }
    [[nodiscard]] QAction *stop() const { return m_stop; }
    [[nodiscard]] QAction *quit() const { return m_quit; }
    /// Checked while the log is unfolded, and the instructions are.
    [[nodiscard]] QAction *log() const { return m_log; }
    [[nodiscard]] QAction *instructions() const { return m_instructions; }
    [[nodiscard]] QAction *about() const { return m_about; }
    [[nodiscard]] QAction *theme(ThemeChoice choice) const
    {
        return m_themes[static_cast<std::size_t>(choice)];
    }

    /// What the action says, with its key, as a tooltip.
    static void describe(QAction *action, const QString &what);

signals:
    void themeChosen(ThemeChoice choice);

private:
    QAction *add(QMenu *menu, const QString &text, const QKeySequence &key = {});
    void makeThemes(QMenu *menu);

    QMenu *m_columns = nullptr;
    QAction *m_run = nullptr;
    QAction *m_stop = nullptr;
    QAction *m_quit = nullptr;
    QAction *m_log = nullptr;
    QAction *m_instructions = nullptr;
    QAction *m_about = nullptr;
    std::array<QAction *, 3> m_themes{};
};

} // namespace station
