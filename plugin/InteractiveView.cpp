#include "plugin/InteractiveView.h"

#include "input/SlotLabels.h"
#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "platform/Button.h"
#include "platform/ScrollView.h"
#include "platform/SplitView.h"
#include "platform/TextField.h"
#include "plugin/Log.h"
#include "plugin/Messages.h"
#include "plugin/Selectors.h"
#include "presentation/MouseTrackedTextField.h"
#include "presentation/SystemIndexTransformers.h"

#include "ui_InteractiveView.h"

namespace interactive {

namespace {

constexpr double InitialBackgroundAlpha = 0.3;
constexpr unsigned FollowsBothSides = platform::WidthSizable | platform::HeightSizable;

QString describe(const std::shared_ptr<platform::Condition> &condition)
{
    return condition
               ? QStringLiteral("<Condition: 0x%1>")
                     .arg(reinterpret_cast<quintptr>(condition.get()), 0, 16) // NOLINT: an address to show
               : QStringLiteral("(null)");
}

} // namespace

InteractiveView::InteractiveView(QObject *parent)
    : platform::ViewController(parent)
{
    registerSystemIndexTransformers();
}

InteractiveView::~InteractiveView() = default;

platform::View *InteractiveView::loadView()
{
    auto root = std::make_unique<platform::View>();
    Ui::InteractiveView interface;
    interface.setupUi(root.get());
    interface.scrollView->setDocumentView(interface.documentView);
    m_rootView = root.get();
    m_scrollView = interface.scrollView;
    m_splitView = interface.splitView;
    return root.release();
}

void InteractiveView::viewDidLoad()
{
    ViewController::viewDidLoad();
    setSavedData({});
    setEnableStatus({});
    m_responders.lock()->clear();
    m_groupButtons.lock()->clear();
    m_conditions.lock()->clear();

    const KVKConfigEngine *station = KVKConfigEngine::sharedConfigEngine();
    m_customColorEnabled = station->statusTableCustomRowColorEnabled();
    m_systemIndexToGroupMapping = station->systemIndexToGroupMapping();
    m_systemIndexToSlotMapping = station->systemIndexToSlotMapping();
    m_groupCount = static_cast<quint64>(uniqueArray(m_systemIndexToGroupMapping).size());
    m_slotCount = static_cast<quint64>(uniqueArray(m_systemIndexToSlotMapping).size());

    m_drawShadow = false;
    m_backgroundAlpha = InitialBackgroundAlpha;
    m_rootView->setWantsLayer(true);
    m_rootView->setLayerBackgroundColor(platform::Color::clear());
    m_rootView->setAutoresizingMask(FollowsBothSides);
    m_collections.lock()->clear();

    setupLoopButton();
    setupGroupButtons();
    setupSplitView();
    platform::NotificationCenter::defaultCenter().addObserver(
        this, TextFieldMouseDownNotification,
        [this](const platform::Notification &notification) { textFieldMouseDown(notification); });
    m_isLoopEnabled = false;
}

void InteractiveView::setupSplitView()
{
    m_splitView->setDividerStyle(platform::SplitView::DividerStyle::Thin);
    m_splitView->setWantsLayer(true);
    m_splitView->setLayerBackgroundColor(platform::Color::clear());
    m_splitView->setAutoresizingMask(FollowsBothSides);
}

std::shared_ptr<platform::Condition> InteractiveView::getCondition(const platform::Identifier &key)
{
    const auto conditions = m_conditions.lock();
    const QString method = selectors::bracketed(selectors::GetCondition);
    if (conditions->isEmpty()) {
        log::error(messages::NoCondition, {method, key});
        return nullptr;
    }
    const std::shared_ptr<platform::Condition> found = conditions->value(key.text());
    log::debug(messages::FoundCondition, {method, key, platform::integerValue(key.text()), describe(found)});
    return found;
}

std::shared_ptr<platform::Condition> InteractiveView::findCondition(const platform::Identifier &key)
{
    return m_conditions.lock()->value(key.text());
}

std::shared_ptr<platform::Condition> InteractiveView::conditionMade(const platform::Identifier &key)
{
    if (auto found = getCondition(key))
        return found;
    // Another call for the same key may have made it since: both must wait on one condition.
    const auto conditions = m_conditions.lock();
    std::shared_ptr<platform::Condition> &condition = (*conditions)[key.text()];
    if (!condition)
        condition = std::make_shared<platform::Condition>();
    return condition;
}

platform::Identifier InteractiveView::panelKey(const QString &text)
{
    const auto keys = m_panelKeys.lock();
    auto found = keys->find(text);
    if (found == keys->end())
        found = keys->insert(text, platform::Identifier(text));
    return *found;
}

platform::Array InteractiveView::groupNames() const
{
    return uniqueArray(m_systemIndexToGroupMapping);
}

std::set<int> InteractiveView::collectionViewShouldSelectItemsAtIndexPaths(platform::CollectionView *,
                                                                           const std::set<int> &)
{
    return {};
}

} // namespace interactive
