#pragma once

#include <string>
#include <vector>

// What the program can do. Each checks everything before it does anything: after a Refusal the trash and the files are
// as they were, unless the files changed under way or an interruption came. The database tells in any case what is where.

/// Moves the files and folders at `paths` into the trash.
void PutIntoTrash(const std::vector<std::string>& paths);
/// Moves items of the trash, named as PrintTrash prints them or by their full paths, back to where they came from.
void RestoreFromTrash(const std::vector<std::string>& items);
/// Deletes what has been in the trash for 30 days, or with `all` everything recorded and every folder. Prints what is
/// gone, and of the rest how long it stays and what is recorded only now.
void PurgeTrash(bool all);
/// Prints what the trash database holds and what lies in the trash unrecorded.
void PrintTrash();
