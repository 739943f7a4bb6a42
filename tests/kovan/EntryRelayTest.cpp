#include "kovan/KovanUIExtension/KVKExtensionEntryRelay.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <functional>

namespace {

class Notes : public KVKExtensionEntryObserver
{
public:
    void entryAccepted(const KVKAcceptedEntry &entry) override { note("accepted " + entry.text); }
    void entryRefused(const KVKRefusedEntry &entry) override
    {
        note("refused " + entry.text + " " + entry.kind);
    }
    void panelFinished(const KVKFinishedPanel &panel) override { note("finished " + panel.button); }
    void errorShown(const KVKShownError &error) override { note("error " + error.message); }

    QStringList notes;
    std::function<void()> then;

private:
    void note(const QString &text)
    {
        notes.append(text);
        if (then)
            then();
    }
};

TEST(EntryRelay, TellsEachObserverWhatHappens)
{
    KVKExtensionEntryRelay relay;
    Notes first;
    Notes second;
    relay.addObserver(&first);
    relay.addObserver(&second);
    relay.accepted({{"G1", "S1", "SN", 0}, "A"});
    relay.refused({{}, "B", "length", "too short"});
    relay.finished({{"G1", {}, {}, {}}, KVKFinishedPanel::How::Pressed, "Pass"});
    relay.errorShown({{}, "no"});
    const QStringList all{"accepted A", "refused B length", "finished Pass", "error no"};
    EXPECT_EQ(first.notes, all);
    EXPECT_EQ(second.notes, all);
}

TEST(EntryRelay, TellsAnObserverThatWasAddedTwiceOnce)
{
    KVKExtensionEntryRelay relay;
    Notes notes;
    relay.addObserver(&notes);
    relay.addObserver(&notes);
    relay.accepted({{}, "A"});
    EXPECT_EQ(notes.notes, QStringList{"accepted A"});
    relay.removeObserver(&notes);
    relay.accepted({{}, "B"});
    EXPECT_EQ(notes.notes.size(), 1);
}

TEST(EntryRelay, TellsNothingMoreToAnObserverThatAnotherTakesOutMeanwhile)
{
    KVKExtensionEntryRelay relay;
    Notes first;
    Notes second;
    relay.addObserver(&first);
    relay.addObserver(&second);
    first.then = [&] { relay.removeObserver(&second); };
    relay.accepted({{}, "A"});
    EXPECT_EQ(first.notes.size(), 1);
    EXPECT_TRUE(second.notes.isEmpty());
}

TEST(EntryRelay, DoesNothingWithoutAnObserver)
{
    KVKExtensionEntryRelay relay;
    relay.accepted({{}, "A"});
    Notes late;
    relay.addObserver(&late);
    EXPECT_TRUE(late.notes.isEmpty()) << "what was told before is not kept";
}

} // namespace
