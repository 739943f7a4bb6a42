#include "station/instruction/InstructionText.h"

#include "station/instruction/InstructionDocument.h"
#include "station/look/WindowLook.h"

#include <QPointer>
#include <QWheelEvent>

#include <cmath>

namespace station {
namespace {

constexpr int TextPixels = 15;
/// A picture may be looked at more closely than letters need.
constexpr double LargestLetters = 2.5;
constexpr double SmallestLetters = 0.7;

} // namespace

InstructionText::InstructionText(QWidget *parent)
    : QTextEdit(parent)
{
    setReadOnly(true);
    setAccessibleName(QStringLiteral("Instruction"));
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setContextMenuPolicy(Qt::NoContextMenu);
    setAcceptDrops(false);
    // A click into the text must not take the focus from the field that is being scanned into.
    setFocusPolicy(Qt::NoFocus);
    hide();
}

void InstructionText::setInstruction(const QString &markdown, const QHash<QString, Picture> &pictures)
{
    m_markdown = markdown;
    m_pictures = pictures;
    m_isLaid = false;
    setVisible(!markdown.isEmpty());
    lay();
}

void InstructionText::fit(int width, double zoom)
{
    const double letters = qBound(SmallestLetters, zoom, LargestLetters);
    if (width == m_width && letters == m_zoom && m_isLaid)
        return;
    m_width = width;
    m_zoom = letters;
    lay();
}

void InstructionText::lay()
{
    if (m_width <= 0)
        return;
    m_isLaid = true;
    const int margin = static_cast<int>(std::ceil(document()->documentMargin()));
    auto made = instructionDocument(m_markdown, m_pictures,
                                    windowFont(static_cast<int>(std::lround(TextPixels * m_zoom))),
                                    m_width - 2 * margin);
    made->setTextWidth(m_width);
    const int height = static_cast<int>(std::ceil(made->size().height()));
    made->setParent(this);
    // The widget deletes the one that it began with, and no other one.
    const QPointer<QTextDocument> before = document();
    setDocument(made.release());
    delete before.data();
    setFixedSize(m_width, qMax(height, 1));
}

QVariant InstructionText::loadResource(int, const QUrl &)
{
    return {};
}

/// The wheel scrolls what holds the text, and zooms there.
void InstructionText::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

} // namespace station
