#include "station/Senses.h"

#include "kovan/KovanUIExtension/KVKExtensionEntryRelay.h"
#include "station/badge/BadgeField.h"
#include "station/window/StationWindow.h"
#include "tests/station/StationFiles.h"

#include <QLineEdit>
#include <QTest>

using station::Senses;
using station::StationConfig;
using station::StationWindow;

namespace {

/// A station's window with what the configuration has for the person at it.
class SensesTest : public ::testing::Test, public KVKExtensionEntryObserver
{
protected:
    SensesTest()
    {
        KVKExtensionEntryRelay::sharedEntryRelay()->addObserver(this);
        config.badge = {true, "[0-9]+"};
    }
    ~SensesTest() override { KVKExtensionEntryRelay::sharedEntryRelay()->removeObserver(this); }
    void entryAccepted(const KVKAcceptedEntry &entry) override { told.append("accepted " + entry.text); }
    void entryRefused(const KVKRefusedEntry &entry) override { told.append("refused " + entry.text); }

    Senses &start(const QString &badge = {}, bool hasPerson = true)
    {
        window = std::make_unique<StationWindow>("Station", QList<station::SystemRow>{{0, "G1", "S1"}});
        senses = std::make_unique<Senses>(config, *window,
                                          badge.isEmpty() ? QStringList() : QStringList{badge}, hasPerson);
        window->show();
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
        return *senses;
    }
    QLineEdit *edit() { return window->findChild<QLineEdit *>("badge"); }
    /// Real keys to whatever has the focus.
    void type(const QString &text)
    {
        for (const QChar character : text) {
            if (character == '\n')
                QTest::keyClick(window->windowHandle(), Qt::Key_Return);
            else
                QTest::keyClick(window->windowHandle(), character.toLatin1());
        }
    }

    StationConfig config;
    std::unique_ptr<StationWindow> window;
    std::unique_ptr<Senses> senses;
    QStringList told;
};

TEST_F(SensesTest, ARunWaitsForABadgeAndSaysSo)
{
    start();
    EXPECT_TRUE(edit()->hasFocus());
    window->setFocus();
    EXPECT_FALSE(senses->mayRun());
    EXPECT_EQ(window->message(), "Not started: Scan or type your badge first");
    EXPECT_EQ(told, QStringList{"refused "});
    EXPECT_TRUE(edit()->hasFocus()) << "the badge can be scanned at once";
    type("4711\n");
    EXPECT_EQ(window->message(), "Operator: 4711");
    EXPECT_TRUE(senses->mayRun());
    EXPECT_EQ(senses->badge(), "4711");
}

TEST_F(SensesTest, ABadgeThatIsScannedWhileRunIsPressedCountsWholeOrNotAtAll)
{
    start();
    type("47");
    EXPECT_FALSE(senses->mayRun());
    EXPECT_EQ(window->message(), "Not started: The badge was not ended with Return");
    type("11\n");
    EXPECT_EQ(senses->badge(), "4711");
    EXPECT_TRUE(senses->mayRun());
}

TEST_F(SensesTest, WhatIsScannedDuringARunIsNoBadge)
{
    start();
    type("1\n");
    senses->setRunning(true);
    type("26000117\n");
    EXPECT_EQ(senses->badge(), "1");
    senses->setRunning(false);
    EXPECT_TRUE(edit()->hasFocus());
    EXPECT_TRUE(senses->mayRun()) << "the badge stays";
    type("2\n");
    EXPECT_EQ(senses->badge(), "2");
}

TEST_F(SensesTest, WhatIsNoBadgeIsRefusedOnTheStatusLine)
{
    start();
    type("SN1\n");
    EXPECT_EQ(window->message(), "Badge refused: SN1 (it does not have the form of a badge)");
    EXPECT_EQ(told, QStringList{"refused SN1"});
    EXPECT_FALSE(senses->mayRun());
}

TEST_F(SensesTest, ASerialNumberBetweenTwoRunsIsNoBadgeAndIsSaidSo)
{
    config.badge.pattern.clear();
    start();
    type("4711\n");
    senses->setRunning(true);
    senses->setRunning(false);
    type("26000117\n");
    EXPECT_EQ(window->message(),
              "Badge refused: 26000117 (4711 stays the operator; scan it once more to change)");
    EXPECT_FALSE(senses->mayRun());
    EXPECT_EQ(window->message(),
              "Not started: 26000117 is not the operator yet; scan it once more, or 4711 to stay");
    type("4711\n");
    EXPECT_EQ(window->message(), "Operator: 4711");
    EXPECT_TRUE(senses->mayRun());
    EXPECT_EQ(told, (QStringList{"accepted 4711", "refused 26000117", "refused ", "accepted 4711"}));
}

TEST_F(SensesTest, AScannersPrefixIsNoPartOfABadge)
{
    config.scanner = {"#", "%", {Qt::Key_Return}};
    start();
    type("#4711%\n");
    EXPECT_EQ(senses->badge(), "4711");
    EXPECT_EQ(told, QStringList{"accepted 4711"});
}

TEST_F(SensesTest, ABadgeOfTheCommandLineIsNotAskedFor)
{
    start("12", false);
    EXPECT_TRUE(senses->mayRun());
    EXPECT_EQ(senses->badge(), "12");
    EXPECT_EQ(edit()->text(), "12");
}

TEST_F(SensesTest, WhereNobodyIsAskedABadgeMayBeGivenAllTheSame)
{
    config.badge = {};
    start("anna");
    EXPECT_EQ(edit(), nullptr);
    EXPECT_TRUE(senses->mayRun());
    EXPECT_EQ(senses->badge(), "anna");
}

} // namespace
