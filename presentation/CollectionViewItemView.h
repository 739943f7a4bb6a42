#pragma once

#include "platform/Box.h"
#include "platform/View.h"

namespace interactive {

/// The view of one tile of a group's overview. It can draw a frame of 20 points in the colour of label text
/// just inside its edges.
///
/// Thread: the main thread.
class CollectionViewItemView : public platform::View
{
    Q_OBJECT
public:
    static constexpr double HighlightWidth = 20.0;

    using platform::View::View;

    /// The tile's box; null when it is gone. Owned by the view tree.
    [[nodiscard]] platform::Box *box() const { return m_box; }
    void setBox(platform::Box *box) { m_box = box; }
    [[nodiscard]] bool isHighlighted() const { return m_highlighted; }
    /// Asks for no redraw: whoever sets it calls update().
    void setHighlighted(bool highlighted) { m_highlighted = highlighted; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPointer<platform::Box> m_box;
    bool m_highlighted = false;
};

} // namespace interactive
