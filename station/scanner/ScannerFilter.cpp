#include "station/scanner/ScannerFilter.h"

#include "kovan/KovanLogging/KVKLogging.h"
#include "kovan/KovanUIExtension/KVKExtensionEntryRelay.h"
#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/KeyRouting.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWindow>

#include <utility>

namespace station {

namespace {

/// Within a scan the characters come one right after the other.
constexpr int LongestPauseInAScan = 300;

bool isModifier(int key)
{
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
        return true;
    default:
        return false;
    }
}

/// What the key writes. STX may come as the text U+0002, as Control and B with that text, or without a text
/// or with the letter's.
QString writtenBy(const QKeyEvent &key)
{
    constexpr int FirstOfControl = 0x40;
    constexpr int LastOfControl = 0x5f;
    if (platform::keys::worksAsKey(key))
        return {};
    const bool hasControl = key.modifiers().testFlag(Qt::ControlModifier);
    const bool hasAlt = key.modifiers().testFlag(Qt::AltModifier);
    // Control and Alt together are the third level of many keyboards; Alt alone is a command.
    if (key.modifiers().testFlag(Qt::MetaModifier) || (hasAlt && !hasControl))
        return {};
    if (hasControl && !hasAlt && key.key() > FirstOfControl && key.key() <= LastOfControl)
        return QString(QChar(char16_t(key.key() - FirstOfControl)));
    return key.text();
}

bool isPrintable(const QString &text)
{
    const QList<uint> characters = text.toUcs4();
    return !characters.isEmpty() && QChar::isPrint(characters.front());
}

bool entersText(const QWidget *widget)
{
    return widget && widget->testAttribute(Qt::WA_InputMethodEnabled);
}

} // namespace

ScannerFilter::ScannerFilter(QWidget *window, const ScannerSettings &settings)
    : m_window(window)
    , m_settings(settings)
    , m_reader(settings.prefix, settings.suffix)
{
    m_refusedEnds.setSingleShot(true);
    m_refusedEnds.setInterval(LongestPauseInAScan);
    connect(&m_refusedEnds, &QTimer::timeout, this, &ScannerFilter::refuse);
    // On the application: the window has a native one, which the keys come to, only once it is shown.
    QCoreApplication::instance()->installEventFilter(this);
}

ScannerFilter::~ScannerFilter() = default;

bool ScannerFilter::isInside(const QObject *watched) const
{
    const auto *widget = qobject_cast<const QWidget *>(watched);
    return widget && m_window && widget->window() == m_window;
}

bool ScannerFilter::eventFilter(QObject *watched, QEvent *event)
{
    if (m_giving || !m_window)
        return false;
    const bool isWindows = watched == m_window->windowHandle();
    switch (event->type()) {
    case QEvent::KeyPress:
        return isWindows && takesPress(*static_cast<QKeyEvent *>(event));
    case QEvent::KeyRelease: {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (!isWindows || m_keptReleases.value(key) == 0)
            return false;
        --m_keptReleases[key];
        return true;
    }
    case QEvent::ShortcutOverride: {
        // Control and B is a shortcut for a person, and the beginning of a scan for a scanner.
        const QString text = writtenBy(*static_cast<QKeyEvent *>(event));
        if (text.isEmpty() || !(isWindows || isInside(watched)) || !m_reader.wants(text))
            return false;
        event->accept();
        return true;
    }
    case QEvent::WindowDeactivate:
        // Releases of keys that are held now go to another window.
        if (watched == m_window)
            m_keptReleases.clear();
        return false;
    case QEvent::MouseButtonPress:
        // What was typed comes before the click that followed it.
        if (isWindows)
            giveUp();
        return false;
    default:
        return false;
    }
}

/// True when the key goes no further.
bool ScannerFilter::takesPress(QKeyEvent &key)
{
    if (isModifier(key.key()))
        return false;
    const QString text = writtenBy(key);
    if (m_refuses)
        return takesRefused(key, text);
    if (isTerminator(key) && m_reader.isInScan())
        return takesTerminator(key);
    if (!text.isEmpty())
        return takesText(key, text);
    giveUp();
    return false;
}

bool ScannerFilter::isTerminator(const QKeyEvent &key) const
{
    const bool hasModifier = key.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
    return !hasModifier && m_settings.terminators.contains(static_cast<Qt::Key>(key.key()));
}

