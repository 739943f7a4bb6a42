#pragma once

#include <QString>
#include <QTextDocument>

namespace station {

/// What a tooltip has to be given so that it shows the text as it is: one that looks like markup ("near
/// <eof>") would be read as such.
[[nodiscard]] inline QString plainToolTip(const QString &text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

} // namespace station
