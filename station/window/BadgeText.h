#pragma once

#include <QFont>
#include <QPainter>
#include <QRect>
#include <QString>
#include <QStringList>

namespace station {

/// A text in one line where its width is enough, otherwise in smaller letters in as many lines as it needs,
/// up to a few; what is more is elided on the last one.
///
/// Thread: the main thread. Widths and heights in pixels.
class BadgeText
{
public:
    static constexpr int MostLines = 4;

    BadgeText(QString text, const QFont &font);

    /// The width at which the text takes one line.
    [[nodiscard]] int width() const;
    [[nodiscard]] int heightFor(int width) const;
    /// The width at which the text takes two lines, broken at a blank.
    [[nodiscard]] int widthOfTwoLines() const;
    /// Draws it left-aligned, in the middle of the rectangle's height, with the painter's pen.
    void draw(QPainter *painter, const QRect &rect) const;

private:
    [[nodiscard]] QStringList lines(int width) const;
    [[nodiscard]] const QFont &fontFor(int width) const;

    QString m_text;
    QFont m_font;
    QFont m_smallFont;
};

} // namespace station
