#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"
#include "tests/support/Wait.h"

#include <QApplication>
#include <QImage>
#include <QTest>

using platform::Value;

namespace {

/// What the scanner sends while the field of the number of passes has the keys.
class LoopFieldEntryTest : public testsupport::PluginFixture
{
protected:
    /// Goes to another window and back.
    void leaveAndComeBack()
    {
        QWidget other;
        other.show();
        other.activateWindow();
        ASSERT_TRUE(testsupport::waitUntil([&] { return other.isActiveWindow(); }));
        window().activateWindow();
        ASSERT_TRUE(testsupport::waitUntil([&] { return window().isActiveWindow(); }));
    }
};

TEST_F(LoopFieldEntryTest, AFieldThatAPersonHasChosenKeepsTheKeysOverAnotherWindow)
{
    start();
    click(rooms().loop.loopNumberField());
    type("1");
    leaveAndComeBack();
    scan("2");
    EXPECT_EQ(plugin().getLoopConfig(nullptr).value("LoopMax"), Value(12));
}

TEST_F(LoopFieldEntryTest, AFieldThatNobodyHasChosenShowsNoCursor)
{
    start();
    // A cursor that does not blink is seen whenever one looks.
    const int flashTime = QApplication::cursorFlashTime();
    QApplication::setCursorFlashTime(0);
    const auto looks = [&] { return rooms().loop.loopNumberField()->grab().toImage(); };
    const QImage atFirst = looks();
    leaveAndComeBack();
    const QImage back = looks();
    click(rooms().loop.loopNumberField());
    EXPECT_NE(looks(), atFirst);
    window().setFocus();
    const QImage left = looks();
    EXPECT_EQ(atFirst, left);
    EXPECT_EQ(back, left);
    QApplication::setCursorFlashTime(flashTime);
}

TEST_F(LoopFieldEntryTest, OneThatTheFieldCannotTakeIsRefusedVisibly)
{
    start();
    const QString line =
        QString("Entry refused: 1") + QChar(0x2407) + "2 (control character U+0007, in Loop)";
    expectError(line);
    click(rooms().loop.loopNumberField());
    type("1");
    QTest::sendKeyEvent(QTest::Click, window().windowHandle(), Qt::Key_unknown, QString(QChar(u'\a')),
                        Qt::NoModifier);
    scan("2");
    EXPECT_EQ(operatorLines, QStringList{line});
    EXPECT_FALSE(plugin().getLoopConfig(nullptr).contains("LoopMax"));
}

} // namespace
