#include "station/badge/BadgeField.h"

#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

using station::BadgeField;

namespace {

class BadgeFieldTest : public ::testing::Test
{
protected:
    BadgeFieldTest()
    {
        window.setCentralWidget(other);
        field = make("[0-9]+");
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        field->takeFocus();
    }
    QLineEdit *edit() { return field->findChild<QLineEdit *>("badge"); }
    QToolButton *logOut() { return field->findChild<QToolButton *>("logOut"); }
    /// Real keys to whatever has the focus.
    void type(const QString &text)
    {
        for (const QChar character : text) {
            if (character == '\n')
                QTest::keyClick(window.windowHandle(), Qt::Key_Return);
            else
                QTest::keyClick(window.windowHandle(), character.toLatin1());
        }
    }

    void haveForm(const QString &pattern)
    {
        delete field;
        field = make(pattern);
        field->takeFocus();
    }
    BadgeField *make(const QString &pattern)
    {
        auto *made = new BadgeField({true, pattern}, &window);
        QObject::connect(made, &BadgeField::badgeChanged, made,
                         [this](const QString &badge) { badges += badge; });
        QObject::connect(made, &BadgeField::kept, made, [this](const QString &badge) { kept += badge; });
        QObject::connect(made, &BadgeField::refused, made,
                         [this](const QString &text, const QString &) { refused += text; });
        made->show();
        return made;
    }

    QMainWindow window;
    QPushButton *other = new QPushButton;
    BadgeField *field = nullptr;
    QStringList kept;
    QStringList badges;
    QStringList refused;
};

TEST_F(BadgeFieldTest, TakesABadgeWithReturnAndKeepsItUntilTheNext)
{
    EXPECT_TRUE(field->whyNoRun());
    type("4711\n");
    EXPECT_EQ(field->badge(), "4711");
    EXPECT_FALSE(field->whyNoRun());
    type("12\n");
    EXPECT_EQ(field->badge(), "12") << "in the place of the first one, not behind it";
    EXPECT_EQ(badges, (QStringList{"4711", "12"}));
}

TEST_F(BadgeFieldTest, HalfABadgeStartsNoRun)
{
    type("47");
    ASSERT_TRUE(field->whyNoRun());
    EXPECT_EQ(*field->whyNoRun(), "The badge was not ended with Return");
    field->takeFocus();
    type("11\n");
    EXPECT_EQ(field->badge(), "4711");
    EXPECT_FALSE(field->whyNoRun());
}

TEST_F(BadgeFieldTest, HalfABadgeBehindAnotherStartsNoRunForThatOne)
{
    type("1\n");
    type("4");
    EXPECT_TRUE(field->whyNoRun());
    QTest::keyClick(window.windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(field->whyNoRun()) << "Escape gives it up";
    EXPECT_EQ(field->badge(), "1");
}

TEST_F(BadgeFieldTest, WhatIsNoBadgeIsRefusedVisiblyAndChangesNothing)
{
    type("1\n");
    type("SN1\n");
    EXPECT_EQ(refused, QStringList{"SN1"});
    EXPECT_EQ(field->badge(), "1");
    EXPECT_EQ(edit()->palette().color(QPalette::Base), QColor(0xff, 0x3b, 0x30));
    type("2\n");
    EXPECT_EQ(field->badge(), "2");
    EXPECT_NE(edit()->palette().color(QPalette::Base), QColor(0xff, 0x3b, 0x30));
}

TEST_F(BadgeFieldTest, TakesNoKeysWhileARunIsUnderWayAndTheFocusBehindIt)
{
    type("1\n");
    field->setRunning(true);
    EXPECT_FALSE(edit()->hasFocus());
    EXPECT_FALSE(other->hasFocus()) << "nobody has it until a panel opens";
    type("2\n");
    EXPECT_EQ(field->badge(), "1");
    EXPECT_EQ(edit()->text(), "1");
    field->takeFocus();
    EXPECT_FALSE(edit()->hasFocus());
    field->setRunning(false);
    EXPECT_TRUE(edit()->hasFocus());
    type("2\n");
    EXPECT_EQ(field->badge(), "2");
}

TEST_F(BadgeFieldTest, WithoutAFormAnotherTextIsABadgeOnlyWhenItIsScannedTwice)
{
    haveForm({});
    type("anna\n");
    EXPECT_EQ(field->badge(), "anna") << "nobody is logged in";
    type("SN1\n");
    EXPECT_EQ(field->badge(), "anna");
    EXPECT_EQ(edit()->text(), "SN1");
    EXPECT_EQ(edit()->palette().color(QPalette::Base), QColor(0xff, 0xcc, 0x00));
    EXPECT_EQ(refused, QStringList{"SN1"});
    ASSERT_TRUE(field->whyNoRun());
    EXPECT_EQ(*field->whyNoRun(), "SN1 is not the operator yet; scan it once more, or anna to stay");
    field->takeFocus();
    type("SN1\n");
    EXPECT_EQ(field->badge(), "SN1");
    EXPECT_FALSE(field->whyNoRun());
    EXPECT_NE(edit()->palette().color(QPalette::Base), QColor(0xff, 0xcc, 0x00));
    EXPECT_EQ(badges, (QStringList{"anna", "SN1"}));
}

TEST_F(BadgeFieldTest, WithoutAFormTheBadgeItselfOrEscapeGivesUpWhatWasScannedBetween)
{
    haveForm({});
    type("anna\n");
    type("SN1\n");
    type("anna\n");
    EXPECT_FALSE(field->whyNoRun());
    EXPECT_EQ(kept, QStringList{"anna"});
    type("SN1\n");
    EXPECT_EQ(field->badge(), "anna") << "the two were not one after the other";
    type("SN2\n");
    EXPECT_EQ(field->badge(), "anna");
    QTest::keyClick(window.windowHandle(), Qt::Key_Escape);
    EXPECT_EQ(edit()->text(), "anna");
    EXPECT_FALSE(field->whyNoRun());
    type("SN2\n");
    EXPECT_EQ(field->badge(), "anna") << "given up";
    QTest::mouseClick(logOut(), Qt::LeftButton);
    type("bert\n");
    EXPECT_EQ(field->badge(), "bert") << "nobody was logged in";
}

TEST_F(BadgeFieldTest, LogOutForgetsTheBadge)
{
    EXPECT_FALSE(logOut()->isEnabled());
    type("1\n");
    ASSERT_TRUE(logOut()->isEnabled());
    QTest::mouseClick(logOut(), Qt::LeftButton);
    EXPECT_EQ(field->badge(), "");
    EXPECT_TRUE(field->whyNoRun());
    EXPECT_TRUE(edit()->hasFocus());
    EXPECT_FALSE(logOut()->isEnabled());
}

TEST_F(BadgeFieldTest, ABadgeThatWasGivenAtTheStartIsTaken)
{
    field->setBadge("7");
    EXPECT_FALSE(field->whyNoRun());
    type("8\n");
    EXPECT_EQ(field->badge(), "8");
}

} // namespace
