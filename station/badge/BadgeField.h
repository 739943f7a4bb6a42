#pragma once

#include "station/badge/BadgeRule.h"

#include <QWidget>

class QLineEdit;
class QToolButton;

namespace station {

/// Where an operator scans or types a badge, before Run.
///
/// Return takes what was written; a badge stays until another one was taken, or until "Log out". While a run
/// is under way the badge cannot be changed and the field takes no keys: what is scanned then is a panel's.
/// Between two runs it has the focus. Thread: the main thread.
class BadgeField : public QWidget
{
    Q_OBJECT
public:
    explicit BadgeField(const BadgeRule &rule, QWidget *parent = nullptr);

    /// The badge that was taken last; empty when nobody is logged in.
    [[nodiscard]] const QString &badge() const { return m_badge; }
    /// Takes a badge as if it had been written. Requires: the rule takes it.
    void setBadge(const QString &badge);

    /// Why a run cannot start, in words for the operator; nothing when it can. What was written and not ended
    /// with Return is no badge yet, and might be half of one.
    [[nodiscard]] std::optional<QString> whyNoRun() const;
    /// Tells the field that a run is under way, or that none is any more.
    void setRunning(bool running);
    /// Puts the focus into the field, where it can have it.
    void takeFocus();

signals:
    /// Another badge was taken; an empty one when the operator has logged out.
    void badgeChanged(const QString &badge);
    /// What was written is no badge, and why, in words for the operator.
    void refused(const QString &text, const QString &why);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void take();
    void logOut();
    void showState(bool isRefused);

    BadgeRule m_rule;
    QString m_badge;
    QLineEdit *m_edit;
    QToolButton *m_logOut;
    bool m_running = false;
};

} // namespace station
