#pragma once
// The history: fields of the slip that a layout names, as the text of a table for another program
// to build. Nothing is done where the installation has no layout.
//
// Columns: dictionary of letter V (file 386), a column a line.
//   positions  content
//   4-26       label
//   30-31      length of a text
//   43-46      field of the employee that it shows
//   47         type: A text, D date, N or 0 whole number, 2 to 6 a number with so many decimals
//   69-72      code of the column, "V" and three digits
// Where the fields stand: dictionary of letter P (file 11), length in 30-31, offset in 50-54, code
// in 69-72.
//
// A record of the history (file 387, index 389): 2 blanks, a key of 20, the text. Under twenty
// zeros the definition of the table, under the employee's code the values of his row. What does not
// fit the record is cut.

#include <string>
#include <vector>

namespace ModElaboraStorico {

/// The layouts live as long as the run, the record as long as the employee.
struct StoredHistory {
    std::vector<std::string> columns;  ///< lines of the first layout that name a column
    std::vector<std::string> fields;   ///< lines of the second with an offset, sorted by code
    const std::string* record = nullptr;
    bool definition_stored = false;  ///< by this run
};
extern StoredHistory stored_history;

/// Loads both layouts, and opens the history where there is one.
void PREPARAELABSTORICO();
/// Points to the employee's record.
void PREPARASTORICO();
/// Stores the employee's row, and before the first one the definition.
void ELABORASTORICO();

/// Line of the second layout with the field's code; empty if there is none.
[[nodiscard]] std::string CERCACAMPO(const std::string& code);

/// The statement that makes the table of the columns.
[[nodiscard]] std::string table_definition();
/// The employee's values, in the order of the columns.
[[nodiscard]] std::string row_of_values();

}  // namespace ModElaboraStorico
