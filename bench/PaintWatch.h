#pragma once

#include <QObject>

class QWidget;

namespace bench {

/// Sees in all windows of the program whether what was drawn has been painted.
///
/// Thread: the main thread. Requires: a QApplication, which it watches for as long as it lives.
class PaintWatch : public QObject
{
public:
    PaintWatch();

    /// Forgets what it has seen.
    void begin();
    /// Whether so many fields to write in and so many switches have come into sight since the beginning, the
    /// last of them was painted afterwards, and a field has the focus where there is one.
    [[nodiscard]] bool hasPainted(int fields, int switches = 0) const;
    /// Serves events until the widget, which is in sight, has been painted, once more where it is already.
    void awaitPaint(QWidget *widget);
    /// Whether anything was painted since the beginning.
    [[nodiscard]] bool hasPaintedAny() const { return m_painted; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int m_fields = 0;
    int m_switches = 0;
    bool m_painted = false;
};

} // namespace bench
