#include "station/Senses.h"

#include "kovan/KovanUIExtension/KVKExtensionEntryRelay.h"
#include "station/badge/BadgeField.h"
#include "station/base/StationError.h"
#include "station/scanner/ScannerFilter.h"
#include "station/sound/SoundDesk.h"
#include "station/sound/SoundPlayer.h"
#include "station/window/StationWindow.h"

namespace station {

Senses::Senses(const StationConfig &config, StationWindow &window, const QStringList &badges, bool hasPerson)
    : m_window(window)
{
    if (config.badge.isAsked)
        makeBadgeField(config.badge);
    takeBadge(config.badge, badges, hasPerson);
    if (m_field) {
        connect(m_field, &BadgeField::refused, this, &Senses::refuse);
        connect(m_field, &BadgeField::badgeChanged, this, &Senses::showOperator);
        connect(m_field, &BadgeField::kept, this, &Senses::showOperator);
    }
    if (!config.scanner.isPlain())
        m_scanner = std::make_unique<ScannerFilter>(&window, config.scanner);
    if (config.sounds.areOn) {
        m_sink = std::make_unique<SoundPlayer>(config.sounds.volume);
        m_sounds = std::make_unique<SoundDesk>(*m_sink);
    }
}

Senses::~Senses() = default;

void Senses::makeBadgeField(const BadgeRule &rule)
{
    m_field = new BadgeField(rule);
    m_window.addTool(m_field);
    m_field->takeFocus();
}

void Senses::takeBadge(const BadgeRule &rule, const QStringList &badges, bool hasPerson)
{
    if (badges.isEmpty()) {
        if (rule.isAsked && !hasPerson)
            throw StationError(QStringLiteral(
                "key 'station.ask_operator' asks for a badge, and nobody is there to give one: "
                "--badge TEXT is missing"));
        return;
    }
    for (const QString &badge : badges) {
        if (const auto why = rule.whyNot(badge))
            throw StationError(QStringLiteral("--badge: '%1' is no badge: %2").arg(badge, *why));
    }
    if (m_field)
        m_field->setBadge(badges.constFirst());
    else
        m_badge = badges.constFirst();
}

void Senses::refuse(const QString &text, const QString &why)
{
    m_window.showMessage(QStringLiteral("Badge refused: %1 (%2)").arg(text, why));
    KVKExtensionEntryRelay::sharedEntryRelay()->refused(
        {{{}, {}, QStringLiteral("badge"), {}}, text, QStringLiteral("badge"), why});
}

void Senses::showOperator(const QString &badge)
{
    m_window.showMessage(badge.isEmpty() ? QStringLiteral("Logged out")
                                         : QStringLiteral("Operator: ") + badge);
    if (!badge.isEmpty())
        KVKExtensionEntryRelay::sharedEntryRelay()->accepted({{{}, {}, QStringLiteral("badge"), {}}, badge});
}

bool Senses::mayRun()
{
    const auto why = m_field ? m_field->whyNoRun() : std::nullopt;
    if (!why)
        return true;
    m_window.showMessage(QStringLiteral("Not started: %1").arg(*why));
    m_field->takeFocus();
    KVKExtensionEntryRelay::sharedEntryRelay()->refused(
        {{{}, {}, QStringLiteral("badge"), {}}, {}, QStringLiteral("badge"), *why});
    return false;
}

void Senses::setRunning(bool running)
{
    if (m_field)
        m_field->setRunning(running);
}

QString Senses::badge() const
{
    return m_field ? m_field->badge() : m_badge;
}

} // namespace station
