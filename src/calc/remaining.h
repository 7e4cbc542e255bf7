#pragma once
// Late calculations of the slip: clearing, employer percentages, severance-fund relief.

namespace ModSWCALM {

void clear_all_zero_texts();
void first_blanking_list();
void second_blanking_list();
void employer_percentage();
void second_employer_percentage();
void severance_fund_relief();
void year_end_clearing();

}  // namespace ModSWCALM
