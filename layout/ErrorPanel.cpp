#include "layout/ErrorPanel.h"

#include "input/EntryNews.h"
#include "layout/PanelGeometry.h"
#include "layout/PanelParts.h"
#include "layout/PanelPlan.h"

#include <algorithm>
#include <limits>

#include "common/ConfigValues.h"
#include "common/Identifiers.h"

namespace interactive {

namespace {

constexpr double FontSize = 15.0;
constexpr double ButtonFontSize = 16.0;
/// A button of 80 points and 16 to the edge.
constexpr double OkFromRight = 96.0;

/// The title's line crosses the upper half of the message's frame.
class BelowTitleCell : public platform::TextFieldCell
{
public:
    [[nodiscard]] VerticalPlacement verticalPlacement() const override { return VerticalPlacement::Lower; }
};

/// What the toolkit takes as a coordinate.
double clamped(double coordinate)
{
    return std::min(coordinate, platform::LargestCoordinate);
}

} // namespace

ErrorPanel::ErrorPanel(const StationMap &station, const PanelSettings &settings, PanelViews &views,
                       Document &document, Focus &focus, Confirmation &confirmation, QObject *controller)
    : m_station(station)
    , m_settings(settings)
    , m_views(views)
    , m_document(document)
    , m_focus(focus)
    , m_confirmation(confirmation)
    , m_controller(controller)
{}

void ErrorPanel::draw(const QString &message, const platform::Dictionary &config,
                      const platform::Identifier &identifier)
{
    m_views.resetUI(identifier);
    // The error panel has no fields; those of an earlier panel must not be checked when it is acknowledged.
    m_views.dropResponders(identifier.text());

    const PanelGeometry geometry(PanelKind::Group, m_station.slotCount(), columnsFor(config),
                                 m_views.splitView()->frame().width());
    const double width = clamped(geometry.containerWidth());
    const double height = clamped(geometry.areaHeight());
    // A name that is no group's has no position: its panel is drawn as far outside as the toolkit takes it.
    const quint64 group = m_station.groupNumber(identifier.text())
                              .value_or(static_cast<quint64>(std::numeric_limits<qint64>::max()));

    auto panel = std::make_unique<platform::View>(
        platform::Rect(0.0, clamped(m_document.bandBegin(group, height)), width, height));
    panel->setIdentifier(identifier);
    panel->setAccessibleName(QStringLiteral("Error: %1").arg(message));
    m_document.makeRoom(geometry);
    showTitle(message, config::text(config::Title, config), width);
    fill(*panel, message, group > 0);
    platform::View *drawn = parts::add(*m_views.splitView(), std::move(panel));
    // What is no group has no band that it could be kept in when the window is resized.
    if (group < m_station.groupCount())
        m_document.add(drawn, group, geometry);
    QAccessibleEvent alert(drawn, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    m_focus.unhideUI(identifier);
    const platform::TextField *begun = m_focus.begunEntry();
    KVKExtensionEntryRelay::sharedEntryRelay()->errorShown(
        {news::placeOf(m_station, identifier.text()), message});
    platform::ScrollView::reveal(begun ? static_cast<const platform::View *>(begun) : drawn);
}

/// A column count that no panel could have may be the very error to be shown; its panel is drawn as
/// if none had been given.
quint64 ErrorPanel::columnsFor(const platform::Dictionary &config) const
{
    const quint64 slotCount = m_station.slotCount();
    const quint64 wanted = plan::columns(config, m_settings.columns(), slotCount);
    if (PanelGeometry::whyNotDrawable(m_station.groupCount(), slotCount, wanted, {}).isEmpty())
        return wanted;
    return std::max<quint64>(plan::columns({}, m_settings.columns(), slotCount), 1);
}

void ErrorPanel::showTitle(const QString &message, const QString &title, double width)
{
    const platform::Rect frame(16.0, 86.0, width, 20.0);
    if (!m_title) {
        m_title = parts::label(frame, platform::Font::boldSystem(FontSize), QString()).release();
        m_title->setPassesClicksThrough(true);
        m_title->setSpokenRole(QAccessible::Heading);
        m_title->setAutoresizingMask(platform::WidthSizable | platform::MaxXMargin | platform::MinYMargin);
    }
    m_title->setFrame(frame);
    m_title->setStringValue(message);
    m_title->setStringValue(title);
    m_title->setHidden(false);
    m_views.splitView()->addSubview(m_title);
}

void ErrorPanel::clearTitle()
{
    if (!m_title)
        return;
    m_title->setStringValue(QString());
    // It stands over the panels of its band, and would keep clicks from them.
    m_title->setHidden(true);
}

void ErrorPanel::fill(platform::View &panel, const QString &message, bool withSeparator)
{
    const platform::Size size = panel.frame().size();
    platform::TextField *text = parts::add(
        panel, parts::label({16.0, 62.0, size.width(), 46.0}, platform::Font::system(FontSize), message));
    text->setCell(std::make_unique<BelowTitleCell>());
    text->setTextColor(platform::Color::standardRed());
    text->setSpokenRole(QAccessible::AlertMessage);
    text->setAutoresizingMask(platform::WidthSizable | platform::MinYMargin | platform::HeightSizable);

    platform::Button *button =
        parts::add(panel, parts::confirmButton(platform::Rect(size.width() - OkFromRight, 0.0, 80.0, 30.0),
                                               QStringLiteral("OK"), platform::Identifier(identifiers::Pass),
                                               ButtonFontSize, {m_controller, [this](platform::View *sender) {
                                                                    m_confirmation.confirmBtnClicked(sender);
                                                                }}));
    button->setAutoresizingMask(platform::MaxYMargin);
    button->setSpokenName(QStringLiteral("OK, error on %1").arg(panel.identifier().text()));
    // "OK" stays at the right edge; its mask alone would leave it outside of a window that gets narrower.
    QObject::connect(&panel, &platform::View::frameChanged, button, [&panel, button] {
        button->setFrameOrigin({panel.frame().width() - OkFromRight, button->frame().y()});
    });
    if (withSeparator)
        parts::add(panel, parts::separator(platform::Rect(0.0, size.height() - 2.0, size.width(), 1.0), {}));
}

} // namespace interactive
