#include "station/results/ServerAddress.h"

#include "station/base/StationError.h"

#include <QRegularExpression>
#include <QStringList>
#include <QUrl>

#include <algorithm>

namespace station {

namespace {

const QStringList Schemes{QStringLiteral("postgresql://"), QStringLiteral("postgres://")};

/// A server that does not answer must neither keep the station from ending nor be asked for ever. Of several
/// options of a name libpq takes the last one.
const QString Defaults =
    QStringLiteral("connect_timeout='3' tcp_user_timeout='10000' application_name='interactive-station'");

[[noreturn]] void refuseForm()
{
    throw StationError(
        QStringLiteral("cannot be read; write \"postgresql://user@host:port/database?option=value\""));
}

[[noreturn]] void refusePassword()
{
    throw StationError(QStringLiteral("must not hold a password; it belongs into ~/.pgpass, PGPASSFILE, "
                                      "PGPASSWORD or a service"));
}

QString decoded(const QString &part)
{
    static const QRegularExpression broken(QStringLiteral("%(?![0-9A-Fa-f]{2})"));
    if (part.contains(broken))
        refuseForm();
    const QString text = QUrl::fromPercentEncoding(part.toUtf8());
    // Qt reads a semicolon as the end of an option.
    const bool isUnusable = std::any_of(text.cbegin(), text.cend(), [](QChar unit) {
        return unit.category() == QChar::Other_Control || unit == QLatin1Char(';');
    });
    if (isUnusable)
        refuseForm();
    return text;
}

} // namespace

bool isServerAddress(const QString &text)
{
    return std::any_of(Schemes.cbegin(), Schemes.cend(),
                       [&text](const QString &scheme) { return text.startsWith(scheme); });
}

ServerAddress::ServerAddress(const QString &text)
{
    if (!isServerAddress(text))
        refuseForm();
    const QString rest = text.mid(text.indexOf(QLatin1String("://")) + 3);
    const QString query = rest.section(QLatin1Char('?'), 1);
    const QString place = rest.section(QLatin1Char('?'), 0, 0);
    const QString authority = place.section(QLatin1Char('/'), 0, 0);
    const QString database = place.section(QLatin1Char('/'), 1);
    // Behind the host it is the end of a password that holds "/" or "?".
    if (database.contains(QLatin1Char('@')) || query.contains(QLatin1Char('@')))
        refuseForm();
    readAuthority(authority);
    m_name = QStringLiteral("postgresql://%1/%2").arg(authority.section(QLatin1Char('@'), -1), database);
    if (!database.isEmpty())
        set(QStringLiteral("dbname"), decoded(database));
    readQuery(query);
}

void ServerAddress::readAuthority(const QString &authority)
{
    const qsizetype at = authority.lastIndexOf(QLatin1Char('@'));
    const QString user = authority.left(std::max<qsizetype>(at, 0));
    if (user.contains(QLatin1Char(':')))
        refusePassword();
    if (!user.isEmpty())
        set(QStringLiteral("user"), decoded(user));
    if (at + 1 == authority.size())
        return;
    QStringList hosts;
    QStringList ports;
    for (const QString &host : authority.mid(at + 1).split(QLatin1Char(','))) {
        static const QRegularExpression form(
            QStringLiteral("^(?:\\[([0-9A-Fa-f:.%]+)\\]|([^:\\[\\]]*))(?::(\\d{1,5}))?$"));
        const auto match = form.match(host);
        if (!match.hasMatch())
            refuseForm();
        hosts.append(decoded(match.captured(1) + match.captured(2)));
        ports.append(match.captured(3));
    }
    set(QStringLiteral("host"), hosts.join(QLatin1Char(',')));
    const bool hasPort =
        std::any_of(ports.cbegin(), ports.cend(), [](const QString &port) { return !port.isEmpty(); });
    if (hasPort)
        set(QStringLiteral("port"), ports.join(QLatin1Char(',')));
}

void ServerAddress::readQuery(const QString &query)
{
    for (const QString &part : query.split(QLatin1Char('&'), Qt::SkipEmptyParts)) {
        static const QRegularExpression form(QStringLiteral("^([a-z_]+)=(.*)$"));
        const auto match = form.match(part);
        if (!match.hasMatch())
            refuseForm();
        const QString key = match.captured(1);
        if (key == QLatin1String("password") || key == QLatin1String("sslpassword"))
            refusePassword();
        set(key, decoded(match.captured(2)));
    }
}

void ServerAddress::set(const QString &key, const QString &value)
{
    QString quoted = value;
    quoted.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('\''), QLatin1String("\\'"));
    m_options += QStringLiteral(" %1='%2'").arg(key, quoted);
}

QString ServerAddress::connectOptions() const
{
    return Defaults + m_options;
}

} // namespace station
