#pragma once

#include "station/results/Results.h"
#include "tests/station/StationFiles.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace testsupport {

/// The lines of a results file.
class JsonLinesFixture : public ::testing::Test
{
protected:
    static KVKLuaCall answered(const platform::Value &result)
    {
        return {"showView", {}, result, std::nullopt};
    }

    [[nodiscard]] QString path() const { return m_files.path("results.jsonl"); }
    [[nodiscard]] QList<QJsonObject> written() const
    {
        QList<QJsonObject> objects;
        for (const QString &line : m_files.lines("results.jsonl"))
            objects.append(QJsonDocument::fromJson(line.toUtf8()).object());
        return objects;
    }

    station::ResultOwner ofSystem{"ask.lua", 3, {}};
    station::ResultOwner ofGroup{"ask.lua", {}, "G1"};
    station::ResultOwner ofStation{"ask.lua", {}, {}};
    StationFiles m_files;
};

} // namespace testsupport
