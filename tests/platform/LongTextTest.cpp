#include "platform/Button.h"
#include "platform/TextLines.h"
#include "tests/platform/ViewFixture.h"

#include <QAbstractButton>

namespace {

using namespace platform;

const QChar Ellipsis(0x2026);

/// So long that the suite's time is up where the cost grows with the text.
QString huge(const QString &pattern)
{
    return pattern.repeated(16'000'000 / pattern.size());
}

class LongTextTest : public testsupport::ViewFixture, public ::testing::WithParamInterface<const char *>
{};

TEST_P(LongTextTest, IsCutWithAnEllipsisInALabelAndInAButton)
{
    const QString text = huge(GetParam());
    auto *label = add<TextField>({10, 10, 200, 100});
    label->setStringValue(text);
    EXPECT_EQ(label->stringValue().size(), text.size());
    EXPECT_FALSE(picture(label).isNull());
    EXPECT_LE(label->toolTip().size(), 2 * TextLines::MaximumToolTip);
    EXPECT_TRUE(label->toolTip().endsWith(Ellipsis));

    auto *button = add<Button>({10, 150, 200, 30});
    button->setTitle(text);
    EXPECT_FALSE(picture(button).isNull());
    EXPECT_EQ(button->toolTip(), label->toolTip());
    EXPECT_TRUE(button->findChild<QAbstractButton *>()->text().endsWith(Ellipsis));

    const TextLines lines = TextLines::broken(text, QFont(), {200, 100}, 0);
    EXPECT_FALSE(lines.isWhole);
    EXPECT_TRUE(lines.lines.last().endsWith(Ellipsis));
    EXPECT_EQ(lines.lines, TextLines::broken(text.left(10'000), QFont(), {200, 100}, 0).lines);
}

INSTANTIATE_TEST_SUITE_P(Patterns, LongTextTest, ::testing::Values("A", "word ", "\xd7\x90\xd7\x91 "),
                         [](const auto &tested) { return "Pattern" + std::to_string(tested.index); });

TEST(TextLinesTest, ATextThatFitsInOneLineAfterItsLineBreaksIsWhole)
{
    const TextLines lines = TextLines::broken("a\nb\n", QFont(), {200, 10}, 1);
    EXPECT_EQ(lines.lines, QStringList{"a b"});
    EXPECT_TRUE(lines.isWhole);
}

TEST(TextLinesTest, ALineThatStandsForManyLineBreaksEndsWithAnEllipsis)
{
    const TextLines lines = TextLines::broken("a" + QString(100'000, '\n') + "b", QFont(), {200, 10}, 1);
    ASSERT_EQ(lines.lines.size(), 1);
    EXPECT_TRUE(lines.lines.first().endsWith(Ellipsis));
    EXPECT_FALSE(lines.isWhole);
}

TEST(TextLinesTest, AShortenedTextIsNotCutInsideACharacter)
{
    const char32_t face = U'\U0001F600';
    const QString text = QString::fromUcs4(&face, 1).repeated(100);
    EXPECT_EQ(TextLines::shortened(text, 50), text.left(50) + Ellipsis);
    EXPECT_EQ(TextLines::shortened(text, 51), text.left(52) + Ellipsis);
    EXPECT_EQ(TextLines::shortened(text, 1000), text);
}

TEST(ToolTipTest, AShortTextIsAsItIs)
{
    EXPECT_EQ(TextLines::toolTip("two\nlines"), "two\nlines");
}

TEST(ToolTipTest, ALongLineIsBrokenBetweenWords)
{
    const QString words = QString("word ").repeated(50).trimmed();
    const QStringList lines = TextLines::toolTip(words).split('\n');
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines.join(' '), words);
    EXPECT_LE(lines.first().size(), 100);
}

TEST(ToolTipTest, ALongWordIsBrokenWhereTheLineEnds)
{
    EXPECT_EQ(TextLines::toolTip(QString(250, 'A')),
              QString(100, 'A') + '\n' + QString(100, 'A') + '\n' + QString(50, 'A'));
}

TEST(ToolTipTest, AVeryLongTextIsCutWithAnEllipsis)
{
    QString text = TextLines::toolTip(QString(1'000'000, 'A'));
    EXPECT_TRUE(text.endsWith(Ellipsis));
    EXPECT_EQ(text.remove('\n').size(), TextLines::MaximumToolTip + 1);
}

TEST(ToolTipTest, MarkupIsShownAsItWasWritten)
{
    EXPECT_TRUE(TextLines::toolTip("<b>bold</b>").contains("&lt;b&gt;"));
    EXPECT_TRUE(TextLines::toolTip("<b>&lt;</b>").contains("&lt;b&gt;&amp;lt;"));
}

TEST(TextLines, EachFontRoomAndLimitHasLinesOfItsOwn)
{
    QFont font;
    font.setPixelSize(12);
    QFont large = font;
    large.setPixelSize(30);
    QFont bold = font;
    bold.setBold(true);
    const QString text = QStringLiteral("one two three four five six");
    const auto lines = [&](const QFont &with, const QSizeF &room, int most) {
        return TextLines::broken(text, with, room, most);
    };
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(lines(font, {1000, 100}, 0).lines, QStringList{text});
        EXPECT_GT(lines(font, {60, 100}, 0).lines.size(), 2);
        EXPECT_EQ(lines(font, {60, 100}, 1).lines.size(), 1);
        EXPECT_FALSE(lines(font, {60, 100}, 1).isWhole);
        EXPECT_EQ(lines(font, {60, 20}, 0).lines.size(), 1);
        EXPECT_GT(lines(large, {1000, 100}, 0).lineHeight, lines(font, {1000, 100}, 0).lineHeight);
        EXPECT_EQ(TextLines::broken("one", font, {1000, 100}, 0).lines, QStringList{"one"});
    }
    // So wide that the plain text fits and the bold one does not.
    const double width = QFontMetricsF(font).horizontalAdvance(text) + 1.0;
    ASSERT_GT(QFontMetricsF(bold).horizontalAdvance(text), width);
    EXPECT_TRUE(lines(font, {width, 14}, 1).isWhole);
    EXPECT_FALSE(lines(bold, {width, 14}, 1).isWhole);
}

} // namespace
