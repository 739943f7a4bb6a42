#pragma once

#include "platform/Box.h"
#include "platform/Button.h"
#include "platform/ScrollView.h"
#include "platform/SplitView.h"
#include "platform/TextField.h"
#include "station/operator/OperatorScript.h"

#include <QAction>
#include <QTemporaryDir>
#include <QVariantMap>
#include <QWidget>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace testsupport {

/// Stands in for a plug-in's context.
class Context : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVariantMap savedData MEMBER savedData)
    Q_PROPERTY(qulonglong columns MEMBER columns)
public:
    QVariantMap savedData;
    qulonglong columns = 0;
};

/// A window with a plug-in's view made by hand (group buttons above, panels in a split view that scrolls
/// below), and an operator's script that works it.
///
/// Thread: the main thread.
class OperatorFixture : public ::testing::Test
{
protected:
    struct Outcome
    {
        bool ok = false;
        QString message;
        QString traceback = {};
    };

    OperatorFixture();
    ~OperatorFixture() override;

    /// Runs a script to its end, serving the event loop meanwhile.
    Outcome run(const QString &script);
    /// Runs a script that must not fail.
    void runs(const QString &script);
    /// The message of a script that must fail.
    QString fails(const QString &script);
    /// Starts a script and leaves it running.
    station::OperatorScript &start(const QString &script);
    /// Waits for the end of the one that was started.
    Outcome outcome();
    /// Where a script may put files.
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

    /// A pane of the split view with a button "OK" in it.
    platform::View *groupPanel(const QString &key, const platform::Rect &frame = {0, 100, 300, 100});
    /// A box of the overview; what bears the key is its content view, still empty.
    platform::Box *tile(const QString &key, const platform::Rect &frame = {320, 100, 250, 110});
    /// The press of a button is noted in `pressed` by its title, then followed by what `action` does.
    platform::Button *button(platform::View *parent, const platform::Rect &frame, const QString &title,
                             const QString &identifier = {}, std::function<void()> action = {});
    platform::Button *switchButton(platform::View *parent, const platform::Rect &frame,
                                   const QString &identifier);
    /// An editable field, whose entries (ended with Return) are noted in `entered`.
    platform::TextField *field(platform::View *parent, const platform::Rect &frame,
                               const QString &identifier);
    /// Takes everything out of a view, as a panel is emptied.
    static void empty(platform::View *view);

    QWidget window;
    Context context;
    QPointer<platform::View> root;
    platform::ScrollView *scroll = nullptr;
    platform::SplitView *split = nullptr;
    QAction runAction;  ///< Enabled, as while no sequence runs.
    QAction stopAction; ///< Disabled until run was triggered.
    QStringList pressed;
    QStringList entered;

private:
    void makeRoot();

    QTemporaryDir m_folder;
    std::unique_ptr<station::OperatorScript> m_script;
    std::optional<Outcome> m_outcome;
};

} // namespace testsupport
