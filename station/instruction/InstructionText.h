#pragma once

#include "station/instruction/Picture.h"

#include <QHash>
#include <QTextEdit>

namespace station {

/// A Markdown text as high as it needs to be; whoever holds it scrolls. Links lead nowhere, and nothing but
/// the pictures that it is given is shown in it.
///
/// Thread: the main thread.
class InstructionText : public QTextEdit
{
    Q_OBJECT
public:
    explicit InstructionText(QWidget *parent = nullptr);

    /// Pictures that are not there yet are left out; see instructionDocument().
    void setInstruction(const QString &markdown, const QHash<QString, Picture> &pictures);
    /// Lays the text out for a room of this width, in pixels.
    void fit(int width, double zoom);

    /// Finds nothing: what is shown was put into the document.
    [[nodiscard]] QVariant loadResource(int type, const QUrl &name) override;

protected:
    void wheelEvent(QWheelEvent *event) override;

private:
    void lay();

    QString m_markdown;
    QHash<QString, Picture> m_pictures;
    int m_width = 0;
    double m_zoom = 1.0;
    bool m_isLaid = false;
};

} // namespace station
