#pragma once

#include <ctime>
#include <string>
#include <vector>

/// The application's trash for programs that must not lose a file, whatever fails. Copy both files into your program.
///
/// The library's own functions delete a file that they cannot move. Here they never move one: the items are moved here,
/// by calls of the system that either move the whole item or leave it where it is and that replace nothing, and the
/// library moves an empty folder that stands in for the item, to choose the name in the trash and to record the origin.
/// A copy of the database is kept while the library saves it, and takes its place if records are missing afterwards.
///
/// A file needs a volume with hard links: for a moment it has its old and its new name. Without them, and for an item on
/// another volume than the trash, the move fails before anything is changed.
///
/// What this cannot do:
/// - When the process is killed, or every further call to the system fails, while an item goes into the trash, the item
///   is whole in the trash, in a folder "arriving-XXXXXX" and without a record of its origin. An empty folder may be at
///   its old place. Nothing has to be repaired before the next operation.
/// - It does not wait for the disk: after a power failure the file system decides what is there.
/// - Programs that use the library's trash functions directly are not kept out; other users of this module are.
/// - The purge deletes what is in the trash for good, by the library's rules: a folder goes with its first expired file.
namespace SafeTrash {

/// What has become of an item.
struct Report {
    bool isDone = false;
    std::string path;    ///< where the whole item is now
    std::string message; ///< why it was not done; or, if it was, what else is to be known; mostly empty then
};

struct Item {
    std::string path;        ///< in the trash
    std::string origin;      ///< the full path it came from; empty if that is not known
    std::time_t arrived = 0; ///< 0 if it is not recorded
};

struct Contents {
    std::vector<Item> items; ///< in the order of their paths
    std::string message;     ///< why they cannot be listed; empty if they are
};

/// Returns why `path` cannot go into the trash, as far as that can be seen before; the empty string if nothing is known
/// against it. Put asks this first.
std::string ProblemOf(const std::string& path);

/// Moves the file, link or folder `path`, a full path without a trailing "/", into the trash. Refuses a folder that
/// holds a link to a folder, because the library's purge would empty the folder that the link leads to.
Report Put(const std::string& path);

/// Moves the item at `trashPath` back to where it came from. Replaces nothing there.
Report PutBack(const std::string& trashPath);

/// Lists what is in the trash, recorded or not.
Contents List();

/// Deletes what has been in the trash for 30 days, or with `all` everything that is recorded and every folder, and
/// waits for it. `path` of the report is the trash folder. Refuses when a folder in the trash holds a link to a folder.
///
/// With `all` it works on a full disk, too; the origins of items that cannot be deleted may then be forgotten.
Report Purge(bool all);

} // namespace SafeTrash
