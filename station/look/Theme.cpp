#include "station/look/Theme.h"

#include "station/look/WindowLook.h"

#include <QApplication>

namespace station {

QString themeText(ThemeChoice choice)
{
    switch (choice) {
    case ThemeChoice::Light:
        return QStringLiteral("light");
    case ThemeChoice::Dark:
        return QStringLiteral("dark");
    case ThemeChoice::Auto:
        break;
    }
    return QStringLiteral("auto");
}

std::optional<ThemeChoice> themeFromText(const QString &text)
{
    for (const ThemeChoice choice : {ThemeChoice::Auto, ThemeChoice::Light, ThemeChoice::Dark}) {
        if (text == themeText(choice))
            return choice;
    }
    return std::nullopt;
}

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}

void applyTheme(ThemeChoice choice)
{
    // A palette in which nothing is set is the desktop's.
    QApplication::setPalette(choice == ThemeChoice::Auto ? QPalette()
                                                         : windowPalette(choice == ThemeChoice::Dark));
}

} // namespace station
