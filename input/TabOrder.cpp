#include "input/TabOrder.h"

#include "platform/Box.h"
#include "platform/Button.h"

#include <algorithm>
#include <numeric>

namespace interactive::taborder {

using platform::View;

namespace {

enum class Kind { Field, Switch, Button };

/// The controls of a panel, or one that stands on none.
struct Stop
{
    const View *view = nullptr;
    bool isAbovePanels = false;
    QList<View *> controls;
};

bool isReached(const QWidget &widget)
{
    return (widget.focusPolicy() & Qt::TabFocus) != 0;
}

bool takesTab(View &view)
{
    const bool isControl =
        qobject_cast<const platform::TextField *>(&view) || qobject_cast<const platform::Button *>(&view);
    return isControl && isReached(*view.focusTarget());
}

Kind kindOf(const View &control)
{
    const auto *button = qobject_cast<const platform::Button *>(&control);
    if (!button)
        return Kind::Field;
    return button->buttonType() == platform::Button::Type::Switch ? Kind::Switch : Kind::Button;
}

/// Where a view stands in another widget. By the widgets, since what was scrolled stands elsewhere in the
/// same order.
QRectF placeIn(const QWidget &around, const View &view)
{
    return QRectF(view.mapTo(&around, QPoint(0, 0)), QSizeF(view.size()));
}

/// What a person takes for the panel that holds the control: the box of a slot that is asked by itself, or
/// all that stands in the band. The control itself where it is on no panel.
const View *panelOf(const View &control, const View &splitView)
{
    const platform::Box *box = nullptr;
    for (const View *each = &control; each; each = each->superview()) {
        if (!box)
            box = qobject_cast<const platform::Box *>(each);
        if (each->superview() == &splitView)
            return box && PanelViews::isTileContainer(each) ? box : each;
    }
    return &control;
}

QList<Stop> stopsIn(const View &root, const View &splitView)
{
    QList<Stop> stops;
    for (View *view : root.findChildren<View *>()) {
        if (!takesTab(*view))
            continue;
        const View *panel = panelOf(*view, splitView);
        auto found = std::find_if(stops.begin(), stops.end(),
                                  [panel](const Stop &stop) { return stop.view == panel; });
        if (found == stops.end())
            found = stops.insert(stops.end(), {panel, panel == view, {}});
        found->controls.append(view);
    }
    return stops;
}

/// In reading order of `rectOf`.
template <class Item, class RectOf>
QList<Item> inOrder(const QList<Item> &items, const RectOf &rectOf)
{
    std::vector<Placed> placed;
    for (const Item &item : items)
        placed.push_back({rectOf(item), placed.size()});
    QList<Item> ordered;
    for (const std::size_t index : read(std::move(placed)))
        ordered.append(items.at(static_cast<qsizetype>(index)));
    return ordered;
}

QList<QWidget *> targets(const View &root, const View &splitView)
{
    const auto place = [&root](const View *view) { return placeIn(root, *view); };
    QList<Stop> stops = inOrder(stopsIn(root, splitView), [&](const Stop &stop) { return place(stop.view); });
    // Panels that were scrolled up stand, by their place, beside what is above them all.
    std::stable_partition(stops.begin(), stops.end(), [](const Stop &stop) { return stop.isAbovePanels; });
    QList<QWidget *> ordered;
    for (const Stop &stop : std::as_const(stops)) {
        QList<View *> controls = inOrder(stop.controls, place);
        std::stable_sort(controls.begin(), controls.end(),
                         [](const View *a, const View *b) { return kindOf(*a) < kindOf(*b); });
        for (View *control : std::as_const(controls))
            ordered.append(control->focusTarget());
    }
    return ordered;
}

/// The control of the host that Tab leaves for ours; null where all controls of the window are ours.
QWidget *controlBefore(QWidget &root)
{
    for (QWidget *each = root.previousInFocusChain(); each && each != &root;
         each = each->previousInFocusChain()) {
        if (!root.isAncestorOf(each) && isReached(*each))
            return each;
    }
    return nullptr;
}

} // namespace

std::vector<std::size_t> read(std::vector<Placed> placed)
{
    std::stable_sort(placed.begin(), placed.end(),
                     [](const Placed &a, const Placed &b) { return a.rect.top() < b.rect.top(); });
    std::vector<std::size_t> order;
    for (auto line = placed.begin(); line != placed.end();) {
        const QRectF first = line->rect;
        const auto end = std::find_if(line, placed.end(), [&first](const Placed &each) {
            const double shared = std::min(first.bottom(), each.rect.bottom()) - each.rect.top();
            return shared < std::min(first.height(), each.rect.height()) / 2.0;
        });
        // A line holds at least the one that it begins with, which may have no height.
        const auto next = end == line ? std::next(line) : end;
        std::stable_sort(line, next,
                         [](const Placed &a, const Placed &b) { return a.rect.left() < b.rect.left(); });
        for (; line != next; ++line)
            order.push_back(line->index);
    }
    return order;
}

void renew(const PanelViews &views)
{
    View *root = views.rootView();
    if (!root || !views.splitView())
        return;
    QWidget *before = controlBefore(*root);
    for (QWidget *target : targets(*root, *views.splitView())) {
        if (before)
            QWidget::setTabOrder(before, target);
        before = target;
    }
}

} // namespace interactive::taborder
