#include "bench/TripOperator.h"

#include "platform/Button.h"
#include "platform/ScrollView.h"

#include <QApplication>
#include <QEvent>
#include <QLineEdit>

#include "bench/Hands.h"
#include "bench/Serve.h"

namespace bench {

namespace {

platform::Button *okBeside(const platform::TextField &field)
{
    for (platform::View *view : field.superview()->subviews()) {
        auto *button = qobject_cast<platform::Button *>(view);
        if (button && button->title() == QLatin1String("OK"))
            return button;
    }
    qFatal("a panel has no OK");
}

} // namespace

TripOperator::TripOperator()
{
    qApp->installEventFilter(this);
}

bool TripOperator::isAsked() const
{
    return !m_waiting.empty();
}

void TripOperator::answer(int entries)
{
    const QPointer<platform::TextField> field = m_waiting.front();
    m_waiting.pop_front();
    platform::Button *ok = okBeside(*field);
    platform::ScrollView::reveal(field);
    m_watch.awaitPaint(field);
    // Where several panels stand, the focus may be in another one, and a panel that opens takes it away.
    while (!field->isFirstResponder()) {
        platform::ScrollView::reveal(field);
        hands::click(field);
        platform::ScrollView::reveal(field);
        m_watch.awaitPaint(field);
    }
    for (int entry = 0; entry < entries; ++entry)
        hands::type(field->window(), QStringLiteral("A%1\n").arg(entry, 4, 10, QLatin1Char('0')));
    platform::ScrollView::reveal(ok);
    hands::click(ok);
    serveUntil([&] { return !field || !field->isVisible(); });
}

bool TripOperator::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Show || !qobject_cast<QLineEdit *>(watched))
        return false;
    auto *field = qobject_cast<platform::TextField *>(watched->parent());
    const QString name = field ? field->identifier().text() : QString();
    if (name.endsWith(QLatin1String("-SN")) || name.endsWith(QLatin1String("-SharedInput")))
        m_waiting.emplace_back(field);
    return false;
}

} // namespace bench
