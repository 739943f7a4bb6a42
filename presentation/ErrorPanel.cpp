#include "input/Identifiers.h"
#include "layout/Labels.h"
#include "layout/PanelGeometry.h"
#include "layout/PanelPlan.h"
#include "platform/Button.h"
#include "platform/MainQueue.h"
#include "platform/SplitView.h"
#include "plugin/Configuration.h"
#include "plugin/InteractiveView.h"
#include "plugin/Log.h"
#include "plugin/Messages.h"
#include "plugin/Selectors.h"

#include <algorithm>

namespace interactive {

namespace {

constexpr double FontSize = 15.0;
constexpr double ButtonFontSize = 16.0;

/// The position of a name in the list of groups; the largest number when it is none of them.
quint64 positionOf(const platform::Identifier &name, const platform::Array &groups)
{
    for (qsizetype i = 0; i < groups.size(); ++i) {
        if (platform::description(groups.at(i)) == name.text())
            return static_cast<quint64>(i);
    }
    return static_cast<quint64>(std::numeric_limits<qint64>::max());
}

/// The title's line crosses the upper half of the message's frame.
class BelowTitleCell : public platform::TextFieldCell
{
public:
    [[nodiscard]] VerticalPlacement verticalPlacement() const override { return VerticalPlacement::Lower; }
};

/// What the toolkit takes as a coordinate.
double clamped(double coordinate)
{
    return std::min(coordinate, static_cast<double>(QWIDGETSIZE_MAX));
}

} // namespace

bool InteractiveView::showError(const QString &message, const platform::Dictionary &config,
                                const platform::Identifier &identifier)
{
    const QString method = selectors::bracketed(selectors::ShowError);
    log::debug(messages::MessageCalled, {method, message});
    if (identifier.isNull()) {
        log::error(messages::ErrorWithoutPanel, {method, message});
        return true;
    }
    const std::shared_ptr<platform::Condition> condition = conditionMade(identifier);
    platform::Condition::Place place(*condition);
    if (m_interrupted)
        return false;
    platform::MainQueue::async(
        [this, message, config, identifier] { drawErrorPanel(message, config, identifier); });
    const bool acknowledged = place.wait() == platform::Condition::Wake::Signalled;
    platform::MainQueue::sync([&] { resetUI(identifier); });
    return acknowledged;
}

void InteractiveView::drawErrorPanel(const QString &message, const platform::Dictionary &config,
                                     const platform::Identifier &identifier)
{
    resetUI(identifier);
    // The error panel has no fields; those of an earlier panel must not be checked when it is acknowledged.
    m_responders.lock()->remove(identifier.text());

    const PanelGeometry geometry(PanelKind::Group, m_slotCount, errorColumns(config),
                                 m_splitView->frame().width());
    const double width = clamped(geometry.containerWidth());
    const double height = clamped(geometry.areaHeight());
    const quint64 group = positionOf(identifier, groupNames());

    auto panel = std::make_unique<platform::View>(
        platform::Rect(0.0, clamped(static_cast<double>(group) * height), width, height));
    panel->setIdentifier(identifier);
    enlargeDocument(geometry);
    showErrorTitle(message, config::text(config::Title, config), width);
    fillErrorPanel(*panel, message, group > 0);
    m_splitView->addSubview(panel.release());
    unhideUI(identifier);
}

/// A column count that no panel could have may be the very error to be shown; its panel is drawn as if none
/// had been given.
quint64 InteractiveView::errorColumns(const platform::Dictionary &config) const
{
    const quint64 wanted = plan::columns(config, m_columns, m_slotCount);
    if (PanelGeometry::whyNotDrawable(m_groupCount, m_slotCount, wanted, {}).isEmpty())
        return wanted;
    return std::max<quint64>(plan::columns({}, m_columns, m_slotCount), 1);
}

/// The title stands in the split view itself and stays there; there is one, used again by the next error.
void InteractiveView::showErrorTitle(const QString &message, const QString &title, double width)
{
    const platform::Rect frame(16.0, 86.0, width, 20.0);
    if (!m_errorTitle) {
        m_errorTitle = makeLabel(frame, platform::Font::boldSystem(FontSize), QString());
        m_errorTitle->setAutoresizingMask(platform::WidthSizable | platform::MaxXMargin |
                                          platform::MinYMargin);
    }
    m_errorTitle->setFrame(frame);
    m_errorTitle->setStringValue(message);
    m_errorTitle->setStringValue(title);
    m_splitView->addSubview(m_errorTitle);
}

void InteractiveView::fillErrorPanel(platform::View &panel, const QString &message, bool withSeparator)
{
    const platform::Size size = panel.frame().size();
    platform::TextField *text =
        makeLabel({16.0, 62.0, size.width(), 46.0}, platform::Font::system(FontSize), message);
    text->setCell(std::make_unique<BelowTitleCell>());
    text->setTextColor(platform::Color::standardRed());
    text->setAutoresizingMask(platform::WidthSizable | platform::MinYMargin | platform::HeightSizable);
    panel.addSubview(text);

    auto button = std::make_unique<platform::Button>(platform::Rect(size.width() - 96.0, 0.0, 80.0, 30.0));
    button->setTitle(QStringLiteral("OK"));
    button->setBezelStyle(platform::Button::BezelStyle::RegularSquare);
    button->setIdentifier(platform::Identifier(identifiers::Pass));
    button->setFont(platform::Font::system(ButtonFontSize));
    button->setAutoresizingMask(platform::MaxYMargin);
    button->setTarget(this, selectors::ConfirmBtnClicked,
                      [this](platform::View *sender) { confirmBtnClicked(sender); });
    panel.addSubview(button.release());

    if (!withSeparator)
        return;
    auto line = std::make_unique<platform::View>(platform::Rect(0.0, size.height() - 2.0, size.width(), 1.0));
    line->setWantsLayer(true);
    line->setLayerBackgroundColor(platform::Color::lightGray());
    line->setAutoresizingMask(platform::MinXMargin | platform::WidthSizable);
    panel.addSubview(line.release());
}

} // namespace interactive
