#pragma once

#include "platform/Color.h"
#include "platform/Geometry.h"
#include "platform/Identifier.h"

#include <QAccessible>
#include <QPointer>
#include <QWidget>

#include <optional>

namespace platform {

/// What grows or shrinks when the superview's size changes: the margins and extents whose bits are set share
/// the difference equally; with none set for an axis the view keeps its distance to the left or lower edge.
enum AutoresizingMask : unsigned {
    NotSizable = 0,
    MinXMargin = 1,
    WidthSizable = 2,
    MaxXMargin = 4,
    MinYMargin = 8,
    HeightSizable = 16,
    MaxYMargin = 32,
};

/// A soft border of light around a view, painted by its superview.
struct Shadow
{
    Color color;
    double radius = 3.0;
    Size offset;

    /// How far the light reaches beyond the view.
    [[nodiscard]] double reach() const { return 2.0 * radius; }

    friend bool operator==(const Shadow &, const Shadow &) = default;
};

/// A rectangle of the window that places its subviews by their frames.
///
/// Shapes and units: frames are doubles in points with a bottom-left origin, kept exactly beside the widget
/// and rounded only when handed to Qt. A view made by Qt Designer's compiler takes its frame from the `frame`
/// property, not from a geometry.
/// Thread: the main thread, except where stated.
/// Ownership: a superview owns its subviews. removeFromSuperview() takes a view out of the tree at once and
/// deletes it when control returns to the event loop; whoever remembers a view holds a QPointer, and a view
/// without a superview counts as gone.
/// Focus: hiding, disabling or removing the view that has the focus, or a view around it, gives the focus to
/// the window, so that no view has it; it never moves on to another field by itself, also not when the window
/// becomes active again. Who has the focus is a matter of each window, whether it is the active one or not.
class View : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QRectF frame READ frame WRITE setFrame)
    Q_PROPERTY(unsigned autoresizingMask READ autoresizingMask WRITE setAutoresizingMask)
public:
    explicit View(QWidget *parent = nullptr);
    explicit View(const Rect &frame);
    ~View() override;

    // The tree
    /// The view that holds this one; null for a root, also when a plain widget holds it.
    [[nodiscard]] View *superview() const;
    /// The direct subviews, lowest first.
    [[nodiscard]] QList<View *> subviews() const;
    /// Takes ownership and puts the view on top, shown unless it was hidden.
    void addSubview(View *view);
    /// Nothing for a view that nobody holds.
    void removeFromSuperview();
    /// This view or the first view below it, depth first, with the tag; null when there is none.
    [[nodiscard]] View *viewWithTag(int tag);

    // Geometry
    /// A root keeps the size it was given until Qt resizes its widget to another one.
    [[nodiscard]] Rect frame() const { return m_frame; }
    void setFrame(const Rect &frame);
    void setFrameOrigin(const Point &origin);
    /// The view's own rectangle: origin (0, 0) and the frame's size.
    [[nodiscard]] Rect bounds() const { return {Point(0.0, 0.0), m_frame.size()}; }
    [[nodiscard]] unsigned autoresizingMask() const { return m_autoresizingMask; }
    void setAutoresizingMask(unsigned mask) { m_autoresizingMask = mask; }
    /// Whether the subviews follow this view's size by their masks; they do unless somebody else places them.
    [[nodiscard]] bool autoresizesSubviews() const { return m_autoresizesSubviews; }
    void setAutoresizesSubviews(bool autoresizes) { m_autoresizesSubviews = autoresizes; }

    // Identity
    /// Thread: may be read from any thread once the view is set up and as long as nobody sets it.
    [[nodiscard]] Identifier identifier() const { return m_identifier; }
    void setIdentifier(const Identifier &identifier) { m_identifier = identifier; }
    [[nodiscard]] int tag() const { return m_tag; }
    void setTag(int tag) { m_tag = tag; }

    // Visibility and look
    /// Hides the view, also one that was not shown yet, or shows it. isHidden() tells whether it was hidden
    /// itself; a view inside a hidden one is not visible either.
    void setHidden(bool hidden) { setVisible(!hidden); }
    void setVisible(bool visible) override;
    void setEnabled(bool enabled);
    /// A view that is passed through lets clicks reach what lies below it; it must have no subviews.
    void setPassesClicksThrough(bool passes);
    /// The colour painted behind the view's content; nothing is painted when absent.
    [[nodiscard]] std::optional<Color> layerBackgroundColor() const { return m_layerBackgroundColor; }
    void setLayerBackgroundColor(const std::optional<Color> &color);
    [[nodiscard]] double cornerRadius() const { return m_cornerRadius; }
    void setCornerRadius(double radius);
    /// A layer that clips to its bounds shows no shadow outside them.
    [[nodiscard]] bool masksToBounds() const { return m_masksToBounds; }
    void setMasksToBounds(bool masks) { m_masksToBounds = masks; }
    [[nodiscard]] std::optional<Shadow> shadow() const { return m_shadow; }
    void setShadow(const std::optional<Shadow> &shadow);

    /// The opaque colour that is seen behind what stands in this view: its own filling and those of the views
    /// around it, on the palette's window.
    [[nodiscard]] QColor ground() const;

    /// What assistive technology takes the view for; NoRole: a group where it has a name, otherwise what only
    /// arranges others.
    [[nodiscard]] QAccessible::Role spokenRole() const { return m_spokenRole; }
    void setSpokenRole(QAccessible::Role role) { m_spokenRole = role; }

    // Focus
    /// Asks for the focus; true when the view has it afterwards. A plain view refuses, and so does one that
    /// is disabled, hidden or in no window; the focus then stays where it is.
    virtual bool becomeFirstResponder();
    /// Whether the view has its window's focus.
    [[nodiscard]] virtual bool isFirstResponder() const;
    /// Who gets the events that this view does not use: the one set, otherwise the superview.
    [[nodiscard]] View *nextResponder() const;
    void setNextResponder(View *next) { m_nextResponder = next; }
    /// The responder set explicitly, or null.
    [[nodiscard]] View *explicitNextResponder() const { return m_nextResponder; }
    /// Sets the view that Tab goes to from this one. Requires: both are in the same window or tree.
    virtual void setNextKeyView(View *next);
    [[nodiscard]] View *nextKeyView() const { return m_nextKeyView; }
    /// The widget that has the focus when this view is first responder.
    [[nodiscard]] virtual QWidget *focusTarget();

