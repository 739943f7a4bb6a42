#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "station/look/PlainToolTip.h"
#include "station/window/StationWindow.h"
#include "station/window/StatusTable.h"
#include "station/window/WindowMenus.h"

#include <QAction>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>

#include <gtest/gtest.h>

using station::StationWindow;
using station::StatusModel;
using station::SystemState;

namespace {

/// Read as markup, it would be shown as "x".
const QString Markup = QStringLiteral("<b>x</b>");

bool isReadAsMarkup(const QLabel &label)
{
    return label.textFormat() == Qt::RichText || label.textFormat() == Qt::MarkdownText ||
           (label.textFormat() == Qt::AutoText && Qt::mightBeRichText(label.text()));
}

/// Whether a tooltip holds the markup, and in a way in which it would be read as such.
bool readsMarkup(const QString &toolTip)
{
    return Qt::mightBeRichText(toolTip) && toolTip.contains(Markup);
}

void expectNoneRead(const QWidget &window, const char *what)
{
    for (const QLabel *label : window.findChildren<QLabel *>())
        EXPECT_FALSE(label->text().contains(Markup) && isReadAsMarkup(*label))
            << what << ": " << label->text().toStdString();
    for (const QWidget *widget : window.findChildren<QWidget *>())
        EXPECT_FALSE(readsMarkup(widget->toolTip())) << what << ": " << widget->toolTip().toStdString();
}

class ForeignText : public ::testing::Test
{
protected:
    StationWindow window{Markup, {{0, Markup, Markup}, {1, "G1", Markup}}};
};

TEST_F(ForeignText, IsNoMarkupWhereverTheWindowShowsIt)
{
    window.show();
    const QString longText = Markup + QString(400, 'y') + ' ' + Markup;
    window.setStatus(longText);
    window.setSystemState(0, SystemState::Erred, longText);
    window.setSystemSequence(0, longText);
    KVKExtensionStatusRelay::sharedStatusRelay()->showMessage(longText);
    expectNoneRead(window, "the window");
    const QAbstractItemModel *model = window.statusTable()->model();
    int withToolTip = 0;
    for (int column = 0; column < model->columnCount(); ++column) {
        const QString toolTip = model->index(0, column).data(Qt::ToolTipRole).toString();
        EXPECT_FALSE(readsMarkup(toolTip)) << toolTip.toStdString();
        withToolTip += toolTip.isEmpty() ? 0 : 1;
    }
    EXPECT_GT(withToolTip, 0);
}

TEST_F(ForeignText, IsNoMarkupInTheBoxAboutTheStation)
{
    window.show();
    QAction *about = nullptr;
    for (QAction *action : window.menuBar()->findChildren<QAction *>() + window.findChildren<QAction *>())
        about = action->text().contains("About") ? action : about;
    ASSERT_TRUE(about);
    about->trigger();
    const auto *box = window.findChild<QMessageBox *>();
    ASSERT_TRUE(box);
    EXPECT_TRUE(box->text().contains(Markup));
    expectNoneRead(*box, "the box");
    EXPECT_EQ(box->textFormat(), Qt::PlainText);
}

TEST(PlainToolTip, ShowsEveryTextAsItIs)
{
    EXPECT_EQ(station::plainToolTip("a & b < c"), "a & b < c");
    EXPECT_FALSE(station::plainToolTip(Markup).contains(Markup));
    EXPECT_TRUE(station::plainToolTip(Markup).contains("&lt;b&gt;x&lt;/b&gt;"));
    EXPECT_TRUE(station::plainToolTip("<b>&lt;").contains("&lt;b&gt;&amp;lt;"));
    EXPECT_TRUE(station::plainToolTip("%1<b>\n%2").contains("%1&lt;b&gt;\n%2"));
}

} // namespace
