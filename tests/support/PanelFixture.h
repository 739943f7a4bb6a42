#pragma once

#include "platform/Box.h"
#include "platform/CollectionView.h"
#include "platform/ScrollView.h"
#include "platform/SplitView.h"
#include "presentation/CollectionViewItem.h"
#include "presentation/ScrollView.h"
#include "tests/support/Looks.h"
#include "tests/support/PluginFixture.h"

#include <QStringList>

namespace testsupport {

/// A station whose panels are drawn without a waiting sequence, and looked into.
///
/// Thread: the main thread.
class PanelFixture : public PluginFixture
{
protected:
    /// Draws a panel as a show call with this configuration would: switches serve as inputs where there are
    /// none.
    void drawGroup(qint64 group, const platform::Dictionary &config);
    void drawSlot(qint64 system, const platform::Dictionary &config);

    // What was drawn. All are null when there is no such view.
    /// The direct subview with the identifier.
    static platform::View *child(platform::View *parent, const QString &identifier);
    /// The child of the split view with the identifier.
    platform::View *pane(const QString &identifier);
    /// The identifiers of the split view's children, lowest first.
    QStringList panes();
    interactive::CollectionViewItem *tile(const QString &group, int i);
    platform::Box *box(const QString &group, int i);
    platform::View *content(const QString &group, int i);
    /// The scroll view that holds the group's overview.
    interactive::ScrollView *overviewScroll(const QString &group);

    /// The direct subviews of a kind, lowest first. Labels are the text fields that are no input fields.
    static QList<platform::TextField *> labels(platform::View *parent);
    static QList<interactive::MouseTrackedTextField *> inputs(platform::View *parent);
    static QList<platform::Button *> buttons(platform::View *parent);
    static QStringList identifiers(const QList<platform::Button *> &views);
    static QStringList titles(const QList<platform::Button *> &views);
    /// The label with the text; null when there is none.
    static platform::TextField *label(platform::View *parent, const QString &text);

    /// Lets views that were removed go.
    static void letRemovedViewsGo();
};

/// The selector of drawUI's drawing job as log lines name it.
inline const QString drawJob = QStringLiteral(
    "__73-[InteractiveView drawUI:inputs:switches:buttons:groupIndex:systemIndex:]_block_invoke");

} // namespace testsupport
