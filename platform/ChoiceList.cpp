#include "platform/ChoiceList.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace platform {

namespace {

constexpr int MostRows = 10;
/// Longer than between two characters of a scan, and shorter than anybody waits.
constexpr int MillisecondsUntilShown = 200;
constexpr int Margin = 8;

/// How many rows a key walks; 0 when it walks none.
int rowsOf(const QKeyEvent &event)
{
    switch (event.key()) {
    case Qt::Key_Down:
        return 1;
    case Qt::Key_Up:
        return -1;
    case Qt::Key_PageDown:
        return MostRows;
    case Qt::Key_PageUp:
        return -MostRows;
    default:
        return 0;
    }
}

} // namespace

ChoiceList::ChoiceList(QWidget &field, QStringList choices)
    : QListView(field.window())
    , m_field(field)
    , m_choices(std::move(choices))
{
    hide();
    setFocusPolicy(Qt::NoFocus);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextElideMode(Qt::ElideMiddle);
    // The row is chosen although the list has no focus, and looks so.
    QPalette colors = palette();
    colors.setColor(QPalette::Inactive, QPalette::Highlight,
                    colors.color(QPalette::Active, QPalette::Highlight));
    colors.setColor(QPalette::Inactive, QPalette::HighlightedText,
                    colors.color(QPalette::Active, QPalette::HighlightedText));
    setPalette(colors);
    setModel(&m_shown);
    // By the count of characters, since to measure thousands of texts would be felt.
    const auto longest =
        std::max_element(m_choices.cbegin(), m_choices.cend(),
                         [](const QString &a, const QString &b) { return a.size() < b.size(); });
    m_longest = fontMetrics().horizontalAdvance(*longest);
    m_pause.setSingleShot(true);
    m_pause.setInterval(MillisecondsUntilShown);
    connect(&m_pause, &QTimer::timeout, this, &ChoiceList::showNarrowed);
    connect(this, &QListView::clicked, this,
            [this](const QModelIndex &index) { Q_EMIT picked(index.data().toString()); });
}

ChoiceList::~ChoiceList() = default;

void ChoiceList::dropDown(const QString &text)
{
    show(m_choices);
    const qsizetype row = m_choices.indexOf(text);
    if (row >= 0) {
        setCurrentIndex(m_shown.index(static_cast<int>(row)));
        scrollTo(currentIndex(), QAbstractItemView::PositionAtCenter);
    }
}

void ChoiceList::fold()
{
    m_pause.stop();
    if (isHidden())
        return;
    hide();
    QCoreApplication::instance()->removeEventFilter(this);
}

void ChoiceList::narrow(const QString &text)
{
    m_typed = text;
    setCurrentIndex({});
    if (isVisible())
        showNarrowed();
    else if (text.isEmpty())
        m_pause.stop();
    else
        m_pause.start();
}

void ChoiceList::showNarrowed()
{
    const QStringList fitting = m_choices.filter(m_typed, Qt::CaseInsensitive);
    // A list of what is written already would only be in the way.
    if (fitting.isEmpty() || fitting == QStringList{m_typed})
        fold();
    else
        show(fitting);
}

void ChoiceList::show(const QStringList &choices)
{
    m_pause.stop();
    setCurrentIndex({});
    if (m_shown.stringList() != choices)
        m_shown.setStringList(choices);
    place();
    if (isVisible())
        return;
    raise();
    QListView::show();
    scrollToTop();
    // While it is open, whoever presses elsewhere folds it.
    QCoreApplication::instance()->installEventFilter(this);
}

/// Below the field, or above it where there is more room, and never wider or higher than the window.
void ChoiceList::place()
{
    const QWidget &window = *m_field.window();
    const QRect field(m_field.mapTo(&window, QPoint()), m_field.size());
    const int rows = std::min(m_shown.rowCount(), MostRows);
    const int wanted = rows * std::max(1, sizeHintForRow(0)) + 2 * frameWidth();
    const int below = window.height() - field.bottom() - 1;
    const bool dropsDown = wanted <= below || below >= field.top();
    const int height = std::min(wanted, std::max(0, dropsDown ? below : field.top()));
    const int text = m_longest + verticalScrollBar()->sizeHint().width() + 2 * frameWidth() + Margin;
    const int width = std::min(std::max(field.width(), text), window.width());
    const int x = std::max(0, std::min(field.x(), window.width() - width));
    setGeometry(x, dropsDown ? field.bottom() + 1 : field.top() - height, width, height);
}

bool ChoiceList::takesKey(const QKeyEvent &event, const QString &text)
{
    const bool withAlt = event.modifiers() == Qt::AltModifier;
    if (event.modifiers() & ~(Qt::KeypadModifier | Qt::AltModifier))
        return false;
    if (event.key() == Qt::Key_Escape && isVisible()) {
        fold();
        return true;
    }
    const int rows = rowsOf(event);
    const bool isArrow = rows == 1 || rows == -1;
    if (rows == 0 || (!isVisible() && !isArrow))
        return false;
    if (!withAlt)
        walk(rows, text);
    else if (isVisible())
        fold();
    else
        dropDown(text);
    return true;
}

void ChoiceList::walk(int rows, const QString &text)
{
    const bool wasOpen = isVisible();
    if (!wasOpen)
        dropDown(text);
    const int last = m_shown.rowCount() - 1;
    const int current = currentIndex().row();
    // The key that opens the list shows where one stands.
    if (wasOpen || current < 0) {
        const int start = current >= 0 ? current + rows : (rows > 0 ? 0 : last);
        setCurrentIndex(m_shown.index(std::clamp(start, 0, last)));
    }
}

std::optional<QString> ChoiceList::chosen() const
{
    if (!isVisible() || !currentIndex().isValid())
        return std::nullopt;
    return currentIndex().data().toString();
}

bool ChoiceList::isOutside(const QObject *watched) const
{
    const auto *widget = qobject_cast<const QWidget *>(watched);
    return widget && widget != this && !isAncestorOf(widget) && widget != &m_field &&
           !m_field.isAncestorOf(widget);
}

bool ChoiceList::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (isOutside(watched))
            fold();
        break;
    case QEvent::Wheel:
        // The window gets it too, when the list cannot be scrolled any further.
        if (isOutside(watched) && watched != m_field.window())
            fold();
        break;
    case QEvent::Move:
    case QEvent::Resize:
        if (watched == &m_field ||
            (watched->isWidgetType() && static_cast<QWidget *>(watched)->isAncestorOf(&m_field)))
            place();
        break;
    default:
        break;
    }
    return QListView::eventFilter(watched, event);
}

} // namespace platform
