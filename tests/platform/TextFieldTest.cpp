#include "tests/platform/ViewFixture.h"

#include <QLineEdit>
#include <QSignalSpy>

namespace {

using namespace platform;

class TextFieldTest : public testsupport::ViewFixture
{
protected:
    /// Notes what the field holds whenever it sends its action.
    void noteEntries(TextField *entered)
    {
        entered->setTarget(&target, "enter:", [this, entered](View *) { entries += entered->stringValue(); });
    }

    TextField *field = addField({10, 10, 100, 25});
    QStringList entries;
};

TEST_F(TextFieldTest, KeysGoIntoTheFieldThatHasTheFocus)
{
    field->becomeFirstResponder();
    type("SN 12");
    EXPECT_EQ(field->stringValue(), "SN 12");
}

TEST_F(TextFieldTest, ReturnSendsTheActionOnce)
{
    noteEntries(field);
    field->becomeFirstResponder();
    type("SN1\n");
    EXPECT_EQ(entries, QStringList{"SN1"});
}

TEST_F(TextFieldTest, TheKeypadsEnterSendsTheActionToo)
{
    noteEntries(field);
    field->becomeFirstResponder();
    type("SN1");
    press(Qt::Key_Enter);
    EXPECT_EQ(entries, QStringList{"SN1"});
}

TEST_F(TextFieldTest, ReturnSelectsTheTextSoThatTheNextEntryReplacesIt)
{
    noteEntries(field);
    field->becomeFirstResponder();
    type("SN1\nSN2\n");
    EXPECT_EQ(field->selectedText(), "SN2");
    EXPECT_EQ(entries, (QStringList{"SN1", "SN2"}));
}

TEST_F(TextFieldTest, ReturnSelectsWhatTheActionLeft)
{
    field->setTarget(&target, "enter:", [this](View *) { field->setStringValue("changed"); });
    field->becomeFirstResponder();
    type("SN1\n");
    EXPECT_EQ(field->selectedText(), "changed");
}

TEST_F(TextFieldTest, AnActionMayMoveTheFocus)
{
    TextField *next = addField({10, 50, 100, 25});
    field->setTarget(&target, "enter:", [next](View *) { next->becomeFirstResponder(); });
    field->becomeFirstResponder();
    type("SN1\nSN2");
    EXPECT_EQ(field->stringValue(), "SN1");
    EXPECT_EQ(field->selectedText(), "");
    EXPECT_EQ(next->stringValue(), "SN2");
}

TEST_F(TextFieldTest, AnActionMayRemoveItsField)
{
    const QPointer<TextField> gone = field;
    field->setTarget(&target, "enter:", [this](View *) { field->removeFromSuperview(); });
    field->becomeFirstResponder();
    type("SN1\nSN2\n");
    settle();
    EXPECT_FALSE(gone);
}

TEST_F(TextFieldTest, AnActionMayMakeItsFieldReadOnly)
{
    field->setTarget(&target, "enter:", [this](View *) { field->setEditable(false); });
    field->becomeFirstResponder();
    type("SN1\n");
    settle();
    EXPECT_FALSE(field->isEditable());
    EXPECT_EQ(field->stringValue(), "SN1");
    EXPECT_TRUE(field->findChildren<QLineEdit *>().isEmpty());
}

TEST_F(TextFieldTest, NoActionIsSentToATargetThatIsGone)
{
    auto gone = std::make_unique<QObject>();
    field->setTarget(gone.get(), "enter:", [this](View *) { entries += "sent"; });
    EXPECT_EQ(field->actionSelector(), "enter:");
    gone.reset();
    field->becomeFirstResponder();
    type("SN1\n");
    EXPECT_TRUE(entries.isEmpty());
    EXPECT_EQ(field->target(), nullptr);
}

TEST_F(TextFieldTest, ReturnInAFieldDoesNotTravelToTheNextOne)
{
    TextField *next = addField({10, 50, 100, 25}, "kept");
    noteEntries(next);
    field->setNextResponder(next);
    field->becomeFirstResponder();
    type("SN1\n");
    EXPECT_TRUE(field->isFirstResponder());
    EXPECT_TRUE(entries.isEmpty());
}

TEST_F(TextFieldTest, SettingTheTextSendsNoActionAndPutsTheCursorAtItsEnd)
{
    noteEntries(field);
    field->becomeFirstResponder();
    field->setStringValue("SN");
    type("1");
    EXPECT_EQ(field->stringValue(), "SN1");
    EXPECT_TRUE(entries.isEmpty());
}

TEST_F(TextFieldTest, BecomingFirstResponderSelectsTheWholeText)
{
    field->setStringValue("SN1");
    EXPECT_TRUE(field->becomeFirstResponder());
    EXPECT_EQ(field->selectedText(), "SN1");
    type("2");
    EXPECT_EQ(field->stringValue(), "2");
}

TEST_F(TextFieldTest, SelectingTheTextTakesTheFocus)
{
    field->setStringValue("SN1");
    field->selectText();
    EXPECT_TRUE(field->isFirstResponder());
    EXPECT_EQ(field->selectedText(), "SN1");
}

TEST_F(TextFieldTest, SelectingTheTextOfADisabledFieldDoesNothing)
{
    field->setStringValue("SN1");
    field->setEnabled(false);
    field->selectText();
    EXPECT_FALSE(field->isFirstResponder());
    EXPECT_EQ(field->selectedText(), "");
}

TEST_F(TextFieldTest, TheEditorIsThereWhileTheFieldIsBeingEdited)
{
    EXPECT_EQ(field->currentEditor(), nullptr);
    field->becomeFirstResponder();
    ASSERT_NE(field->currentEditor(), nullptr);
    EXPECT_EQ(field->currentEditor()->text(), "");
    addField({10, 50, 100, 25})->becomeFirstResponder();
    EXPECT_EQ(field->currentEditor(), nullptr);
}

TEST_F(TextFieldTest, TheTextStaysWhenTheFieldBecomesReadOnlyAndEditableAgain)
{
    field->setStringValue("SN1");
    field->setEditable(false);
    EXPECT_EQ(field->stringValue(), "SN1");
    field->setStringValue("SN2");
    field->setEditable(true);
    EXPECT_EQ(field->stringValue(), "SN2");
}

TEST_F(TextFieldTest, ADisabledFieldTakesNoKeys)
{
    field->becomeFirstResponder();
    field->setEnabled(false);
    type("SN1");
    field->setEnabled(true);
    type("SN2");
    EXPECT_EQ(field->stringValue(), "");
}

TEST_F(TextFieldTest, TheEditorStandsWhereTheCellWantsIt)
{
    class LowCell : public TextFieldCell
    {
        Rect editingFrame(const Rect &frame) const override { return {0, 0, frame.width(), 10}; }
    };
    field->setCell(std::make_unique<LowCell>());
    field->becomeFirstResponder();
    const QRect editor = field->currentEditor()->geometry();
    EXPECT_EQ(editor.top(), 15);
    EXPECT_EQ(editor.height(), 10);
    field->setFrame({10, 10, 150, 40});
    EXPECT_EQ(field->currentEditor()->geometry().top(), 30);
    EXPECT_EQ(field->currentEditor()->width() - editor.width(), 50);
}

TEST_F(TextFieldTest, TheCellKnowsTheFieldsFont)
{
    field->setFont(Font::boldSystem(14.4));
    EXPECT_EQ(field->cell().font(), Font::boldSystem(14.4));
    field->setCell(std::make_unique<TextFieldCell>());
    EXPECT_EQ(field->cell().font(), Font::boldSystem(14.4));
}

TEST_F(TextFieldTest, APressReachesTheFieldItselfWhenTheEditorDoesNotTakeTheMouse)
{
    class PressedField : public TextField
    {
    public:
        using TextField::TextField;
        int presses = 0;

    protected:
        void mousePressEvent(QMouseEvent *) override { ++presses; }
        bool editorTakesMouse() const override { return false; }
    };
    auto *pressed = add<PressedField>({10, 50, 100, 25});
    pressed->setEditable(true);
    click(pressed);
    EXPECT_EQ(pressed->presses, 1);
    EXPECT_FALSE(pressed->isFirstResponder());
    EXPECT_TRUE(pressed->becomeFirstResponder());
    type("SN1");
    EXPECT_EQ(pressed->stringValue(), "SN1");
}

TEST_F(TextFieldTest, TextThatDoesNotFitIsShownWholeInAToolTip)
{
    auto *label = add<TextField>({10, 50, 60, 20});
    const QString longText = "a text that is longer than its label";
    label->setStringValue("short");
    EXPECT_EQ(label->toolTip(), "");
    label->setStringValue(longText);
    EXPECT_EQ(label->toolTip(), longText);
    label->setFrame({10, 50, 350, 20});
    EXPECT_EQ(label->toolTip(), "");
    label->setFrame({10, 50, 60, 120});
    EXPECT_EQ(label->toolTip(), "") << "there is room for several lines";
    label->setMaximumNumberOfLines(1);
    EXPECT_EQ(label->toolTip(), longText);
}

/// Counts how often a widget is told of another palette.
class PaletteChanges : public QObject
{
public:
    int count = 0;
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::PaletteChange ? 1 : 0;
        return false;
    }
};

TEST_F(TextFieldTest, TheLineEditorIsStyledAnewOnlyWhereSomethingDiffers)
{
    PaletteChanges changes;
    auto *editor = field->findChild<QLineEdit *>();
    ASSERT_TRUE(editor);
    field->setBackgroundColor(Color::white());
    editor->installEventFilter(&changes);
    field->setBackgroundColor(Color::white());
    field->setTextColor(Color::black());
    EXPECT_EQ(changes.count, 0);
    field->setTextColor(Color::systemBlue());
    EXPECT_EQ(changes.count, 1);
}

} // namespace
