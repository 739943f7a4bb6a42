#include "tests/plugin/PlainAskModel.h"
#include "tests/support/FieldKeys.h"

#include <random>

using platform::Array;
using platform::Dictionary;
using platform::Value;
using testsupport::PlainAsk;
using testsupport::SequencerCall;

namespace {

constexpr int Combinations = 300;
const QStringList Slots{"S1", "S2", "S3"};
/// Beginnings, cases, duplicates, numbers good and bad, and texts of each length.
const QStringList Entries{"A",   "AB",  "ab", "ABC", "12",   "123",  "7", "3.5",   "3,5", "-1",   "1e3",
                          "red", "Red", "re", "r",   "Dark", "Blue", "x", "12.25", "+4",  "Rose", "B2"};

/// Draws configurations and entries; the same seed draws the same.
class Draw
{
public:
    explicit Draw(unsigned seed)
        : m_engine(seed)
    {}
    int below(int end) { return static_cast<int>(m_engine() % static_cast<unsigned>(end)); }
    bool oneOf(int n) { return below(n) == 0; }
    QString of(const QStringList &texts) { return texts.at(below(static_cast<int>(texts.size()))); }
    /// One that may fit as often as any other.
    QString entry(const PlainAsk &ask)
    {
        return of(ask.choices.isEmpty() || oneOf(2) ? Entries : ask.choices);
    }

    PlainAsk ask()
    {
        PlainAsk ask;
        ask.isGroup = oneOf(2);
        ask.labels = ask.isGroup ? Slots.mid(0, 1 + below(3)) : QStringList{"SN"};
        if (oneOf(3))
            ask.length = 1 + below(3);
        // One of the three as a rule, and now and then two that exclude one another.
        const int form = below(5);
        if (form == 0 || oneOf(20))
            ask.pattern = QStringList{"[A-Z]+", "[0-9]*", "[A-Z0-9]{2}", ".*[A-Za-z]", "[A"}.at(below(5));
        if (form == 1 || oneOf(20))
            ask.number = PlainAsk::Number{oneOf(2) ? std::optional(0.0) : std::nullopt,
                                          oneOf(2) ? std::optional(12.0) : std::nullopt,
                                          oneOf(2) ? std::optional(below(3)) : std::nullopt};
        if (form == 2 || oneOf(20))
            ask.choices = oneOf(6) ? QStringList{"Red", "Red"}
                                   : QStringList{"Red", "Rose", "Blue", "Dark"}.mid(0, 2 + below(3));
        if (oneOf(4))
            ask.unique = QStringList{"group", "station", "run", "station", "town"}.at(below(5));
        if (oneOf(4))
            drawDefaults(ask);
        ask.hint = oneOf(3) ? "Look at the label" : "";
        ask.placeholder = oneOf(3) ? "Scan" : "";
        ask.autoConfirm = oneOf(3);
        return ask;
    }

private:
    void drawDefaults(PlainAsk &ask)
    {
        for (const QString &label : std::as_const(ask.labels)) {
            if (!ask.isGroup || oneOf(2))
                ask.defaults.insert(label, entry(ask));
        }
    }

    std::mt19937 m_engine;
};

class RandomAskTest : public testsupport::FieldKeysFixture, public ::testing::WithParamInterface<int>
{
protected:
    static Dictionary configOf(const PlainAsk &ask)
    {
        Dictionary config{{"input", Array(ask.labels.cbegin(), ask.labels.cend())}};
        if (ask.length > 0)
            config.insert("length", ask.length);
        if (!ask.pattern.isEmpty())
            config.insert("pattern", ask.pattern);
        if (ask.number)
            config.insert("number", numberOf(*ask.number));
        if (!ask.choices.isEmpty())
            config.insert("choices", Array(ask.choices.cbegin(), ask.choices.cend()));
        if (!ask.unique.isEmpty())
            config.insert("unique", ask.unique);
        if (!ask.defaults.isEmpty())
            config.insert("default", defaultsOf(ask));
        if (!ask.hint.isEmpty())
            config.insert("hint", ask.hint);
        if (!ask.placeholder.isEmpty())
            config.insert("placeholder", ask.placeholder);
        if (ask.autoConfirm)
            config.insert("autoConfirm", true);
        return config;
    }
    static Value defaultsOf(const PlainAsk &ask)
    {
        if (!ask.isGroup)
            return ask.defaults.first();
        Dictionary table;
        for (auto each = ask.defaults.cbegin(); each != ask.defaults.cend(); ++each)
            table.insert(each.key(), each.value());
        return table;
    }
    static Dictionary numberOf(const PlainAsk::Number &number)
    {
        Dictionary table;
        if (number.min)
            table.insert("min", *number.min);
        if (number.max)
            table.insert("max", *number.max);
        if (number.decimals)
            table.insert("decimals", *number.decimals);
        return table;
    }

    /// Types entries, and ends what is still open by "OK" where the model says that it can be ended.
    void play(PlainAsk &ask, SequencerCall &call, Draw &draw)
    {
        const QString key = ask.isGroup ? "G1" : "0";
        ASSERT_TRUE(waitForPanel(key));
        const int entries = draw.below(10);
        for (int i = 0; i < entries && !ask.isComplete(); ++i)
            ASSERT_NO_FATAL_FAILURE(enterOne(key, ask, draw));
        if (!(ask.isComplete() && ask.autoConfirm))
            press(key, "OK");
        if (!ask.confirm()) {
            EXPECT_FALSE(call.finished());
            EXPECT_TRUE(isOpen(key));
            return;
        }
        ASSERT_TRUE(call.waitUntilFinished());
        Dictionary answer = call.result().toMap();
        EXPECT_EQ(answer.take("clickedButton"), Value("Pass"));
        EXPECT_EQ(answer, ask.answer());
    }
    void enterOne(const QString &key, PlainAsk &ask, Draw &draw)
    {
        const bool confirms = ask.offered() && draw.oneOf(3);
        const QString entry = confirms ? *ask.offered() : draw.entry(ask);
        const QString label = ask.waiting();
        SCOPED_TRACE(("entry " + entry + " for " + label).toStdString());
        scan(confirms ? QString() : entry);
        const bool accepted = ask.enter(entry);
        // A panel that ends by itself may have taken its record with it by now.
        if (ask.isComplete() && ask.autoConfirm)
            return;
        ASSERT_EQ(record(key).contains(label), accepted);
        if (!accepted && !ask.hint.isEmpty()) {
            EXPECT_TRUE(told(key).startsWith(ask.hint)) << told(key).toStdString();
        }
    }
};

TEST_P(RandomAskTest, ThePlugInAcceptsWhatThePlainModelAccepts)
{
    const auto seed = static_cast<unsigned>(GetParam());
    Draw draw(seed);
    PlainAsk ask = draw.ask();
    const Dictionary config = configOf(ask);
    SCOPED_TRACE("seed " + std::to_string(seed) + ", " + platform::description(config).toStdString());
    // Each refusal of an entry is an error line; which there are is what the model knows.
    testsupport::expectErrors();
    SequencerCall &call = ask.isGroup ? showGroup(0, config) : showView(0, config);
    if (const QSet<int> codes = ask.refusalCodes(); !codes.isEmpty()) {
        ASSERT_TRUE(waitForPanel("G1"));
        press("G1", "OK");
        ASSERT_TRUE(call.waitUntilFinished());
        EXPECT_TRUE(codes.contains(static_cast<int>(call.error().code)))
            << call.error().code << ": " << call.error().localizedDescription.toStdString();
        return;
    }
    play(ask, call, draw);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomAskTest, ::testing::Range(1, Combinations + 1));

} // namespace