bool ScannerFilter::takesText(const QKeyEvent &key, const QString &text)
{
    if (!m_reader.holdsAny() && !m_reader.isInScan()) {
        m_aim = m_window->focusWidget();
        m_hadAim = m_aim;
    }
    // A blank that works a button is no text, unless it is known to come from a scanner.
    const bool isScanned = m_reader.isInScan() && !m_settings.prefix.isEmpty();
    const bool toWindow = isScanned && m_held.empty() && writesBlankToControl(text);
    const bool counts = isScanned || (isPrintable(text) && !writesBlankToControl(text));
    m_held.emplace_back(static_cast<QKeyEvent *>(key.clone()));
    const ScanReader::Step step = m_reader.take(text, counts);
    if (step.begins) {
        giveBack(step.release);
        m_held.clear();
        keepRelease(key);
        begin();
        return true;
    }
    const auto released = static_cast<std::size_t>(step.release);
    if (released == 1 && m_held.size() == 1 && !toWindow) {
        m_held.clear();
        return false;
    }
    keepRelease(key);
    if (toWindow && released == 1) {
        // The control would be worked by it; the window hands it to whoever waits for text.
        m_held.clear();
        QKeyEvent copy(key.type(), key.key(), key.modifiers(), key.text(), key.isAutoRepeat());
        QCoreApplication::sendEvent(m_window, &copy);
        return true;
    }
    giveBack(step.release);
    return true;
}

bool ScannerFilter::writesBlankToControl(const QString &text) const
{
    return text == QLatin1String(" ") && !entersText(m_window->focusWidget());
}

/// The whole prefix has come. Whatever has opened meanwhile does not get what was meant for another.
void ScannerFilter::begin()
{
    const QWidget *now = m_window->focusWidget();
    if (now == m_aim && m_hadAim == (m_aim != nullptr))
        return;
    if (m_aim && m_aim->isVisible() && m_aim->isEnabled() && entersText(m_aim) &&
        m_aim->window() == m_window) {
        m_aim->setFocus(Qt::OtherFocusReason);
        if (m_window->focusWidget() == m_aim)
            return;
    }
    m_refuses = true;
    m_refused.clear();
    m_refusedEnds.start();
}

bool ScannerFilter::takesTerminator(const QKeyEvent &key)
{
    const ScanReader::Step step = m_reader.end();
    if (step.release == 0)
        m_held.clear();
    giveBack(step.release);
    const bool hasMark = !m_settings.prefix.isEmpty() || !m_settings.suffix.isEmpty();
    if (step.isEmpty && hasMark) {
        // Return by itself would press what has the focus.
        keepRelease(key);
        tellRefused({}, QStringLiteral("the scan is empty"));
        return true;
    }
    if (key.key() == Qt::Key_Return)
        return false;
    keepRelease(key);
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent returnKey(type, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
        returnKey.setTimestamp(key.timestamp());
        send(returnKey);
    }
    return true;
}

bool ScannerFilter::takesRefused(const QKeyEvent &key, const QString &text)
{
    keepRelease(key);
    m_refused += text;
    m_refusedEnds.start();
    if (platform::keys::worksAsKey(key))
        refuse();
    return true;
}

/// Ends the scan that has lost its field.
void ScannerFilter::refuse()
{
    m_refusedEnds.stop();
    m_refuses = false;
    static_cast<void>(m_reader.leave());
    QString text = std::exchange(m_refused, QString());
    if (!m_settings.suffix.isEmpty() && text.endsWith(m_settings.suffix))
        text.chop(m_settings.suffix.size());
    tellRefused(text, QStringLiteral("its field has lost the focus meanwhile"));
}

void ScannerFilter::tellRefused(const QString &text, const QString &why) const
{
    const QString line = QStringLiteral("Entry refused: %1 (%2)").arg(text, why);
    KVKLogEvent(KVKLogLevel::Error, "%@", {line});
    KVKExtensionStatusRelay::sharedStatusRelay()->showMessage(line);
    KVKExtensionEntryRelay::sharedEntryRelay()->refused({{}, text, QStringLiteral("nowhere"), why});
}

/// Something else is done than to scan.
void ScannerFilter::giveUp()
{
    giveBack(m_reader.leave().release);
}

/// Lets keys go on that turned out to be typed, in their order.
void ScannerFilter::giveBack(qsizetype count)
{
    for (; count > 0 && !m_held.empty(); --count) {
        // Taken out before it goes: what it does may end in here again.
        const std::unique_ptr<QKeyEvent> key = std::move(m_held.front());
        m_held.pop_front();
        send(*key);
        QKeyEvent release(QEvent::KeyRelease, key->key(), key->modifiers(), key->text());
        release.setTimestamp(key->timestamp());
        send(release);
    }
}

/// To the native window, as the window system does it: whoever has the focus by now gets the key.
void ScannerFilter::send(const QKeyEvent &key)
{
    const QPointer<QWindow> native = m_window ? m_window->windowHandle() : nullptr;
    if (!native)
        return;
    const std::unique_ptr<QEvent> copy(key.clone());
    m_giving = true;
    QCoreApplication::sendEvent(native, copy.get());
    m_giving = false;
}

} // namespace station
