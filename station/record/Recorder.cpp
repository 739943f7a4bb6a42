#include "station/record/Recorder.h"

#include "platform/Button.h"
#include "platform/ChoiceList.h"
#include "platform/KeyRouting.h"
#include "station/operator/ViewTree.h"
#include "station/record/LuaText.h"
#include "station/record/RecordedLine.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QDate>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QTime>

#include <utility>

namespace station {

using platform::Button;
using platform::ChoiceList;
using platform::TextField;
using platform::View;

namespace {

QString keyOf(const View *panel)
{
    return panel ? panel->identifier().text() : QString();
}

/// Whether the key may change the text of the field that it arrives at.
bool writes(const QKeyEvent &key)
{
    if (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab)
        return false;
    const bool deletes = key.key() == Qt::Key_Backspace || key.key() == Qt::Key_Delete;
    return deletes || !key.text().isEmpty() || key.matches(QKeySequence::Paste);
}

} // namespace

Recorder::Recorder(Write write)
    : m_write(std::move(write))
{
    QApplication::instance()->installEventFilter(this);
    m_sinceLine.start();
}

void Recorder::start(const QString &station, View *root)
{
    m_root = root;
    m_beginning = recorded::beginning(station, QDate::currentDate().toString(Qt::ISODate));
}

/// A badge is somebody's: whoever replays gives one for each person.
void Recorder::logsIn(const QString &badge)
{
    if (badge.isEmpty() || badge == m_badge)
        return;
    if (!m_badges.contains(badge))
        m_badges.append(badge);
    const qsizetype number = m_badges.indexOf(badge) + 1;
    // The first one is there when the replaying station starts.
    put(m_badge.isEmpty()
            ? recorded::comment(QStringLiteral("Badge 1 is not written here: the first --badge gives it."))
            : recorded::logIn(number));
    m_badge = badge;
}

void Recorder::runBegins(const QString &badge)
{
    putWaits({});
    put({});
    const QString time = QTime::currentTime().toString(Qt::ISODate);
    put(recorded::comment(QStringLiteral("Run %1, %2").arg(QString::number(++m_run), time)));
    logsIn(badge);
    // With --operator the first run starts by itself.
    if (m_run > 1)
        put(recorded::run());
    m_diary.forget();
    m_told.clear();
    m_isRunning = true;
}

void Recorder::stopPressed()
{
    catchUp();
    leaveEntry();
    putWaits(m_diary.actBeside());
    put(recorded::stop());
}

void Recorder::runStops()
{
    m_isRunning = false;
    m_isStopping = true;
}

void Recorder::runEnds()
{
    catchUp();
    leaveEntry();
    m_diary.forget();
    m_isRunning = false;
    m_isStopping = false;
    m_runEnded = true;
}

bool Recorder::eventFilter(QObject *watched, QEvent *event)
{
    // Of what is done to panels that are about to go, nothing could be done again.
    if (m_root && !m_isStopping && watched->isWidgetType())
        see(static_cast<QWidget &>(*watched), *event);
    return false;
}

void Recorder::see(QWidget &widget, QEvent &event)
{
    switch (event.type()) {
    case QEvent::KeyPress:
        keyPressed(widget, static_cast<QKeyEvent &>(event));
        break;
    case QEvent::KeyRelease:
        if (Button *button = buttonAround(widget))
            aboutToPress(button, static_cast<QAbstractButton *>(&widget));
        break;
    case QEvent::MouseButtonPress:
        if (static_cast<QMouseEvent &>(event).button() == Qt::LeftButton)
            openSlot(widget);
        break;
    case QEvent::MouseButtonRelease:
        mouseReleased(widget, static_cast<QMouseEvent &>(event));
        break;
    case QEvent::InputMethod:
        pieceComes(widget, static_cast<QInputMethodEvent &>(event).commitString());
        break;
    case QEvent::Drop:
        pieceComes(widget, static_cast<QDropEvent &>(event).mimeData()->text());
        break;
    case QEvent::Close:
        // By a person: the program closes it, too, when it ends.
        if (&widget == m_root->window() && event.spontaneous())
            put(recorded::comment(QStringLiteral("The window was closed.")));
        break;
    case QEvent::ChildAdded:
    case QEvent::ChildRemoved:
    case QEvent::Show:
    case QEvent::Hide:
        lookLater();
        break;
    default:
        break;
    }
}

void Recorder::keyPressed(QWidget &widget, const QKeyEvent &key)
{
    if (Button *button = buttonAround(widget))
        aboutToPress(button, static_cast<QAbstractButton *>(&widget));
    // Does to a slot what a click does.
    if (key.key() == Qt::Key_F2 && !key.isAutoRepeat())
        openSlot(widget);
    TextField *field = fieldAround(widget);
    if (!field)
        return;
    if (platform::keys::isReturn(key)) {
        endEntry(field);
    } else if (writes(key)) {
        beginEntry(field);
        m_begun.addKey(key);
    }
}

/// A field that shows what was entered for a slot opens the slot anew; a label has no background.
void Recorder::openSlot(QWidget &widget)
{
    auto *field = qobject_cast<TextField *>(&widget);
    if (!field || field->isEditable() || !field->isEnabled() || !field->drawsBackground() ||
        !m_root->isAncestorOf(field))
        return;
    const std::optional<ClickTarget> target = targetOf(m_root, field);
    if (!target)
        return;
    catchUp();
    leaveEntry();
    waitBefore(field);
    put(recorded::click(*target));
}

void Recorder::mouseReleased(QWidget &widget, const QMouseEvent &release)
{
    if (Button *button = buttonAround(widget))
        aboutToPress(button, static_cast<QAbstractButton *>(&widget));
    else if (auto *list = qobject_cast<ChoiceList *>(widget.parentWidget()))
        aboutToPick(list, release.position().toPoint());
    else if (release.button() == Qt::MiddleButton)
        pieceComes(widget, QGuiApplication::clipboard()->text(QClipboard::Selection));
}

void Recorder::pieceComes(QWidget &widget, const QString &text)
{
    TextField *field = fieldAround(widget);
    if (!field)
        return;
    beginEntry(field);
    m_begun.addPiece(text);
}

void Recorder::lookLater()
{
    if (std::exchange(m_looksLater, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_looksLater = false;
            catchUp();
        },
        Qt::QueuedConnection);
}

/// Takes in what has become of the last event, and what else has happened since.
void Recorder::catchUp()
{
    if (!m_root)
        return;
    m_begun.settle();
    if (m_isRunning)
        putWaits(m_diary.look(m_root));
}

/// Notes that the field's text is about to be changed, with the waits before its first change.
void Recorder::beginEntry(TextField *field)
{
    catchUp();
    lookLater();
    if (m_begun.isIn(field))
        return;
    leaveEntry();
    waitBefore(field);
    m_begun.begin(field, targetOf(m_root, field));
    connect(field, &TextField::entryEnded, this, &Recorder::entryEnded, Qt::UniqueConnection);
}

void Recorder::endEntry(TextField *field)
{
    beginEntry(field);
    const BegunEntry entry = std::exchange(m_begun, BegunEntry());
    const std::optional<QString> chosen = field->chosen();
    if (!entry.target())
        put(recorded::comment(QStringLiteral("An entry was made in a field that has no name.")));
    else if (chosen)
        put(recorded::enter(*entry.target(), *chosen));
    else if (!entry.isChanged())
        put(recorded::confirm(*entry.target()));
    else if (!entry.isRefused())
        put(recorded::enter(*entry.target(), entry.text()));
    else if (!entry.hasPieces())
        put(recorded::enter(*entry.target(), entry.keys()));
    else
        // Typed, a line end in it would be a Return, and others a key of their own.
        put(recorded::paste(*entry.target(), entry.keys()) + QLatin1Char('\n') +
            recorded::confirm(*entry.target()));
}

/// What was written and not ended stands in its field, where a button may take it for an entry.
void Recorder::leaveEntry()
{
    const BegunEntry entry = std::exchange(m_begun, BegunEntry());
    if (!entry.isChanged() || !entry.target())
        return;
    if (!entry.isRefused()) {
        put(recorded::fill(*entry.target(), entry.text()));
        return;
    }
    put(recorded::comment(QStringLiteral("%1 was refused in the %2 and given up.")
                              .arg(luaText(entry.keys()), entry.target()->description())));
}

/// An entry was ended, and what the panel says to it can be read; or it was given up.
void Recorder::entryEnded()
{
    auto *field = qobject_cast<TextField *>(sender());
    if (!field || !m_root)
        return;
    if (!m_begun.isIn(field)) {
        noteTold(keyOf(panelAround(field)));
        return;
    }
    // Deleted by hand: the empty field is what was done to it so far.
    if (field->stringValue().isEmpty() && !m_begun.isRefused())
        return;
    // One that goes with its panel keeps its text. Any other text was put there by somebody else.
    if (field->stringValue() == m_begun.text())
        leaveEntry();
    else
        m_begun.forget();
}

/// Whether the event presses the button is for the button to say: by then it may be gone.
void Recorder::aboutToPress(Button *button, QAbstractButton *inner)
{
    catchUp();
    View *panel = panelAround(button);
    m_press = {inner, targetOf(m_root, button), keyOf(panel), widgetText(*button), m_diary, {}};
    m_press.waits = panel ? m_press.diary.actIn(PanelShowing::of(panel)) : m_press.diary.actBeside();
    connect(inner, &QAbstractButton::clicked, this, &Recorder::pressed, Qt::UniqueConnection);
}

void Recorder::pressed()
{
    auto *inner = qobject_cast<QAbstractButton *>(sender());
    Button *button = inner && m_root ? buttonAround(*inner) : nullptr;
    // A blank presses a moment later, when it is known to be none of a scan; something else may have been
    // done since. The button is still there then, since only a press takes it away.
    if (button && m_press.pressed != inner)
        aboutToPress(button, inner);
    if (!m_press.pressed || m_press.pressed != inner)
        return;
    const Press press = std::exchange(m_press, Press());
    leaveEntry();
    m_diary = press.diary;
    putWaits(press.waits);
    putToldBefore(press.panel);
    if (press.target)
        put(recorded::click(*press.target));
    else
        put(recorded::comment(QStringLiteral("%1 was clicked, which has no name.").arg(press.description)));
    noteTold(press.panel);
}

void Recorder::aboutToPick(ChoiceList *list, const QPoint &position)
{
    for (View *view : treeOrder(m_root)) {
        auto *field = qobject_cast<TextField *>(view);
        if (!field || !field->isListOpen() || !list->indexAt(position).isValid())
            continue;
        beginEntry(field);
        m_press = {list, m_begun.target(), keyOf(panelAround(field)), {}, {}, {}};
        connect(list, &ChoiceList::picked, this, &Recorder::picked, Qt::UniqueConnection);
        return;
    }
}

void Recorder::picked(const QString &choice)
{
    if (!m_press.pressed || m_press.pressed != sender())
        return;
    const Press press = std::exchange(m_press, Press());
    m_begun.forget();
    if (press.target)
        put(recorded::enter(*press.target, choice));
    noteTold(press.panel);
}

void Recorder::waitBefore(View *view)
{
    View *panel = panelAround(view);
    putWaits(panel ? m_diary.actIn(PanelShowing::of(panel)) : m_diary.actBeside());
    putToldBefore(keyOf(panel));
}

void Recorder::putWaits(const QList<PanelWait> &waits)
{
    if (std::exchange(m_runEnded, false))
        put(recorded::waitForRunEnd(limit()));
    for (const PanelWait &wait : waits) {
        // A showing that nothing was done in yet has said nothing that was answered.
        if (wait.until == PanelWait::Until::Shown)
            m_told.remove(wait.key);
        put(recorded::wait(wait, limit()));
    }
}

/// What a panel has come to say since the last thing that was done in it (a verdict that takes its time) was
/// read before this.
void Recorder::putToldBefore(const QString &panel)
{
    const std::optional<QString> now = told(panel);
    if (!now || *now == m_told.value(panel))
        return;
    put(recorded::waitForText(panel + QLatin1String("-StatusLine"), *now, limit()));
    m_told.insert(panel, *now);
}

void Recorder::put(const QString &line)
{
    if (!m_beginning.isEmpty())
        m_write(std::exchange(m_beginning, QString()));
    m_write(line);
    m_sinceLine.restart();
}

QString Recorder::limit() const
{
    return recorded::limit(static_cast<double>(m_sinceLine.elapsed()) / 1000.0);
}

std::optional<QString> Recorder::told(const QString &panel) const
{
    if (panel.isEmpty())
        return std::nullopt;
    const auto *line =
        qobject_cast<TextField *>(firstWithIdentifier(m_root, panel + QLatin1String("-StatusLine")));
    return line ? std::optional(line->stringValue()) : std::nullopt;
}

void Recorder::noteTold(const QString &panel)
{
    if (const std::optional<QString> now = told(panel))
        m_told.insert(panel, *now);
}

TextField *Recorder::fieldAround(const QWidget &widget) const
{
    if (!qobject_cast<const QLineEdit *>(&widget) || !m_root->isAncestorOf(&widget))
        return nullptr;
    return qobject_cast<TextField *>(widget.parentWidget());
}

Button *Recorder::buttonAround(const QWidget &widget) const
{
    if (!qobject_cast<const QAbstractButton *>(&widget) || !m_root->isAncestorOf(&widget))
        return nullptr;
    return qobject_cast<Button *>(widget.parentWidget());
}

} // namespace station
