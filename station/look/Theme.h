#pragma once

#include <QPalette>
#include <QString>

#include <optional>

namespace station {

/// Whether the station is light or dark: as the desktop is, or as somebody wants it.
enum class ThemeChoice { Auto, Light, Dark };

/// As the command line and the settings have it: "auto", "light", "dark".
[[nodiscard]] QString themeText(ThemeChoice choice);
/// Nothing for any other text.
[[nodiscard]] std::optional<ThemeChoice> themeFromText(const QString &text);

/// Whether texts are lighter than what they stand on.
[[nodiscard]] bool isDark(const QPalette &palette);
/// Gives the whole application the palette of the choice; with Auto the desktop's own. Windows are told by
/// QEvent::ApplicationPaletteChange. Thread: the main thread.
void applyTheme(ThemeChoice choice);

} // namespace station
