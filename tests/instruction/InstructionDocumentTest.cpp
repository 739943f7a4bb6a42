#include "station/instruction/InstructionDocument.h"

#include "tests/instruction/PictureFiles.h"

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextTable>
#include <QUrl>

using station::instructionDocument;
using station::Picture;
using station::picturesIn;
using Pictures = QHash<QString, Picture>;

namespace {

std::unique_ptr<QTextDocument> made(const QString &markdown, const Pictures &pictures = {})
{
    return instructionDocument(markdown, pictures, QFont(), 300);
}

QString plain(const QString &markdown, const Pictures &pictures = {})
{
    return made(markdown, pictures)->toPlainText();
}

QList<QTextImageFormat> images(const QTextDocument &document)
{
    QList<QTextImageFormat> found;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto at = block.begin(); !at.atEnd(); ++at) {
            if (at.fragment().charFormat().isImageFormat())
                found.append(at.fragment().charFormat().toImageFormat());
        }
    }
    return found;
}

TEST(InstructionDocument, ReadsMarkdown)
{
    const auto document = made("# Title\n\nSome **bold** text\n\n| a | b |\n|---|---|\n| 1 | 2 |\n");
    EXPECT_EQ(document->firstBlock().blockFormat().headingLevel(), 1);
    EXPECT_TRUE(document->toPlainText().contains("Some bold text"));
    EXPECT_NE(qobject_cast<QTextTable *>(document->rootFrame()->childFrames().value(0)), nullptr);
}

TEST(InstructionDocument, ShowsHtmlAsItIsWritten)
{
    EXPECT_EQ(plain("a <b>bold</b> <img src='/etc/passwd'> word"),
              "a <b>bold</b> <img src='/etc/passwd'> word");
    EXPECT_TRUE(plain("<script>alert(1)</script>").contains("<script>"));
    EXPECT_TRUE(images(*made("<img src='lamp.png'>")).isEmpty());
}

TEST(InstructionDocument, NamesThePicturesInTheText)
{
    EXPECT_EQ(picturesIn("![a](lamp.png) and ![b](steps/one.jpg) and ![a](lamp.png)"),
              (QStringList{"lamp.png", "steps/one.jpg"}));
    EXPECT_EQ(picturesIn("no picture"), QStringList());
}

TEST(InstructionDocument, ShowsThePicturesThatWereRead)
{
    QImage wide(600, 100, QImage::Format_RGB32);
    wide.fill(Qt::green);
    const auto document = made("before ![x](wide.png) after", {{"wide.png", {wide, {}}}});
    const QList<QTextImageFormat> shown = images(*document);
    ASSERT_EQ(shown.size(), 1);
    EXPECT_EQ(shown.first().width(), 300);
    EXPECT_EQ(document->resource(QTextDocument::ImageResource, QUrl(shown.first().name())).value<QImage>(),
              wide);
}

TEST(InstructionDocument, ALaidOutTextReadsNoFileByItself)
{
    const testsupport::PictureFiles files;
    const QString path = files.draw("red.png", {500, 400});
    const auto document = made("![x](" + path + ")");
    EXPECT_TRUE(images(*document).isEmpty());
    EXPECT_LT(document->size().height(), 300);
}

TEST(InstructionDocument, TellsInItsPlaceWhyAPictureIsNotShown)
{
    EXPECT_EQ(plain("before ![x](none.png) after", {{"none.png", {{}, "there is no such file"}}}),
              "before \u26a0 none.png: there is no such file after");
}

TEST(InstructionDocument, AMegabyteIsCutWithAnEllipsis)
{
    const QString text = plain(QString(1'000'000, 'x'));
    EXPECT_EQ(text.size(), station::LongestInstruction + 1);
    EXPECT_TRUE(text.endsWith(QChar(0x2026)));
    EXPECT_EQ(plain(QString(station::LongestInstruction, 'x')).size(), station::LongestInstruction);
}

TEST(InstructionDocument, CutsNoCharacterInTwo)
{
    const QString pair = QString::fromUtf8("\U0001F50D");
    const QString text = plain("x" + pair.repeated(station::LongestInstruction));
    ASSERT_TRUE(text.endsWith(QChar(0x2026)));
    EXPECT_TRUE(text.at(text.size() - 2).isLowSurrogate());
}

TEST(InstructionDocument, SurvivesWhatNobodyWrites)
{
    for (const char *part : {">", "- ", "[", "![", "*", "`", "#", "|", "\\", "<", "1. ", "[a](", "    "}) {
        const auto document = made(QString(part).repeated(3000));
        document->setTextWidth(300);
        EXPECT_GT(document->size().height(), 0) << part;
    }
}

} // namespace
