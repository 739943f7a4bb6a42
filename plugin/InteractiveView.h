#pragma once

#include "kovan/KovanUIExtension/KVKExtensionInteractiveView.h"
#include "kovan/KovanUIExtension/KVKExtensionInterruption.h"
#include "platform/CollectionView.h"
#include "platform/Color.h"
#include "platform/Condition.h"
#include "platform/Error.h"
#include "platform/Identifier.h"
#include "platform/Monitored.h"
#include "platform/NotificationCenter.h"
#include "platform/SerialQueue.h"
#include "platform/Value.h"
#include "platform/ViewController.h"

#include <QHash>
#include <QPointer>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

namespace platform {
class Box;
class Button;
class ScrollView;
class SplitView;
class TextField;
} // namespace platform

namespace interactive {

class PanelGeometry;
struct PanelDrawing;
struct PanelPlan;
struct SlotBox;

/// The domain of every error that this plug-in reports.
inline const QString InteractivePluginErrorDomain = QStringLiteral("InteractivePluginErrorDomain");

/// The principal class of the plug-in: the controller of the operator's view and the object whose methods Lua
/// calls. It asks the operator for input on a panel per group or per system, blocks the calling sequence
/// until the operator has answered, and keeps the answers.
///
/// Its methods live in the folder that bears their subject: plugin/ (start-up, show calls, data, loop mode),
/// layout/ (panels), presentation/ (colours, error panel, visibility), groups/ (group buttons, switches),
/// input/ (identifiers, entries, focus, confirmation).
///
/// Thread: the functions of the table are called on sequencer threads, several at a time; everything that
/// touches a view runs on the main thread. A method without a thread named below belongs to the main thread.
/// State: each shared dictionary has a lock of its own (platform::Monitored); they are taken one at a time,
/// held across read-then-write and never across a wait or a MainQueue::sync. Ownership: the host owns the
/// controller, which must outlive every call into it; interruptWaitingCalls() ends those that wait.
class InteractiveView : public platform::ViewController,
                        public KVKExtensionInteractiveView,
                        public KVKExtensionInterruption,
                        public platform::CollectionViewDelegate
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KVKExtensionInteractiveView_iid FILE "InteractiveView.json")
    Q_INTERFACES(KVKExtensionInteractiveView KVKExtensionInterruption)
    Q_PROPERTY(QVariantMap savedData READ savedData)
    Q_PROPERTY(QVariantMap enableStatus READ enableStatus)
    Q_PROPERTY(QVariantList systemIndexToGroupMapping READ systemIndexToGroupMapping)
    Q_PROPERTY(QVariantList systemIndexToSlotMapping READ systemIndexToSlotMapping)
    Q_PROPERTY(qulonglong groupCount READ groupCount)
    Q_PROPERTY(qulonglong slotCount READ slotCount)
    Q_PROPERTY(qulonglong columns READ columns WRITE setColumns)
    Q_PROPERTY(bool customColorEnabled READ customColorEnabled WRITE setCustomColorEnabled)
    Q_PROPERTY(bool drawShadow READ drawShadow WRITE setDrawShadow)
    Q_PROPERTY(double backgroundAlpha READ backgroundAlpha WRITE setBackgroundAlpha)
    Q_PROPERTY(bool isLoopEnabled READ isLoopEnabled)
