#include "station/operator/OperatorActions.h"

#include "platform/MainQueue.h"
#include "platform/TextField.h"
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
constexpr double SecondsForFocus = 10.0;
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

OperatorFailure cannotClick(const ClickTarget &target, const OperatorFailure &why)
{
    return OperatorFailure(
        QStringLiteral("cannot click the %1: %2").arg(target.description(), QString::fromUtf8(why.what())));
}

std::optional<QString> textOf(const View *view)
{
    if (const auto *field = qobject_cast<const platform::TextField *>(view))
        return field->stringValue();
    return std::nullopt;
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

QList<KeyStroke> OperatorActions::scanned(const QString &text) const
{
    const ScannerSettings &scanner = m_stage.scanner;
    QList<KeyStroke> strokes = keyStrokes(scanner.prefix + text + scanner.suffix);
    strokes.append(keyStroke(scanner.terminators.first()));
    return strokes;
}

void OperatorActions::scan(const QString &text)
{
    takeWindow();
    MainQueue::sync([&] { OperatorHands(window()).press(scanned(text)); });
}

BadgeField &OperatorActions::badgeField() const
{
    if (!m_stage.badge)
        throw OperatorFailure(QStringLiteral("the station asks for no badge (station.ask_operator)"));
    return *m_stage.badge;
}

void OperatorActions::logIn(qint64 number)
{
    if (number < 1 || number > m_stage.badges.size())
        throw OperatorFailure(
            QStringLiteral("there is no badge %1: the station was started with %2 (--badge TEXT)")
                .arg(number)
                .arg(m_stage.badges.size()));
    const QString badge = m_stage.badges.at(static_cast<qsizetype>(number - 1));
    takeWindow();
    MainQueue::sync([&] {
        BadgeField &field = badgeField();
        if (field.badge() == badge)
            return;
        if (!field.takesBadges())
            throw OperatorFailure(QStringLiteral("no badge is taken while a run is under way"));
        field.logOut();
        OperatorHands(window()).press(scanned(badge));
    });
    if (!m_wait.until([&] { return badgeField().badge() == badge; }, SecondsForFocus))
        throw OperatorFailure(QStringLiteral("badge %1 is not taken").arg(number));
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
        throw cannotClick(target, failure);
    }
    if (panel)
        m_panels.clicked(showing);
}

bool OperatorActions::writeNow(const ClickTarget &target, const Entry &entry)
{
    auto *field = qobject_cast<platform::TextField *>(findTarget(root(), target));
    if (!field || !field->isEditable())
        throw OperatorFailure(QStringLiteral("the %1 takes no entry").arg(target.description()));
    View *panel = panelAround(field);
    const PanelShowing showing = panel ? PanelShowing::of(panel) : PanelShowing();
    try {
        if (!OperatorHands(window()).enter(field, entry))
            return false;
    } catch (const OperatorFailure &failure) {
        throw cannotClick(target, failure);
    }
    // An entry may end its panel, as a click does.
    if (panel)
        m_panels.clicked(showing);
    return true;
}

void OperatorActions::write(const ClickTarget &target, const Entry &entry)
{
    takeWindow();
    if (!m_wait.until([&] { return writeNow(target, entry); }, SecondsForFocus))
        throw OperatorFailure(QStringLiteral("the %1 does not get the focus").arg(target.description()));
}

void OperatorActions::enter(const ClickTarget &target, const std::optional<QString> &text)
{
    write(target, {text});
}

void OperatorActions::fill(const ClickTarget &target, const QString &text)
{
    write(target, {text, false});
}

void OperatorActions::paste(const ClickTarget &target, const QString &text)
{
    write(target, {text, false, true});
}

void OperatorActions::waitForText(const QString &identifier, const QString &text, double seconds)
{
    std::optional<QString> found;
    const auto isThere = [&] {
        found = textOf(firstWithIdentifier(root(), identifier));
        return found == text;
    };
    if (m_wait.until(isThere, seconds))
        return;
    const QString instead = found ? QStringLiteral("it has \"%1\"").arg(*found)
                                  : QStringLiteral("there is no such view with a text");
    throw OperatorFailure(QStringLiteral("view \"%1\" has not the text \"%2\" within %3 s; %4")
                              .arg(identifier, text, secondsText(seconds), instead));
}

QAction *OperatorActions::action(const QPointer<QAction> &action) const
{
    if (!action)
        throw OperatorFailure(QStringLiteral("the station window is gone"));
    return action;
}

void OperatorActions::run()
{
    MainQueue::sync([this] {
        if (!action(m_stage.run)->isEnabled())
            throw OperatorFailure(QStringLiteral("a run is under way already"));
        m_stage.run->trigger();
    });
}

void OperatorActions::stopRun()
{
    MainQueue::sync([this] {
        if (!action(m_stage.stop)->isEnabled())
            throw OperatorFailure(QStringLiteral("there is no run that could be stopped"));
        m_stage.stop->trigger();
    });
}

void OperatorActions::waitForRunEnd(double seconds)
{
    if (!m_wait.until([this] { return action(m_stage.run)->isEnabled(); }, seconds))
        throw OperatorFailure(QStringLiteral("the run has not ended within %1 s").arg(secondsText(seconds)));
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
