#pragma once

#include "station/instruction/Picture.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QTextDocument>

#include <memory>

namespace station {

/// What is shown of a longer instruction, in UTF-16 units.
inline constexpr qsizetype LongestInstruction = 20'000;
/// How many pictures are shown within one.
inline constexpr qsizetype MostPicturesInText = 20;

/// The pictures that a Markdown text names, each once. Thread: any.
[[nodiscard]] QStringList picturesIn(const QString &markdown);

/// A Markdown text as it is shown, without HTML. A picture that is not among those that were read is left
/// out until it is; one that has a problem is told in its place. Nothing is read from anywhere. Thread: any.
[[nodiscard]] std::unique_ptr<QTextDocument> instructionDocument(const QString &markdown,
                                                                 const QHash<QString, Picture> &pictures,
                                                                 const QFont &font, int picturesWidth);

} // namespace station
