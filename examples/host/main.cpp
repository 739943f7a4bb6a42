// A host with one position, G1 S1: it loads a plug-in, shows its view, and runs one sequence.
//     host PLUGIN SEQUENCE
// It prints what each call was answered and how the sequence ended; the exit status is 0 when it passed.

#include "kovan/KovanLogging/KVKLogging.h"
#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"
#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "kovan/KovanUIExtension/KVKExtensionInterruption.h"
#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "kovan/KovanUIExtension/KVKExtensionVersion.h"
#include "platform/MainQueue.h"
#include "platform/ViewController.h"

#include <QApplication>
#include <QFileInfo>
#include <QMainWindow>
#include <QPluginLoader>
#include <QTextStream>
#include <QtMath>

#include <memory>
#include <stdexcept>

namespace {

void print(const QString &line)
{
    QTextStream(stdout) << line << Qt::endl;
}

/// The root object of a library that this host can load. It is deleted before the application goes.
struct Plugin
{
    std::unique_ptr<platform::ViewController> controller;
    KVKExtensionInteractiveView *extension = nullptr;
};

Plugin load(const QString &path)
{
    QPluginLoader loader(QFileInfo(path).absoluteFilePath());
    const QString offered = loader.metaData().value("IID").toString();
    const QString wanted = KVKExtensionInteractiveView_iid;
    if (!KVKInterfaceFits(offered, wanted))
        throw std::runtime_error("offers the interface '" + offered.toStdString() + "', this host needs " +
                                 wanted.toStdString());
    QObject *root = loader.instance();
    if (!root)
        throw std::runtime_error(loader.errorString().toStdString());
    auto *controller = qobject_cast<platform::ViewController *>(root);
    KVKExtensionInteractiveView *extension = KVKExtensionOf(root, offered);
    if (!controller || !extension)
        throw std::runtime_error("is no plug-in with a view");
    return {std::unique_ptr<platform::ViewController>(controller), extension};
}

/// Told on the sequence's thread what it does; ends the application when it has ended.
class Reporter : public KVKLuaSequenceObserver
{
public:
    void sequenceCalls(const QString &) override {}
    void sequenceCalled(const KVKLuaCall &call) override
    {
        const QString answer =
            call.error ? call.error->localizedDescription : platform::description(call.result);
        print(call.name + " -> " + answer);
    }
    void sequenceEnded(const KVKLuaEnd &end) override
    {
        const bool passed = end.outcome == KVKLuaOutcome::Passed;
        print(passed ? QStringLiteral("passed") : "not passed " + end.message);
        platform::MainQueue::async([passed] { QCoreApplication::exit(passed ? 0 : 1); });
    }
};

int run(const QString &library, const QString &script)
{
    KVKConfigEngine::sharedConfigEngine()->setSystemIndexToGroupMapping({"G1"});
    KVKConfigEngine::sharedConfigEngine()->setSystemIndexToSlotMapping({"S1"});
    KVKLogGetProxy()->addSink([](const KVKLogProxy::Line &line) {
        if (line.level == KVKLogLevel::Error)
            print("error: " + line.message);
    });
    KVKExtensionStatusRelay::sharedStatusRelay()->setWaitHandler([](const KVKCallWait &wait) {
        if (!wait.what.isEmpty())
            print("waits for " + wait.what);
    });

    QMainWindow window;
    const Plugin plugin = load(library); // goes before the window, whose view may be in use by it
    window.setWindowTitle("Small host");
    window.setCentralWidget(plugin.controller->view());
    window.resize(qMax(640, qCeil(plugin.extension->minWidthHint())),
                  qMax(440, qCeil(plugin.extension->minHeightHint())));
    window.show();

    KVKLuaSequence::Description description{script, plugin.extension->pluginConstants(), {}};
    description.globals.insert("systemIndex", 0);
    description.functions =
        KVKBindFunctions(plugin.extension->pluginContext(), plugin.extension->pluginFunctionTable());
    Reporter reporter;
    KVKLuaSequence sequence(description, reporter);
    auto *interruption = qobject_cast<KVKExtensionInterruption *>(plugin.controller.get());
    QObject::connect(qApp, &QGuiApplication::lastWindowClosed, [&] {
        sequence.requestStop();
        if (interruption)
            interruption->interruptWaitingCalls();
    });
    sequence.start();
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    if (argc != 3) {
        print("host PLUGIN SEQUENCE");
        return 2;
    }
    platform::MainQueue::attach();
    int status = 2;
    try {
        status = run(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]));
    } catch (const std::exception &problem) {
        print(QString::fromLocal8Bit(argv[1]) + ": " + problem.what());
    }
    platform::MainQueue::detach();
    return status;
}
