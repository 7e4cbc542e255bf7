#pragma once
// Access to a field by its short name, given at run time, through the suite's dictionary files.
// The decimals of a written value are cut and not rounded, and a minus stays among the digits.

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace MXREPOSITORY {

/// What has been loaded of the dictionary; lives for the run.
struct Repository {
    std::string INDICELETTERE;              ///< count, letter, count, letter, ... ("00000" first)
    std::vector<std::string> TABELLACAMPI;  ///< entries of 9 characters, from index 1
    std::string type;                       ///< type letter of the last field read
};
extern Repository repository;

/// Loads the dictionary files of one code letter.
void INIZIALIZZAREPOSITORY(char letter);
/// Field of a 4-character name, or of a letter with a displacement; `buffer` empty: its area.
[[nodiscard]] std::string XREPOR(std::string_view name, double spostamento,
                                 const std::string& buffer);
/// Writes the field in `buffer` if that is not empty, else in its area.
void XREPOW(std::string_view name, double spostamento, const std::string& value,
            std::string& buffer);
/// The same into the area.
void XREPOW(std::string_view name, double spostamento, const std::string& value);

/// Slots 401 to 500 of letter Q as one text of 3,500 characters, and back.
[[nodiscard]] std::string leggi_blocco_righe();
void scrivi_blocco_righe(const std::string& lines);

}  // namespace MXREPOSITORY
