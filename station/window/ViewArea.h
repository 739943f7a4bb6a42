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

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

private:
    bool m_isHolding = false;
};

} // namespace station
