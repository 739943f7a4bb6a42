#include "fuzz/Input.h"

#include <QList>

#include <cstring>
#include <limits>

namespace fuzz {

int Input::byte()
{
    return isAtEnd() ? 0 : static_cast<unsigned char>(m_bytes.at(m_at++));
}

qint64 Input::integer()
{
    constexpr int Plain = 240;
    const int first = byte();
    if (first < Plain)
        return first < Plain / 2 ? first % 16 : first - Plain / 2 - 20;
    qint64 number = 0;
    const QByteArray whole = bytes(sizeof(number)).leftJustified(sizeof(number), '\0');
    std::memcpy(&number, whole.constData(), sizeof(number));
    return number;
}

double Input::decimal()
{
    static const QList<double> telling{0.0,
                                       -0.0,
                                       0.5,
                                       1e15,
                                       9007199254740992.0,
                                       9223372036854775808.0,
                                       -9223372036854775808.0,
                                       1e300,
                                       5e-324,
                                       std::numeric_limits<double>::infinity(),
                                       -std::numeric_limits<double>::infinity(),
                                       std::numeric_limits<double>::quiet_NaN()};
    const int kind = below(4);
    if (kind == 0)
        return static_cast<double>(integer());
    if (kind == 1)
        return static_cast<double>(integer()) / 8.0;
    if (kind == 2)
        return telling.at(below(static_cast<int>(telling.size())));
    double number = 0.0;
    const QByteArray whole = bytes(sizeof(number)).leftJustified(sizeof(number), '\0');
    std::memcpy(&number, whole.constData(), sizeof(number));
    return number;
}

QByteArray Input::bytes(qsizetype count)
{
    const QByteArray taken = m_bytes.mid(m_at, count);
    m_at += taken.size();
    return taken;
}

QByteArray Input::someBytes()
{
    return bytes(below(24));
}

QString Input::textLike(const QStringList &usual)
{
    const int choice = below(static_cast<int>(usual.size()) + 1);
    return choice < usual.size() ? usual.at(choice) : text();
}

QByteArray Input::rest()
{
    return bytes(m_bytes.size() - m_at);
}

} // namespace fuzz
