#pragma once

#include "station/operator/KeyStrokes.h"

#include <optional>

class QPoint;
class QWidget;

namespace platform {
class TextField;
class View;
} // namespace platform

namespace station {

/// The operator's hands on keyboard and mouse: events that enter through the window's native window, so that
/// the toolkit itself finds the widget that has the focus or lies under the mouse.
///
/// Thread: the main thread. Errors: throws OperatorFailure. Requires: the window outlives the hands.
class OperatorHands
{
public:
    explicit OperatorHands(QWidget *window);

    /// Whether the window is the active one; asks for it when it is not.
    [[nodiscard]] bool takeWindow();
    /// Presses and releases the keys that enter the text, one straight after the other.
    void type(const QString &text) { press(keyStrokes(text)); }
    /// Presses and releases the keys, one straight after the other.
    void press(const QList<KeyStroke> &strokes);
    /// Scrolls the view into sight when need be, and presses and releases the mouse's left button on its
    /// centre. Errors: the view is hidden, disabled, outside the window or covered (by what, the text says).
    void click(platform::View *view);
    /// What is written into a field in the place of what it holds; without a text nothing is.
    struct Entry
    {
        std::optional<QString> text;
        bool ends = true;          ///< With Return.
        bool isInOnePiece = false; ///< As from the clipboard.
    };
    /// Gives the focus to an editable field by a click and writes. False, with nothing written, when keys do
    /// not arrive at once or the focus is not taken: it can be tried again. Errors: as click().
    [[nodiscard]] bool enter(platform::TextField *field, const Entry &entry);

private:
    [[nodiscard]] bool keysArrive() const;
    void requireOperable(const platform::View *view) const;
    void writeInOnePiece(platform::TextField *field, const QString &text);
    void pressAndRelease(const QPoint &position);

    QWidget *m_window;
};

} // namespace station
