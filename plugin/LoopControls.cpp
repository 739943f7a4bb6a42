#include "plugin/LoopControls.h"

#include "input/Entries.h"
#include "platform/LogFormat.h"
#include "plugin/PassNotice.h"
#include "presentation/MouseTrackedTextField.h"
#include "presentation/VerticallyCenteredTextFieldCell.h"

#include <QFocusEvent>
#include <QLineEdit>

#include "common/Log.h"
#include "common/Messages.h"
#include "common/RecordKeys.h"
#include "common/Selectors.h"

namespace interactive {

namespace {

constexpr double FontSize = 12.0;
constexpr platform::Size ControlSize{80.0, 22.5};
constexpr platform::Point CaptionFromTopLeft{16.0, -30.0};
constexpr platform::Point FieldFromTopLeft{80.0, -26.0};
constexpr unsigned KeepsToTopLeft = platform::MaxXMargin | platform::MinYMargin;

platform::TextField *makeCaption(double height)
{
    auto caption = std::make_unique<platform::TextField>(
        platform::Rect(CaptionFromTopLeft + platform::Point(0.0, height), ControlSize));
    caption->setFont(platform::Font::system(FontSize));
    caption->setBordered(false);
    caption->setEditable(false);
    caption->setAutoresizingMask(KeepsToTopLeft);
    caption->setDrawsBackground(true);
    caption->setBackgroundColor(platform::Color::clear());
    caption->setStringValue(QStringLiteral("%1:").arg(keys::Loop));
    return caption.release();
}

MouseTrackedTextField *makeNumberField(double height)
{
    auto field = std::make_unique<MouseTrackedTextField>(
        platform::Rect(FieldFromTopLeft + platform::Point(0.0, height), ControlSize));
    auto cell = std::make_unique<VerticallyCenteredTextFieldCell>();
    cell->setBezeled(true);
    cell->setBezelStyle(platform::TextFieldCell::BezelStyle::Square);
    field->setCell(std::move(cell));
    field->setFont(platform::Font::system(FontSize));
    field->setBordered(true);
    field->setEditable(true);
    field->setAutoresizingMask(KeepsToTopLeft);
    field->setDrawsBackground(true);
    field->setBackgroundColor(platform::Color::white());
    field->setStringValue(QStringLiteral("0"));
    field->setSpokenName(QStringLiteral("Loop: number of passes"));
    field->setSpokenDescription(QStringLiteral("0 turns the loop off"));
    field->setIdentifier(platform::Identifier(keys::Loop));
    return field.release();
}

void moveEditorToEnd(QLineEdit *editor)
{
    const int length = static_cast<int>(editor->text().size());
    if (length > 0)
        editor->setSelection(length - 1, 1);
    editor->end(false);
}

} // namespace

LoopControls::LoopControls(const StationMap &station, PanelRecords &records, PanelViews &views, Focus &focus)
    : m_station(station)
    , m_records(records)
    , m_views(views)
    , m_focus(focus)
{}

void LoopControls::setupLoopButton(QObject *target)
{
    platform::View *root = m_views.rootView();
    const double height = root ? root->bounds().height() : 0.0;
    MouseTrackedTextField *field = makeNumberField(height);
    field->setTarget(target, selectors::ConfigLoop, [this](platform::View *sender) { endEntry(sender); });
    if (root) {
        root->addSubview(makeCaption(height));
        root->addSubview(field);
    }
    field->setRefusalHandler([](const platform::TextField *refusing, const platform::RefusedEntry &refused) {
        const QString name = refusing->identifier().text();
        Entries::refuse({{{}, {}, name, {}},
                         refused.text,
                         news::Unreadable,
                         platform::formatMessage(messages::InField, {refused.why, refusing->identifier()})});
    });
    m_field = field;
    field->focusTarget()->installEventFilter(this);
}

/// A window that becomes active gives the focus to the first widget that takes it; for this field that is not
/// a person's wish.
bool LoopControls::eventFilter(QObject *watched, QEvent *event)
{
    // When the whole window loses the keys the person who was in the field finds the cursor there again.
    if (event->type() == QEvent::FocusOut)
        m_entered = m_entered && static_cast<QFocusEvent *>(event)->reason() == Qt::ActiveWindowFocusReason;
    if (event->type() == QEvent::FocusIn && m_field) {
        const bool byItself = static_cast<QFocusEvent *>(event)->reason() == Qt::ActiveWindowFocusReason;
        if (byItself && !m_entered) {
            // The line editor hears nothing of it: it would show a cursor where no key goes.
            m_field->window()->setFocus(Qt::OtherFocusReason);
            return true;
        }
        m_entered = true;
    }
    return QObject::eventFilter(watched, event);
}

/// Return in the field: the number is taken, and whoever waits for an entry has the keys again.
void LoopControls::endEntry(platform::View *sender)
{
    configLoop(sender);
    if (m_field)
        KVKExtensionEntryRelay::sharedEntryRelay()->accepted(
            {{{}, {}, m_field->identifier().text(), {}}, m_field->stringValue()});
    if (m_field && m_field->isFirstResponder() && !m_focus.goOn())
        m_field->window()->setFocus(Qt::OtherFocusReason);
}

void LoopControls::configLoop(platform::View *sender)
{
    const QString method = selectors::bracketed(selectors::ConfigLoop);
    auto *field = qobject_cast<MouseTrackedTextField *>(sender);
    if (!field) {
        log::error(messages::InvalidSender, {method, log::describe(sender)});
        return;
    }
    if (QLineEdit *editor = field->currentEditor())
        moveEditorToEnd(editor);
    // An own one: the editor goes on writing into its text, when the log may still read it.
    const QString text = platform::ownCopy(field->stringValue()).toString();
    // A text that is no number reads as 0, which turns loop mode off.
    const qint64 maximum = platform::integerValue(text);
    m_records.startLoop(maximum, m_station.groupCount());
    tellPasses(m_records.loopRecord(), m_station.groupCount());
    log::standard(messages::LoopConfigured, {method, field->identifier(), text});
}

void LoopControls::show(const QString &number)
{
    if (!m_field)
        return;
    m_field->setStringValue(number);
    configLoop(m_field);
}

} // namespace interactive
