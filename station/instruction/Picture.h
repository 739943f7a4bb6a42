#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

namespace station {

/// A picture as it is shown, or in words why there is none.
struct Picture
{
    /// No edge of it is longer than LongestEdge: nobody sees more.
    static constexpr int LongestEdge = 2048;
    static constexpr qint64 MostBytes = 64LL * 1024 * 1024;
    static constexpr qint64 MostPixels = 64'000'000;
    /// What these take with four bytes each; for whoever sets QImageReader's limit.
    static constexpr int MostMegabytesDecoded = 256;

    QImage image;    ///< Null when there is a problem.
    QString problem; ///< "there is no such file"; empty otherwise.
};

/// Reads what a sequence names from where it may lie (see findImage()): PNG, JPEG, SVG. Sizes are looked at
/// before anything is decoded. Takes its time. Thread: any.
[[nodiscard]] Picture readPicture(const QString &written, const QStringList &folders);

} // namespace station