public:
    /// A panel's input fields in the order in which they follow one another. A field may be gone.
    using Responders = QList<QPointer<platform::TextField>>;

    explicit InteractiveView(QObject *parent = nullptr);
    ~InteractiveView() override;

    // The host's side (plugin/PluginSurface.cpp)
    [[nodiscard]] QObject *pluginContext() override;
    [[nodiscard]] platform::Dictionary pluginConstants() override;
    [[nodiscard]] platform::Dictionary pluginFunctionTable() override;
    [[nodiscard]] double minHeightHint() override;
    [[nodiscard]] double minWidthHint() override;
    /// Thread: any.
    void interruptWaitingCalls() override;
    void acceptCalls() override;

    // The functions of the table. Thread: a sequencer thread, never the main thread for the show calls.
    Q_INVOKABLE platform::Value showGroupView(const platform::Value &groupNumber,
                                              const platform::Dictionary &config, platform::Error *error);
    Q_INVOKABLE platform::Value showView(const platform::Value &systemIndex,
                                         const platform::Dictionary &config, platform::Error *error);
    Q_INVOKABLE platform::Value getData(const platform::Value &systemIndex, platform::Error *error);
    Q_INVOKABLE platform::Dictionary getLoopConfig(platform::Error *error);
    Q_INVOKABLE platform::Value setLoop(const platform::Value &loopMaximum, platform::Error *error);
    Q_INVOKABLE platform::Value isLoopFinished(const platform::Value &groupNumber, platform::Error *error);

    /// What both show calls do: draws the panel for a group (group number given) or a system (system index
    /// given), waits for the operator and returns the answer. Nothing without an error means that the
    /// operator cancelled. Thread: a sequencer thread; on the main thread an error at once, since it would
    /// wait for itself. Errors: a refused configuration (100 to 105), a switch panel ended by another button
    /// than "OK" (301), and the codes of this class (see plugin/ErrorCodes.h); a group number out of range
    /// throws std::out_of_range.
    platform::Value showInteractiveView(const platform::Value &groupNumber,
                                        const platform::Value &systemIndex,
                                        const platform::Dictionary &config, platform::Error *error);

    /// Refuses a configuration that cannot be drawn: an error is stored with its code and message, otherwise
    /// the out-parameter keeps what it held. Changes nothing. groupNumber is nothing for a single system.
    /// Thread: any.
    void checkConfig(const platform::Dictionary &config, const platform::Value &groupNumber,
                     const platform::Value &inputs, const platform::Value &switchs,
                     const platform::Value &buttons, platform::Error *error);

    // Start-up (plugin/InteractiveView.cpp)
    void setupSplitView();
    /// The condition that the show call for a panel key waits on, or null. Thread: any.
    [[nodiscard]] std::shared_ptr<platform::Condition> getCondition(const platform::Identifier &panelKey);
    /// The one instance of the identifier with this text that the whole controller uses for panels. Thread:
    /// any.
    [[nodiscard]] platform::Identifier panelKey(const QString &text);
    /// No tile can be selected: always the empty set.
    [[nodiscard]] std::set<int>
    collectionViewShouldSelectItemsAtIndexPaths(platform::CollectionView *view,
                                                const std::set<int> &indexes) override;

    // Loop mode (plugin/LoopMode.cpp)
    void setupLoopButton();
    void configLoop(platform::View *sender);

    // Panels (layout/)
    /// Draws a panel and returns when it is on the screen. Thread: any; the view work runs on the main
    /// thread. Requires: slotCount and the column count are not 0 (see panelProblem).
    void drawUI(const platform::Dictionary &config, const platform::Array &inputs,
                const platform::Array &switches, const platform::Value &buttons,
                const platform::Value &groupIndex, const platform::Value &systemIndex);
    /// Why no panel can be drawn for this configuration on this station; empty when one can. Thread: any.
    [[nodiscard]] QString panelProblem(const platform::Dictionary &config);

    // Colours (presentation/SlotColors.cpp). The system index may be nothing.
    [[nodiscard]] platform::Color textColor(const platform::Value &systemIndex);
    [[nodiscard]] platform::Color bgColor(const platform::Value &systemIndex);
    void setTextFieldColor(platform::TextField *field, const platform::Value &systemIndex);
    /// A new box in the system's colour. The caller owns it.
    [[nodiscard]] platform::Box *bgView(const platform::Rect &frame, const platform::Value &systemIndex);

    // The error panel (presentation/ErrorPanel.cpp)
    /// Shows a message in the panel's place and returns when the operator has acknowledged it, false when the
    /// host ended the wait. With a null identifier there is nobody to acknowledge: the message is logged and
    /// the call returns. Thread: a sequencer thread.
    bool showError(const QString &message, const platform::Dictionary &config,
                   const platform::Identifier &identifier);

    // Reset, hide and show (presentation/PanelVisibility.cpp)
    /// Forgets what was entered for a panel, unless loop mode is on. Thread: any.
    void resetData(const platform::Identifier &identifier);
    /// Removes the panel, or empties the tile, that bears this very identifier instance.
    void resetUI(const platform::Identifier &identifier);
    /// Hides the first panel that bears this very identifier instance. Thread: any.
    void hideUIWithIdentifier(const platform::Identifier &identifier);
    /// Hides every panel that bears this very identifier instance.
    void hideUI(const platform::Identifier &identifier);
    /// Shows every panel whose identifier has this text and puts the focus back into it.
    void unhideUI(const platform::Identifier &identifier);

    // Group buttons (groups/GroupButtons.cpp)
    void setupGroupButtons();
    void relayoutGroupButtons(double width);
    void groupBtnClicked(platform::View *sender);
    /// Thread: any.
    [[nodiscard]] bool isGroupOn(const platform::Identifier &identifier);
    /// Thread: any.
    [[nodiscard]] bool isGroupView(const platform::Identifier &identifier);
    void enableGroupButton(bool enable, const platform::Identifier &identifier);
    void turnOnGroupButton(bool on, const platform::Identifier &identifier);
    [[nodiscard]] int getGroupButtonState(const platform::Identifier &identifier);
    /// The identifier of the view's superview, or a null one.
    [[nodiscard]] platform::Identifier getParentIdentifier(platform::View *view);

    // Switches (groups/Switches.cpp)
    void switchBtnClicked(platform::View *sender);

    // Look-ups (input/IdentifierLookups.cpp). Thread: any, except subView.
    [[nodiscard]] platform::Identifier getSubStringBefore(const QString &separator,
                                                          const platform::Identifier &from) const;
    [[nodiscard]] platform::Identifier getSubStringAfter(const QString &separator,
                                                         const platform::Identifier &from) const;
    [[nodiscard]] QString getString(const QString &key, const platform::Dictionary &from) const;
    [[nodiscard]] platform::Value tagToSystemIndex(int tag) const;
    [[nodiscard]] int systemIndexToTag(const platform::Value &systemIndex) const;
    /// The first direct subview that bears this very identifier instance, or null.
    [[nodiscard]] platform::View *subView(platform::View *parent,
                                          const platform::Identifier &identifier) const;
    [[nodiscard]] platform::Array uniqueArray(const platform::Array &array) const;
    [[nodiscard]] platform::Array orderedArray(const platform::Array &labels) const;
    [[nodiscard]] bool hasDuplication(const platform::Array &array) const;
    [[nodiscard]] bool hasInvalidLabel(const platform::Array &labels) const;

    // Entries (input/InputCheck.cpp)
    /// Checks and stores the entry of an input field; false when it is invalid or the sender is no input
    /// field.
    bool checkInput(platform::View *sender);
    /// True when the text may be stored. Thread: any.
    [[nodiscard]] bool checkDuplicatedInput(const QString &text, const platform::Identifier &panelKey);

    // Focus and editing (input/Focus.cpp)
    void setupResponderChain(const Responders &fields);
    void activateResponder(platform::View *responder);
    /// The slot that waits for input next, given those that hold a value; nothing when none does. Thread:
    /// any.
    [[nodiscard]] platform::Value nextEnabledSlot(const platform::Array &filled,
                                                  const platform::Identifier &panelKey);
    void textFieldMouseDown(const platform::Notification &notification);
    bool modifyInput(platform::View *sender);

    // Confirmation (input/Confirmation.cpp)
    void confirmBtnClicked(platform::View *sender);
    /// Whether the panel may be closed. Thread: any but the main thread.
    [[nodiscard]] bool checkAllInputs(const platform::Identifier &panelKey);
    /// Empties the panel's fields. Thread: any but the main thread.
    void clearAllInputs(const platform::Identifier &panelKey);

    // State. Thread: any; a getter of a dictionary returns a copy made under its lock. Valid after the view
    // was loaded.
    [[nodiscard]] platform::View *rootView() const;
    [[nodiscard]] platform::SplitView *splitView() const;
    [[nodiscard]] platform::ScrollView *scrollView() const;
    [[nodiscard]] platform::TextField *loopNumberField() const;
    [[nodiscard]] platform::Dictionary savedData();
    void setSavedData(const platform::Dictionary &data);
    [[nodiscard]] platform::Dictionary enableStatus();
    void setEnableStatus(const platform::Dictionary &status);
    [[nodiscard]] Responders responders(const QString &panelKey);
    void setResponders(const QString &panelKey, const Responders &fields);
    [[nodiscard]] bool hasResponders(const QString &panelKey);
    [[nodiscard]] QList<platform::Button *> groupButtons();
    [[nodiscard]] platform::CollectionView *collection(const QString &groupName);
    [[nodiscard]] platform::Array systemIndexToGroupMapping() const;
    [[nodiscard]] platform::Array systemIndexToSlotMapping() const;
    [[nodiscard]] quint64 groupCount() const;
    [[nodiscard]] quint64 slotCount() const;
    [[nodiscard]] bool customColorEnabled() const;
    void setCustomColorEnabled(bool enabled);
    [[nodiscard]] bool drawShadow() const;
    void setDrawShadow(bool draw);
    [[nodiscard]] double backgroundAlpha() const;
    void setBackgroundAlpha(double alpha);
    [[nodiscard]] quint64 columns() const;
    void setColumns(quint64 columns);
    [[nodiscard]] bool isLoopEnabled() const;
    void setIsLoopEnabled(bool enabled);

