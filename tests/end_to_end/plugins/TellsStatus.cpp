#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/Error.h"
#include "platform/MainQueue.h"
#include "tests/end_to_end/plugins/FixturePlugin.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <QStatusBar>
#include <QTableView>

#include <thread>

/// A second plug-in beside the real one. Its functions tell the station what they wait for, or a line for the
/// operator, and return what the window then shows.
class TellsStatus : public FixturePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KVKExtensionInteractiveView_iid)
    Q_INTERFACES(KVKExtensionInteractiveView)
public:
    platform::Dictionary pluginFunctionTable() override
    {
        return {
            {QStringLiteral("rowsWhileWaiting"),
             platform::Array{__kviGetSelectorLabel("rowsWhileWaiting:error:"),
                             __kviArgTypeLabel(KVKArgType::NSDictionary)}},
            {QStringLiteral("rows"), platform::Array{__kviGetSelectorLabel("rows:")}},
            {QStringLiteral("cells"),
             platform::Array{__kviGetSelectorLabel("cells:error:"), __kviArgTypeLabel(KVKArgType::NSNumber)}},
            {QStringLiteral("progress"), platform::Array{__kviGetSelectorLabel("progress:")}},
            {QStringLiteral("bar"), platform::Array{__kviGetSelectorLabel("bar:")}},
            {QStringLiteral("barAfterSaying"), platform::Array{__kviGetSelectorLabel("barAfterSaying:error:"),
                                                               __kviArgTypeLabel(KVKArgType::NSDictionary)}},
            {QStringLiteral("takeMilliseconds"),
             platform::Array{__kviGetSelectorLabel("takeMilliseconds:error:"),
                             __kviArgTypeLabel(KVKArgType::NSNumber)}}};
    }

    /// Takes {what, systems}.
    Q_INVOKABLE platform::Value rowsWhileWaiting(const platform::Dictionary &config, platform::Error *error)
    {
        KVKCallWait wait{config.value(QStringLiteral("what")).toString(), {}};
        for (const platform::Value &system : config.value(QStringLiteral("systems")).toList())
            wait.systems.append(system.toULongLong());
        KVKExtensionStatusRelay::sharedStatusRelay()->callWaits(wait);
        const platform::Value shown = rows(error);
        KVKExtensionStatusRelay::sharedStatusRelay()->callWaits({});
        return shown;
    }

    /// The text of each row's state, in brackets where the row is framed.
    Q_INVOKABLE platform::Value rows(platform::Error *)
    {
        return platform::MainQueue::sync([] {
            platform::Array found;
            const auto *model = window()->findChild<QTableView *>()->model();
            for (int row = 0; row < model->rowCount(); ++row) {
                const QModelIndex first = model->index(row, 0);
                const bool framed = first.data(Qt::UserRole + 1).toBool();
                const QString text = first.data(Qt::UserRole + 2).toString();
                found.append(framed ? QLatin1Char('[') + text + QLatin1Char(']') : text);
            }
            return found;
        });
    }

    /// The texts of a row, by the titles of their columns.
    Q_INVOKABLE platform::Value cells(const platform::Value &row, platform::Error *)
    {
        return platform::MainQueue::sync([number = row.toInt()] {
            platform::Dictionary found;
            const auto *model = window()->findChild<QTableView *>()->model();
            for (int column = 0; column < model->columnCount(); ++column)
                found.insert(model->headerData(column, Qt::Horizontal).toString(),
                             model->index(number, column).data());
            return found;
        });
    }

    /// What is written on the progress bar.
    Q_INVOKABLE platform::Value progress(platform::Error *)
    {
        return platform::MainQueue::sync([] { return window()->findChild<QProgressBar *>()->text(); });
    }

    /// The line in the status bar.
    Q_INVOKABLE platform::Value bar(platform::Error *)
    {
        return platform::MainQueue::sync([] { return window()->statusBar()->findChild<QLabel *>()->text(); });
    }

    /// Takes {text}.
    Q_INVOKABLE platform::Value barAfterSaying(const platform::Dictionary &config, platform::Error *)
    {
        return platform::MainQueue::sync([text = config.value(QStringLiteral("text")).toString()] {
            KVKExtensionStatusRelay::sharedStatusRelay()->showMessage(text);
            return window()->statusBar()->findChild<QLabel *>()->text();
        });
    }

    Q_INVOKABLE platform::Value takeMilliseconds(const platform::Value &time, platform::Error *)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(time.toLongLong()));
        return {};
    }

private:
    static QMainWindow *window()
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *found = qobject_cast<QMainWindow *>(widget))
                return found;
        }
        return nullptr;
    }
};

#include "TellsStatus.moc"
