#pragma once
// The three-level index: fixed-length text key to data record number, in a plain logical file of
// blocks; block numbers are record numbers. With key length k a block is 128 entries of k + 7
// characters, no header, so the record length is (k + 7) x 128:
//   positions in an entry  width  content
//   1 to k                 k      key; the high key (k characters of code 252) marks a free entry
//   k + 1                  1      level of the block that holds the entry: 1, 2 or 3
//   k + 2 to k + 7         6      block number (levels 1, 2) or data record number (level 3)
//
// Used entries are sorted by character code and stand before the free ones. Block 1 is the root.
// Entries of levels 1 and 2 carry the lowest key of the block that they point to. The root is not
// split: a full one is failure 9, raised before anything of that insertion is written.
//
// Blocks are written in such an order that after a failure between two writes every key is found
// as before the operation or as after it. In a run they are one step of the recovery slot, so that
// a kill leaves all of them or none.

#include <array>
#include <cstdint>
#include <string>

namespace MXLIBRERIA {

inline constexpr std::size_t kIsamEntries = 128;  ///< entries of a block
inline constexpr std::size_t kIsamKept = 64;      ///< entries that stay in a block when it is split
inline constexpr std::size_t kIsamEntryTail = 7;  ///< level and pointer behind the key
inline constexpr char kIsamHighCharacter = '\xFC';  ///< code 252

// Operations.
inline constexpr double kIsamInsert = 1;  ///< 0 if inserted, the present number if the key exists
inline constexpr double kIsamSearch = 2;  ///< record number, or -1
inline constexpr double kIsamNext = 3;    ///< number of the first key above; 999999 at the end
inline constexpr double kIsamDelete = 4;  ///< record number that the key had, or -1
inline constexpr double kIsamEmpty = 9;   ///< 0
inline constexpr double kIsamEnd = 999999;

/// A block on the way from the root to an entry.
struct IsamLevel {
    std::string block;         ///< its text
    double number = 0;         ///< its record number
    std::size_t position = 0;  ///< 0-based index of the chosen entry
    std::size_t used = 0;      ///< entries in use; they come first
};

/// What an operation works on; of it only last_key lives on after the call.
struct IsamState {
    std::array<IsamLevel, 4> levels;  ///< index 1 to 3; 0 stays unused
    std::string split;                ///< the upper half of a block that is being split
    std::size_t key_length = 0;
    std::string high_key;
    std::string last_key;  ///< key found by operation 3; the high key at the end
};
extern IsamState isam_state;

/// One operation on the index n, which is open (operation 9 opens, and makes, it itself). A refusal
/// shows its box and returns 0. Failure 9: the root is full; 62: a block beyond the end of the
/// file; 63: a block number below 1, or a record number that six digits do not hold.
double ISAM(double n, const std::string& key, double operation, double record);

}  // namespace MXLIBRERIA
