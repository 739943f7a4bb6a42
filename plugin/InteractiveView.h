#pragma once

#include "kovan/KovanUIExtension/KVKExtensionConfigurationCheck.h"
#include "kovan/KovanUIExtension/KVKExtensionInteractiveView.h"
#include "kovan/KovanUIExtension/KVKExtensionInterruption.h"
#include "platform/CollectionView.h"
#include "platform/Error.h"
#include "platform/Value.h"
#include "platform/ViewController.h"

#include <memory>

#include "common/PanelRecords.h"

namespace platform {
class Condition;
class TextField;
} // namespace platform

namespace interactive {

struct Rooms;

/// The domain of every error that this plug-in reports.
inline const QString InteractivePluginErrorDomain = QStringLiteral("InteractivePluginErrorDomain");

/// The principal class of the plug-in: the controller of the operator's view and the object whose methods Lua
/// calls. It asks the operator for input on a panel per group or per system, blocks the calling sequence
/// until the operator has answered, and keeps the answers.
///
/// What it does is done by the classes of its rooms (plugin/Rooms.h puts them together); here is what the
/// host and Lua see of them. Thread: the functions of the table are called on sequencer threads, several at a
/// time; everything that touches a view runs on the main thread. Ownership: the host owns the controller,
/// which must outlive every call into it; interruptWaitingCalls() ends those that wait.
class InteractiveView : public platform::ViewController,
                        public KVKExtensionInteractiveView,
                        public KVKExtensionInterruption,
                        public KVKExtensionConfigurationCheck,
                        public platform::CollectionViewDelegate
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KVKExtensionInteractiveView_iid FILE "InteractiveView.json")
    Q_CLASSINFO("function keys of showGroupView", "validate")
    Q_CLASSINFO("function keys of showView", "validate")
    Q_INTERFACES(KVKExtensionInteractiveView KVKExtensionInterruption KVKExtensionConfigurationCheck)
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
    explicit InteractiveView(QObject *parent = nullptr);
    ~InteractiveView() override;

    // The host's side
    [[nodiscard]] QObject *pluginContext() override;
    [[nodiscard]] platform::Dictionary pluginConstants() override;
    [[nodiscard]] platform::Dictionary pluginFunctionTable() override;
    [[nodiscard]] double minHeightHint() override;
    [[nodiscard]] double minWidthHint() override;
    /// Thread: any.
    void interruptWaitingCalls() override;
    /// A run begins: the answers of the one before are forgotten.
    void acceptCalls() override;
    /// Uses the station that the host's configuration names now; nothing of this object.
    [[nodiscard]] KVKCallReport lookAtCall(const QString &function,
                                           const platform::Array &arguments) override;

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
    /// wait for itself. Errors: a refused configuration (100 to 105, 405), a switch panel ended by another
    /// button than "OK" (301), and the codes of common/ErrorCodes.h; a group number out of range throws
    /// std::out_of_range, a number that is not whole std::invalid_argument.
    platform::Value showInteractiveView(const platform::Value &groupNumber,
                                        const platform::Value &systemIndex,
                                        const platform::Dictionary &config, platform::Error *error);
    /// Refuses a configuration that cannot be drawn: an error is stored with its code and message, otherwise
    /// the out-parameter keeps what it held. Changes nothing. groupNumber is nothing for a single system.
    /// Thread: any.
    void checkConfig(const platform::Dictionary &config, const platform::Value &groupNumber,
                     const platform::Value &inputs, const platform::Value &switchs,
                     const platform::Value &buttons, platform::Error *error);
    /// No tile can be selected: always the empty set.
    [[nodiscard]] std::set<int>
    collectionViewShouldSelectItemsAtIndexPaths(platform::CollectionView *view,
                                                const std::set<int> &indexes) override;

    // State, valid after the view was loaded. Thread: any; a dictionary is a copy.
    [[nodiscard]] platform::Dictionary savedData() const;
    [[nodiscard]] platform::Dictionary enableStatus() const;
    [[nodiscard]] platform::Array systemIndexToGroupMapping() const;
    [[nodiscard]] platform::Array systemIndexToSlotMapping() const;
    [[nodiscard]] quint64 groupCount() const;
    [[nodiscard]] quint64 slotCount() const;
    [[nodiscard]] quint64 columns() const;
    void setColumns(quint64 columns);
    [[nodiscard]] bool customColorEnabled() const;
    void setCustomColorEnabled(bool enabled);
    [[nodiscard]] bool drawShadow() const;
    void setDrawShadow(bool draw);
    [[nodiscard]] double backgroundAlpha() const;
    void setBackgroundAlpha(double alpha);
    [[nodiscard]] bool isLoopEnabled() const;

    /// What the controller is made of, for whoever looks into it.
    [[nodiscard]] Rooms &rooms() { return *m_rooms; }

protected:
    [[nodiscard]] platform::View *loadView() override;
    void viewDidLoad() override;

private:
    std::unique_ptr<Rooms> m_rooms;
};

} // namespace interactive
