#pragma once
// Access to a field by its short name, given at run time, through the suite's dictionary files.
// The decimals of a written value are cut and not rounded, and a minus stays among the digits.
//
// Short names: letter and three digits ("P017"); PA, QA, TA and two digits (slots 2001 on); PB, QB,
// TB (3001 on); PC, QC, TC (4001 on); a letter alone with a displacement ("Q" and 401). With a name
// of four characters the displacement is added to its slot: "Q400" and 7 is Q407.
//
// Dictionary record (positions used): 30-31 length, 32 type, 50-54 offset, 65 flag, 69-72 code.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace MXREPOSITORY {

/// What has been loaded of the dictionary; lives for the run.
struct Repository {
    /// Count, letter, count, letter, ... ("00000" first): the four digits before a letter are its
    /// base in the table, those after it the highest index once it is loaded.
    std::string INDICELETTERE;
    /// Entries from index 1: offset (5), length (2), type, flag; an empty one is no field.
    std::vector<std::string> TABELLACAMPI;
    std::string type;  ///< type letter of the last field read

    /// The same entries in numbers; offset 0 for those that are no field, or a damaged one.
    struct Field {
        std::int16_t offset = 0;
        std::int16_t length = 0;
    };
    std::vector<Field> fields;

    /// Bases and highest indexes of the letters A to Z, as INDICELETTERE tells them; base -1 for a
    /// letter not loaded.
    struct LetterBase {
        std::int32_t base = -1;
        std::int32_t last = -1;
    };
    std::array<LetterBase, 26> letter_bases{};
};
extern Repository repository;

/// Loads the dictionary files of one code letter. A letter that has none stays unknown.
void INIZIALIZZAREPOSITORY(char letter);

/// Field of a 4-character name, or of a letter with a displacement; `buffer` empty: its area.
/// Decimal fields have their point, a minus stays where it stands. An unknown letter, a name of
/// another length, a name that does not exist: a box, and an empty text.
[[nodiscard]] std::string XREPOR(std::string_view name, double spostamento,
                                 const std::string& buffer);

/// Writes the field in `buffer` if that is not empty, else in its area. Boxes as in reading; then
/// nothing is written. A target beyond the buffer is failure 9.
void XREPOW(std::string_view name, double spostamento, const std::string& value,
            std::string& buffer);
/// The same into the area.
void XREPOW(std::string_view name, double spostamento, const std::string& value);

/// Slots 401 to 500 of letter Q as one text of 3,500 characters, and back.
[[nodiscard]] std::string leggi_blocco_righe();
void scrivi_blocco_righe(const std::string& lines);

}  // namespace MXREPOSITORY
