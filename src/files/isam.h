#pragma once
// The three-level index: fixed-length text key to data record number, in a plain logical file of
// blocks. With key length k a block is 128 entries of k + 7 characters, no header:
//   positions in an entry  width  content
//   1 to k                 k      key; the high key (k characters of code 252) marks a free entry
//   k + 1                  1      level of the block that holds the entry: 1, 2 or 3
//   k + 2 to k + 7         6      block number (levels 1, 2) or data record number (level 3)

#include <string>

namespace MXLIBRERIA {

enum IsamOperation : int {
    kIsamInsert = 1,  ///< 0 if inserted, the present record number if the key exists
    kIsamSearch = 2,  ///< record number, or -1
    kIsamNext = 3,    ///< record number of the first key above; 999999 at the end
    kIsamDelete = 4,  ///< record number that the key had, or -1
    kIsamEmpty = 9,   ///< 0
};
inline constexpr double kIsamEnd = 999999;

struct IsamState {
    std::string last_key;  ///< key found by operation 3
};
extern IsamState isam_state;

/// One operation on the index n. A refusal shows its box and returns 0.
double ISAM(double n, const std::string& key, double operation, double record);

}  // namespace MXLIBRERIA
