#include "station/badge/BadgeField.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

#include <utility>

namespace station {

namespace {

constexpr int EditWidth = 140;
/// As on a panel: what is refused, and what has yet to be confirmed.
constexpr QColor Red(0xff, 0x3b, 0x30);
constexpr QColor Yellow(0xff, 0xcc, 0x00);

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
    connect(m_edit, &QLineEdit::textEdited, this, [this] { showState(Look::Plain); });
    connect(m_logOut, &QToolButton::clicked, this, &BadgeField::logOut);
    showState(Look::Plain);
}

void BadgeField::setBadge(const QString &badge)
{
    const bool isOther = badge != m_badge;
    const bool wasDoubted = !std::exchange(m_doubted, QString()).isEmpty();
    m_badge = badge;
    m_edit->setText(badge);
    showState(Look::Plain);
    // The next badge that is scanned comes in the place of this one.
    m_edit->selectAll();
    if (isOther)
        Q_EMIT badgeChanged(badge);
    else if (wasDoubted)
        Q_EMIT kept(badge);
}

std::optional<QString> BadgeField::whyNoRun() const
{
    if (!m_rule.isAsked)
        return std::nullopt;
    if (!m_doubted.isEmpty() && m_edit->text() == m_doubted)
        return QStringLiteral("%1 is not the operator yet; scan it once more, or %2 to stay")
            .arg(m_doubted, m_badge);
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
    showState(Look::Plain);
    if (!running)
        takeFocus();
}

void BadgeField::takeFocus()
{
    if (m_running)
        return;
    // What was begun there goes on, and is not selected away.
    const bool isBegun = m_edit->text() != m_badge && m_edit->text() != m_doubted;
    m_edit->setFocus(Qt::OtherFocusReason);
    if (!isBegun)
        m_edit->selectAll();
}

void BadgeField::take()
{
    const QString text = m_edit->text();
    const std::optional<QString> why = m_rule.whyNot(text);
    if (!why && !m_rule.hasForm() && !m_badge.isEmpty() && text != m_badge && text != m_doubted) {
        doubt(text);
        return;
    }
    if (!why) {
        setBadge(text);
        return;
    }
    m_doubted.clear();
    showState(Look::Refused);
    m_edit->selectAll();
    Q_EMIT refused(text, *why);
}

/// It may be the serial number of the next unit, scanned while no panel is open.
void BadgeField::doubt(const QString &text)
{
    m_doubted = text;
    showState(Look::Doubted);
    m_edit->selectAll();
    Q_EMIT refused(text, QStringLiteral("%1 stays the operator; scan it once more to change").arg(m_badge));
}

void BadgeField::logOut()
{
    if (m_running)
        return;
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

void BadgeField::showState(Look look)
{
    m_edit->setEnabled(!m_running);
    m_logOut->setEnabled(!m_running && !m_badge.isEmpty());
    QPalette colors = palette();
    if (look != Look::Plain) {
        colors.setColor(QPalette::Base, look == Look::Refused ? Red : Yellow);
        colors.setColor(QPalette::Text, Qt::black);
    }
    m_edit->setPalette(colors);
}

} // namespace station
