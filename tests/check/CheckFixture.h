#pragma once

#include "station/check/StationCheck.h"
#include "tests/station/StationFiles.h"

#include <QDir>

#include <gtest/gtest.h>

namespace testsupport {

/// Files in a folder of their own, and what is found wrong with them.
class CheckTest : public ::testing::Test
{
protected:
    /// Two groups of two slots, and a sequence that runs per "system", "group" or "station".
    QString station(const QByteArray &lua, const QByteArray &per = "system")
    {
        static_cast<void>(files.write("sequence.lua", lua));
        return files.write("station.toml", "[station]\ngroups = [\"G1\", \"G2\"]\nslots = [\"S1\", \"S2\"]\n"
                                           "[[sequence]]\nscript = \"sequence.lua\"\nper = \"" +
                                               per + "\"\n");
    }

    /// The problems' lines, without the folder.
    [[nodiscard]] QStringList linesOf(const QStringList &paths, const QStringList &operators = {}) const
    {
        QStringList lines;
        for (const station::Problem &problem :
             station::checkFiles({paths, operators, {QStringLiteral(PLUGIN_PATH)}}))
            lines.append(problem.asLine().replace(files.folder() + QLatin1Char('/'), QString()));
        return lines;
    }

    StationFiles files;
};

} // namespace testsupport
