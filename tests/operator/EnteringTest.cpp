#include "tests/operator/OperatorFixture.h"

#include <QApplication>
#include <QKeyEvent>

#include <deque>
#include <memory>

using platform::Rect;
using platform::TextField;

namespace {

class Entering : public testsupport::OperatorFixture
{
protected:
    Entering()
        : first(field(split, {10, 300, 200, 25}, "first"))
        , second(field(split, {10, 260, 200, 25}, "second"))
    {}

    TextField *first;
    TextField *second;
};

/// Holds keys and clicks back, as a plug-in does while it carries out a press, until they have been asked for
/// a few times; then gives the focus to another field.
class HoldsBack : public QObject
{
public:
    explicit HoldsBack(TextField *takesFocus)
        : m_takesFocus(takesFocus)
    {
        QApplication::instance()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
        if (!isKey || !watched->isWidgetType() || m_left == 0)
            return false;
        if (--m_left == 0)
            m_takesFocus->becomeFirstResponder();
        return true;
    }

private:
    TextField *m_takesFocus;
    int m_left = 4;
};

} // namespace

TEST_F(Entering, PastesATextInOnePieceAndLeavesTheEntryBegun)
{
    QList<platform::RefusedEntry> refused;
    first->setRefusalHandler(
        [&refused](TextField *, const platform::RefusedEntry &entry) { refused.append(entry); });
    first->setStringValue("old");
    runs("operator.paste('first', 'new')");
    EXPECT_EQ(first->stringValue(), "new");
    EXPECT_TRUE(first->hasBegunEntry());
    EXPECT_EQ(entered, QStringList());
    runs("operator.paste('first', 'a\\nb\\1c') operator.enter('first')");
    ASSERT_EQ(refused.size(), 1);
    EXPECT_EQ(refused.at(0).text, QString("a") + QChar(0x240a) + "b" + QChar(0x2401) + "c");
    EXPECT_EQ(entered, QStringList());
}

TEST_F(Entering, LogsNobodyInWhereNoBadgeIsAskedFor)
{
    EXPECT_EQ(fails("operator.logIn(1)"),
              "operator.lua:1: there is no badge 1: the station was started with 0 (--badge TEXT)");
}

TEST_F(Entering, PutsATextIntoAFieldThatHasNotTheFocusAndEndsTheEntry)
{
    second->becomeFirstResponder();
    runs("operator.enter('first', 'one')");
    EXPECT_EQ(entered, QStringList("one"));
    EXPECT_EQ(first->stringValue(), "one");
}

TEST_F(Entering, ReplacesWhatTheFieldHolds)
{
    first->setStringValue("old");
    runs("operator.fill('first', 'half') operator.enter('first', 'new')");
    EXPECT_EQ(entered, QStringList("new"));
}

TEST_F(Entering, WithoutATextConfirmsWhatIsThere)
{
    first->setStringValue("A4");
    runs("operator.enter('first')");
    EXPECT_EQ(entered, QStringList("A4"));
}

TEST_F(Entering, OfNothingEmptiesTheField)
{
    first->setStringValue("A4");
    runs("operator.enter('first', '')");
    EXPECT_EQ(entered, QStringList(""));
}

TEST_F(Entering, BeginsAnewWhereAnEntryIsBeingRefused)
{
    runs("operator.fill('first', ('x'):rep(5000))");
    ASSERT_TRUE(first->hasBegunEntry());
    runs("operator.enter('first', 'good')");
    EXPECT_EQ(entered, QStringList("good"));
}

TEST_F(Entering, FillLeavesTheEntryBegun)
{
    runs("operator.fill('first', 'half')");
    EXPECT_EQ(first->stringValue(), "half");
    EXPECT_TRUE(first->hasBegunEntry());
    EXPECT_TRUE(entered.isEmpty());
}

TEST_F(Entering, WaitsWhileKeysAreHeldBackAndFindsItsFieldAgain)
{
    first->becomeFirstResponder();
    const HoldsBack holds(second);
    runs("operator.enter('first', 'one')");
    EXPECT_EQ(entered, QStringList("one"));
    EXPECT_EQ(first->stringValue(), "one");
    EXPECT_EQ(second->stringValue(), "");
}

TEST_F(Entering, IntoWhatIsNoFieldFails)
{
    groupPanel("G1");
    EXPECT_EQ(fails("operator.enter({panel='G1', title='OK'}, 'x')"),
              "operator.lua:1: the button \"OK\" of panel \"G1\" takes no entry");
    second->setEnabled(false);
    EXPECT_EQ(fails("operator.fill('second', 'x')"),
              "operator.lua:1: cannot click the view \"second\": it is disabled");
}

TEST_F(Entering, IsFollowedByAWaitForWhatAViewSays)
{
    first->setTarget(&context, "enter:", [this](platform::View *) { second->setStringValue("refused"); });
    runs("operator.enter('first', 'x') operator.waitForText('second', 'refused', 60)");
    EXPECT_EQ(fails("operator.waitForText('second', 'good', 0)"),
              "operator.lua:1: view \"second\" has not the text \"good\" within 0 s; it has \"refused\"");
    EXPECT_EQ(fails("operator.waitForText('third', 'good', 0)"),
              "operator.lua:1: view \"third\" has not the text \"good\" within 0 s; there is no such view "
              "with a text");
}
