#include "station/window/WindowMenus.h"

#include <QAction>
#include <QActionGroup>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QProxyStyle>

#include <utility>

namespace station {
namespace {

/// Alt by itself does not take the focus into the bar: a scanner may hold it for a character.
class BarStyle : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *more) const override
    {
        return hint == SH_MenuBar_AltKeyNavigation ? 0 : QProxyStyle::styleHint(hint, option, widget, more);
    }
};

} // namespace

WindowMenus::WindowMenus(QMainWindow *window)
    : QObject(window)
{
    QMenuBar *bar = window->menuBar();
    // In the window, wherever the desktop would have it: the station looks the same on all of them.
    bar->setNativeMenuBar(false);
    auto *style = new BarStyle;
    style->setParent(bar);
    bar->setStyle(style);
    QMenu *file = bar->addMenu(QStringLiteral("&File"));
    m_quit = add(file, QStringLiteral("Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q));
    QMenu *run = bar->addMenu(QStringLiteral("&Run"));
    m_run = add(run, QStringLiteral("Run"), QKeySequence(Qt::Key_F5));
    m_stop = add(run, QStringLiteral("Stop"), QKeySequence(Qt::SHIFT | Qt::Key_F5));
    QMenu *view = bar->addMenu(QStringLiteral("&View"));
    m_log = add(view, QStringLiteral("Log"), QKeySequence(Qt::CTRL | Qt::Key_L));
    m_instructions =
        add(view, QStringLiteral("Instructions"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_I));
    m_log->setCheckable(true);
    m_instructions->setCheckable(true);
    m_columns = view->addMenu(QStringLiteral("Columns"));
    makeThemes(view->addMenu(QStringLiteral("Theme")));
    QMenu *help = bar->addMenu(QStringLiteral("&Help"));
    m_about = add(help, QStringLiteral("About"));
    // A key that is held down is one wish.
    for (QAction *action : {m_run, m_stop, m_quit, m_log, m_instructions})
        action->setAutoRepeat(false);
}

QAction *WindowMenus::add(QMenu *menu, const QString &text, const QKeySequence &key)
{
    QAction *action = menu->addAction(text);
    action->setShortcut(key);
    describe(action, text);
    return action;
}

void WindowMenus::describe(QAction *action, const QString &what)
{
    const QString key = action->shortcut().toString(QKeySequence::NativeText);
    action->setToolTip(key.isEmpty() ? what : QStringLiteral("%1 (%2)").arg(what, key));
}

void WindowMenus::makeThemes(QMenu *menu)
{
    auto *group = new QActionGroup(this);
    const std::pair<ThemeChoice, QString> names[] = {{ThemeChoice::Auto, QStringLiteral("As the desktop")},
                                                     {ThemeChoice::Light, QStringLiteral("Light")},
                                                     {ThemeChoice::Dark, QStringLiteral("Dark")}};
    for (const auto &[choice, name] : names) {
        QAction *action = add(menu, name);
        action->setCheckable(true);
        group->addAction(action);
        m_themes[static_cast<std::size_t>(choice)] = action;
        connect(action, &QAction::triggered, this, [this, wanted = choice] { Q_EMIT themeChosen(wanted); });
    }
    setTheme(ThemeChoice::Auto);
}

void WindowMenus::setTheme(ThemeChoice choice)
{
    theme(choice)->setChecked(true);
}

void WindowMenus::setColumnsFilledBy(std::function<void(QMenu *)> fill)
{
    connect(m_columns, &QMenu::aboutToShow, this,
            [this, filledBy = std::move(fill)] { filledBy(m_columns); });
}

} // namespace station
