#include "platform/Button.h"

#include "platform/KeyRouting.h"
#include "platform/TextLines.h"

#include <QCheckBox>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QPushButton>

namespace platform {

namespace {

constexpr int SpaceBesideTitle = 8;
constexpr int SpaceOfCheckMark = 24;

/// Takes a press anywhere in its frame, not only on its mark and title; a press on a mixed one sets it on.
class SwitchBox : public QCheckBox
{
public:
    using QCheckBox::QCheckBox;

protected:
    bool hitButton(const QPoint &position) const override { return rect().contains(position); }
    void nextCheckState() override
    {
        const bool wasOn = checkState() == Qt::Checked;
        setTristate(false);
        setChecked(!wasOn);
    }
};

Qt::CheckState checkState(Button::State state)
{
    switch (state) {
    case Button::On:
        return Qt::Checked;
    case Button::Mixed:
        return Qt::PartiallyChecked;
    case Button::Off:
        break;
    }
    return Qt::Unchecked;
}

} // namespace

Button::Button(QWidget *parent)
    : Control(parent)
{
    keys::watch();
    makeInner();
}

Button::Button(const Rect &frame)
    : Button(static_cast<QWidget *>(nullptr))
{
    setFrame(frame);
}

void Button::makeInner()
{
    // Later than at once, since it may be an action of the button that changes its kind.
    if (m_inner) {
        giveUpFocus();
        m_inner->hide();
        m_inner->disconnect(this);
        m_inner->deleteLater();
    }
    if (m_type == Type::Switch)
        m_inner = new SwitchBox(this);
    else
        m_inner = new QPushButton(this);
    // A click must not take the focus from the field that is being typed into.
    m_inner->setFocusPolicy(Qt::TabFocus);
    connect(m_inner, &QAbstractButton::clicked, this, &Button::clicked);
    m_inner->installEventFilter(this);
    showState();
    showBorder();
    m_inner->setFont(font().toQFont());
    m_inner->setGeometry(rect());
    showTitle();
    m_inner->show();
}

void Button::clicked()
{
    if (m_type == Type::Switch)
        m_state = m_inner->isChecked() ? On : Off;
    sendAction();
}

bool Button::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_inner && event->type() == QEvent::KeyPress)
        return takesKey(*static_cast<QKeyEvent *>(event));
    return Control::eventFilter(watched, event);
}

/// True when the key is no longer the inner button's business. Nothing may be touched afterwards: an action
/// may have taken the button away.
bool Button::takesKey(QKeyEvent &event)
{
    const bool isScanners = keys::isScanners(*this, event);
    if (keys::isReturn(event)) {
        event.accept();
        // A key that is held down presses once, also when the focus has come to this button meanwhile.
        if (!isScanners && !event.isAutoRepeat())
            m_inner->click();
        return true;
    }
    if (keys::isTab(event) && isScanners) {
        event.accept();
        return true;
    }
    const bool worksButton = event.key() == Qt::Key_Space && !isScanners;
    if (!keys::isText(event) || worksButton)
        return false;
    // A character that somebody types while a button has the focus is meant for the field behind it.
    keys::handOn(*this, event);
    return true;
}

void Button::showState()
{
    auto *box = qobject_cast<QCheckBox *>(m_inner);
    if (!box)
        return;
    box->setTristate(state() == Mixed);
    box->setCheckState(checkState(state()));
}

void Button::showBorder()
{
    if (auto *push = qobject_cast<QPushButton *>(m_inner))
        push->setFlat(!m_bordered);
}

void Button::setBordered(bool bordered)
{
    m_bordered = bordered;
    showBorder();
}

void Button::setTitle(const QString &title)
{
    m_title = title;
    showTitle();
}

void Button::showTitle()
{
    const int space = m_type == Type::Switch ? SpaceOfCheckMark : SpaceBesideTitle;
    const int width = std::max(0, m_inner->width() - space);
    const QString shown =
        m_inner->fontMetrics().elidedText(TextLines::shortened(m_title, width), Qt::ElideRight, width);
    // An ampersand in a title is a character, not the mark of a shortcut.
    m_inner->setText(QString(shown).replace(QLatin1Char('&'), QStringLiteral("&&")));
    setToolTip(shown == m_title ? QString() : TextLines::toolTip(m_title));
}

void Button::setButtonType(Type type)
{
    if (type == m_type)
        return;
    m_type = type;
    makeInner();
}

void Button::setState(State state)
{
    m_state = state;
    showState();
}

bool Button::becomeFirstResponder()
{
    return takeFocus(m_inner);
}

bool Button::isFirstResponder() const
{
    return window()->focusWidget() == m_inner;
}

QWidget *Button::focusTarget()
{
    return m_inner;
}

void Button::fontChanged()
{
    m_inner->setFont(font().toQFont());
    showTitle();
}

void Button::layout()
{
    m_inner->setGeometry(rect());
    showTitle();
}

} // namespace platform
