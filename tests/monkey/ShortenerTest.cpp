#include "tests/monkey/Shortener.h"

#include "tests/monkey/CaseFile.h"
#include "tests/monkey/Monkey.h"
#include "tests/monkey/MonkeyFixture.h"
#include "tests/monkey/Requests.h"

#include <QStringList>

#include <algorithm>

using platform::Array;
using platform::Dictionary;

namespace monkey {
namespace {

Steps stepsNamed(const QString &letters)
{
    Steps steps;
    for (const QChar letter : letters)
        steps.append({QString(letter), {}});
    return steps;
}

QString lettersOf(const Steps &steps)
{
    QString letters;
    for (const Step &step : steps)
        letters += step.verb;
    return letters;
}

TEST(Shortener, LeavesTheStepsAloneThatAreNeededWhereverTheyStand)
{
    const auto needs = [](const QString &wanted) {
        return [wanted](const Steps &steps) {
            qsizetype found = 0;
            for (const QChar letter : lettersOf(steps))
                found += found < wanted.size() && letter == wanted.at(found) ? 1 : 0;
            return found == wanted.size();
        };
    };
    for (const char *wanted : {"a", "z", "m", "az", "mn", "bdfhjlnprtvxz", "abcdefghijklmnopqrstuvwxyz"}) {
        const Steps all = stepsNamed("abcdefghijklmnopqrstuvwxyz");
        EXPECT_EQ(lettersOf(shortened(all, needs(QLatin1String(wanted)))), wanted);
    }
}

TEST(Shortener, LeavesOutCallsThatAreMadeInTheSameMoment)
{
    const Steps steps{{"call", {{"calls", Array{1, 2, 3}}}}, {"other", {}}};
    const auto breaks = [](const Steps &tried) {
        return std::ranges::any_of(
            tried, [](const Step &step) { return step.with.value("calls").toList().contains(2); });
    };
    const Steps left = shortened(steps, breaks);
    ASSERT_EQ(left.size(), 1);
    EXPECT_EQ(left.first().with.value("calls").toList(), Array{2});
}

TEST(Shortener, EndsAfterSoManyTries)
{
    int tries = 0;
    const auto breaks = [&tries](const Steps &) { return ++tries % 2 == 0; };
    static_cast<void>(shortened(stepsNamed(QString(1000, QLatin1Char('a'))), breaks, 10));
    EXPECT_EQ(tries, 10);
}

TEST(Steps, AreTheSameAfterTheyWereWrittenAndRead)
{
    for (quint64 seed = 1; seed <= 50; ++seed) {
        Dice dice(seed, 0);
        const Shape shape = randomShape(dice);
        const Step step{"call", {{"calls", Array{randomRequest(dice, shape).toData()}}}};
        const QString text = Case{shape, {step}}.text();
        const Case read = Case::fromText("# for the reader\n\n" + text);
        EXPECT_EQ(read.text().toStdString(), text.toStdString());
        EXPECT_EQ(read.shape.systems(), shape.systems());
    }
}

/// A monkey in a world that is broken on purpose: it promises what no station keeps.
class ShortenedMonkeyTest : public MonkeyFixture
{};

TEST_F(ShortenedMonkeyTest, AnAnswerThatABrokenWorldDoesNotExpectNeedsTwoSteps)
{
    // No two panels ever stand in one group's band.
    prepare = [](World &world) {
        world.patience = std::chrono::seconds(1);
        world.furtherPromise = [](const World &now) {
            QStringList bands;
            for (const auto &call : now.calls) {
                if (call->state() == Call::State::WaitsForOperator && call->band && !call->isLimited())
                    bands.append(now.shape.groups.at(*call->band));
            }
            return bands.removeDuplicates() > 0 ? QStringLiteral("two at once") : QString();
        };
    };
    const Shape shape = shapeOf(2, 3);
    const auto ask = [](int system) {
        const Request request{Function::ShowView, system, {{"button", Array{"No", "Yes"}}}};
        return Step{"call", {{"calls", Array{request.toData()}}}};
    };
    const Steps all{{"resize", {{"width", 900}, {"height", 700}}},
                    ask(0),
                    {"tab", {}},
                    {"scan", {{"text", "Z10001"}}},
                    ask(4),
                    {"press", {{"panel", "4"}, {"button", "Yes"}, {"at", 1}}},
                    {"click nowhere", {}},
                    ask(1),
                    {"scan", {{"text", "Z10002"}}}};
    const auto breaks = [&](const Steps &steps) { return replay(shape, steps).startsWith("two at once"); };
    ASSERT_TRUE(breaks(all));
    const Steps left = shortened(all, breaks);
    EXPECT_EQ((Case{shape, left}.text().toStdString()), (Case{shape, {ask(0), ask(1)}}.text().toStdString()));
}

} // namespace
} // namespace monkey
