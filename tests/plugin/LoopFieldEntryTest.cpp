#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"

#include <QTest>

using platform::Value;

namespace {

/// What the scanner sends while the field of the number of passes has the keys.
class LoopFieldEntryTest : public testsupport::PluginFixture
{};

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
