#include <QApplication>
#include <QPluginLoader>
#include <QTextStream>
#include <QWidget>

/// An empty window with a plug-in loaded: what a station needs at least before anybody can work with it.
int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    QPluginLoader plugin(application.arguments().value(1));
    if (!plugin.load()) {
        QTextStream(stderr) << plugin.errorString() << Qt::endl;
        return EXIT_FAILURE;
    }
    QWidget window;
    window.resize(1600, 1000);
    window.show();
    window.activateWindow();
    return QApplication::exec();
}
