#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaLimits.h"
#include "platform/Color.h"
#include "station/badge/BadgeRule.h"
#include "station/scanner/ScannerSettings.h"
#include "station/sound/SoundSettings.h"
#include "station/window/SystemRow.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

namespace station {

/// Whom a sequence is run for.
enum class SequenceKind { System, Group, Station };

/// A script of the configuration.
struct SequenceEntry
{
    QString script; ///< Absolute path.
    SequenceKind kind = SequenceKind::System;
};

/// The colours a system is shown in.
struct SystemColors
{
    platform::Color background;
    platform::Color text;
};

/// A station as its configuration describes it.
///
/// Thread: a plain value.
struct StationConfig
{
    QString name;
    QStringList systemGroups; ///< Element i is the group of system i.
    QStringList systemSlots;  ///< Element i is the slot name of system i.
    bool customRowColor = false;
    QString locale = QStringLiteral("C"); ///< In which the operator writes numbers.
    QMap<int, SystemColors> colors;       ///< Every system has an entry.
    QList<SequenceEntry> sequences;
    QStringList imageFolders; ///< Absolute paths: where pictures may lie besides a sequence's folder.
    QString resultsDatabase;  ///< Absolute path or a server's address; empty where there is none.
    QString resultsOutbox;    ///< Absolute path.
    QStringList plugins;      ///< Absolute paths, or bare names.
    SoundSettings sounds;
    ScannerSettings scanner;
    BadgeRule badge;
    KVKLuaLimits lua;         ///< Of each sequence, and of an operator's script.
    bool sharesFiles = false; ///< Whether others than the user may have the files that are written.

    /// The distinct groups, in order.
    [[nodiscard]] QStringList groups() const;
    [[nodiscard]] QList<SystemRow> systems() const;
};

/// Whether a configuration has to name a sequence itself.
enum class SequenceNeed { AtLeastOne, None };

/// Reads a station's configuration (TOML).
///
/// Errors: throws StationError with one line that names the file, the line and the key.
[[nodiscard]] StationConfig readStationConfig(const QString &path, SequenceNeed need);

/// Reads as much of it as can be read, and adds a line for each refusal, as readStationConfig() would tell
/// it, as far as one does not hide another. A station whose groups or slots are refused may have no systems.
[[nodiscard]] StationConfig checkStationConfig(const QString &path, SequenceNeed need, QStringList &problems);

} // namespace station
