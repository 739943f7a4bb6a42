#include "station/badge/BadgeField.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

namespace station {

namespace {

constexpr int EditWidth = 170;

} // namespace

BadgeField::BadgeField(const BadgeRule &rule, QWidget *parent)
    : QWidget(parent)
    , m_rule(rule)
    , m_edit(new QLineEdit)
    , m_logOut(new QToolButton)
{
    auto *caption = new QLabel(QStringLiteral("Operator:"));
    caption->setBuddy(m_edit);
    m_edit->setObjectName(QStringLiteral("badge"));
    m_edit->setAccessibleName(QStringLiteral("Operator's badge"));
    m_edit->setPlaceholderText(QStringLiteral("Scan your badge"));
    m_edit->setToolTip(QStringLiteral("Scan or type your badge and end it with Return"));
    m_edit->setFixedWidth(EditWidth);
    m_edit->installEventFilter(this);
    m_logOut->setObjectName(QStringLiteral("logOut"));
    m_logOut->setText(QStringLiteral("Log out"));
    m_logOut->setToolTip(QStringLiteral("Forgets the badge: the next run asks for one"));
    m_logOut->setFocusPolicy(Qt::TabFocus);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(8, 0, 8, 0);
    row->addWidget(caption);
    row->addWidget(m_edit);
    row->addWidget(m_logOut);
    // The status text beside it takes the room.
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    setFocusProxy(m_edit);
    connect(m_edit, &QLineEdit::returnPressed, this, &BadgeField::take);
    connect(m_edit, &QLineEdit::textEdited, this, [this] { showState(false); });
    connect(m_logOut, &QToolButton::clicked, this, &BadgeField::logOut);
    showState(false);
}

void BadgeField::setBadge(const QString &badge)
{
    const bool isOther = badge != m_badge;
    m_badge = badge;
    m_edit->setText(badge);
    showState(false);
    // The next badge that is scanned comes in the place of this one.
    m_edit->selectAll();
    if (isOther)
        Q_EMIT badgeChanged(badge);
}

std::optional<QString> BadgeField::whyNoRun() const
{
    if (!m_rule.isAsked)
        return std::nullopt;
    if (m_edit->text() != m_badge)
        return QStringLiteral("The badge was not ended with Return");
    if (m_badge.isEmpty())
        return QStringLiteral("Scan or type your badge first");
    return std::nullopt;
}

void BadgeField::setRunning(bool running)
{
    m_running = running;
    // Otherwise the next widget would have it, and what is scanned before a panel opens.
    if (running && m_edit->hasFocus())
        window()->setFocus(Qt::OtherFocusReason);
    showState(false);
    if (!running)
        takeFocus();
}

void BadgeField::takeFocus()
{
    if (m_running)
        return;
    // What was begun there goes on, and is not selected away.
    const bool isBegun = m_edit->text() != m_badge;
    m_edit->setFocus(Qt::OtherFocusReason);
    if (!isBegun)
        m_edit->selectAll();
}

void BadgeField::take()
{
    const QString text = m_edit->text();
    const std::optional<QString> why = m_rule.whyNot(text);
    if (!why) {
        setBadge(text);
        return;
    }
    showState(true);
    m_edit->selectAll();
    Q_EMIT refused(text, *why);
}

void BadgeField::logOut()
{
    setBadge({});
    takeFocus();
}

/// Escape gives up what was written and not ended.
bool BadgeField::eventFilter(QObject *watched, QEvent *event)
{
    const bool isKey = event->type() == QEvent::KeyPress;
    if (!isKey || static_cast<QKeyEvent *>(event)->key() != Qt::Key_Escape || m_edit->text() == m_badge)
        return QWidget::eventFilter(watched, event);
    setBadge(m_badge);
    return true;
}

void BadgeField::showState(bool isRefused)
{
    m_edit->setEnabled(!m_running);
    m_logOut->setEnabled(!m_running && !m_badge.isEmpty());
    QPalette look = palette();
    if (isRefused) {
        look.setColor(QPalette::Base, QColor(0xff, 0x3b, 0x30));
        look.setColor(QPalette::Text, Qt::black);
    }
    m_edit->setPalette(look);
}

} // namespace station
