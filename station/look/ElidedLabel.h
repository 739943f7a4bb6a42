#pragma once

#include <QLabel>

namespace station {

/// A line of text that asks for its whole width and makes do with less: what does not fit is elided, and the
/// tooltip shows it whole.
///
/// Thread: the main thread.
class ElidedLabel : public QLabel
{
    Q_OBJECT
public:
    /// `spokenName` stands before the text in the accessible name: "Status: All passed".
    explicit ElidedLabel(const QString &spokenName, const QString &text = {}, QWidget *parent = nullptr);

    /// What is to be read; text() has what there is room for.
    [[nodiscard]] const QString &wholeText() const { return m_whole; }
    void setWholeText(const QString &text);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    [[nodiscard]] int widthAround() const;
    void fit();

    QString m_spokenName;
    QString m_whole;
};

} // namespace station
