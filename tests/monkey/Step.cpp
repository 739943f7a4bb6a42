#include "tests/monkey/Step.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace monkey {
namespace {

const QString Verb = QStringLiteral("do");

} // namespace

QString Step::line() const
{
    QJsonObject object = QJsonObject::fromVariantMap(with);
    object.insert(Verb, verb);
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

std::optional<Step> Step::fromLine(const QString &line)
{
    const QJsonDocument document = QJsonDocument::fromJson(line.toUtf8());
    platform::Dictionary with = document.object().toVariantMap();
    const QString verb = with.take(Verb).toString();
    return verb.isEmpty() ? std::nullopt : std::optional(Step{verb, with});
}

} // namespace monkey
