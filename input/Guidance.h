#pragma once

#include "kovan/KovanUIExtension/KVKExtensionGuidanceRelay.h"
#include "platform/View.h"
#include "presentation/PanelViews.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

namespace interactive {

/// Tells the host what the open panels have to be looked at ("image" and "instruction"), and which panel its
/// operator is at.
///
/// That is the panel that the mouse rests on, where that one has guidance; otherwise the one that has the
/// focus, which may have none; where no panel has the focus, since none of them takes entries, it is the one
/// that has stood longest. A mouse that has left the panels, so as to scroll what the host shows, still
/// counts for the panel that it rested on, until the focus moves. A panel that cannot be seen, since its
/// group is switched off, has none to offer. Thread: the main thread.
class Guidance : public QObject
{
    Q_OBJECT
public:
    /// How long the mouse has to stay on a panel: it crosses others on its way. In milliseconds.
    static constexpr int Rest = 200;

    explicit Guidance(const PanelViews &views);
    /// Withdraws what is offered.
    ~Guidance() override;

    /// A panel was drawn, in place of an earlier one of its key. Without guidance there is only the earlier
    /// one's end. `view` is what the mouse has to be on.
    void panelOpened(const QString &panelKey, platform::View *view, const KVKGuidancePointer &guidance);
    /// A panel was taken away.
    void panelGone(const QString &panelKey);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Panel
    {
        QString key;
        QPointer<platform::View> view;
        KVKGuidancePointer guidance;
        bool isOffered = false;

        [[nodiscard]] bool isGone() const { return !view || !view->superview(); }
        [[nodiscard]] bool canBeSeen() const { return !isGone() && view->isVisible(); }
    };

    void lookSoon();
    void followMouse();
    void mouseRests();
    [[nodiscard]] bool isMouseOnTheView() const;
    [[nodiscard]] platform::View *underMouse() const;
    void look();
    void offerWhatIsSeen();
    void drop(Panel &panel);
    [[nodiscard]] KVKGuidancePointer current() const;

    const PanelViews &m_views;
    QList<Panel> m_panels; ///< Those with guidance, the one drawn first at the front.
    KVKGuidancePointer m_current;
    QPointer<platform::View> m_underMouse; ///< The panel that the mouse was on when it was last looked.
    QPointer<platform::View> m_restedOn;   ///< The one that counts for the mouse.
    QTimer m_rest;
    bool m_looksSoon = false;
};

} // namespace interactive
