#include "tests/support/PanelFixture.h"

#include <QCoreApplication>
#include <QEvent>

using interactive::MouseTrackedTextField;
using platform::Array;
using platform::Box;
using platform::Button;
using platform::Dictionary;
using platform::TextField;
using platform::Value;
using platform::View;

namespace testsupport {
namespace {

Array inputsOf(const Dictionary &config)
{
    const Array inputs = config.value("input").toList();
    return inputs.isEmpty() ? config.value("switch").toList() : inputs;
}

template <class Kind>
QList<Kind *> childrenOf(View *parent)
{
    QList<Kind *> found;
    if (!parent)
        return found;
    for (View *view : parent->subviews()) {
        if (auto *match = qobject_cast<Kind *>(view))
            found.append(match);
    }
    return found;
}

} // namespace

void PanelFixture::drawGroup(qint64 group, const Dictionary &config)
{
    rooms().builder.drawUI({config, inputsOf(config), config.value("switch").toList(), config.value("button"),
                            subject(group, Value())});
}

void PanelFixture::drawSlot(qint64 system, const Dictionary &config)
{
    rooms().builder.drawUI({config, inputsOf(config), config.value("switch").toList(), config.value("button"),
                            subject(Value(), system)});
}

View *PanelFixture::child(View *parent, const QString &identifier)
{
    for (View *view : childrenOf<View>(parent)) {
        if (identifierOf(view) == identifier)
            return view;
    }
    return nullptr;
}

View *PanelFixture::pane(const QString &identifier)
{
    return child(splitView(), identifier);
}

QStringList PanelFixture::panes()
{
    QStringList found;
    for (View *view : splitView()->subviews())
        found.append(identifierOf(view));
    return found;
}

interactive::CollectionViewItem *PanelFixture::tile(const QString &group, int i)
{
    platform::CollectionView *overview = overviewOf(group);
    return overview ? qobject_cast<interactive::CollectionViewItem *>(overview->itemAtIndex(i)) : nullptr;
}

Box *PanelFixture::box(const QString &group, int i)
{
    interactive::CollectionViewItem *item = tile(group, i);
    return item ? item->box() : nullptr;
}

View *PanelFixture::content(const QString &group, int i)
{
    Box *found = box(group, i);
    return found ? found->contentView() : nullptr;
}

interactive::ScrollView *PanelFixture::overviewScroll(const QString &group)
{
    platform::CollectionView *overview = overviewOf(group);
    View *clip = overview ? overview->superview() : nullptr;
    return clip ? qobject_cast<interactive::ScrollView *>(clip->superview()) : nullptr;
}

QList<TextField *> PanelFixture::labels(View *parent)
{
    QList<TextField *> found = childrenOf<TextField>(parent);
    found.removeIf([](TextField *field) { return qobject_cast<MouseTrackedTextField *>(field) != nullptr; });
    return found;
}

QList<MouseTrackedTextField *> PanelFixture::inputs(View *parent)
{
    return childrenOf<MouseTrackedTextField>(parent);
}

QList<Button *> PanelFixture::buttons(View *parent)
{
    return childrenOf<Button>(parent);
}

QStringList PanelFixture::identifiers(const QList<Button *> &views)
{
    QStringList found;
    for (const Button *view : views)
        found.append(identifierOf(view));
    return found;
}

QStringList PanelFixture::titles(const QList<Button *> &views)
{
    QStringList found;
    for (const Button *view : views)
        found.append(view->title());
    return found;
}

TextField *PanelFixture::label(View *parent, const QString &text)
{
    for (TextField *candidate : labels(parent)) {
        if (candidate->stringValue() == text)
            return candidate;
    }
    return nullptr;
}

void PanelFixture::letRemovedViewsGo()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace testsupport
