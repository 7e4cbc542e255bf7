#pragma once
// The recovery slot: a step of records that a killed run leaves half written is finished by the
// next start.
//
// VELMOR.RIP, in the archive directory while a run writes. A step (one employee's record, or the
// blocks of one index operation) is put into the slot by one write, then into its files, then the
// state goes back to 0. The slot of a run that ended in order is taken away.
//   offset  size  meaning
//   0       8     "VELMORR1"
//   8       1     state: 1 the step is to be finished, 2 the same after its file has been made
//   anew,
//                 0 there is nothing to finish
//   9       2     task number of the run, as the names of the files may hold it
//   11      5     records of the step, digits
//   16      12    bytes of the step, this header included, digits
//   28      4     blanks
//   32      16    checksum of those bytes (state 1 or 2, this field blank), hexadecimal digits
//   48            the records, one behind the other, each:
//     0     3     logical file
//     3     12    record number
//     15    8     length
//     23    1     blank
//     24          the bytes of the record
// What follows the bytes of the step is left from a longer one before it. A slot of another mark,
// one cut short, or one whose checksum differs was not complete when the run was killed: no file
// has been touched for it, and it is not applied.
//
// Checksum: four 64-bit sums, each over every fourth word of 8 bytes (little-endian, the last 32
// bytes filled with zeros), starting from 1, 2, 3, 4: sum = rotate_left(sum xor word, 29) x
// 9E3779B97F4A7C15; then the four are taken up as words by a fifth that starts from 0.

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_system.h"

namespace MXLIBRERIA {

/// A record of a step; its bytes stand in the image of the slot.
struct SlotRecord {
    double file = 0;
    double record = 0;
    std::size_t begin = 0;   ///< offset of its bytes in the image
    std::size_t length = 0;  ///< in bytes
};

/// Process-wide state of the slot, for the life of the run.
struct RecoverySlot {
    bool in_use = false;      ///< the run writes through it; without it a record is simply written
    bool step_open = false;   ///< records are being gathered
    bool unfinished = false;  ///< a step is in the slot, and a file has refused it
    std::vector<SlotRecord> records;
    std::string image;  ///< the slot as it will stand on disk
    std::unique_ptr<platform::Channel> channel;
};
extern RecoverySlot recovery_slot;

/// Records written between its beginning and `commit` reach their files together: a kill leaves all
/// of them or, after the next start, none half written. A step inside another is part of it.
/// Without `commit` (a failure on the way) nothing is written.
class SlotStep {
  public:
    SlotStep();
    ~SlotStep();
    SlotStep(const SlotStep&) = delete;
    SlotStep& operator=(const SlotStep&) = delete;
    SlotStep(SlotStep&&) = delete;
    SlotStep& operator=(SlotStep&&) = delete;

    /// Failures as SCRIVIREC; 75 where the slot cannot be made in the archive directory.
    void commit();

  private:
    bool outermost_;
};

/// write_record as a step of its own.
void write_whole_record(double n, double record, std::string_view text);

/// RICREAFILE(n) and its first record as one step: a kill leaves the file as it was or, after the
/// next start, with this record alone. Failures as RICREAFILE and SCRIVIREC.
void make_file_of_one_record(double n, std::string_view text);

/// A record that was in the slot of a killed run and now stands in its file.
struct FinishedRecord {
    double file = 0;
    double record = 0;
    std::string bytes;
};
/// Is there a step that a killed run, or one that is going on, has in the slot of this archive?
[[nodiscard]] bool step_waits_in_slot();
/// Finishes the step that a killed run left in the slot, if it left one, and takes the slot away;
/// the records of the step. Files that are missing or have another record length, and records
/// beyond the end, make the slot another archive's: it is not applied.
[[nodiscard]] std::vector<FinishedRecord> finish_killed_step();

/// Closes the slot and takes it away, after what has been written since is held to the disk; a step
/// that a file refused is tried once more, and stays for the next start if it is refused again.
/// CHIUDI(0) calls it.
void close_recovery_slot();

// ---- For the record operations alone ----

/// Takes a record into the step under way.
void add_to_step(double n, double record, std::string_view bytes);
/// The record as the step under way has it; false if it has none.
[[nodiscard]] bool read_from_step(double n, double record, std::string& bytes);
/// Where the step under way would make the file end, in bytes; 0 if it does not write to it.
[[nodiscard]] double end_in_step(double n);
void sync_recovery_slot();

}  // namespace MXLIBRERIA
