#pragma once
// Logical numbered files and their records.
//
// NZBASE.DAT, in the archive directory: fixed records of 79 bytes; the line of logical number n
// begins at byte n x 79 - 78 (1-based).
//   positions  width  content
//   1-3        3      not used
//   4-32       29     file name template, right-trimmed, with placeholders
//   33-37      5      record length in bytes
//   38-79      42     not used

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/file_system.h"

namespace MXLIBRERIA {

inline constexpr int kLogicalFiles = 600;

/// Values of the placeholders for the next opening; each is cleared by its use.
struct PlaceholderValues {
    std::string disk;
    double DITTAOPEN = 0;
    double year = 0;
    double region = 0;
    std::string province;
};

/// Process-wide state of the files, for the life of the run; index 0 of the tables stays unused.
struct FileTable : PlaceholderValues {
    struct Entry {
        std::int16_t CANALI = 0;  ///< channel number, 0 when closed
        std::string RECORD;       ///< RECORD$: the record buffer; outlives the closing
        double LUNGHEZZE = 0;     ///< record length from NZBASE.DAT
        double ULTIMOREC = 0;     ///< last record number read or written
        std::unique_ptr<platform::Channel> channel;
        std::string text;                  ///< content of a text file opened for input
        std::optional<std::string> table;  ///< content of a table, kept from its first use
        std::uint64_t text_position = 0;   ///< next byte of a text file
        bool unsynced =
            false;  ///< holds records that sync_file has not seen, also from before a new opening
    };
    std::array<Entry, kLogicalFiles + 1> entries;
    double last_length = 0;  ///< record length of the last DAMMIFILE$; 0 where it is no number
    double last_open = 0;    ///< result of the last opening
    double last_read = 0;    ///< result of the last reading: 1 at end of file
};
extern FileTable file_table;

/// The placeholder values alone, to be kept over an opening that uses them up.
[[nodiscard]] PlaceholderValues& placeholders();

/// RECORD$(n). An n outside 1 to 600 is failure 9.
[[nodiscard]] std::string& record_buffer(double n);

/// DAMMIFILE$: path of a logical file. `relative` is set to -1 by the caller and to 0 when the
/// template names a disk. A placeholder without its value shows its message and ends the program
/// (exit status 2). Failure 53 without NZBASE.DAT, 62 where it ends before the line of n, 9 for an
/// n outside it.
[[nodiscard]] std::string DAMMIFILE(double n, std::int16_t& relative);

/// Opens for random access by record; returns the record length. n of 0 or below: 0, nothing done.
/// Failure 53 if the file is missing (only RICREAFILE makes one), 59 if its record length is not a
/// number above 0, 52 if it has no name.
double FAIOPEN(double n);
/// Opens a plain text file: mode 0 for input, 1 for output after deleting any file of that name.
void FAIOPENIO(double n, std::int16_t mode);
/// Closes channel n (its sign does not matter) or, for 0, everything. The record buffers stay.
void CHIUDI(double n);

/// Next line of a text file opened by FAIOPENIO for input, without CR LF; false at its end.
[[nodiscard]] bool LEGGIRIGA(double n, std::string& line);
/// Writes a line with CR LF to a text file opened for output.
void SCRIVIRIGA(double n, const std::string& line);

/// Reads a record into RECORD$(n); 1 at end of file, else 0. What a record cut short by the end of
/// the file lacks, and all of one beyond it, is blanks. Failure 59 when the buffer's length is not
/// the record length, 52 on a closed file, 63 for a record number below 1.
double LEGGIREC(double n, double record);
/// Writes `text` (or the buffer, if it is empty); its length must be the record length (else 59).
/// Inside a step of the recovery slot it reaches the file at the end of the step.
void SCRIVIREC(double n, double record, const std::string& text = {});
/// SCRIVIREC of a text cut or blank-filled to the record length, an empty text as blanks.
void write_record(double n, double record, std::string_view text);

/// LEGGIREC of a table that the run does not change: the file is read whole at its first use (and
/// opened for that where it is closed). It is read anew after FAIOPEN, after a SCRIVIREC to it, and
/// when everything has been closed.
double read_table(double n, double record);
/// Its first use, where no record is wanted yet. Failures as FAIOPEN.
void load_table(double n);

/// 1 if the file exists and is not empty, else 0.
[[nodiscard]] double VERBASE(double n);
/// Deletes the file of n if it exists and has a length; n of 0 or below: nothing done.
void ELIMINA(double n);
/// ELIMINA, then FAIOPEN, which here makes the file: it stands empty and open.
void RICREAFILE(double n);
/// Length in bytes of the open file n, with the records of a step that is under way.
[[nodiscard]] double file_length(double n);

/// Bytes of a record to their place in the open file n, past buffer and trace: for the recovery
/// slot alone.
void write_record_bytes(double n, double record, std::string_view bytes);
/// Makes what was written to the open file n since the last call outlive a fall of the current.
void sync_file(double n);
/// The same for every open file.
void sync_files();

/// Takes and releases the semaphore NZSEMA.DAT (logical file 16) shared with the suite. Waits as
/// long as another program holds it, or until a request to stop (StopRequested); failure 75 where
/// the user's rights do not let it be opened at all.
void APRISEMA();
void CHIUDISEMA();

/// RECORD$(n) as write_record would write it: the text left-aligned in the record length.
void fill_record(double n, std::string_view text);

}  // namespace MXLIBRERIA
