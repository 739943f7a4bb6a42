#pragma once

#include "platform/ChoiceList.h"
#include "tests/support/PluginFixture.h"
#include "tests/support/Wait.h"

#include <QTest>
#include <QWindow>

namespace testsupport {

/// The hands of an operator at fields that offer something: keys without a character, the arrow, the rows.
///
/// Thread: the main thread.
class FieldKeysFixture : public PluginFixture
{
protected:
    void key(Qt::Key which, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(window().windowHandle(), which, modifiers);
    }
    /// Presses the arrow inside a field's frame.
    void clickArrow(const QString &identifier)
    {
        const QWidget *view = field(identifier);
        ASSERT_NE(view, nullptr);
        const QPoint arrow(view->width() - 8, view->height() / 2);
        QTest::mouseClick(window().windowHandle(), Qt::LeftButton, {}, view->mapTo(&window(), arrow));
    }
    /// The list that is open; null when none is.
    platform::ChoiceList *openList()
    {
        for (platform::ChoiceList *list : window().findChildren<platform::ChoiceList *>()) {
            if (list->isVisible())
                return list;
        }
        return nullptr;
    }
    QStringList rows()
    {
        const platform::ChoiceList *list = openList();
        return list ? static_cast<QStringListModel *>(list->model())->stringList() : QStringList();
    }
    void clickRow(int row)
    {
        const platform::ChoiceList *list = openList();
        ASSERT_NE(list, nullptr);
        const QPoint middle = list->visualRect(list->model()->index(row, 0)).center();
        QTest::mouseClick(window().windowHandle(), Qt::LeftButton, {},
                          list->viewport()->mapTo(&window(), middle));
    }
    QString text(const QString &identifier) { return field(identifier)->stringValue(); }
    QString told(const QString &panelKey) { return field(panelKey + "-StatusLine")->stringValue(); }
    void pressSwitch(const QString &identifier)
    {
        for (platform::View *view : descendants(rooms().views.rootView())) {
            if (view->identifier().text() == identifier && view->isVisible())
                return click(view);
        }
        FAIL() << "no switch " << identifier.toStdString();
    }
};

} // namespace testsupport
