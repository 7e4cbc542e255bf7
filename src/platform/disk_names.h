#pragma once
// Names of files as they stand on disk. Archives come from machines that do not tell upper from
// lower case, so a name is found whatever its case: the exact name first, else the first in byte
// order.

#include <optional>
#include <string>

namespace platform {

/// The path as it stands on this machine: `\` becomes `/`, each name is looked up whatever its
/// case; names that do not exist stay as given.
[[nodiscard]] std::string path_on_disk(const std::string& path);

/// The same for a path that exists; nothing for one that does not.
[[nodiscard]] std::optional<std::string> find_on_disk(const std::string& path);

/// While it lives, each directory is listed once, and names are looked up in the list that is kept.
/// What another program makes in the meantime is not seen; what this one makes or deletes is.
class KeptListings {
  public:
    KeptListings();
    ~KeptListings();
    KeptListings(const KeptListings&) = delete;
    KeptListings& operator=(const KeptListings&) = delete;
    KeptListings(KeptListings&&) = delete;
    KeptListings& operator=(KeptListings&&) = delete;
};

/// This program has made the file: its directory is listed anew, unless the list knew the name.
void made_on_disk(const std::string& path);
/// This program has deleted the file: its directory is listed anew.
void deleted_on_disk(const std::string& path);

}  // namespace platform
