#pragma once

#include <QFont>
#include <QIcon>
#include <QPalette>
#include <QString>

namespace station {

class ElidedLabel;

/// The station window's look: light whatever the desktop's theme, since the plug-ins' panels are, and large
/// enough to be read from a metre away.
///
/// Thread: the main thread.
[[nodiscard]] QPalette windowPalette();
/// The window's font at a height in pixels.
[[nodiscard]] QFont windowFont(int pixels, bool bold = false);
[[nodiscard]] QIcon runIcon();
[[nodiscard]] QIcon stopIcon();
/// New labels: for the tool bar the station's name and its status, for the status bar the line that the
/// operator is to read. The caller owns them.
[[nodiscard]] ElidedLabel *titleLabel(const QString &text);
[[nodiscard]] ElidedLabel *statusLabel();
[[nodiscard]] ElidedLabel *messageLabel();

} // namespace station
