#include "platform/Button.h"
#include "tests/platform/ViewFixture.h"
#include "tests/support/ManualKeyClock.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

namespace {

using namespace platform;

const QString Gs(QChar(0x1d));
const QString ShownGs(QChar(0x241d));

/// A field that has the focus, and what it tells.
class EntryTest : public testsupport::ViewFixture
{
protected:
    EntryTest()
    {
        field->setTarget(&target, "enter:", [this](View *) { entries += field->stringValue(); });
        field->setRefusalHandler([this](TextField *refusing, const platform::RefusedEntry &refused) {
            const QString &why = refused.why;
            EXPECT_EQ(refusing, field);
            EXPECT_EQ(refusing->stringValue(), "");
            refusals += why;
        });
        field->becomeFirstResponder();
    }

    /// A key as a scanner driver sends it.
    void send(int key, const QString &text, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::sendKeyEvent(QTest::Click, window.windowHandle(), static_cast<Qt::Key>(key), text, modifiers);
    }
    void sendGs() { send(Qt::Key_BracketRight, Gs, Qt::ControlModifier); }
    void paste(const QString &text)
    {
        QGuiApplication::clipboard()->setText(text);
        press(Qt::Key_V, Qt::ControlModifier);
    }

    testsupport::ManualKeyClock clock;
    TextField *field = addField({10, 10, 100, 25});
    QSignalSpy ended{field, &TextField::entryEnded};
    QStringList entries;
    QStringList refusals;
};

TEST_F(EntryTest, TheLongestEntryIsTaken)
{
    const QString longest(TextField::MaximumEntryLength, 'A');
    type(longest + '\n');
    EXPECT_EQ(entries, QStringList{longest});
    EXPECT_TRUE(refusals.isEmpty());
}

TEST_F(EntryTest, AnEntryThatIsTooLongIsRefusedWhole)
{
    type(QString(TextField::MaximumEntryLength + 1, 'A') + "SN1");
    EXPECT_EQ(field->stringValue(), "");
    EXPECT_EQ(field->backgroundColor(), Color::standardRed());
    EXPECT_TRUE(refusals.isEmpty()) << "it is told when it has come to its end";
    type("\n");
    EXPECT_EQ(refusals, QStringList{"longer than 4096 characters"});
    EXPECT_TRUE(entries.isEmpty());
    EXPECT_EQ(field->stringValue(), "");
    EXPECT_EQ(field->backgroundColor(), Color::standardRed());
}

TEST_F(EntryTest, TheCharacterAfterARefusedEntryBeginsANewOne)
{
    field->setBackgroundColor(Color::systemYellow());
    type(QString(TextField::MaximumEntryLength + 1, 'A') + "\nSN1\n");
    EXPECT_EQ(entries, QStringList{"SN1"});
    EXPECT_EQ(refusals.size(), 1);
    EXPECT_EQ(field->backgroundColor(), Color::systemYellow());
}

TEST_F(EntryTest, ARefusedEntryIsSeenAlsoWithoutABackground)
{
    field->setDrawsBackground(false);
    type(QString(TextField::MaximumEntryLength + 1, 'A'));
    EXPECT_EQ(picture(field).pixelColor(50, 4), Color::standardRed().toQColor());
}

TEST_F(EntryTest, ABackgroundSetForARefusedEntryStays)
{
    send(0, QString(QChar(7)));
    type("\n");
    field->setBackgroundColor(Color::systemBlue());
    type("S");
    EXPECT_EQ(field->backgroundColor(), Color::systemBlue());
}

TEST_F(EntryTest, ATextSetAfterARefusedEntryIsNotRed)
{
    send(0, QString(QChar(7)));
    type("\n");
    field->setStringValue("");
    EXPECT_EQ(field->backgroundColor(), Color::standardRed());
    field->setStringValue("SN1");
    EXPECT_EQ(field->backgroundColor(), Color::white());
}

TEST_F(EntryTest, ALongEntryIsLaidOutAFewTimesOnly)
{
    QLineEdit *editor = field->currentEditor();
    const QSignalSpy layouts(editor, &QLineEdit::textChanged);
    const auto typeAtOnce = [editor](int count) {
        for (int i = 0; i < count; ++i) {
            QKeyEvent event(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "A");
            QCoreApplication::sendEvent(editor, &event);
        }
    };
    typeAtOnce(300);
    const qsizetype atFirst = layouts.count();
    typeAtOnce(3000);
    EXPECT_EQ(layouts.count(), atFirst);
    EXPECT_EQ(field->stringValue(), QString(3300, 'A'));
    EXPECT_EQ(field->currentEditor()->text(), QString(3300, 'A'));
    EXPECT_EQ(layouts.count(), atFirst + 1);
}

TEST_F(EntryTest, WhatWasGatheredOfALongEntryIsShownSoon)
{
    QLineEdit *editor = field->currentEditor();
    type(QString(500, 'A'));
    EXPECT_TRUE(testsupport::waitUntil([&] { return editor->text().size() == 500; }));
}

TEST_F(EntryTest, ALongEntryCanBeEditedWhileItComes)
{
    type(QString(400, 'A') + "BC");
    press(Qt::Key_Backspace);
    press(Qt::Key_Home);
    type("x");
    press(Qt::Key_End);
    type("y");
    EXPECT_EQ(field->stringValue(), "x" + QString(400, 'A') + "By");
    field->selectText();
    EXPECT_EQ(field->selectedText(), field->stringValue());
    type("z");
    EXPECT_EQ(field->stringValue(), "z");
}

TEST_F(EntryTest, ALongEntryStaysWholeWhenTheFocusGoesOrTheFieldIsMadeReadOnly)
{
    type(QString(400, 'A'));
    addField({10, 50, 100, 25})->becomeFirstResponder();
    EXPECT_EQ(field->stringValue(), QString(400, 'A'));
    field->becomeFirstResponder();
    type(QString(400, 'B'));
    field->setEditable(false);
    EXPECT_EQ(field->stringValue(), QString(400, 'B'));
}

TEST_F(EntryTest, AGroupSeparatorIsKeptAndShown)
{
    type("01");
    sendGs();
    type("10");
    send(0, Gs);
    type("\n");
    EXPECT_EQ(entries, QStringList{"01" + Gs + "10" + Gs});
    EXPECT_EQ(field->currentEditor()->displayText(), "01" + ShownGs + "10" + ShownGs);
    EXPECT_EQ(field->selectedText(), "01" + Gs + "10" + Gs);
}

TEST_F(EntryTest, AGroupSeparatorAtAButtonBeginsTheEntry)
{
    auto *button = add<Button>({10, 50, 80, 30});
    button->setNextResponder(field);
    button->becomeFirstResponder();
    sendGs();
    type("10\n");
    EXPECT_EQ(entries, QStringList{Gs + "10"});
}

TEST_F(EntryTest, ATextThatIsSetOrPastedShowsItsGroupSeparator)
{
    field->setStringValue("01" + Gs + "10");
    EXPECT_EQ(field->stringValue(), "01" + Gs + "10");
    EXPECT_EQ(field->currentEditor()->displayText(), "01" + ShownGs + "10");
    field->selectText();
    paste("02" + Gs + "20");
    EXPECT_EQ(field->stringValue(), "02" + Gs + "20");
    EXPECT_EQ(field->currentEditor()->displayText(), "02" + ShownGs + "20");
    type("1");
    EXPECT_EQ(field->stringValue(), "02" + Gs + "201");
}

TEST_F(EntryTest, APastedTextThatCannotBeTakenIsRefused)
{
    paste(QString(TextField::MaximumEntryLength + 1, 'A'));
    EXPECT_EQ(field->stringValue(), "");
    type("\n");
    paste("A\nB");
    type("\n");
    EXPECT_EQ(refusals, (QStringList{"longer than 4096 characters", "control character U+000A"}));
    EXPECT_TRUE(entries.isEmpty());
}

TEST_F(EntryTest, APasteIntoARefusedEntryIsRefusedWithIt)
{
    send(0, QString(QChar(7)));
    paste("SN1");
    EXPECT_EQ(field->stringValue(), "");
    type("\n");
    EXPECT_EQ(refusals, QStringList{"control character U+0007"});
}

struct Control
{
    char16_t character;
    const char *why;
};

class ControlCharacterTest : public EntryTest, public ::testing::WithParamInterface<Control>
{};

TEST_P(ControlCharacterTest, MakesTheEntryRefusedWhole)
{
    type("SN");
    send(0, QString(QChar(GetParam().character)));
    type("1\nSN2\n");
    EXPECT_EQ(refusals, QStringList{GetParam().why});
    EXPECT_EQ(entries, QStringList{"SN2"});
}

INSTANTIATE_TEST_SUITE_P(
    Controls, ControlCharacterTest,
    ::testing::Values(Control{0x01, "control character U+0001"}, Control{0x07, "control character U+0007"},
                      Control{0x1c, "control character U+001C"}, Control{0x1e, "control character U+001E"},
                      Control{0x7f, "control character U+007F"}, Control{0x80, "control character U+0080"},
                      Control{0x9f, "control character U+009F"}),
    [](const auto &tested) { return QString::number(tested.param.character, 16).toStdString(); });

TEST_F(EntryTest, AControlCharacterSentAsACommandInAScanMakesItRefused)
{
    type("SN");
    send(Qt::Key_G, QString(QChar(7)), Qt::ControlModifier);
    type("1\n");
    EXPECT_EQ(refusals, QStringList{"control character U+0007"});
}

TEST_F(EntryTest, AControlCharacterSentAsACommandInFrontOfAScanMakesItRefused)
{
    send(Qt::Key_B, QString(QChar(2)), Qt::ControlModifier);
    type("SN1\nSN2\n");
    EXPECT_EQ(refusals, QStringList{"control character U+0002"});
    EXPECT_EQ(entries, QStringList{"SN2"});
}

TEST_F(EntryTest, AControlCharacterInFrontOfAScanThatBeginsAtAButtonMakesItRefused)
{
    auto *button = add<Button>({10, 50, 80, 30});
    button->setNextResponder(field);
    for (const Qt::KeyboardModifiers modifiers : {Qt::NoModifier, Qt::ControlModifier}) {
        button->becomeFirstResponder();
        send(modifiers ? int(Qt::Key_B) : 0, QString(QChar(2)), modifiers);
        type("SN1\n");
    }
    EXPECT_EQ(refusals, (QStringList{"control character U+0002", "control character U+0002"}));
    EXPECT_TRUE(entries.isEmpty());
}

TEST_F(EntryTest, APersonsCommandsWorkAsEver)
{
    type("SN1");
    clock.pause();
    send(Qt::Key_A, QString(QChar(1)), Qt::ControlModifier);
    EXPECT_EQ(field->selectedText(), "SN1");
    clock.pause();
    send(Qt::Key_Escape, QString(QChar(0x1b)));
    send(Qt::Key_X, QString(QChar(0x18)), Qt::ControlModifier);
    EXPECT_EQ(field->stringValue(), "");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "SN1");
    clock.pause();
    type("SN2\n");
    EXPECT_EQ(entries, QStringList{"SN2"});
    EXPECT_TRUE(refusals.isEmpty());
}

