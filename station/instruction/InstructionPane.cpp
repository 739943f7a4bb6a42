#include "station/instruction/InstructionPane.h"

#include "kovan/KovanLogging/KVKLogging.h"
#include "station/instruction/InstructionText.h"
#include "station/instruction/PictureLabel.h"
#include "station/look/ElidedLabel.h"
#include "station/look/WindowLook.h"

#include <QHBoxLayout>
#include <QScrollArea>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <utility>

namespace station {
namespace {

constexpr double ZoomStep = 1.25;
constexpr double LeastZoom = 0.25;
constexpr double LargestZoom = 8.0;
constexpr int Margin = 6;
/// Between two calls of a sequence there is nothing to show for a moment.
constexpr int LeavesAfter = 500;
/// Pictures of this many panels are kept; each may take 16 megabytes.
constexpr int MostRead = 6;

} // namespace

InstructionPane::InstructionPane(QWidget *parent)
    : QWidget(parent)
    , m_read(MostRead)
    , m_loader(
          [this](const KVKGuidancePointer &guidance, const LoadedGuidance &what) { loaded(guidance, what); })
{
    setAccessibleName(QStringLiteral("Instructions"));
    setFocusPolicy(Qt::NoFocus);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    makeHeader();
    makeBody();
    m_leaves.setObjectName(QStringLiteral("leaves"));
    m_leaves.setParent(this);
    m_leaves.setSingleShot(true);
    m_leaves.setInterval(LeavesAfter);
    connect(&m_leaves, &QTimer::timeout, this, [this] { setInUse(false); });
    showFold();
    hide();
}

InstructionPane::~InstructionPane() = default;

void InstructionPane::makeHeader()
{
    auto *row = new QHBoxLayout;
    row->setContentsMargins(Margin, 4, 4, 4);
    row->setSpacing(2);
    m_caption = new ElidedLabel(QStringLiteral("Instructions for"));
    m_caption->setFont(windowFont(15, true));
    m_caption->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    row->addWidget(m_caption, 1);
    QToolButton *out = makeButton(QStringLiteral("\u2212"), QStringLiteral("Smaller"), "zoomOut");
    QToolButton *in = makeButton(QStringLiteral("+"), QStringLiteral("Larger"), "zoomIn");
    QToolButton *fitted = makeButton(QStringLiteral("\u2194"), QStringLiteral("Fit to width"), "zoomFit");
    m_fold = makeButton({}, {}, "fold");
    m_zoomButtons = {out, in, fitted};
    for (QToolButton *button : {out, in, fitted, m_fold})
        row->addWidget(button, 0, Qt::AlignTop);
    connect(out, &QToolButton::clicked, this, [this] { setZoom(m_zoom / ZoomStep); });
    connect(in, &QToolButton::clicked, this, [this] { setZoom(m_zoom * ZoomStep); });
    connect(fitted, &QToolButton::clicked, this, [this] { setZoom(1.0); });
    connect(m_fold, &QToolButton::clicked, this, [this] { setFolded(!isFolded()); });
    static_cast<QVBoxLayout *>(layout())->addLayout(row);
}

QToolButton *InstructionPane::makeButton(const QString &sign, const QString &name, const QString &objectName)
{
    auto *button = new QToolButton(this);
    button->setObjectName(objectName);
    button->setText(sign);
    button->setToolTip(name);
    button->setAccessibleName(name);
    button->setFont(windowFont(16));
    button->setMinimumSize(26, 26);
    // A click must not take the focus from the field that is being scanned into.
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

void InstructionPane::makeBody()
{
    m_scroll = new QScrollArea(this);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setFocusPolicy(Qt::TabFocus);
    nameScrollBars(*m_scroll);
    m_scroll->setAccessibleName(QStringLiteral("Instructions"));
    m_scroll->setWidgetResizable(true);
    auto *body = new QWidget;
    body->setBackgroundRole(QPalette::Base);
    auto *column = new QVBoxLayout(body);
    column->setContentsMargins(Margin, Margin, Margin, Margin);
    column->setSpacing(Margin);
    m_picture = new PictureLabel;
    m_text = new InstructionText;
    column->addWidget(m_picture);
    column->addWidget(m_text);
    column->addStretch(1);
    m_scroll->setWidget(body);
    m_scroll->viewport()->installEventFilter(this);
    static_cast<QVBoxLayout *>(layout())->addWidget(m_scroll, 1);
    static_cast<QVBoxLayout *>(layout())->addStretch(0);
}

void InstructionPane::rememberIn(const QString &file)
{
    m_memory = PaneMemory(file);
    showFold();
    Q_EMIT roomChanged();
}

QWidgetList InstructionPane::controls() const
{
    QWidgetList all(m_zoomButtons.cbegin(), m_zoomButtons.cend());
    all.append(m_fold);
    all.append(m_scroll);
    return all;
}

int InstructionPane::wantedWidth() const
{
    return isFolded() ? FoldedWidth : m_memory.width();
}

void InstructionPane::setChosenWidth(int width)
{
    if (!isFolded())
        m_memory.setWidth(width);
}

void InstructionPane::setFolded(bool folded)
{
    if (folded == isFolded())
        return;
    m_memory.setFolded(folded);
    showFold();
    Q_EMIT roomChanged();
}

void InstructionPane::showFold()
{
    const QString name = isFolded() ? QStringLiteral("Show the instructions") : QStringLiteral("Fold");
    m_fold->setText(isFolded() ? QStringLiteral("\u00ab") : QStringLiteral("\u00bb"));
    m_fold->setToolTip(name);
    m_fold->setAccessibleName(name);
    m_caption->setVisible(!isFolded());
    m_scroll->setVisible(!isFolded());
    for (QToolButton *button : std::as_const(m_zoomButtons))
        button->setVisible(!isFolded());
    setMinimumWidth(isFolded() ? FoldedWidth : PaneMemory::LeastWidth);
    setMaximumWidth(isFolded() ? FoldedWidth : QWIDGETSIZE_MAX);
}

void InstructionPane::setOffered(const KVKGuidancePointer &guidance, bool isOffered)
{
    if (isOffered) {
        m_offered.insert(guidance.get());
        setInUse(true);
        return;
    }
    m_offered.remove(guidance.get());
    // Another guidance may be made at the same place in memory.
    m_logged.remove(guidance.get());
    m_read.remove(guidance.get());
    m_loader.drop(guidance);
    if (m_offered.isEmpty())
        m_leaves.start();
}

void InstructionPane::setInUse(bool inUse)
{
    m_leaves.stop();
    if (std::exchange(m_inUse, inUse) != inUse)
        Q_EMIT roomChanged();
}

void InstructionPane::setCurrent(const KVKGuidancePointer &guidance, bool isCurrent)
{
    if (isCurrent)
        display(guidance);
    else if (guidance == m_current)
        display(nullptr);
}

void InstructionPane::display(const KVKGuidancePointer &guidance)
{
    m_current = guidance;
    m_zoom = 1.0;
    m_caption->setWholeText(guidance ? guidance->caption : QString());
    const LoadedGuidance *read = guidance ? m_read.object(guidance.get()) : nullptr;
    m_picture->setPicture(guidance ? guidance->image : QString(), caption(), read ? read->image : Picture());
    m_text->setInstruction(guidance ? guidance->instruction : QString(),
                           read ? read->inText : QHash<QString, Picture>());
    fit();
    if (guidance && !read)
        m_loader.load(guidance, m_folders);
}

void InstructionPane::loaded(const KVKGuidancePointer &guidance, const LoadedGuidance &what)
{
    if (!m_logged.contains(guidance.get())) {
        m_logged.insert(guidance.get());
        logProblems(*guidance, what);
    }
    m_read.insert(guidance.get(), new LoadedGuidance(what));
    if (guidance != m_current)
        return;
    m_picture->setPicture(guidance->image, guidance->caption, what.image);
    if (!what.inText.isEmpty())
        m_text->setInstruction(guidance->instruction, what.inText);
    fit();
}

void InstructionPane::logProblems(const KVKGuidance &guidance, const LoadedGuidance &what) const
{
    const auto log = [&](const QString &name, const Picture &picture) {
        if (!picture.problem.isEmpty())
            KVKLogEvent(KVKLogLevel::Error, "%@: the picture \"%@\" is not shown: %@",
                        {guidance.caption, name, picture.problem});
        else if (!picture.image.isNull())
            KVKLogEvent(KVKLogLevel::Debug, "%@: the picture \"%@\" was read", {guidance.caption, name});
    };
    log(guidance.image, what.image);
    for (auto picture = what.inText.cbegin(); picture != what.inText.cend(); ++picture)
        log(picture.key(), picture.value());
}

QString InstructionPane::caption() const
{
    return m_caption->wholeText();
}

void InstructionPane::setZoom(double zoom)
{
    // A factor that came from steps up and down is 1 again.
    m_zoom = qAbs(zoom - 1.0) < 0.01 ? 1.0 : qBound(LeastZoom, zoom, LargestZoom);
    fit();
}

void InstructionPane::fit()
{
    const int width = m_scroll->viewport()->width() - 2 * Margin;
    if (width <= 0)
        return;
    m_picture->fit(width, m_zoom);
    m_text->fit(width, m_zoom);
}

bool InstructionPane::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_scroll->viewport())
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::Resize) {
        // Once the area has its bars where it needs them.
        QMetaObject::invokeMethod(this, &InstructionPane::fit, Qt::QueuedConnection);
    } else if (event->type() == QEvent::Wheel) {
        const auto *wheel = static_cast<QWheelEvent *>(event);
        if (wheel->modifiers() & Qt::ControlModifier) {
            if (wheel->angleDelta().y() != 0)
                setZoom(wheel->angleDelta().y() > 0 ? m_zoom * ZoomStep : m_zoom / ZoomStep);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace station
