#pragma once

#include "station/base/StationError.h"
#include "tests/support/Printing.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <concepts>

namespace testsupport {

/// A folder of its own for the files that a station reads and writes; gone with the test.
class StationFiles
{
public:
    [[nodiscard]] QString folder() const { return m_folder.path(); }
    /// Where a file of that name is, whether it is there or not.
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    /// Writes a file, with its folder, and returns its path.
    QString write(const QString &name, const QByteArray &content) const;
    [[nodiscard]] QByteArray read(const QString &name) const;
    /// The lines of a file, without their ends; a line that is not ended yet counts as none.
    [[nodiscard]] QStringList lines(const QString &name) const;

private:
    QTemporaryDir m_folder;
};

/// The text of the StationError that leaves the call; a failed test when none does.
template <std::invocable Call>
QString refusalOf(const Call &call)
{
    try {
        call();
    } catch (const station::StationError &error) {
        return error.text();
    }
    ADD_FAILURE() << "nothing was refused";
    return {};
}

} // namespace testsupport
