#include "platform/Button.h"

#include "platform/FocusRing.h"
#include "platform/KeyRouting.h"
#include "platform/ScrollView.h"
#include "platform/TextLines.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QStyleOptionButton>
#include <QStylePainter>

#include <utility>

namespace platform {

namespace {

constexpr int SpaceBesideTitle = 8;
constexpr int SpaceOfCheckMark = 24 + static_cast<int>(focusring::Width);

/// A button of the toolkit that is painted with the next frame. The toolkit's own paints itself before it
/// tells of its click, and for each of a burst of keys; meanwhile a sequence waits.
template <class Toolkit>
class PaintedLater : public Toolkit
{
public:
    using Toolkit::Toolkit;

protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        paintLater([&] { Toolkit::mousePressEvent(event); });
    }
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        paintLater([&] { Toolkit::mouseReleaseEvent(event); });
    }
    void keyPressEvent(QKeyEvent *event) override
    {
        paintLater([&] { Toolkit::keyPressEvent(event); });
    }
    void keyReleaseEvent(QKeyEvent *event) override
    {
        paintLater([&] { Toolkit::keyReleaseEvent(event); });
    }

private:
    template <class Work>
    void paintLater(const Work &work)
    {
        // Who hears of a click may delete the button.
        const QPointer<QWidget> alive(this);
        const bool wasEnabled = this->updatesEnabled();
        this->setUpdatesEnabled(false);
        work();
        if (alive)
            this->setUpdatesEnabled(wasEnabled);
    }
};

/// Shows by a ring that it has the focus.
class PushBox : public PaintedLater<QPushButton>
{
public:
    using PaintedLater::PaintedLater;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QPushButton::paintEvent(event);
        if (!hasFocus())
            return;
        QPainter painter(this);
        focusring::paint(painter, rect());
    }
};

/// Takes a press anywhere in its frame, not only on its mark and title; a press on a mixed one sets it on.
class SwitchBox : public PaintedLater<QCheckBox>
{
public:
    using PaintedLater::PaintedLater;

protected:
    bool hitButton(const QPoint &position) const override { return rect().contains(position); }
    /// The mark stands beside the place of the ring, whether that is seen or not: it must not jump.
    void paintEvent(QPaintEvent *) override
    {
        QStylePainter painter(this);
        QStyleOptionButton option;
        initStyleOption(&option);
        option.rect.setLeft(option.rect.left() + static_cast<int>(focusring::Width));
        option.state.setFlag(QStyle::State_HasFocus, false);
        painter.drawControl(QStyle::CE_CheckBox, option);
        if (hasFocus())
            focusring::paint(painter, rect());
    }
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
    : Button(parent, Type::MomentaryPush)
{}

Button::Button(const Rect &frame)
    : Button(frame, Type::MomentaryPush)
{}

Button::Button(const Rect &frame, Type type)
    : Button(static_cast<QWidget *>(nullptr), type)
{
    setFrame(frame);
}

Button::Button(QWidget *parent, Type type)
    : Control(parent)
    , m_type(type)
{
    keys::watch();
    m_blanksMeant.setSingleShot(true);
    m_blanksMeant.setInterval(keys::ScannerGapMilliseconds);
    connect(&m_blanksMeant, &QTimer::timeout, this, &Button::pressByBlanks);
    makeInner();
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
        m_inner = new PushBox(this);
    // A click must not take the focus from the field that is being typed into.
    m_inner->setFocusPolicy(Qt::TabFocus);
    m_inner->setAccessibleName(m_spokenName);
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
    if (watched == m_inner && isTabbedTo(*event))
        ScrollView::reveal(this);
    return Control::eventFilter(watched, event);
}

/// True when the key is no longer the inner button's business. Nothing may be touched afterwards: an action
/// may have taken the button away.
bool Button::takesKey(QKeyEvent &event)
{
    const bool isScanners = keys::isScanners(*this, event);
    if (event.key() == Qt::Key_Space && !isScanners) {
        event.accept();
        if (!event.isAutoRepeat()) {
            ++m_blanks;
            m_blanksMeant.start();
        }
        return true;
    }
    if (m_blanks > 0 && (keys::isText(event) || keys::isReturn(event))) {
        handBlanksOn(event);
        return true;
    }
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
    if (!keys::isText(event))
        return false;
    // A character that somebody types while a button has the focus is meant for the field behind it.
    keys::handOn(*this, event);
    return true;
}

/// Not at the key's release, which goes astray when the focus leaves meanwhile.
void Button::pressByBlanks()
{
    const QPointer<Button> self(this);
    for (int left = std::exchange(m_blanks, 0); left > 0 && self && isEnabled() && isVisible(); --left)
        m_inner->click();
}

/// What came was a scan: the blanks, and the key behind them, belong to an entry.
void Button::handBlanksOn(QKeyEvent &event)
{
    m_blanksMeant.stop();
    const QPointer<QWidget> top(window());
    const QPointer<Button> self(this);
    for (int left = std::exchange(m_blanks, 0); left > 0 && self; --left) {
        QKeyEvent blank(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "));
        // Where no field takes it, whoever looks after the window tells the operator so.
        if (!keys::handOn(*this, blank) && top)
            QCoreApplication::sendEvent(top, &blank);
    }
    event.accept();
    if (!self || !top)
        return;
    QKeyEvent copy(event.type(), event.key(), event.modifiers(), event.text(), event.isAutoRepeat());
    QWidget *focused = top->focusWidget();
    QCoreApplication::sendEvent(focused && focused != m_inner ? focused : top.data(), &copy);
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

void Button::setSpokenName(const QString &name)
{
    m_spokenName = name;
    m_inner->setAccessibleName(name);
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
