#include "platform/ChoiceList.h"
#include "platform/EntryEditor.h"
#include "platform/KeyRouting.h"
#include "platform/TextField.h"

#include <QKeyEvent>

namespace platform {

void TextField::setChoices(const QStringList &choices)
{
    m_choices = choices;
    delete m_list;
    layout();
}

void TextField::setPlaceholder(const QString &text)
{
    m_placeholder = text;
    if (m_editor)
        m_editor->setPlaceholderText(text);
    styleEditor();
    textChanged();
}

void TextField::setSpokenName(const QString &name)
{
    setAccessibleName(name);
    if (m_editor)
        m_editor->setAccessibleName(name);
}

void TextField::setSpokenDescription(const QString &description)
{
    m_description = description;
    showDescription();
}

void TextField::tellAlso(const QString &text)
{
    m_toldAlso = text;
    showDescription();
}

void TextField::showDescription()
{
    const bool isBoth = !m_toldAlso.isEmpty() && !m_description.isEmpty();
    const QString all = m_toldAlso + (isBoth ? QStringLiteral("; ") : QString()) + m_description;
    setAccessibleDescription(all);
    if (m_editor)
        m_editor->setAccessibleDescription(all);
}

bool TextField::isListOpen() const
{
    return m_list && m_list->isVisible();
}

ChoiceList *TextField::list()
{
    if (!m_list && m_editor && !m_choices.isEmpty()) {
        // Only now: a field that was just made is in no window yet.
        m_list = new ChoiceList(*this, m_choices);
        m_list->setAccessibleName(accessibleName());
        connect(m_list, &ChoiceList::picked, this, &TextField::pick);
    }
    return m_list;
}

void TextField::toggleList()
{
    if (isListOpen())
        foldList();
    else if (isFirstResponder() && isEnabled() && list())
        m_list->dropDown(stringValue());
}

void TextField::foldList()
{
    if (m_list)
        m_list->fold();
}

/// The editor's text has changed. Only what somebody types narrows the list; a text that was set does not.
void TextField::narrowList()
{
    if (m_editor->hasBegun() && list())
        m_list->narrow(m_editor->entry());
}

/// A choice was clicked, which is a whole entry.
void TextField::pick(const QString &choice)
{
    m_editor->setEntry(choice);
    endEntry();
}

/// Puts the row that somebody went to in the place of what is written.
void TextField::takeChosen()
{
    const std::optional<QString> chosen = m_list ? m_list->chosen() : std::nullopt;
    if (chosen)
        m_editor->setEntry(*chosen);
}

bool TextField::listTakesKey(const QKeyEvent &event)
{
    // Escape within a scan is part of it.
    if (m_choices.isEmpty() || keys::scannedControl(*m_editor, event))
        return false;
    return list()->takesKey(event, stringValue());
}

} // namespace platform
