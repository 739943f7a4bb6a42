#include "tests/kovan/Company.h"

#include "kovan/KovanLuaSequencer/KVKLabels.h"

#include <gtest/gtest.h>

namespace testsupport {

Company &Company::add(const QByteArray &script, const QString &group)
{
    m_partners.push_back({QStringLiteral("system %1").arg(m_partners.size()), group});
    m_sequences.push_back(std::make_unique<SequenceRun>(script));
    m_started.push_back(false);
    return *this;
}

Company &Company::add(int count, const QByteArray &script)
{
    for (int i = 0; i < count; ++i)
        add(script);
    return *this;
}

void Company::makeRun()
{
    if (m_run)
        return;
    m_run = std::make_shared<KVKLuaRun>(m_partners);
    for (std::size_t i = 0; i < m_sequences.size(); ++i) {
        KVKLuaSequence::Description &description = m_sequences[i]->description;
        description.run = m_run;
        description.partner = i;
        description.globals.insert(QStringLiteral("me"), static_cast<qlonglong>(i));
        description.functions = KVKBindFunctions(
            &m_instrument, {{QStringLiteral("gate"), platform::Array{__kviGetSelectorLabel("wait:")}}});
    }
}

void Company::start(std::size_t which)
{
    makeRun();
    if (m_started.at(which))
        return;
    m_started.at(which) = true;
    m_sequences[which]->start();
}

void Company::start()
{
    for (std::size_t i = 0; i < m_sequences.size(); ++i)
        start(i);
}

KVKLuaEnd Company::end(std::size_t which)
{
    start(which);
    if (!m_ends.contains(which))
        m_ends.emplace(which, at(which).end());
    return m_ends.at(which);
}

void Company::pass()
{
    start();
    for (std::size_t i = 0; i < m_sequences.size(); ++i) {
        const KVKLuaEnd ended = end(i);
        EXPECT_EQ(ended.outcome, KVKLuaOutcome::Passed) << i << ": " << ended.message.toStdString();
    }
}

} // namespace testsupport
