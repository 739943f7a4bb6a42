#include "platform/MainQueue.h"
#include "plugin/InteractiveView.h"
#include "plugin/Log.h"
#include "plugin/LoopRecord.h"
#include "plugin/Messages.h"
#include "plugin/RecordKeys.h"
#include "plugin/Selectors.h"
#include "plugin/StationIndex.h"
#include "presentation/MouseTrackedTextField.h"
#include "presentation/VerticallyCenteredTextFieldCell.h"

#include <QLineEdit>

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

void InteractiveView::setupLoopButton()
{
    const auto guard = m_monitor.lock();
    const double height = m_rootView ? m_rootView->bounds().height() : 0.0;
    MouseTrackedTextField *field = makeNumberField(height);
    field->setTarget(this, selectors::ConfigLoop, [this](platform::View *sender) { configLoop(sender); });
    if (m_rootView) {
        m_rootView->addSubview(makeCaption(height));
        m_rootView->addSubview(field);
    }
    m_loopNumberField = field;
}

void InteractiveView::configLoop(platform::View *sender)
{
    const QString method = selectors::bracketed(selectors::ConfigLoop);
    auto *field = qobject_cast<MouseTrackedTextField *>(sender);
    if (!field) {
        log::error(messages::InvalidSender, {method, log::describe(sender)});
        return;
    }
    if (QLineEdit *editor = field->currentEditor())
        moveEditorToEnd(editor);
    const QString text = field->stringValue();
    const qint64 maximum = platform::integerValue(text);
    {
        const auto savedData = m_savedData.lock();
        savedData->insert(keys::Loop,
                          loop::restarted(savedData->value(keys::Loop).toMap(), maximum, m_groupCount));
    }
    m_isLoopEnabled = loop::isLoop(maximum);
    log::standard(messages::LoopConfigured, {method, field->identifier(), text});
}

platform::Value InteractiveView::setLoop(const platform::Value &loopMaximum, platform::Error *)
{
    if (!isViewLoaded())
        return qlonglong{0};
    {
        const auto savedData = m_savedData.lock();
        platform::Dictionary record = savedData->value(keys::Loop).toMap();
        record.insert(keys::LoopMax, loopMaximum);
        savedData->insert(keys::Loop, record);
    }
    platform::MainQueue::sync([this, &loopMaximum] {
        if (!m_loopNumberField)
            return;
        m_loopNumberField->setStringValue(platform::description(loopMaximum));
        configLoop(m_loopNumberField);
    });
    return qlonglong{1};
}

platform::Dictionary InteractiveView::getLoopConfig(platform::Error *)
{
    return m_savedData.lock()->value(keys::Loop).toMap();
}

platform::Value InteractiveView::isLoopFinished(const platform::Value &groupNumber, platform::Error *)
{
    // One lock over reading, counting and storing: no count is lost when groups ask at the same moment.
    const auto savedData = m_savedData.lock();
    log::debug(messages::LoopData,
               {selectors::bracketed(selectors::IsLoopFinished), platform::Value(*savedData)});
    const loop::Pass pass = loop::reported(savedData->value(keys::Loop).toMap(), groupNumber);
    if (pass.counted)
        savedData->insert(keys::Loop, pass.record);
    if (!pass.finished)
        return qlonglong{0};
    const platform::Value group =
        elementAt(groupNames(), groupNumber, selectors::IsLoopFinished, "group number");
    savedData->remove(platform::description(group));
    return qlonglong{1};
}

} // namespace interactive
