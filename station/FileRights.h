#pragma once

namespace station {

/// Who may have the files and folders that the process makes from now on: by whatever library they are made,
/// and those that belong to one (a database's journal) as well. Those that are there keep their rights.
///
/// Thread: the main thread, before there are others: the rights are the process's, and child processes
/// inherit them.
void makeFilesPrivate();
/// As it was when the process began: what its user's own setting (umask) gives to others.
void makeFilesShared();

} // namespace station
