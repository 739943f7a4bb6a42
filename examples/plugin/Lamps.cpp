// A plug-in of one's own: a row of lamps, one for each system, and a function that lights them.

#include "kovan/KovanLogging/KVKLogging.h"
#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "kovan/KovanUIExtension/KVKExtensionInteractiveView.h"
#include "platform/Error.h"
#include "platform/MainQueue.h"
#include "platform/ViewController.h"

#include <QHash>

#include <algorithm>

namespace {

constexpr double Side = 48.0;
constexpr double Gap = 12.0;
const QString Domain = QStringLiteral("Lamps");

enum Problem { NoSuchColor = 1, NoSuchSystem = 2 };

const QHash<QString, platform::Color> Colors{{"off", platform::Color::lightGray()},
                                             {"green", {0.18, 0.62, 0.36}},
                                             {"orange", {0.95, 0.60, 0.10}},
                                             {"red", {0.80, 0.15, 0.15}}};

} // namespace

class Lamps : public platform::ViewController, public KVKExtensionInteractiveView
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KVKExtensionInteractiveView_iid)
    Q_INTERFACES(KVKExtensionInteractiveView)
public:
    QObject *pluginContext() override { return this; }
    platform::Dictionary pluginConstants() override { return {}; }
    platform::Dictionary pluginFunctionTable() override
    {
        return {{"lamp", platform::Array{__kviGetSelectorLabel("lamp:config:error:"),
                                         __kviArgTypeLabel(KVKArgType::NSNumber),
                                         __kviArgTypeLabel(KVKArgType::NSDictionary)}}};
    }
    double minWidthHint() override { return isViewLoaded() ? leftOf(m_lamps.size()) : 0.0; }
    double minHeightHint() override { return isViewLoaded() ? Side + 2.0 * Gap : 0.0; }

    /// Lua: lamp(systemIndex, { color = "green" }) lights a lamp, and returns how many have that colour now.
    /// Called on the sequence's thread; views belong to the main thread.
    Q_INVOKABLE platform::Value lamp(const platform::Value &system, const platform::Dictionary &config,
                                     platform::Error *error)
    {
        const QString color = config.value("color").toString();
        KVKLogEvent(KVKLogLevel::Default, "lamp %@ is %@", {system, color});
        return platform::MainQueue::sync([&] { return light(system.toInt(), color, error); });
    }

protected:
    platform::View *loadView() override
    {
        const platform::Array slotNames = KVKConfigEngine::sharedConfigEngine()->systemIndexToSlotMapping();
        auto *row = new platform::View(platform::Rect(0.0, 0.0, 200.0, Side + 2.0 * Gap));
        for (const platform::Value &name : slotNames) {
            auto *lamp = new platform::View(platform::Rect(leftOf(m_lamps.size()), Gap, Side, Side));
            lamp->setCornerRadius(Side / 2.0);
            lamp->setLayerBackgroundColor(Colors.value("off"));
            lamp->setAccessibleName(name.toString());
            lamp->setToolTip(name.toString());
            row->addSubview(lamp);
            m_lamps.append({lamp, "off"});
        }
        return row;
    }

private:
    /// A view may go before its controller.
    struct Lamp
    {
        QPointer<platform::View> view;
        QString color;
    };

    static double leftOf(qsizetype lamp) { return Gap + static_cast<double>(lamp) * (Side + Gap); }

    platform::Value light(int system, const QString &color, platform::Error *error)
    {
        if (!Colors.contains(color)) {
            platform::storeError(error, Domain, NoSuchColor,
                                 "there is no lamp of the colour '" + color + "'");
            return {};
        }
        if (system < 0 || system >= m_lamps.size()) {
            platform::storeError(error, Domain, NoSuchSystem, QString("there is no system %1").arg(system));
            return {};
        }
        Lamp &lamp = m_lamps[system];
        lamp.color = color;
        if (lamp.view)
            lamp.view->setLayerBackgroundColor(Colors.value(color));
        return static_cast<qlonglong>(
            std::ranges::count_if(m_lamps, [&](const Lamp &each) { return each.color == color; }));
    }

    QList<Lamp> m_lamps;
};

#include "Lamps.moc"
