#pragma once

#include "station/badge/BadgeRule.h"

#include <QWidget>

class QLineEdit;
class QToolButton;

namespace station {

/// Where an operator scans or types a badge, before Run.
///
/// Return takes what was written; a badge stays until another one was taken, or until "Log out". Where badges
/// have no form that tells them from serial numbers, another text takes the place of a badge only when it is
/// written twice: meanwhile it stands in the field, which is yellow, and no run starts; the badge itself, or
/// Escape, gives it up. While a run is under way the badge cannot be changed and the field takes no keys:
/// what is scanned then is a panel's. Between two runs it has the focus. Thread: the main thread.
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
    /// Whether a badge can be written: no run is under way.
    [[nodiscard]] bool takesBadges() const { return !m_running; }
    /// Forgets the badge, as the button "Log out" does. Nothing happens while a run is under way.
    void logOut();
    /// Puts the focus into the field, where it can have it.
    void takeFocus();

signals:
    /// Another badge was taken; an empty one when the operator has logged out.
    void badgeChanged(const QString &badge);
    /// What was written is no badge, or not one yet, and why, in words for the operator.
    void refused(const QString &text, const QString &why);
    /// The text that was to be written once more was given up: the badge stays.
    void kept(const QString &badge);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class Look { Plain, Refused, Doubted };

    void take();
    void doubt(const QString &text);
    void showState(Look look);

    BadgeRule m_rule;
    QString m_badge;
    QString m_doubted; ///< What would be the badge if it were written once more; empty for nothing.
    QLineEdit *m_edit;
    QToolButton *m_logOut;
    bool m_running = false;
};

} // namespace station
