#pragma once
// Numbers that are the same for many employees: fixed data, tax brackets, contribution percentages.

#include "slip/slip.h"

namespace ModSWCALM {

/// Opens logical files 6, 5, 97, 1, 2, 19, 8, 401, 18, 278, 276, 354, 356.
void TUTTELEOP();
/// Fills TABFISSO from the current FISX$.
void CARICAFISSO(std::array<double, 57>& table);
/// Brackets of files 18 (cells 1 to 20) and 276 (cells 21 to 40), read once a run; rows that a file
/// does not hold leave the cells as they are. The table of severance pay is filled by it too.
void INTATABIRP(BracketTable& table);
/// The brackets of 2023 into both tables (employment ended on 31 December 2023).
void brackets_of_2023();
/// PCTCONTR of the employee from employee, company and sector.
void load_contribution_percentages();

}  // namespace ModSWCALM
