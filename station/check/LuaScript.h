#pragma once

#include "station/check/LuaSyntax.h"
#include "station/check/LuaValues.h"
#include "station/check/Problem.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace station {

/// A script that was read and not run.
///
/// Thread: that of its use.
class LuaScript
{
public:
    /// A call of a function by its name, in the order of the text.
    struct Call
    {
        QString name; ///< "showView", "operator.click"
        const LuaExpression *expression;
    };

    /// Reads a file. What keeps it from being looked at, a syntax error say, is its only problem.
    /// `shown` is what problems call the file.
    LuaScript(const QString &path, QString shown, const LuaValues::OnlyReads &onlyReads);

    [[nodiscard]] const QString &path() const { return m_path; }
    [[nodiscard]] const QString &shown() const { return m_shown; }
    [[nodiscard]] bool isReadable() const { return m_tree != nullptr; }
    /// Adds a problem, unless the script says that the line is as it is wanted.
    void add(LuaPlace place, const QString &text);
    [[nodiscard]] const QList<Problem> &problems() const { return m_problems; }

    // Of a readable script
    [[nodiscard]] const LuaTree &tree() const { return *m_tree; }
    [[nodiscard]] const LuaValues &values() const { return *m_values; }
    [[nodiscard]] const std::vector<Call> &calls() const { return m_calls; }
    /// Global names and their fields to which the script assigns: "limit", "string.trim".
    [[nodiscard]] const QSet<QString> &assigned() const { return m_assigned; }
    /// Whether the script may define globals in ways that are not followed.
    [[nodiscard]] bool definesAnything() const { return m_definesAnything; }
    /// Modules that it loads, with the place of the call.
    [[nodiscard]] const std::vector<std::pair<QString, LuaPlace>> &modules() const { return m_modules; }

    /// Calls the function for every expression that the script evaluates, parts included.
    void forEach(const std::function<void(const LuaExpression &)> &look) const;

private:
    void read(const LuaValues::OnlyReads &onlyReads);
    void noteNames();
    void noteCall(const LuaExpression &expression);

    QString m_path;
    QString m_shown;
    QList<Problem> m_problems;
    std::unique_ptr<LuaTree> m_tree;
    std::unique_ptr<LuaValues> m_values;
    std::vector<Call> m_calls;
    QSet<QString> m_assigned;
    bool m_definesAnything = false;
    std::vector<std::pair<QString, LuaPlace>> m_modules;
};

} // namespace station