signals:
    /// Sent after the frame has changed, and the subviews' with it; not for a frame that stays the same.
    void frameChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    /// Called after the view's size has changed and its subviews were resized.
    virtual void layout() {}
    /// Called after the view, or one around it, was hidden or disabled, or before it is taken out of the
    /// tree.
    virtual void wasTakenAway() {}
    /// What the view fills itself with, over the ground around it; an invalid colour where with nothing.
    [[nodiscard]] virtual QColor filling() const;
    /// Called when the ground behind the view may have another colour.
    virtual void groundChanged() {}
    /// Calls that for this view and all in it.
    void tellGroundChanged();
    void changeEvent(QEvent *event) override;
    /// What the view's shadow surrounds, in the widget's coordinates (origin at the upper left).
    [[nodiscard]] virtual QRectF shadowOutline() const;
    /// Gives the window's focus to a widget of this view, under the conditions of becomeFirstResponder().
    bool takeFocus(QWidget *target);
    /// Leaves nobody with the focus when this view or a view in it has it.
    void giveUpFocus();

private:
    [[nodiscard]] bool isInWindow() const;
    [[nodiscard]] QSize widgetSize() const;
    void placeWidget();
    void sizeChanged(const Size &oldSize);
    void resizeWithSuperview(const Size &oldSuperSize, const Size &newSuperSize);
    void updateShadowArea();
    void tellTakenAway();
    static void paintShadow(QPainter &painter, const View &view);

    Rect m_frame;
    unsigned m_autoresizingMask = NotSizable;
    bool m_autoresizesSubviews = true;
    Identifier m_identifier;
    int m_tag = 0;
    bool m_masksToBounds = false;
    bool m_placing = false;
    double m_cornerRadius = 0.0;
    QAccessible::Role m_spokenRole = QAccessible::NoRole;
    std::optional<Color> m_layerBackgroundColor;
    std::optional<Shadow> m_shadow;
    QPointer<View> m_nextResponder;
    QPointer<View> m_nextKeyView;
};

} // namespace platform