TEST_F(EntryTest, SelectAllInFrontOfAnEntryStaysACommand)
{
    field->setStringValue("old");
    press(Qt::Key_End);
    send(Qt::Key_A, QString(QChar(1)), Qt::ControlModifier);
    type("new\n");
    EXPECT_EQ(entries, QStringList{"new"});
}

TEST_F(EntryTest, ACommandRightAfterReturnBelongsToNoEntry)
{
    type("SN1\n");
    send(Qt::Key_A, QString(QChar(1)), Qt::ControlModifier);
    EXPECT_EQ(field->selectedText(), "SN1");
    EXPECT_NE(field->backgroundColor(), Color::standardRed());
}

TEST_F(EntryTest, ARefusedEntryThatIsGivenUpIsToldAndTheNextOneIsTaken)
{
    TextField *other = addField({10, 50, 100, 25});
    for (const Qt::Key key : {Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_Escape}) {
        send(0, QString(QChar(7)));
        clock.pause();
        press(key);
        EXPECT_FALSE(field->hasBegunEntry());
        clock.pause();
    }
    send(0, QString(QChar(7)));
    other->becomeFirstResponder();
    EXPECT_EQ(refusals.size(), 4);
    EXPECT_EQ(ended.count(), 4);
    field->becomeFirstResponder();
    type("SN1\n");
    EXPECT_EQ(entries, QStringList{"SN1"});
}

