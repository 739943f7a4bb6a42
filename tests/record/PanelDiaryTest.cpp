#include "station/record/PanelDiary.h"

#include "tests/operator/OperatorFixture.h"

#include <gmock/gmock.h>

using platform::View;
using station::PanelDiary;
using station::PanelShowing;
using station::PanelWait;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const PanelWait Shown3{PanelWait::Until::Shown, "3"};
const PanelWait Gone3{PanelWait::Until::Gone, "3"};
const PanelWait ShownG1{PanelWait::Until::Shown, "G1"};

class Diary : public testsupport::OperatorFixture
{
protected:
    Diary()
        : content(tile("3")->contentView())
    {}

    void ask() { button(content, {10, 10, 64, 30}, "OK", "Pass"); }
    QList<PanelWait> act() { return diary.actIn(PanelShowing::of(content)); }

    PanelDiary diary;
    View *content;
};

TEST_F(Diary, WaitsOnceForAPanelThatSomethingIsDoneIn)
{
    ask();
    EXPECT_THAT(diary.look(root), IsEmpty());
    EXPECT_THAT(act(), ElementsAre(Shown3));
    EXPECT_THAT(act(), IsEmpty());
}

TEST_F(Diary, TellsTheNextQuestionFromTheOneBefore)
{
    ask();
    EXPECT_THAT(act(), ElementsAre(Shown3));
    empty(content);
    ask();
    EXPECT_THAT(diary.look(root), IsEmpty());
    EXPECT_THAT(act(), ElementsAre(Gone3, Shown3));
}

TEST_F(Diary, WaitsForAPanelThatWentWithNothingDoneInIt)
{
    ask();
    EXPECT_THAT(diary.look(root), IsEmpty());
    empty(content);
    ask();
    EXPECT_THAT(diary.look(root), ElementsAre(Shown3, Gone3));
    EXPECT_THAT(act(), ElementsAre(Shown3));
}

TEST_F(Diary, WaitsForTheGoingOfTheOneBeforeAPanelThatWentWithNothingDoneInIt)
{
    ask();
    EXPECT_THAT(act(), ElementsAre(Shown3));
    empty(content);
    ask();
    EXPECT_THAT(diary.look(root), IsEmpty());
    empty(content);
    ask();
    EXPECT_THAT(diary.look(root), ElementsAre(Gone3, Shown3, Gone3));
    EXPECT_THAT(act(), ElementsAre(Shown3));
}

TEST_F(Diary, TakesNoNoticeOfAPanelThatOnlySaysSomething)
{
    content->addSubview(new View(platform::Rect(0, 0, 10, 10)));
    EXPECT_THAT(diary.look(root), IsEmpty());
    empty(content);
    EXPECT_THAT(diary.look(root), IsEmpty());
}

TEST_F(Diary, WaitsForAllThatIsThereBeforeSomethingIsDoneBesideIt)
{
    ask();
    groupPanel("G1");
    groupPanel("G2")->setHidden(true);
    EXPECT_THAT(diary.look(root), IsEmpty());
    EXPECT_THAT(act(), ElementsAre(Shown3));
    EXPECT_THAT(diary.actBeside(), ElementsAre(ShownG1));
    EXPECT_THAT(diary.actBeside(), IsEmpty());
}

TEST_F(Diary, WaitsForTheGoingOfWhatWasAnsweredBeforeSomethingIsDoneBesideIt)
{
    ask();
    EXPECT_THAT(act(), ElementsAre(Shown3));
    empty(content);
    EXPECT_THAT(diary.look(root), IsEmpty());
    EXPECT_THAT(diary.actBeside(), ElementsAre(Gone3));
    EXPECT_THAT(diary.actBeside(), IsEmpty());
}

} // namespace
