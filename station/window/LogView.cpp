#include "station/window/LogView.h"

#include "station/look/WindowLook.h"

#include <QFontDatabase>
#include <QScrollBar>
#include <QTextBlock>

namespace station {
namespace {

constexpr int TextPixels = 13;

QTextCharFormat formatOf(KVKLogLevel level, const QPalette &palette)
{
    QTextCharFormat format;
    format.setForeground(logColor(level, palette));
    if (level == KVKLogLevel::Error)
        format.setFontWeight(QFont::Bold);
    return format;
}

QString textOf(const LogLine &line)
{
    return line.time.isValid() ? line.time.toString(QStringLiteral("HH:mm:ss.zzz  ")) + line.text : line.text;
}

} // namespace

LogView::LogView(int mostLines, QWidget *parent)
    : QPlainTextEdit(parent)
{
    setMaximumBlockCount(mostLines);
    setLook();
    followNewest();
}

void LogView::setLook()
{
    QFont text = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    text.setPixelSize(TextPixels);
    setFont(text);
    setReadOnly(true);
    setTabChangesFocus(true);
    setAccessibleName(QStringLiteral("Lines of the log"));
    nameScrollBars(*this);
    setUndoRedoEnabled(false);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setFrameShape(QFrame::NoFrame);
    // A click into the log must not take the focus from the field that is being scanned into.
    setFocusPolicy(Qt::TabFocus);
}

/// The bar's range changes when lines come, and once more when a long one brings the other scroll bar, which
/// takes a line of the pane's height: the pane follows whichever it is, until the reader moves the bar.
void LogView::followNewest()
{
    QScrollBar *bar = verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this,
            [this, bar](int value) { m_follows = value == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int newest) {
        if (m_follows)
            bar->setValue(newest);
    });
}

QSize LogView::sizeHint() const
{
    return {600, 130};
}

QSize LogView::minimumSizeHint() const
{
    return {200, 60};
}

void LogView::empty()
{
    clear();
    m_follows = true;
}

void LogView::write(const QList<LogLine> &lines)
{
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    cursor.beginEditBlock();
    for (const LogLine &line : lines) {
        if (!document()->isEmpty())
            cursor.insertBlock();
        cursor.insertText(textOf(line), formatOf(line.level, palette()));
    }
    cursor.endEditBlock();
}

} // namespace station
