#include "station/record/BegunEntry.h"

#include <QClipboard>
#include <QGuiApplication>

namespace station {

void BegunEntry::begin(platform::TextField *field, const std::optional<ClickTarget> &target)
{
    forget();
    m_field = field;
    m_target = target;
    m_before = field->stringValue();
    settle();
}

void BegunEntry::addKey(const QKeyEvent &key)
{
    const bool deletes = key.key() == Qt::Key_Backspace || key.key() == Qt::Key_Delete;
    // Where there is nothing to delete nothing was done.
    if (deletes && m_field && m_field->stringValue().isEmpty())
        return;
    if (key.matches(QKeySequence::Paste))
        addPiece(QGuiApplication::clipboard()->text());
    else
        m_keys += key.text();
}

void BegunEntry::addPiece(const QString &text)
{
    m_hasPieces = m_hasPieces || !text.isEmpty();
    m_keys += text;
}

void BegunEntry::settle()
{
    if (!m_field || !m_field->isEditable())
        return;
    m_text = m_field->stringValue();
    m_isBegun = m_field->hasBegunEntry() && !m_field->isListOpen();
    // A begun entry without a text is one that the field takes nothing of.
    m_isRefused = m_isBegun && m_text.isEmpty();
}

void BegunEntry::forget()
{
    *this = BegunEntry();
}

} // namespace station
