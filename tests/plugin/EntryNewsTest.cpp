#include "kovan/KovanUIExtension/KVKExtensionEntryRelay.h"
#include "platform/TextField.h"
#include "tests/support/GatedFunction.h"
#include "tests/support/PluginFixture.h"
#include "tests/support/Wait.h"

#include <functional>
#include <stdexcept>
#include <tuple>

using platform::Array;
using platform::Dictionary;
using platform::Value;
using testsupport::GatedFunction;
using testsupport::SequencerCall;
using How = KVKFinishedPanel::How;

namespace {

QString shown(const KVKEntryPlace &place)
{
    const QString system = place.system ? QString::number(*place.system) : QString("-");
    return QStringList{place.group, place.slot, place.label, system}.join('/');
}

QString shown(How how)
{
    return QStringList{"pressed", "cancelled", "timed out", "stopped", "failed"}.at(static_cast<int>(how));
}

/// What the host is told of entries and panels, while an operator works with real keys.
class EntryNewsTest : public testsupport::PluginFixture, public KVKExtensionEntryObserver
{
protected:
    EntryNewsTest() { KVKExtensionEntryRelay::sharedEntryRelay()->addObserver(this); }
    ~EntryNewsTest() override { KVKExtensionEntryRelay::sharedEntryRelay()->removeObserver(this); }
    void TearDown() override
    {
        gate->open();
        PluginFixture::TearDown();
    }

    void entryAccepted(const KVKAcceptedEntry &entry) override
    {
        news.append(QString("accepted %1 %2").arg(shown(entry.place), entry.text));
    }
    void entryRefused(const KVKRefusedEntry &entry) override
    {
        news.append(QString("refused %1 %2 %3").arg(shown(entry.place), entry.text, entry.kind));
        why = entry.why;
    }
    void panelFinished(const KVKFinishedPanel &panel) override
    {
        news.append(QString("finished %1 %2 %3").arg(shown(panel.place), shown(panel.how), panel.button));
    }
    void errorShown(const KVKShownError &error) override
    {
        news.append(QString("error %1").arg(shown(error.place)));
        why = error.message;
    }

    /// Asks system 1, slot S2 of G1, for a serial number.
    SequencerCall &ask(Dictionary config = {})
    {
        config.insert("input", Array{"SN"});
        SequencerCall &call = showView(1, config);
        EXPECT_TRUE(waitForPanel("1"));
        return call;
    }
    Value validate() { return Value::fromValue<std::shared_ptr<platform::Callback>>(gate); }

