#include "plugin/InteractiveView.h"

#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/ScrollView.h"
#include "platform/SplitView.h"
#include "plugin/Rooms.h"
#include "presentation/MouseTrackedTextField.h"
#include "presentation/SystemIndexTransformers.h"

#include "common/Identifiers.h"
#include "ui_InteractiveView.h"

namespace interactive {

namespace {

/// Fainter than what the host's text colours are meant for: until a configuration says otherwise, texts are
/// black.
constexpr PanelLook InitialLook{0.3, false};
constexpr unsigned FollowsBothSides = platform::WidthSizable | platform::HeightSizable;

} // namespace

InteractiveView::InteractiveView(QObject *parent)
    : platform::ViewController(parent)
    , m_rooms(std::make_unique<Rooms>(this, this))
{
    registerSystemIndexTransformers();
}

InteractiveView::~InteractiveView()
{
    // The last presses and calls may have left something to do on the main thread, which needs the rooms.
    m_rooms->confirmation.end();
    platform::MainQueue::serveSubmitted();
}

platform::View *InteractiveView::loadView()
{
    auto root = std::make_unique<platform::View>();
    Ui::InteractiveView interface;
    interface.setupUi(root.get());
    interface.scrollView->setDocumentView(interface.documentView);
    m_rooms->views.setViews(root.get(), interface.scrollView, interface.splitView);
    return root.release();
}

void InteractiveView::viewDidLoad()
{
    ViewController::viewDidLoad();
    m_rooms->records.restore({});
    m_rooms->records.setLoopEnabled(false);
    m_rooms->slotStates.restore({});
    m_rooms->waits.clear();

    const KVKConfigEngine *engine = KVKConfigEngine::sharedConfigEngine();
    m_rooms->settings.setCustomColorEnabled(engine->statusTableCustomRowColorEnabled());
    m_rooms->station = StationMap(engine->systemIndexToGroupMapping(), engine->systemIndexToSlotMapping());
    m_rooms->settings.setLook(InitialLook);

    platform::View *root = m_rooms->views.rootView();
    root->setLayerBackgroundColor(platform::Color::clear());
    root->setAutoresizingMask(FollowsBothSides);

    m_rooms->loop.setupLoopButton(this);
    m_rooms->groupButtons.setupGroupButtons(this);
    platform::SplitView *splitView = m_rooms->views.splitView();
    splitView->setLayerBackgroundColor(platform::Color::clear());
    splitView->setAutoresizingMask(FollowsBothSides);
    m_rooms->document.followWindow(this);
    platform::NotificationCenter::defaultCenter().addObserver(
        this, TextFieldMouseDownNotification, [this](const platform::Notification &notification) {
            m_rooms->focus.textFieldMouseDown(notification, m_rooms->records);
            // A slot that was opened again may have become the next one to wait.
            const auto *clicked = qobject_cast<platform::TextField *>(notification.object.data());
            if (clicked && !clicked->isEditable() && !clicked->identifier().isNull())
                m_rooms->defaults.offer(platform::Identifier(identifiers::panelPart(clicked->identifier())));
        });
    // Last: a key that is looked at may have to be brought to a panel.
    m_rooms->keys.start();
}

std::set<int> InteractiveView::collectionViewShouldSelectItemsAtIndexPaths(platform::CollectionView *,
                                                                           const std::set<int> &)
{
    // Tiles only arrange the boxes; to choose one would mean nothing.
    return {};
}

} // namespace interactive
