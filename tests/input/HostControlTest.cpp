#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"

#include <QListWidget>
#include <QPushButton>

using platform::Array;
using platform::Value;

namespace {

/// Keys while a control of the host, beside the plug-in's view, has the focus.
class HostControlTest : public testsupport::PluginFixture
{
protected:
    /// A button of the host's own that counts how often it was pressed.
    void focusButton()
    {
        m_button = new QPushButton(QStringLiteral("Run"), &window());
        QObject::connect(m_button, &QPushButton::clicked, m_button, [this] { ++presses; });
        m_button->show();
        m_button->setFocus();
    }
    int presses = 0;

private:
    QPushButton *m_button = nullptr;
};

TEST_F(HostControlTest, ABlankAloneWorksIt)
{
    focusButton();
    type(" ");
    EXPECT_EQ(presses, 1);
    EXPECT_EQ(operatorLines, QStringList());
}

TEST_F(HostControlTest, AScanWithBlanksGoesToTheFieldThatWaitsAndPressesNothing)
{
    showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    focusButton();
    scan("A B C");
    EXPECT_EQ(record("0").value("SN"), Value("A B C"));
    EXPECT_EQ(presses, 0);
}

TEST_F(HostControlTest, AScanWithBlanksThatNobodyWaitsForIsRefusedWholeAndPressesNothing)
{
    focusButton();
    expectError("Entry refused: A B C");
    scan("A B C");
    EXPECT_EQ(operatorLines, QStringList{"Entry refused: A B C (no field waits for it)"});
    EXPECT_EQ(presses, 0);
}

TEST_F(HostControlTest, AScanIsNoSearchInAList)
{
    showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    auto *list = new QListWidget(&window());
    list->addItems({"Last", "Unit"});
    list->setCurrentRow(0);
    list->show();
    list->setFocus();
    scan("Unit7");
    EXPECT_EQ(record("0").value("SN"), Value("Unit7"));
    EXPECT_EQ(list->currentRow(), 0);
}

} // namespace
