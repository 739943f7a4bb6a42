#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace fuzz {

/// Reads choices, numbers and texts from the bytes that a fuzzer has made up. Behind its end it gives zeros
/// and empty texts, so that every input means something.
///
/// Thread: a plain value.
class Input
{
public:
    explicit Input(const QByteArray &bytes)
        : m_bytes(bytes)
    {}

    [[nodiscard]] bool isAtEnd() const { return m_at >= m_bytes.size(); }
    /// 0 to 255.
    int byte();
    /// 0 to end - 1. Requires: end is 1 to 256.
    int below(int end) { return byte() % end; }
    bool truth() { return byte() % 2 != 0; }
    /// A small one as a rule, otherwise any.
    qint64 integer();
    /// A plain one as a rule, otherwise any, infinite ones and not-a-number included.
    double decimal();
    /// So many bytes, as far as there are as many.
    QByteArray bytes(qsizetype count);
    /// Bytes of a length that the input says.
    QByteArray someBytes();
    /// The same as a text; what is no UTF-8 becomes the replacement character.
    QString text() { return QString::fromUtf8(someBytes()); }
    /// One of them, or now and then another text.
    QString textLike(const QStringList &usual);
    /// All that is left.
    QByteArray rest();

private:
    QByteArray m_bytes;
    qsizetype m_at = 0;
};

} // namespace fuzz
