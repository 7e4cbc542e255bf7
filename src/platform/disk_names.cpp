#include "platform/disk_names.h"

#include <dirent.h>
#include <unistd.h>

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace platform {

namespace {

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string lower_case(std::string_view name) {
    std::string text(name);
    std::transform(text.begin(), text.end(), text.begin(), lower);
    return text;
}

/// Shows each name of a directory to the visitor; false where the directory is missing or does not
/// let itself be listed.
template <class Visitor>
bool each_name(const std::string& directory, const Visitor& visit) {
    DIR* const stream = ::opendir(directory.empty() ? "." : directory.c_str());
    if (stream == nullptr) {
        return false;
    }
    while (const dirent* entry = ::readdir(stream)) {
        visit(std::string_view(static_cast<const char*>(entry->d_name)));
    }
    ::closedir(stream);
    return true;
}

/// The first name in byte order that differs in case alone; the name itself where there is none.
std::string name_in_directory(const std::string& directory, const std::string& name) {
    const auto same = [](char a, char b) { return lower(a) == lower(b); };
    std::string found;
    each_name(directory, [&](std::string_view entry) {
        if (std::ranges::equal(entry, name, same) && (found.empty() || entry < found)) {
            found = entry;
        }
    });
    return found.empty() ? name : found;
}

/// The names of a directory by their lower case.
class Listing {
  public:
    /// Nothing where the directory is missing or does not let itself be listed.
    static std::optional<Listing> of(const std::string& directory) {
        Listing listing;
        const bool listed = each_name(directory, [&listing](std::string_view name) {
            listing.names_.emplace(lower_case(name), name);
        });
        return listed ? std::optional(std::move(listing)) : std::nullopt;
    }

    /// The exact name, else the first in byte order that differs in case alone.
    [[nodiscard]] const std::string* find(const std::string& name) const {
        const std::string* found = nullptr;
        const auto [first, last] = names_.equal_range(lower_case(name));
        for (auto entry = first; entry != last; ++entry) {
            if (entry->second == name) {
                return &entry->second;
            }
            if (found == nullptr || entry->second < *found) {
                found = &entry->second;
            }
        }
        return found;
    }

  private:
    std::unordered_multimap<std::string, std::string> names_;
};

/// What a run keeps of the disk.
struct Kept {
    bool on = false;
    std::unordered_map<std::string, std::string> directories;  ///< as given, and as on disk
    std::unordered_map<std::string, Listing> listings;         ///< by directory as on disk
};
Kept kept;

bool exists(const std::string& path) {
    return ::access(path.c_str(), F_OK) == 0;
}

std::string with_slashes(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

/// Each part of a path looked up in turn.
std::string looked_up(const std::string& path) {
    if (exists(path)) {
        return path;
    }
    std::string result;
    for (std::size_t begin = 0; begin < path.size();) {
        const std::size_t slash = std::min(path.find('/', begin), path.size());
        const std::string part = path.substr(begin, slash - begin);
        if (part.empty() || exists(result + part)) {
            result += part;
        } else {
            result += name_in_directory(result, part);
        }
        if (slash < path.size()) {
            result += '/';
        }
        begin = slash + 1;
    }
    return result;
}

/// A path cut into its directory, with the slash behind it, and its name.
std::pair<std::string, std::string> cut_path(const std::string& path) {
    const std::size_t name = path.rfind('/') + 1;  // 0 where there is no slash
    return {path.substr(0, name), path.substr(name)};
}

/// The directory as it stands on disk; nothing where it does not exist.
const std::string* kept_directory(const std::string& given) {
    const auto found = kept.directories.find(given);
    if (found != kept.directories.end()) {
        return &found->second;
    }
    std::string on_disk = looked_up(given);
    if (!given.empty() && !exists(on_disk)) {
        return nullptr;
    }
    return &kept.directories.emplace(given, std::move(on_disk)).first->second;
}

/// The list of a directory, made at its first use.
const Listing* kept_listing(const std::string& directory) {
    const auto found = kept.listings.find(directory);
    if (found != kept.listings.end()) {
        return &found->second;
    }
    std::optional<Listing> listing = Listing::of(directory);
    return listing ? &kept.listings.emplace(directory, std::move(*listing)).first->second : nullptr;
}

/// A path by the lists that are kept.
struct Found {
    std::string path;
    bool exists = false;
};
Found find_in_kept(const std::string& path) {
    const auto [given, name] = cut_path(path);
    const std::string* directory = kept_directory(given);
    if (directory == nullptr) {
        return {looked_up(path), false};
    }
    const Listing* listing = kept_listing(*directory);
    if (listing == nullptr || name.empty()) {
        return {*directory + name, exists(*directory + name)};
    }
    const std::string* entry = listing->find(name);
    return {*directory + (entry == nullptr ? name : *entry), entry != nullptr};
}

}  // namespace

std::string path_on_disk(const std::string& path) {
    const std::string name = with_slashes(path);
    return kept.on ? find_in_kept(name).path : looked_up(name);
}

std::optional<std::string> find_on_disk(const std::string& path) {
    const std::string name = with_slashes(path);
    Found found;
    if (kept.on) {
        found = find_in_kept(name);
    } else {
        found.path = looked_up(name);
        found.exists = exists(found.path);
    }
    return found.exists ? std::optional(std::move(found.path)) : std::nullopt;
}

KeptListings::KeptListings() {
    kept = Kept{};
    kept.on = true;
}

KeptListings::~KeptListings() {
    kept = Kept{};
}

void made_on_disk(const std::string& path) {
    if (kept.on && !find_in_kept(with_slashes(path)).exists) {
        deleted_on_disk(path);
    }
}

void deleted_on_disk(const std::string& path) {
    kept.listings.erase(cut_path(with_slashes(path)).first);
}

}  // namespace platform
