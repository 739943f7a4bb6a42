#include "platform/Button.h"

#include <QCheckBox>
#include <QFontMetrics>
#include <QPushButton>

namespace platform {

namespace {

constexpr int SpaceBesideTitle = 8;
constexpr int SpaceOfCheckMark = 24;

/// Takes a press anywhere in its frame, not only on its mark and title.
class WideCheckBox : public QCheckBox
{
public:
    using QCheckBox::QCheckBox;

protected:
    bool hitButton(const QPoint &position) const override { return rect().contains(position); }
};

} // namespace

Button::Button(QWidget *parent)
    : Control(parent)
{
    makeInner();
}

Button::Button(const Rect &frame)
    : Button(static_cast<QWidget *>(nullptr))
{
    setFrame(frame);
}

void Button::makeInner()
{
    delete m_inner;
    if (m_type == Type::Switch) {
        m_inner = new WideCheckBox(this);
        m_inner->setChecked(state() == On);
    } else {
        m_inner = new QPushButton(this);
    }
    // A click must not take the focus from the field that is being typed into.
    m_inner->setFocusPolicy(Qt::TabFocus);
    connect(m_inner, &QAbstractButton::clicked, this, &Button::clicked);
    fontChanged();
    layout();
    m_inner->show();
}

void Button::clicked()
{
    if (m_type == Type::Switch)
        m_state = m_inner->isChecked() ? On : Off;
    sendAction();
}

void Button::setTitle(const QString &title)
{
    m_title = title;
    showTitle();
}

void Button::showTitle()
{
    const int space = m_type == Type::Switch ? SpaceOfCheckMark : SpaceBesideTitle;
    const QString shown =
        m_inner->fontMetrics().elidedText(m_title, Qt::ElideRight, std::max(0, m_inner->width() - space));
    // An ampersand in a title is a character, not the mark of a shortcut.
    m_inner->setText(QString(shown).replace(QLatin1Char('&'), QStringLiteral("&&")));
    m_inner->setToolTip(shown == m_title ? QString() : m_title);
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
    if (m_type == Type::Switch)
        m_inner->setChecked(state == On);
}

bool Button::becomeFirstResponder()
{
    if (!isEnabled())
        return false;
    m_inner->setFocus(Qt::OtherFocusReason);
    return m_inner->hasFocus();
}

bool Button::isFirstResponder() const
{
    return m_inner->hasFocus();
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