TEST_F(EntryTest, AnEntryIsBegunFromItsFirstCharacterToReturn)
{
    EXPECT_FALSE(field->hasBegunEntry());
    bool begunInAction = true;
    field->setTarget(&target, "enter:", [&](View *) {
        begunInAction = field->hasBegunEntry();
        EXPECT_EQ(ended.count(), 0);
    });
    type("S");
    EXPECT_TRUE(field->hasBegunEntry());
    type("\n");
    EXPECT_FALSE(begunInAction);
    EXPECT_FALSE(field->hasBegunEntry());
    EXPECT_EQ(field->stringValue(), "S");
    EXPECT_EQ(ended.count(), 1);
}

TEST_F(EntryTest, ATextThatIsSetIsNoBegunEntryAndEndsOne)
{
    field->setStringValue("SN1");
    EXPECT_FALSE(field->hasBegunEntry());
    EXPECT_EQ(ended.count(), 0);
    type("2");
    EXPECT_TRUE(field->hasBegunEntry());
    field->setStringValue("");
    EXPECT_FALSE(field->hasBegunEntry());
    EXPECT_EQ(ended.count(), 1);
}

TEST_F(EntryTest, AnEntryWhoseActionSetsTheTextEndsOnce)
{
    field->setTarget(&target, "enter:", [this](View *) { field->setStringValue(""); });
    type("SN1\n");
    EXPECT_EQ(ended.count(), 1);
}

