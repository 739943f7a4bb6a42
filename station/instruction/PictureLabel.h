#pragma once

#include "station/instruction/Picture.h"

#include <QLabel>

namespace station {

/// A picture as wide as its label, but no wider than it is itself, times a zoom; or, in its place, why there
/// is none.
///
/// Thread: the main thread.
class PictureLabel : public QLabel
{
    Q_OBJECT
public:
    explicit PictureLabel(QWidget *parent = nullptr);

    /// `name` is the path as it was written, `about` what stands beside it in the alternative text. Nothing
    /// is shown for an empty name, or while there is neither an image nor a problem.
    void setPicture(const QString &name, const QString &about, const Picture &picture);
    [[nodiscard]] bool hasWarning() const { return !m_picture.problem.isEmpty(); }
    /// Shows the picture for a room of this width, in pixels, at a zoom of 1 and more or less.
    void fit(int width, double zoom);

private:
    Picture m_picture;
    QString m_name;
    QSize m_shownSize;
};

} // namespace station
