#include "platform/NotificationCenter.h"

#include "tests/support/Printing.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <memory>

using platform::Notification;
using platform::NotificationCenter;

namespace {

const QString opened = QStringLiteral("opened");
const QString closed = QStringLiteral("closed");

class NotificationCenterTest : public ::testing::Test
{
protected:
    /// An observer that writes its name down.
    NotificationCenter::Handler note(const QString &who)
    {
        return [this, who](const Notification &) { noted.append(who); };
    }

    NotificationCenter center;
    QObject context;
    QStringList noted;
};

} // namespace

TEST_F(NotificationCenterTest, TellsThoseWhoAskedForTheName)
{
    center.addObserver(&context, opened, note("opened"));
    center.addObserver(&context, closed, note("closed"));
    center.post(opened, nullptr);
    EXPECT_EQ(noted, QStringList{"opened"});
}

TEST_F(NotificationCenterTest, TellsThemInTheOrderInWhichTheyCame)
{
    QObject other;
    center.addObserver(&context, opened, note("first"));
    center.addObserver(&other, opened, note("second"));
    center.addObserver(&context, opened, note("third"));
    center.post(opened, nullptr);
    EXPECT_EQ(noted, (QStringList{"first", "second", "third"}));
}

TEST_F(NotificationCenterTest, SaysWhatItIsAbout)
{
    QObject subject;
    center.addObserver(&context, opened, [&](const Notification &notification) {
        EXPECT_EQ(notification.name, opened);
        EXPECT_EQ(notification.object, &subject);
        noted.append("told");
    });
    center.post(opened, &subject);
    EXPECT_EQ(noted, QStringList{"told"});
}

TEST_F(NotificationCenterTest, TellsNobodyWhoseContextIsGone)
{
    auto shortLived = std::make_unique<QObject>();
    center.addObserver(shortLived.get(), opened, note("gone"));
    center.addObserver(&context, opened, note("here"));
    shortLived.reset();
    center.post(opened, nullptr);
    EXPECT_EQ(noted, QStringList{"here"});
}

TEST_F(NotificationCenterTest, AHandlerMayEndAnothersContext)
{
    auto ended = std::make_unique<QObject>();
    center.addObserver(&context, opened, [&](const Notification &) { ended.reset(); });
    center.addObserver(ended.get(), opened, note("ended"));
    center.post(opened, nullptr);
    EXPECT_EQ(noted, QStringList());
}

TEST_F(NotificationCenterTest, WhoIsAddedByAHandlerIsToldTheNextTime)
{
    center.addObserver(&context, opened, [&](const Notification &) {
        if (noted.isEmpty())
            center.addObserver(&context, opened, note("late"));
        noted.append("handler");
    });
    center.post(opened, nullptr);
    EXPECT_EQ(noted, QStringList{"handler"});
    center.post(opened, nullptr);
    EXPECT_EQ(noted, (QStringList{"handler", "handler", "late"}));
}

TEST_F(NotificationCenterTest, AHandlerMayPostInItsTurn)
{
    center.addObserver(&context, opened, [&](const Notification &) { center.post(closed, nullptr); });
    center.addObserver(&context, opened, note("opened"));
    center.addObserver(&context, closed, note("closed"));
    center.post(opened, nullptr);
    EXPECT_EQ(noted, (QStringList{"closed", "opened"}));
}

TEST_F(NotificationCenterTest, TheProcessHasOneOfItsOwn)
{
    EXPECT_EQ(&NotificationCenter::defaultCenter(), &NotificationCenter::defaultCenter());
    NotificationCenter::defaultCenter().addObserver(&context, opened, note("told"));
    NotificationCenter::defaultCenter().post(opened, nullptr);
    EXPECT_EQ(noted, QStringList{"told"});
}
