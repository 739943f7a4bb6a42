#pragma once

#include <QFont>
#include <QIcon>
#include <QPalette>
#include <QString>

class QLabel;

namespace station {

/// The station window's look: light whatever the desktop's theme, since the plug-ins' panels are, and large
/// enough to be read from a metre away.
///
/// Thread: the main thread.
[[nodiscard]] QPalette windowPalette();
/// The window's font at a height in pixels.
[[nodiscard]] QFont windowFont(int pixels, bool bold = false);
[[nodiscard]] QIcon runIcon();
[[nodiscard]] QIcon stopIcon();
/// New labels for the tool bar; the caller owns them.
[[nodiscard]] QLabel *titleLabel(const QString &text);
[[nodiscard]] QLabel *statusLabel();

} // namespace station
