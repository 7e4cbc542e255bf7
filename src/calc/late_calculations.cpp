#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "archive/monthly_archive.h"
#include "calc/incentives.h"
#include "calc/phases.h"
#include "calc/remaining.h"
#include "context/period.h"
#include "history/quadri.h"
#include "history/slip_images.h"
#include "platform/window.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using MXLIBRERIA::period;

namespace {

constexpr double kUsualHours = 173;

void relieve_severance_fund() {
    if (num(P921) == 0 && num(PA48) == 0) {
        severance_fund_relief();
    } else {
        azzera({P600, P601, P602, P603, P748});
    }
}

/// The January difference, to the whole unit: an increase to Q780, a decrease to Q781. The other
/// field keeps what the record or an item brings; the opening of the year empties both.
void store_january_difference() {
    slip.RETRIBUZIONEDIFF = unita(slip.RETRIBUZIONEDIFF);
    if (slip.RETRIBUZIONEDIFF > 0) {
        scrivi(Q780, slip.RETRIBUZIONEDIFF);
    } else if (slip.RETRIBUZIONEDIFF < 0) {
        scrivi(Q781, slip.RETRIBUZIONEDIFF);
    }
}

void flat_incentives() {
    azzera({P889});
    if (num(P888) == 1 && num(F432) != 0) {
        CALCOLA_INCENTIVO_DL76();
    }
    azzera({P901});
    if (period.ordinary() && num(P900) == 1 && num(F435) != 0) {
        CALCOLA_INCENTIVO_LICE();
    }
}

void keep_fund_share() {
    if (period.additional() && num(Q201) != 0) {
        scrivi(Q881, num(Q201));
    }
}

bool one_of(std::string_view text, std::initializer_list<std::string_view> values) {
    return std::find(values.begin(), values.end(), text) != values.end();
}

double sum_of_exemption_caps() {
    double sum = 0;
    for (const Descriptor& cap : {F437, F438, F439, F440, F441, F442, F450, F452}) {
        sum += num(cap);
    }
    return sum;
}

/// Is the general exemption worked out for the employee's code?
bool general_exemption_applies(std::string_view code) {
    if (one_of(code, {"D", "F", "G"})) {
        return true;
    }
    if (one_of(code, {"O", "P"})) {
        share_of_wage();
        return one_of(rifilato(P958), {"01", "02"});
    }
    return sum_of_exemption_caps() != 0;
}

void exemptions() {
    azzera({P919, P967, PB51, PC36});
    const std::string code = testo(P916);
    if (code != "0" && general_exemption_applies(code)) {
        ERR_CALCOLA_ESONERO_NUOVI_ASS();
    }
    const bool yearly_share = !one_of(rifilato(P958), {"", "0", "00", "01", "02"});
    if (period.ordinary() && yearly_share && num(P955) != 0) {
        yearly_exemption_share();
    }
}

/// P326: the relief asked for in P325, within the employer's contribution of the month.
void limit_relief() {
    azzera({P326});
    if (period.ordinary() && num(P327) == 0) {
        second_employer_percentage();
        const double limit = (slip.former_P268 + num(P240)) * employer_percentages.PCTDATORE2 / 100;
        scrivi(P326, std::min(num(P325), limit));
    }
}

void update_monthly_archive() {
    platform::window().refresh();
    if (num(P768) == 0) {
        NZRetMes::AGGIORNA_RETRIBUZIONI_MENSILI_INPS();
    }
    platform::window().refresh();
    azzera({P964});
}

/// P938 = 1: the taxable of the slip by the class P032, Q205 to Q213, and in the year's total.
void add_taxable_by_class() {
    if (num(P938) != 1) {
        return;
    }
    const double taxable = num(P256);
    scrivi(Q204, taxable);
    const double by_class = num(P032);
    if (by_class >= 1 && by_class <= 9) {
        aggiungi(dopo(Q205, static_cast<int>(by_class) - 1), taxable);
    }
    aggiungi(Q094, unita(taxable));
}

void update_declaration_and_image() {
    const double excluded = num(P857);
    if (NZRetMesINPDAP::archive_exists() && num(T624) == 1 && (excluded == 0 || excluded == 2)) {
        NZRetMesINPDAP::update_declaration();
    }
    if (NZCedLibPaga::archive_exists()) {
        NZCedLibPaga::update_slip();
    }
}

/// P617: the pay of the contract, the base by the hour where the elements are hourly.
void store_contract_pay() {
    const double divisor = hours_divisor() != 0 ? hours_divisor() : kUsualHours;
    const double base = num(P050) == 0 ? dividi(num(P069), divisor) : num(P069);
    scrivi(P617, pay_elements() + base);
}

/// Tax once suspended (Q801) was counted as paid for the adjustment of the year; it comes off the
/// tax to date again, on that slip alone.
void take_off_suspended_tax() {
    const double suspended = num(Q801);
    if (slip.suspended_tax_joined && num(P792) == 0 && slip.ordinary_worker && suspended != 0 &&
        num(Q014) - suspended > 0) {
        aggiungi(Q014, -suspended);
    }
}

}  // namespace

void late_calculations() {
    relieve_severance_fund();
    store_january_difference();
    flat_incentives();
    keep_fund_share();
    employer_percentage();
    exemptions();
    limit_relief();
    geographical_relief();
    year_end_clearing();
    update_monthly_archive();
    add_taxable_by_class();
    update_declaration_and_image();
    blank_all_zero({P802, P803, P804, P805});
    store_contract_pay();
    take_off_suspended_tax();
}

}  // namespace ModSWCALM
