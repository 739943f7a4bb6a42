#pragma once

#include <QString>
#include <QTextDocument>

namespace station {

/// What a tooltip has to be given so that it shows the text as it is: one that looks like markup ("near
/// <eof>") would be read as such. Escaped here: Qt::convertFromPlainText leaves "&lt;" what it is.
[[nodiscard]] inline QString plainToolTip(const QString &text)
{
    return Qt::mightBeRichText(text)
               ? QStringLiteral("<p style=\"white-space:pre\">%1</p>").arg(text.toHtmlEscaped())
               : text;
}

} // namespace station
