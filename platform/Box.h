#pragma once

#include "platform/View.h"

namespace platform {

/// A filled rectangle with a content view that covers it; what belongs into the box goes into the content
/// view. The fill stays inside the bounds, far enough to leave room for the box's own shadow.
///
/// Thread: the main thread. Ownership: the box owns its content view, which is there from the start.
class Box : public View
{
    Q_OBJECT
public:
    explicit Box(QWidget *parent = nullptr);
    explicit Box(const Rect &frame);

    [[nodiscard]] View *contentView() const { return m_contentView; }
    [[nodiscard]] Color fillColor() const { return m_fillColor; }
    void setFillColor(const Color &color);

protected:
    void paintEvent(QPaintEvent *event) override;
    void layout() override;
    [[nodiscard]] QRectF shadowOutline() const override;
    [[nodiscard]] QColor filling() const override;

private:
    View *m_contentView = nullptr;
    Color m_fillColor = Color::clear();
};

} // namespace platform
