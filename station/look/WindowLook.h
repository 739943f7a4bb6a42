#pragma once

#include "kovan/KovanLogging/KVKLogging.h"

#include <QFont>
#include <QIcon>
#include <QPalette>
#include <QString>

class QAbstractScrollArea;

namespace station {

class ElidedLabel;

/// The station window's look, light and dark. Every text has a contrast of ReadableContrast or more to what
/// it stands on.
///
/// Thread: the main thread.
[[nodiscard]] QPalette windowPalette(bool dark);
/// The colour of a line of the log on the palette's base.
[[nodiscard]] QColor logColor(KVKLogLevel level, const QPalette &palette);
/// The colour of the ring around the control that has the focus.
[[nodiscard]] QColor focusColor(const QPalette &palette);
/// The same palette with a button for errors, and with a ground for a line to the operator: amber under dark
/// letters.
[[nodiscard]] QPalette errorPalette(QPalette palette);
[[nodiscard]] QPalette messagePalette(QPalette palette);
/// The window's font at a height in pixels.
[[nodiscard]] QFont windowFont(int pixels, bool bold = false);
[[nodiscard]] QIcon runIcon(const QPalette &palette);
[[nodiscard]] QIcon stopIcon(const QPalette &palette);
/// New labels: for the tool bar the station's name and its status, for the status bar the line that the
/// operator is to read. The caller owns them.
[[nodiscard]] ElidedLabel *titleLabel(const QString &text);
[[nodiscard]] ElidedLabel *statusLabel();
[[nodiscard]] ElidedLabel *messageLabel();
/// Gives an area's bars the names that a screen reader says, the same as those of the panels.
void nameScrollBars(const QAbstractScrollArea &area);

} // namespace station
