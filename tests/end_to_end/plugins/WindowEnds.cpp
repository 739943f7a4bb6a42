#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "platform/Error.h"
#include "platform/MainQueue.h"
#include "tests/end_to_end/plugins/FixturePlugin.h"

#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QToolButton>

/// A second plug-in beside the real one. Its functions do to the station's window what a person does with the
/// mouse: press Stop, close it, or press Stop and then Run.
class WindowEnds : public FixturePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KVKExtensionInteractiveView_iid)
    Q_INTERFACES(KVKExtensionInteractiveView)
public:
    platform::Dictionary pluginFunctionTable() override
    {
        return {{QStringLiteral("pressStop"), platform::Array{__kviGetSelectorLabel("pressStop:")}},
                {QStringLiteral("closeWindow"), platform::Array{__kviGetSelectorLabel("closeWindow:")}},
                {QStringLiteral("runAgain"), platform::Array{__kviGetSelectorLabel("runAgain:")}}};
    }

    Q_INVOKABLE platform::Value pressStop(platform::Error *)
    {
        platform::MainQueue::async([] {
            if (QToolButton *stop = button("Stop"))
                stop->click();
        });
        return {};
    }

    /// Run is pressed as soon as it can be.
    Q_INVOKABLE platform::Value runAgain(platform::Error *)
    {
        platform::MainQueue::async([this] {
            QToolButton *stop = button("Stop");
            QToolButton *run = button("Run");
            if (!stop || !run)
                return;
            constexpr int OnceAndLater = Qt::QueuedConnection | Qt::SingleShotConnection;
            connect(
                run->defaultAction(), &QAction::enabledChanged, this, [run] { run->click(); },
                static_cast<Qt::ConnectionType>(OnceAndLater));
            stop->click();
        });
        return {};
    }

    Q_INVOKABLE platform::Value closeWindow(platform::Error *)
    {
        platform::MainQueue::async([] {
            for (QWidget *window : QApplication::topLevelWidgets()) {
                if (qobject_cast<QMainWindow *>(window))
                    window->close();
            }
        });
        return {};
    }

private:
    /// The button whose text begins so: "Run" is "Run again" after the first run.
    static QToolButton *button(const char *text)
    {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            for (QToolButton *found : window->findChildren<QToolButton *>()) {
                if (found->text().startsWith(QLatin1String(text)))
                    return found;
            }
        }
        return nullptr;
    }
};

#include "WindowEnds.moc"
