#include "station/operator/OperatorActions.h"

#include "platform/MainQueue.h"
#include "station/operator/KeyStrokes.h"
#include "station/operator/OperatorFailure.h"
#include "station/operator/OperatorHands.h"
#include "station/operator/ViewTree.h"

#include <QDir>
#include <QFileInfo>
#include <QMetaProperty>
#include <QPixmap>
#include <QWidget>

namespace station {
namespace {

using platform::MainQueue;
using platform::Value;
using platform::View;

constexpr double SecondsForActivation = 10.0;
/// What of its surroundings is on the picture of a view, in points.
constexpr int PictureMargin = 6;

QString secondsText(double seconds)
{
    return QString::number(seconds, 'g', 6);
}

QStringList propertyNames(const QObject *object)
{
    QStringList names;
    const QMetaObject *meta = object->metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i)
        names.append(QString::fromLatin1(meta->property(i).name()));
    return names;
}

void savePicture(const QPixmap &picture, const QString &path)
{
    const QString folder = QFileInfo(path).absolutePath();
    if (!QDir().mkpath(folder))
        throw OperatorFailure(QStringLiteral("the folder \"%1\" cannot be made").arg(folder));
    if (!picture.save(path, "PNG"))
        throw OperatorFailure(QStringLiteral("the picture \"%1\" cannot be written").arg(path));
}

} // namespace

OperatorActions::OperatorActions(const OperatorStage &stage)
    : m_stage(stage)
{}

View *OperatorActions::root() const
{
    if (!m_stage.root)
        throw OperatorFailure(QStringLiteral("the plug-in's view is gone"));
    return m_stage.root;
}

QWidget *OperatorActions::window() const
{
    if (!m_stage.window)
        throw OperatorFailure(QStringLiteral("the station window is gone"));
    return m_stage.window;
}

void OperatorActions::waitForPanel(const QString &key, double seconds)
{
    if (m_wait.until([&] { return m_panels.isThere(root(), key); }, seconds))
        return;
    const QString there = MainQueue::sync([this] { return visiblePanelsText(root()); });
    throw OperatorFailure(QStringLiteral("no panel \"%1\" within %2 s; visible panels: %3")
                              .arg(key, secondsText(seconds), there));
}

void OperatorActions::waitForPanelGone(const QString &key, double seconds)
{
    const PanelShowing leaving = MainQueue::sync([&] { return m_panels.leaving(root(), key); });
    if (!m_wait.until([&] { return leaving.isGone(m_stage.root); }, seconds)) {
        const QString there = MainQueue::sync([this] { return visiblePanelsText(root()); });
        throw OperatorFailure(QStringLiteral("panel \"%1\" still there after %2 s; visible panels: %3")
                                  .arg(key, secondsText(seconds), there));
    }
    MainQueue::sync([&] { m_panels.forget(key); });
}

void OperatorActions::takeWindow()
{
    if (!m_wait.until([this] { return OperatorHands(window()).takeWindow(); }, SecondsForActivation))
        throw OperatorFailure(QStringLiteral("the station window does not become the active one"));
}

void OperatorActions::type(const QString &text)
{
    takeWindow();
    MainQueue::sync([&] { OperatorHands(window()).type(text); });
}

void OperatorActions::scan(const QString &text)
{
    takeWindow();
    const ScannerSettings &scanner = m_stage.scanner;
    QList<KeyStroke> strokes = keyStrokes(scanner.prefix + text + scanner.suffix);
    strokes.append(keyStroke(scanner.terminators.first()));
    MainQueue::sync([&] { OperatorHands(window()).press(strokes); });
}

void OperatorActions::clickNow(const ClickTarget &target)
{
    View *view = findTarget(root(), target);
    // Taken before the click, which may already empty the panel.
    View *panel = panelAround(view);
    const PanelShowing showing = panel ? PanelShowing::of(panel) : PanelShowing();
    try {
        OperatorHands(window()).click(view);
    } catch (const OperatorFailure &failure) {
        throw OperatorFailure(QStringLiteral("cannot click the %1: %2")
                                  .arg(target.description(), QString::fromUtf8(failure.what())));
    }
    if (panel)
        m_panels.clicked(showing);
}

void OperatorActions::click(const ClickTarget &target)
{
    takeWindow();
    MainQueue::sync([&] { clickNow(target); });
}

Value OperatorActions::tree(const std::optional<QString> &identifier)
{
    return MainQueue::sync([&] {
        const View *view = identifier ? firstWithIdentifier(root(), *identifier) : root();
        // A copy with texts of its own: it is read, and freed, on the script's thread.
        return view ? platform::ownCopy(viewTree(view)) : Value();
    });
}

Value OperatorActions::property(const QString &name) const
{
    return MainQueue::sync([&] {
        const QObject *context = m_stage.context;
        if (!context)
            throw OperatorFailure(QStringLiteral("the plug-in's context is gone"));
        const QByteArray key = name.toLatin1();
        if (context->metaObject()->indexOfProperty(key.constData()) < 0)
            throw OperatorFailure(QStringLiteral("the plug-in has no property \"%1\"; it has: %2")
                                      .arg(name, propertyNames(context).join(QLatin1String(", "))));
        return platform::ownCopy(context->property(key.constData()));
    });
}

void OperatorActions::screenshot(const QString &path, const std::optional<QString> &identifier)
{
    MainQueue::sync([&] {
        QRect part = window()->rect();
        if (identifier) {
            const View *view = firstWithIdentifier(root(), *identifier);
            if (!view || !view->isVisible())
                throw OperatorFailure(QStringLiteral("no view \"%1\" can be seen").arg(*identifier));
            const QRect frame(view->mapTo(window(), QPoint(0, 0)), view->size());
            part &= frame.adjusted(-PictureMargin, -PictureMargin, PictureMargin, PictureMargin);
        }
        savePicture(window()->grab(part), path);
    });
}

QSize OperatorActions::resize(const QSize &size)
{
    return MainQueue::sync([&] {
        window()->resize(size);
        return window()->size();
    });
}

} // namespace station
