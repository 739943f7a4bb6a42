#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "platform/Error.h"
#include "platform/MainQueue.h"
#include "tests/end_to_end/plugins/FixturePlugin.h"

#include <QApplication>
#include <QMainWindow>
#include <QToolButton>

/// A second plug-in beside the real one. Its functions do to the station's window what a person does with the
/// mouse: press Stop, or close it.
class WindowEnds : public FixturePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KVKExtensionInteractiveView_iid)
    Q_INTERFACES(KVKExtensionInteractiveView)
public:
    platform::Dictionary pluginFunctionTable() override
    {
        return {{QStringLiteral("pressStop"), platform::Array{__kviGetSelectorLabel("pressStop:")}},
                {QStringLiteral("closeWindow"), platform::Array{__kviGetSelectorLabel("closeWindow:")}}};
    }

    Q_INVOKABLE platform::Value pressStop(platform::Error *)
    {
        platform::MainQueue::async([] {
            for (QWidget *window : QApplication::topLevelWidgets()) {
                for (QToolButton *button : window->findChildren<QToolButton *>()) {
                    if (button->text() == QLatin1String("Stop"))
                        button->click();
                }
            }
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
};

#include "WindowEnds.moc"
