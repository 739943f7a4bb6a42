#pragma once

#include <QtGlobal>

#include <optional>

class QKeyEvent;
class QWidget;

namespace platform {

class View;

/// What a key is to an entry, whose it is, and where it goes when the view that has the focus takes no text.
///
/// A scanner types: its characters follow one another within a few milliseconds, and Return, or Tab and
/// Return, follows the last of them. No person does that.
/// Thread: the main thread. Plain functions, except for the moment of the last character.
namespace keys {

/// Return, Enter, Tab or a blank that comes within so many milliseconds after a character is a scanner's.
inline constexpr qint64 ScannerGapMilliseconds = 50;

/// Separates the fields of a scanned code (GS1); the one control character that is text.
inline constexpr char16_t GroupSeparator = 0x1d;

[[nodiscard]] bool isReturn(const QKeyEvent &event);
/// Writes a control character and means something else by it: Return, Enter, Tab, Backspace, Delete.
[[nodiscard]] bool worksAsKey(const QKeyEvent &event);
/// Tab forwards, without Control or Alt.
[[nodiscard]] bool isTab(const QKeyEvent &event);
/// Writes a character: one that can be printed, typed without Control (together with Alt it is how many
/// layouts reach their third level), or GS, which a scanner may send as Control and "]".
[[nodiscard]] bool isCharacter(const QKeyEvent &event);

/// Sees from now on all characters that the program's windows get, whichever view or window receives them.
/// Called by every view that asks isScanners(), as often as it likes. Requires: there is an application.
void watch();
/// Whether a scanner sent the key: it comes within ScannerGapMilliseconds after a character that the
/// receiver's window got. A blank counts as a character when it does so itself; one alone is how a person
/// works a control.
[[nodiscard]] bool isScanners(const QWidget &receiver, const QKeyEvent &event);
/// The control character other than GS that the key brings into an entry, and that no entry takes: its own,
/// or one that came just before a character. Return, Enter, Tab, Backspace and Delete work as keys. Escape
/// and what is typed with Control are commands of a person, unless they come within ScannerGapMilliseconds
/// after, or before, a character of the same entry.
[[nodiscard]] std::optional<char16_t> scannedControl(const QWidget &receiver, const QKeyEvent &event);
/// Part of an entry: a character, or a control character that no person types.
[[nodiscard]] bool isText(const QKeyEvent &event);

/// Gives the focus and the key to the first editable field along the view's next-responder chain that can
/// take the focus; what the field held is selected, so that the key replaces it. False when there is none:
/// the event is then ignored, so that it goes on to whoever holds the view, up to the window.
bool handOn(const View &view, QKeyEvent &event);

} // namespace keys

} // namespace platform
