#pragma once

#include <QList>
#include <QProgressBar>

namespace station {

/// How far the run is: "7 of 12 systems done", after a Stop "5 stopped", and in a loop "pass 2 of 3", on a
/// bar.
///
/// Thread: the main thread.
class RunProgress : public QProgressBar
{
    Q_OBJECT
public:
    explicit RunProgress(QWidget *parent = nullptr);

    /// A run begins with nothing done. Passes that an earlier run has counted are forgotten.
    void begin();
    /// How many systems are done and how many were stopped, of how many that the run has sequences for.
    void setSystems(int done, int stopped, int all);
    /// How many passes there are to be, and how many each group has finished. Fewer than two are none.
    void setPasses(qint64 maximum, const QList<qint64> &finished);

    /// "7 of 12 systems done · pass 2 of 3".
    [[nodiscard]] QString text() const override;
    /// What of it is shown where it is narrow: "7 of 12 done · pass 2 of 3", elided when even that is too
    /// much.
    [[nodiscard]] QString shownText() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QString passText() const;
    [[nodiscard]] QString textWith(const QString &noun) const;
    void tell();

    int m_done = 0;
    int m_stopped = 0;
    int m_all = 0;
    qint64 m_passes = 0;
    QList<qint64> m_finished;
};

} // namespace station
