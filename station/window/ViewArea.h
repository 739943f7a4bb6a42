#pragma once

#include <QScrollArea>

namespace station {

/// The room of the plug-ins' views, which can be made smaller without making the views smaller: they are
/// scrolled then. A field that takes the focus is scrolled into sight.
///
/// Thread: the main thread. Ownership: takes the views.
class ViewArea : public QScrollArea
{
    Q_OBJECT
public:
    explicit ViewArea(QWidget *views);

    /// The views are at least this large from now on, however small the area is; an empty size leaves them as
    /// large as the area.
    void hold(const QSize &size);
    /// Leaves the views as they are whatever happens to the area, until the event loop has done what the area
    /// is about to be asked for: its bars come and go by way of it.
    void freeze();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

private:
    void thaw();

    QSize m_held;
    bool m_isFrozen = false;
};

} // namespace station