protected:
    [[nodiscard]] platform::View *loadView() override;
    void viewDidLoad() override;

private:
    friend class ShowCall;
    using Conditions = QHash<QString, std::shared_ptr<platform::Condition>>;

    // start-up and conditions
    [[nodiscard]] std::shared_ptr<platform::Condition> findCondition(const platform::Identifier &panelKey);
    [[nodiscard]] std::shared_ptr<platform::Condition> conditionMade(const platform::Identifier &panelKey);
    [[nodiscard]] platform::Array groupNames() const;

    // panels
    [[nodiscard]] PanelPlan planPanel(const platform::Dictionary &config, const platform::Array &inputs,
                                      const platform::Array &switches, const platform::Value &buttons,
                                      const platform::Value &groupIndex, const platform::Value &systemIndex);
    void takePanelSettings(const platform::Dictionary &config);
    void drawPanel(PanelPlan &plan);
    void prepareContainer(PanelDrawing &drawing);
    void dropEmptyContainer(const QString &identifier);
    void drawGroupHeader(PanelDrawing &drawing);
    void drawMessage(PanelDrawing &drawing);
    void buildOverview(PanelDrawing &drawing);
    void enlargeDocument(const PanelGeometry &geometry);
    void drawSharedInput(PanelDrawing &drawing);
    void drawButtonRow(PanelDrawing &drawing);
    void finishPanel(PanelDrawing &drawing);
    [[nodiscard]] QString describeCollections();
    void drawSlotBoxes(PanelDrawing &drawing);
    void drawSlotBox(PanelDrawing &drawing, SlotBox &slotBox);
    void styleBox(SlotBox &slotBox);
    [[nodiscard]] platform::TextField *drawCaption(PanelDrawing &drawing, const SlotBox &slotBox);
    [[nodiscard]] platform::TextField *drawLabelOrMessage(PanelDrawing &drawing, const SlotBox &slotBox);
    void drawGroupControls(PanelDrawing &drawing, SlotBox &slotBox);
    void drawDisplayField(PanelDrawing &drawing, const SlotBox &slotBox) const;
    void drawSwitch(PanelDrawing &drawing, const SlotBox &slotBox);
    void takeInitialSwitchState(const PanelDrawing &drawing, const SlotBox &slotBox,
                                platform::Button &button);
    void drawSlotControls(PanelDrawing &drawing, SlotBox &slotBox);
    void drawEntryField(PanelDrawing &drawing, const SlotBox &slotBox);
    void drawSlotButtons(PanelDrawing &drawing, const SlotBox &slotBox);
    [[nodiscard]] std::unique_ptr<platform::Button>
    makePanelButton(const platform::Rect &frame, const PanelPlan &plan, qsizetype position);

    // the error panel
    void drawErrorPanel(const QString &message, const platform::Dictionary &config,
                        const platform::Identifier &identifier);
    [[nodiscard]] quint64 errorColumns(const platform::Dictionary &config) const;
    void showErrorTitle(const QString &message, const QString &title, double width);
    void fillErrorPanel(platform::View &panel, const QString &message, bool withSeparator);

    // visibility
    bool emptyTile(platform::View *panel, const platform::Identifier &identifier);

    // switches
    void recordSwitch(const platform::Identifier &panelKey, const QString &slotKey,
                      const platform::Value &systemIndex, bool on);

    // entries
    struct Entry;
    [[nodiscard]] bool takesEntry(Entry &entry);
    [[nodiscard]] bool isValidEntry(const Entry &entry);
    void acceptEntry(const Entry &entry);
    void rejectEntry(const Entry &entry);
    void storeEntry(const Entry &entry, const QString &slot);
    [[nodiscard]] platform::TextField *entryTarget(const Entry &entry);
    void reopenSlot(platform::TextField &field, const QString &panelKey, const QString &slot);

    // confirmation
    struct Press;
    void confirm(const Press &press);
    void confirmOk(const Press &press, const platform::Identifier &panelKey, platform::Condition &condition);
    void clearPanel(const platform::Identifier &panelKey);
    [[nodiscard]] bool checkEachField(const Responders &fields);
    [[nodiscard]] QString describeResponders();
    /// Whether the call that drew the panel has been answered already and only collects the answer.
    [[nodiscard]] bool isAnswered(const platform::Identifier &panelKey);

    // views, main thread
    QPointer<platform::View> m_rootView;
    QPointer<platform::SplitView> m_splitView;
    QPointer<platform::ScrollView> m_scrollView;
    QPointer<platform::TextField> m_loopNumberField;
    QPointer<platform::TextField> m_errorTitle;

    // shared state, each with its lock
    platform::Monitored<platform::Dictionary> m_savedData;
    platform::Monitored<platform::Dictionary> m_enableStatus;
    platform::Monitored<QHash<QString, Responders>> m_responders;
    platform::Monitored<QList<QPointer<platform::Button>>> m_groupButtons;
    platform::Monitored<Conditions> m_conditions;
    platform::Monitored<QHash<QString, QPointer<platform::CollectionView>>> m_collections;
    platform::Monitored<QHash<QString, platform::Identifier>> m_panelKeys;
    platform::Monitor m_monitor; ///< The controller's own lock: setting up group buttons and loop controls.

    // the station, constant after start-up
    platform::Array m_systemIndexToGroupMapping;
    platform::Array m_systemIndexToSlotMapping;
    quint64 m_groupCount = 0;
    quint64 m_slotCount = 0;

    // panel settings that carry over
    std::atomic<bool> m_customColorEnabled{false};
    std::atomic<bool> m_drawShadow{false};
    std::atomic<double> m_backgroundAlpha{0.0};
    std::atomic<quint64> m_columns{0};
    std::atomic<bool> m_isLoopEnabled{false};
    std::atomic<bool> m_interrupted{false};

    /// Confirmations run one after another, so that a second press finds what the first one has done.
    platform::SerialQueue m_confirmations;
};

} // namespace interactive
