#pragma once

#include "input/Confirmation.h"
#include "input/Focus.h"
#include "layout/Document.h"
#include "presentation/PanelViews.h"

#include <QObject>
#include <QPointer>

#include "common/PanelSettings.h"
#include "common/StationMap.h"

namespace interactive {

/// The panel on which an operator reads why a configuration was refused, and acknowledges it with "OK".
///
/// Its title stands in the split view itself; there is one, used again by the next error and emptied by the
/// next panel. Thread: the main thread.
class ErrorPanel
{
public:
    ErrorPanel(const StationMap &station, const PanelSettings &settings, PanelViews &views,
               Document &document, Focus &focus, Confirmation &confirmation, QObject *controller);

    /// Draws the panel in the place of what the identifier names.
    void draw(const QString &message, const platform::Dictionary &config,
              const platform::Identifier &identifier);
    /// Empties the title of the last error.
    void clearTitle();

private:
    [[nodiscard]] quint64 columnsFor(const platform::Dictionary &config) const;
    void showTitle(const QString &message, const QString &title, double width);
    void fill(platform::View &panel, const QString &message, bool withSeparator);

    const StationMap &m_station;
    const PanelSettings &m_settings;
    PanelViews &m_views;
    Document &m_document;
    Focus &m_focus;
    Confirmation &m_confirmation;
    QObject *m_controller;
    QPointer<platform::TextField> m_title;
};

} // namespace interactive
