#include "tests/operator/OperatorFixture.h"

#include <QTimer>

namespace {

using Property = testsupport::OperatorFixture;

} // namespace

TEST_F(Property, ScriptReadsAPropertyOfThePluginsContext)
{
    context.columns = 4;
    context.savedData = {{"G1", QVariantMap{{"S1", "SN1"}, {"length", 3}}}};
    runs("assert(operator.property('columns') == 4)\n"
         "local data = operator.property('savedData')\n"
         "assert(data.G1.S1 == 'SN1' and data.G1.length == 3)");
}

/// A thread checker finds the two at the same memory where the script is given the main thread's own: once
/// the script has let go of it, the main thread writes into it in place, and nothing has put the one before
/// the other.
TEST_F(Property, MayBeReadWhileTheMainThreadGoesOnWritingIntoIt)
{
    const auto write = [this] {
        for (int i = 0; i < 50; ++i) {
            context.savedData.remove(QString::number(i));
            context.savedData.insert(QString::number(i), QVariantMap{{"S1", "SN"}});
        }
    };
    write();
    // The pause is where the main thread gets to write before the script asks it for anything again.
    start("for i = 1, 50 do\n"
          "  local count = 0\n"
          "  for key, record in pairs(operator.property('savedData')) do\n"
          "    assert(record.S1 == 'SN') count = count + 1\n"
          "  end\n"
          "  assert(count == 50)\n"
          "  operator.sleep(0.002)\n"
          "end");
    QTimer writer;
    QObject::connect(&writer, &QTimer::timeout, write);
    writer.start(0);
    const Outcome result = outcome();
    EXPECT_TRUE(result.ok) << result.message.toStdString();
}

TEST_F(Property, UnknownNameIsAnErrorThatNamesTheKnownOnes)
{
    EXPECT_EQ(fails("operator.property('colums')"),
              "operator.lua:1: the plug-in has no property \"colums\"; it has: savedData, columns");
}
