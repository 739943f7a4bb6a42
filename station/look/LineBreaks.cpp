#include "station/look/LineBreaks.h"

#include <algorithm>

namespace station {
namespace {

bool isBreak(QChar character)
{
    switch (character.unicode()) {
    case u'\n':
    case u'\r':
    case u'\v':
    case u'\f':
    case 0x85: // next line
    case QChar::LineSeparator:
    case QChar::ParagraphSeparator:
    case 0xfdd0: // a text document begins and ends a frame with these
    case 0xfdd1:
        return true;
    default:
        return false;
    }
}

} // namespace

QString withoutLineBreaks(QString text, const QString &instead)
{
    while (!text.isEmpty() && isBreak(text.back()))
        text.chop(1);
    if (std::none_of(text.cbegin(), text.cend(), isBreak))
        return text;
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!isBreak(text.at(i)))
            result += text.at(i);
        // A carriage return and its line feed are one break.
        else if (text.at(i) != QLatin1Char('\n') || i == 0 || text.at(i - 1) != QLatin1Char('\r'))
            result += instead;
    }
    return result;
}

} // namespace station
