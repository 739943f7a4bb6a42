#include "kovan/KovanUIExtension/KVKExtensionVersion.h"

#include <QObject>
#include <QRegularExpression>

#include <optional>

namespace {

struct InterfaceVersion
{
    QString name;
    int breaking = 0;
    int adding = 0;
};

std::optional<InterfaceVersion> versionIn(const QString &identifier)
{
    static const QRegularExpression form(
        QStringLiteral("\\A([^/]+)/(0|[1-9][0-9]{0,5})\\.(0|[1-9][0-9]{0,5})\\z"));
    const QRegularExpressionMatch match = form.match(identifier);
    if (!match.hasMatch())
        return std::nullopt;
    return InterfaceVersion{match.captured(1), match.captured(2).toInt(), match.captured(3).toInt()};
}

} // namespace

bool KVKInterfaceFits(const QString &offered, const QString &wanted)
{
    const auto plugin = versionIn(offered);
    const auto host = versionIn(wanted);
    return plugin && host && plugin->name == host->name && plugin->breaking == host->breaking &&
           plugin->adding <= host->adding;
}

KVKExtensionInteractiveView *KVKExtensionOf(QObject *root, const QString &offered)
{
    if (!root)
        return nullptr;
    return static_cast<KVKExtensionInteractiveView *>(root->qt_metacast(offered.toUtf8().constData()));
}
