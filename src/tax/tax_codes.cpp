// The places for dependants on the employee, and the checks on what stands in them.

#include "context/messages.h"
#include "context/trace.h"
#include "records/fields.h"
#include "slip/slip.h"
#include "tax/deductions.h"
#include "tax/family.h"
#include "texts/texts.h"

namespace ModSWCALB {

using namespace MXREPOSITORY;

constexpr std::array<DependantSlot, kSlotCount> kDependantSlots{{
    {P634, P635, P636, P637, Q714, P725}, {P638, P639, P640, P641, Q715, P726},
    {P642, P643, P644, P645, Q716, P727}, {P646, P647, P648, P649, Q717, P728},
    {P650, P651, P652, P653, Q718, P729}, {P654, P655, P656, P657, Q719, P730},
    {P658, P659, P660, P661, Q720, P731}, {PA55, PA56, PA57, PA58, QA12, PA59},
    {P662, P663, P664, P665, Q721, P732}, {P666, P667, P668, P669, Q722, P733},
    {P670, P671, P672, P673, Q723, P734}, {P674, P675, P676, P677, Q724, P735},
    {P678, P679, P680, P681, Q725, P736}, {P682, P683, P684, P685, Q726, P737},
    {P686, P687, P688, P689, Q727, P738}, {P690, P691, P692, P693, Q728, P739},
    {P694, P695, P696, P697, Q729, P740}, {P698, P699, P700, P701, Q730, P741},
    {P702, P703, P704, P705, Q731, P742}, {P706, P707, P708, P709, Q732, P743},
    {P710, P711, P712, P713, Q733, P744}, {P714, P715, P716, P717, Q734, P745},
    {P718, P719, P720, P721, Q735, P746}, {PA60, PA61, PA62, PA63, QA13, PA64},
}};

bool ControllaCodFiscFamiliari() {
    MXLIBRERIA::TRACCIA("ControllaCodFiscFamiliari");
    deduction_state.slot_marks.assign(kSlotCount, 'S');
    bool& missing = ModSWCALM::slip.dependant_without_tax_code;
    missing = false;
    for (std::size_t i = 0; i < kSlotCount; ++i) {
        const DependantSlot& slot = kDependantSlots[i];
        if (num(slot.share) > 0 && rifilato(slot.tax_code).empty()) {
            deduction_state.slot_marks[i] = 'N';
            missing = true;
        }
    }
    if (missing) {
        MXLIBRERIA::MSG(MXLIBRERIA::list_line(texts::kMissingDependantTaxCode.bytes()));
        drop_slip_without_tax_codes();
    }
    return !missing;
}

void drop_slip_without_tax_codes() {
    if (ModSWCALM::slip.dependant_without_tax_code) {
        ModSWCALM::ABORTODIP = -1;
    }
}

void VerificaFamiliari() {
    MXLIBRERIA::TRACCIA("VerificaFamiliari");
    for (std::size_t i = 0; i < kSlotCount; ++i) {
        const DependantSlot& slot = kDependantSlots[i];
        if (num(slot.birth_date) != 0 && !counts_in_the_year(i)) {
            scrivi(slot.last_used, 0);
        }
    }
}

}  // namespace ModSWCALB
