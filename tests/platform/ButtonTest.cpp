#include "platform/Button.h"

#include "tests/platform/ViewFixture.h"

#include <QCoreApplication>
#include <QPointer>

using platform::Button;

namespace {

/// Counts how often a button, or what lies in it, is painted.
class Paints : public QObject
{
public:
    explicit Paints(QWidget &button)
    {
        for (QWidget *each : button.findChildren<QWidget *>())
            each->installEventFilter(this);
    }
    [[nodiscard]] int count() const { return m_count; }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

private:
    int m_count = 0;
};

using ButtonTest = testsupport::ViewFixture;

} // namespace

TEST_F(ButtonTest, TellsOfAClickBeforeItIsPainted)
{
    for (const Button::Type type : {Button::Type::MomentaryPush, Button::Type::Switch}) {
        auto *button = add<Button>({10, 10, 100, 30});
        button->setButtonType(type);
        QCoreApplication::processEvents();
        const Paints paints(*button);
        int paintsBefore = -1;
        button->setTarget(button, "press:", [&](platform::View *) { paintsBefore = paints.count(); });
        click(button);
        EXPECT_EQ(paintsBefore, 0);
        QCoreApplication::processEvents();
        EXPECT_GT(paints.count(), 0) << "the next frame shows it";
        button->removeFromSuperview();
    }
}

TEST_F(ButtonTest, MayBeDeletedByWhoHearsOfItsClick)
{
    const QPointer<Button> button = add<Button>({10, 10, 100, 30});
    button->setTarget(button, "press:", [&](platform::View *) { delete button.data(); });
    click(button);
    EXPECT_TRUE(button.isNull());
}
