#include "station/instruction/InstructionDocument.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextTable>
#include <QUrl>

#include <vector>

namespace station {
namespace {

struct Place
{
    int position;
    int length;
    QTextImageFormat format;
};

QString shortened(const QString &markdown)
{
    if (markdown.size() <= LongestInstruction)
        return markdown;
    // Not through the midst of a character.
    const qsizetype cut =
        markdown.at(LongestInstruction - 1).isHighSurrogate() ? LongestInstruction - 1 : LongestInstruction;
    return markdown.left(cut) + QChar(0x2026);
}

/// The document has no layout while nobody shows it: a layout would read the pictures that it names.
std::unique_ptr<QTextDocument> read(const QString &markdown)
{
    auto document = std::make_unique<QTextDocument>();
    document->setUndoRedoEnabled(false);
    document->setMarkdown(shortened(markdown),
                          QTextDocument::MarkdownFeatures(QTextDocument::MarkdownDialectGitHub |
                                                          QTextDocument::MarkdownNoHTML));
    return document;
}

std::vector<Place> places(const QTextDocument &document)
{
    std::vector<Place> found;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto at = block.begin(); !at.atEnd(); ++at) {
            const QTextFragment fragment = at.fragment();
            if (fragment.charFormat().isImageFormat())
                found.push_back(
                    {fragment.position(), fragment.length(), fragment.charFormat().toImageFormat()});
        }
    }
    return found;
}

/// With lines that can be seen and room around the words.
void dressTables(const QTextFrame &frame)
{
    for (QTextFrame *child : frame.childFrames()) {
        if (auto *table = qobject_cast<QTextTable *>(child)) {
            QTextTableFormat format = table->format();
            format.setBorderCollapse(true);
            format.setBorder(1);
            format.setBorderBrush(QColor(170, 170, 176));
            format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
            format.setCellPadding(5);
            format.setTopMargin(8);
            format.setBottomMargin(8);
            table->setFormat(format);
        }
        dressTables(*child);
    }
}

QString warning(const QString &name, const QString &problem)
{
    return QStringLiteral("\u26a0 %1: %2").arg(name, problem);
}

} // namespace

QStringList picturesIn(const QString &markdown)
{
    const auto document = read(markdown);
    QStringList names;
    for (const Place &place : places(*document)) {
        if (!names.contains(place.format.name()))
            names.append(place.format.name());
    }
    return names;
}

std::unique_ptr<QTextDocument> instructionDocument(const QString &markdown,
                                                   const QHash<QString, Picture> &pictures, const QFont &font,
                                                   int picturesWidth)
{
    auto document = read(markdown);
    document->setDefaultFont(font);
    dressTables(*document->rootFrame());
    std::vector<Place> found = places(*document);
    // From the end: what is put in does not move the places before it.
    for (auto place = found.rbegin(); place != found.rend(); ++place) {
        QTextCursor cursor(document.get());
        cursor.setPosition(place->position);
        cursor.setPosition(place->position + place->length, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
        const QString name = place->format.name();
        const auto picture = pictures.constFind(name);
        if (picture == pictures.constEnd())
            continue;
        if (picture->image.isNull()) {
            QTextCharFormat amber;
            amber.setBackground(QColor(255, 213, 79));
            cursor.insertText(warning(name, picture->problem), amber);
            continue;
        }
        // Under a name that stands for nothing else.
        const QUrl resource(QStringLiteral("picture:%1").arg(place->position));
        QTextImageFormat shown;
        shown.setName(resource.toString());
        shown.setProperty(QTextFormat::ImageAltText, place->format.property(QTextFormat::ImageAltText));
        const QSize size = picture->image.deviceIndependentSize().toSize();
        shown.setWidth(qMin(size.width(), picturesWidth));
        document->addResource(QTextDocument::ImageResource, resource, picture->image);
        cursor.insertImage(shown);
    }
    return document;
}

} // namespace station
