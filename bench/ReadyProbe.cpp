#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QGenericPlugin>
#include <QWidget>

#include <chrono>
#include <cstdlib>

namespace {

/// Watches a program that knows nothing of it. When its window is active, painted, and nothing is left to do,
/// it writes when that was (nanoseconds of the steady clock) and the resident memory (KiB) into the file that
/// BENCH_READY names, and ends the program.
class Ready : public QObject
{
public:
    Ready()
    {
        qApp->installEventFilter(this);
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                &Ready::look);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        m_painted = m_painted || (event->type() == QEvent::Paint && watched->isWidgetType());
        return false;
    }

private:
    void look() const
    {
        if (!m_painted || !QApplication::activeWindow())
            return;
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        QFile file(qEnvironmentVariable("BENCH_READY"));
        if (file.open(QIODevice::WriteOnly))
            file.write(QByteArray::number(qlonglong{std::chrono::nanoseconds(now).count()}) + ' ' + memory());
        file.close();
        std::_Exit(EXIT_SUCCESS);
    }
    [[nodiscard]] static QByteArray memory()
    {
        QFile status(QStringLiteral("/proc/self/status"));
        if (!status.open(QIODevice::ReadOnly))
            return {};
        for (const QByteArray &line : status.readAll().split('\n')) {
            if (line.startsWith("VmRSS:"))
                return line.simplified().split(' ').value(1);
        }
        return {};
    }

    bool m_painted = false;
};

} // namespace

/// Loaded into any program of the toolkit by QT_QPA_GENERIC_PLUGINS.
class ReadyProbe : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "ReadyProbe.json")
public:
    QObject *create(const QString &, const QString &) override { return new Ready; }
};

#include "ReadyProbe.moc"
