#pragma once

#include <QAbstractButton>

namespace station {

/// The errors that nobody has acknowledged yet, in one line: "3 errors · newest text". Empty while there are
/// none. The text is for the operator; the log has the line as it was logged. What does not fit is elided,
/// and the tooltip shows it whole.
///
/// Thread: the main thread.
class ErrorButton : public QAbstractButton
{
    Q_OBJECT
public:
    explicit ErrorButton(QWidget *parent = nullptr);

    /// So many more, of which this is the newest.
    void add(int errors, const QString &newest);
    void forget();
    [[nodiscard]] int errors() const { return m_errors; }
    /// All of the line.
    [[nodiscard]] QString wholeText() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void tell();

    int m_errors = 0;
    QString m_newest;
};

} // namespace station