    QStringList news;
    QString why;
    std::shared_ptr<GatedFunction> gate =
        std::make_shared<GatedFunction>([](const Value &text, const QString &) {
            return text.toString().startsWith("x") ? Array{false, QString("bad unit")} : Array{true};
        });
};

TEST_F(EntryNewsTest, AnEntryIsToldOnceAlthoughOkLooksAtItAgain)
{
    SequencerCall &call = ask();
    scan("A");
    press("1", "OK");
    static_cast<void>(call.result());
    EXPECT_EQ(news, (QStringList{"accepted G1/S2/SN/1 A", "finished G1/S2//1 pressed Pass"}));
}

TEST_F(EntryNewsTest, ACallWhosePanelCannotBeDrawnIsToldAsOneThatFailed)
{
    // The last system has a group but no slot.
    station.groups = {"G1"};
    station.slotNames = {"S1", "S2"};
    station.systemGroups = Array{"G1", "G1"};
    station.systemSlots = Array{"S1"};
    EXPECT_NE(showView(1, {{"input", Array{"SN"}}}).thrown<std::out_of_range>(), QString());
    ASSERT_EQ(news.size(), 1);
    EXPECT_TRUE(news.first().startsWith("finished ")) << news.first().toStdString();
    EXPECT_TRUE(news.first().contains(" failed ")) << news.first().toStdString();
}

TEST_F(EntryNewsTest, AnEntryThatOnlyOkEndsIsToldToo)
{
    SequencerCall &call = ask();
    type("A");
    press("1", "OK");
    static_cast<void>(call.result());
    EXPECT_EQ(news, (QStringList{"accepted G1/S2/SN/1 A", "finished G1/S2//1 pressed Pass"}));
}

TEST_F(EntryNewsTest, AnEntryThatIsScannedOnceMoreIsToldOnceMore)
{
    ask();
    scan("A");
    type("\n");
    EXPECT_EQ(news, (QStringList{"accepted G1/S2/SN/1 A", "accepted G1/S2/SN/1 A"}));
}

TEST_F(EntryNewsTest, OnAGroupsPanelTheSlotIsToldThatTheEntryWentTo)
{
    expectError("Invalid input");
    expectError("Duplicated input detected");
    SequencerCall &call = showGroup(1, {{"input", Array{"S3", "S1"}}});
    ASSERT_TRUE(waitForPanel("G2"));
    scan("A");
    scan("A");
    scan("B");
    press("G2", "OK");
    static_cast<void>(call.result());
    EXPECT_EQ(news, (QStringList{"accepted G2/S1//4 A", "refused G2/S3//6 A duplicate", "accepted G2/S3//6 B",
                                 "finished G2///- pressed Pass"}));
}

struct Kind
{
    const char *word;
    Dictionary config;
    QString entry;
};

class EntryNewsKind : public EntryNewsTest, public ::testing::WithParamInterface<Kind>
{};

TEST_P(EntryNewsKind, IsToldWithAWordAndWithWordsForTheOperator)
{
    expectError("Invalid input");
    ask(GetParam().config);
    scan(GetParam().entry);
    EXPECT_EQ(news, QStringList{QString("refused G1/S2/SN/1 %1 %2").arg(GetParam().entry, GetParam().word)});
    EXPECT_FALSE(why.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Each, EntryNewsKind,
                         ::testing::Values(Kind{"length", {{"length", 3}}, "AB"},
                                           Kind{"pattern", {{"pattern", "[0-9]+"}}, "AB"},
                                           Kind{"number", {{"number", Dictionary{{"max", 5}}}}, "6"},
                                           Kind{"choice", {{"choices", Array{"Red", "Rose"}}}, "R"}),
                         [](const ::testing::TestParamInfo<Kind> &kind) { return kind.param.word; });

TEST_F(EntryNewsTest, AnEntryThatWaitsForItsVerdictIsToldWithIt)
{
    gate->close();
    ask({{"validate", validate()}});
    scan("A");
    ASSERT_TRUE(testsupport::waitUntil([&] { return gate->calls().size() == 1; }));
    EXPECT_TRUE(news.isEmpty());
    gate->open();
    ASSERT_TRUE(testsupport::waitUntil([&] { return !news.isEmpty(); }));
    press("1", "OK");
    EXPECT_EQ(news, (QStringList{"accepted G1/S2/SN/1 A", "finished G1/S2//1 pressed Pass"}));
}

TEST_F(EntryNewsTest, AVerdictThatRefusesIsToldWithItsReason)
{
    expectError("Invalid input");
    ask({{"validate", validate()}});
    scan("x1");
    ASSERT_TRUE(testsupport::waitUntil([&] { return !news.isEmpty(); }));
    EXPECT_EQ(news, QStringList{"refused G1/S2/SN/1 x1 validate"});
    EXPECT_EQ(why, "bad unit");
}

TEST_F(EntryNewsTest, ATextThatNoFieldWaitsForIsNobodys)
{
    expectError("Entry refused");
    start();
    scan("A");
    EXPECT_EQ(news, QStringList{"refused ///- A nowhere"});
}

TEST_F(EntryNewsTest, AnEntryThatItsFieldCannotHoldIsUnreadable)
{
    expectError("Entry refused");
    ask();
    const QString text(platform::TextField::MaximumEntryLength + 1, QLatin1Char('9'));
    scan(text);
    ASSERT_EQ(news.size(), 1);
    EXPECT_TRUE(news.first().startsWith("refused G1/S2/SN/1 999"));
    EXPECT_TRUE(news.first().endsWith(" unreadable"));
}

TEST_F(EntryNewsTest, CancelAndATimeLimitAreToldApartFromAnAnswer)
{
    SequencerCall &cancelled = ask({{"button", Array{"Cancel", "OK"}}});
    press("1", "Cancel");
    static_cast<void>(cancelled.result());
    SequencerCall &late =
        showView(0, {{"message", "Is it on?"}, {"button", Array{"Yes"}}, {"timeLimit", 0.05}});
    static_cast<void>(late.result());
    EXPECT_EQ(news, (QStringList{"finished G1/S2//1 cancelled ", "finished G1/S1//0 timed out "}));
}

TEST_F(EntryNewsTest, APanelThatTheHostEndsIsStopped)
{
    SequencerCall &call = ask();
    plugin().interruptWaitingCalls();
    static_cast<void>(call.result());
    EXPECT_EQ(news, QStringList{"finished G1/S2//1 stopped "});
}

TEST_F(EntryNewsTest, APanelIsToldWhenItGoesAlthoughItsFunctionStillRuns)
{
    gate->close();
    ask({{"validate", validate()}, {"button", Array{"Cancel", "OK"}}});
    scan("A");
    ASSERT_TRUE(testsupport::waitUntil([&] { return gate->calls().size() == 1; }));
    press("1", "Cancel");
    EXPECT_TRUE(testsupport::waitUntil([&] { return !news.isEmpty(); }));
    EXPECT_EQ(news, QStringList{"finished G1/S2//1 cancelled "});
}

TEST_F(EntryNewsTest, AShownErrorIsTold)
{
    SequencerCall &call = showView(1, {{"input", Array{"SN", "SN"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_EQ(news, QStringList{"error G1///-"});
    EXPECT_FALSE(why.isEmpty());
    press("G1", "OK");
    static_cast<void>(call.result());
    EXPECT_EQ(news.size(), 1);
}

TEST_F(EntryNewsTest, TheNumberOfPassesIsAnEntryOfTheLoopsField)
{
    start();
    click(loopField());
    scan("3");
    EXPECT_EQ(news, QStringList{"accepted //Loop/- 3"});
}

/// Its thread is in the function: somebody else takes the panel away.
TEST_F(EntryNewsTest, APanelWhoseEntryIsBeingCheckedIsToldToEndByWhatEndsIt)
{
    using End = std::function<void()>;
    const std::tuple<QString, Dictionary, End> cases[] = {
        {"timed out", {{"timeLimit", 1.5}}, [] {}},
        {"cancelled", {{"button", Array{"Cancel", "OK"}}}, [this] { click(button("1", "Cancel")); }}};
    for (const auto &[how, additions, end] : cases) {
        gate->close();
        news.clear();
        Dictionary config = additions;
        config.insert("validate", validate());
        const qsizetype calls = gate->calls().size();
        SequencerCall &call = ask(config);
        scan("A");
        ASSERT_TRUE(testsupport::waitUntil([&] { return gate->calls().size() > calls; }));
        end();
        EXPECT_TRUE(testsupport::waitUntil([&] { return !news.isEmpty(); }));
        EXPECT_EQ(news, QStringList{QString("finished G1/S2//1 %1 ").arg(how)});
        gate->open();
        static_cast<void>(call.result());
    }
}

} // namespace