TEST_F(EntryTest, AnEntryThatIsDeletedIsGivenUp)
{
    type("SN");
    press(Qt::Key_Backspace);
    EXPECT_TRUE(field->hasBegunEntry());
    press(Qt::Key_Backspace);
    EXPECT_FALSE(field->hasBegunEntry());
    EXPECT_EQ(ended.count(), 1);
}

TEST_F(EntryTest, ARefusedEntryIsBegunUntilItEnds)
{
    send(0, QString(QChar(7)));
    EXPECT_TRUE(field->hasBegunEntry());
    type("\n");
    EXPECT_FALSE(field->hasBegunEntry());
    EXPECT_EQ(ended.count(), 1);
}

TEST_F(EntryTest, AFieldThatIsTakenAwayGivesItsEntryUp)
{
    View *panel = add({100, 100, 200, 100});
    auto *inner = add<TextField>({10, 10, 100, 25}, panel);
    inner->setEditable(true);
    const QSignalSpy given(inner, &TextField::entryEnded);
    const auto begin = [&] {
        panel->setHidden(false);
        panel->setEnabled(true);
        inner->setEnabled(true);
        inner->setHidden(false);
        inner->setEditable(true);
        EXPECT_TRUE(inner->becomeFirstResponder());
        type("S");
        EXPECT_TRUE(inner->hasBegunEntry());
    };
    const std::vector<std::function<void()>> ways{
        [&] { inner->setHidden(true); },    [&] { inner->setEnabled(false); },
        [&] { panel->setHidden(true); },    [&] { panel->setEnabled(false); },
        [&] { inner->setEditable(false); }, [&] { panel->removeFromSuperview(); }};
    for (std::size_t i = 0; i < ways.size(); ++i) {
        begin();
        ways[i]();
        EXPECT_FALSE(inner->hasBegunEntry()) << i;
        EXPECT_EQ(given.count(), static_cast<qsizetype>(i) + 1);
    }
}

TEST_F(EntryTest, AskingAFieldThatIsTypedIntoToTakeTheFocusLeavesItsEntry)
{
    type("SN");
    EXPECT_TRUE(field->becomeFirstResponder());
    type("1\n");
    EXPECT_EQ(entries, QStringList{"SN1"});
}

/// Ways in which a field is taken away while one of its keys is on its way.
class DeletionTest : public EntryTest
{
protected:
    View *panel = add({100, 100, 200, 100});
    QPointer<TextField> doomed = add<TextField>({10, 10, 100, 25}, panel);

    void SetUp() override
    {
        doomed->setEditable(true);
        doomed->becomeFirstResponder();
    }
};

TEST_F(DeletionTest, AnActionMayDeleteItsPanel)
{
    doomed->setTarget(&target, "enter:", [this](View *) { delete panel; });
    type("SN1\nSN2\n");
    EXPECT_FALSE(doomed);
}

TEST_F(DeletionTest, ARefusalHandlerMayDeleteThePanel)
{
    doomed->setRefusalHandler([this](TextField *, const platform::RefusedEntry &) { delete panel; });
    send(0, QString(QChar(7)));
    type("\nSN2\n");
    EXPECT_FALSE(doomed);
}

TEST_F(DeletionTest, WhoeverHearsThatAnEntryWasDeletedMayDeleteThePanel)
{
    QObject::connect(doomed, &TextField::entryEnded, &target, [this] { delete panel; });
    type("S");
    press(Qt::Key_Backspace);
    EXPECT_FALSE(doomed);
}

TEST_F(DeletionTest, WhoeverHearsThatAnEntryIsHiddenOrRemovedMayDeleteThePanel)
{
    QObject::connect(doomed, &TextField::entryEnded, &target, [this] { delete panel; });
    type("S");
    panel->removeFromSuperview();
    EXPECT_FALSE(doomed);
}

TEST_F(DeletionTest, AFieldThatReceivesAHandedOnReturnMayGoWithTheFieldThatHandedItOn)
{
    auto *label = add<TextField>({10, 50, 100, 25}, panel);
    label->setNextResponder(doomed);
    label->becomeFirstResponder();
    doomed->setTarget(&target, "enter:", [this](View *) { delete panel; });
    press(Qt::Key_Return);
    EXPECT_FALSE(doomed);
}

} // namespace
