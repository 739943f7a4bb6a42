#include "station/instruction/SvgCheck.h"

#include <QHash>
#include <QList>
#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>

namespace station {
namespace {

/// What a picture of a manual has is a few thousand.
constexpr qint64 MostElements = 200'000;
constexpr qsizetype DeepestNesting = 200;

const QString RefersOutside = QStringLiteral("it refers to something outside of itself");
const QString TooMuch = QStringLiteral("it has too many elements");

/// Prefixes mean nothing to whoever draws, and need not have been declared.
QStringView localPart(QStringView name)
{
    return name.mid(name.lastIndexOf(QLatin1Char(':')) + 1);
}

/// A pixel image may stand in the file itself.
bool isInside(const QString &reference)
{
    static const QRegularExpression pixels(QStringLiteral("^data:image/(png|jpeg|jpg);base64,"),
                                           QRegularExpression::CaseInsensitiveOption);
    const QString text = reference.trimmed();
    return text.isEmpty() || text.startsWith(QLatin1Char('#')) || pixels.match(text).hasMatch();
}

/// Styles name what they need by url(...), and other style sheets by @import.
bool styleRefersOutside(const QString &style)
{
    static const QRegularExpression url(QStringLiteral("url\\s*\\(\\s*['\"]?\\s*([^'\")\\s]*)"),
                                        QRegularExpression::CaseInsensitiveOption);
    if (style.contains(QLatin1String("@import"), Qt::CaseInsensitive))
        return true;
    for (auto match = url.globalMatch(style); match.hasNext();) {
        if (!isInside(match.next().captured(1)))
            return true;
    }
    return false;
}

/// Counts what is drawn, with what `use` elements repeat: a few of them, one inside the other, are enough for
/// billions.
class Repetitions
{
public:
    void open(const QString &id, const QString &used)
    {
        m_open.append(id);
        count(WholePicture, used);
        for (const QString &around : std::as_const(m_open)) {
            if (!around.isEmpty())
                count(around, used);
        }
    }
    void close() { m_open.removeLast(); }
    [[nodiscard]] qsizetype depth() const { return m_open.size(); }
    [[nodiscard]] bool areTooMany() { return drawn(WholePicture) > MostElements; }

private:
    /// What no identifier is.
    inline static const QString WholePicture;

    struct Part
    {
        qint64 elements = 0;
        QList<QString> uses;
        qint64 drawn = -1;
    };

    void count(const QString &id, const QString &used)
    {
        Part &part = m_parts[id];
        ++part.elements;
        if (!used.isEmpty())
            part.uses.append(used);
    }

    qint64 drawn(const QString &id)
    {
        if (!m_parts.contains(id))
            return 0;
        if (m_parts[id].drawn >= 0)
            return m_parts[id].drawn;
        // What repeats itself would never end.
        if (m_beingCounted.contains(id) || m_beingCounted.size() > DeepestNesting)
            return MostElements + 1;
        m_beingCounted.insert(id);
        const Part part = m_parts.value(id);
        qint64 sum = part.elements;
        for (const QString &used : part.uses) {
            sum = qMin(sum + drawn(used), MostElements + 1);
            if (sum > MostElements)
                break;
        }
        m_beingCounted.remove(id);
        m_parts[id].drawn = sum;
        return sum;
    }

    QList<QString> m_open;
    QHash<QString, Part> m_parts;
    QSet<QString> m_beingCounted;
};

QString attributesProblem(const QXmlStreamReader &reader)
{
    for (const QXmlStreamAttribute &attribute : reader.attributes()) {
        const QString value = attribute.value().toString();
        if (localPart(attribute.qualifiedName()) == QLatin1String("href") ? !isInside(value)
                                                                          : styleRefersOutside(value))
            return RefersOutside;
    }
    return {};
}

/// What a `use` element repeats; empty for every other one.
QString usedBy(const QXmlStreamReader &reader)
{
    if (localPart(reader.qualifiedName()) != QLatin1String("use"))
        return {};
    for (const QXmlStreamAttribute &attribute : reader.attributes()) {
        if (localPart(attribute.qualifiedName()) == QLatin1String("href"))
            return attribute.value().trimmed().mid(1).toString();
    }
    return {};
}

QString elementProblem(const QXmlStreamReader &reader, Repetitions &repetitions)
{
    if (repetitions.depth() == 0 && localPart(reader.qualifiedName()) != QLatin1String("svg"))
        return QStringLiteral("it is no SVG");
    if (repetitions.depth() > DeepestNesting)
        return TooMuch;
    repetitions.open(reader.attributes().value(QLatin1String("id")).toString(), usedBy(reader));
    return attributesProblem(reader);
}

} // namespace

QString svgProblem(const QByteArray &content)
{
    QXmlStreamReader reader(content);
    reader.setNamespaceProcessing(false);
    Repetitions repetitions;
    qint64 elements = 0;
    while (!reader.atEnd()) {
        QString problem;
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            problem = ++elements > MostElements ? TooMuch : elementProblem(reader, repetitions);
            break;
        case QXmlStreamReader::EndElement:
            repetitions.close();
            break;
        case QXmlStreamReader::Characters:
            // Of a style element, where they mean something.
            problem = styleRefersOutside(reader.text().toString()) ? RefersOutside : QString();
            break;
        case QXmlStreamReader::ProcessingInstruction:
            problem = reader.processingInstructionTarget() == QLatin1String("xml-stylesheet") ? RefersOutside
                                                                                              : QString();
            break;
        default:
            break;
        }
        if (!problem.isEmpty())
            return problem;
    }
    if (reader.hasError())
        return QStringLiteral("it is broken (line %1: %2)")
            .arg(reader.lineNumber())
            .arg(reader.errorString());
    return repetitions.areTooMany() ? TooMuch : QString();
}

} // namespace station
