#include "station/scanner/ScanReader.h"

#include "fuzz/Target.h"

using station::ScanReader;

namespace {

using fuzz::Input;
using fuzz::must;

/// A reader and the keys that it holds, as who uses it knows them.
class Keys
{
public:
    Keys(const QString &prefix, const QString &suffix)
        : m_prefix(prefix)
        , m_suffix(suffix)
        , m_reader(prefix, suffix)
    {}

    void take(const QString &text, bool counts)
    {
        const bool wasInScan = m_reader.isInScan();
        m_held.append(text);
        const ScanReader::Step step = m_reader.take(text, counts);
        letGo(step);
        if (step.begins) {
            must(!wasInScan, "a scan within a scan does not begin");
            must(!m_prefix.isEmpty() && m_held.join(QString()) == m_prefix,
                 "what is swallowed is the prefix");
            m_held.clear();
        }
        must(!step.begins || m_reader.isInScan(), "where a scan begins it is under way");
        must(wasInScan <= m_reader.isInScan(), "a text does not end a scan");
        if (!m_prefix.isEmpty())
            must(m_reader.isInScan() == (wasInScan || step.begins), "a scan begins with its prefix alone");
        holdsWhatMayBeAMark();
    }

    void end()
    {
        if (!m_reader.isInScan())
            return leave();
        const ScanReader::Step step = m_reader.end();
        letGo(step);
        const QString swallowed = m_held.join(QString());
        must(swallowed.isEmpty() || swallowed == m_suffix, "what is swallowed at the end is the suffix",
             swallowed);
        m_held.clear();
        isIdle();
    }

    void leave()
    {
        letGo(m_reader.leave());
        must(m_held.isEmpty(), "everything goes on when something else is done");
        isIdle();
    }

private:
    void letGo(const ScanReader::Step &step)
    {
        must(step.release >= 0 && step.release <= m_held.size(), "only what is held goes on");
        m_held.erase(m_held.begin(), m_held.begin() + step.release);
    }

    void isIdle() const
    {
        must(!m_reader.isInScan() && !m_reader.holdsAny(), "afterwards nothing is under way");
    }

    void holdsWhatMayBeAMark() const
    {
        const QString held = m_held.join(QString());
        must(m_reader.holdsAny() == !m_held.isEmpty(), "it says whether it holds any");
        const QString &mark = m_reader.isInScan() || m_prefix.isEmpty() ? m_suffix : m_prefix;
        must(mark.startsWith(held), "only what may be a mark is held", held);
        must(m_reader.isInScan() || m_prefix.isEmpty() || held != m_prefix, "a whole prefix is not held",
             held);
    }

    QString m_prefix;
    QString m_suffix;
    ScanReader m_reader;
    QStringList m_held;
};

class ScansTarget : public fuzz::Target
{
public:
    void feed(Input input) override
    {
        const QString prefix = input.textLike({"", "##", "#a#", "\x02"});
        const QString suffix = input.textLike({"", "%%", "%a%", "\x03"});
        const QString alphabet = prefix + suffix + QStringLiteral("a#%");
        Keys keys(prefix, suffix);
        while (!input.isAtEnd()) {
            switch (input.below(8)) {
            case 0:
                keys.end();
                break;
            case 1:
                keys.leave();
                break;
            case 2:
                keys.take(QStringLiteral(" "), false);
                break;
            case 3:
                // One key may write more than a character.
                keys.take(input.text() + QLatin1Char('x'), true);
                break;
            default:
                keys.take(alphabet.mid(input.below(static_cast<int>(alphabet.size())), 1), true);
            }
        }
        keys.leave();
    }
};

} // namespace

std::unique_ptr<fuzz::Target> fuzz::makeTarget()
{
    return std::make_unique<ScansTarget>();
}
