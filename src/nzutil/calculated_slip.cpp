#include "nzutil/calculated_slip.h"

#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace nzutil {

using namespace MXREPOSITORY;

namespace {

double number_in(const Descriptor& field, const std::string& record) {
    return record.empty() ? 0 : LEGGICAMPONUM(field, 0, record);
}

int company_of(const Installation& installation, int employee) {
    for (const auto& [company, record] : installation.read_selection()) {
        if (record == employee) {
            return company;
        }
    }
    return 0;
}

/// The line's amount; an item of Z029 gives whole euro.
double amount_of(const SlipLine& line) {
    const double amount = line.quantity * line.rate;
    return line.of_item(Z029) == 1 ? unita(amount) : arrotonda(amount);
}

}  // namespace

double SlipLine::of_item(const Descriptor& field) const {
    return number_in(field, item);
}

bool SlipLine::deduction() const {
    return of_item(Z011) == 1;
}

CalculatedSlip::CalculatedSlip(const Installation& installation, int record, std::string before,
                               std::string after, const PeriodEntry& period)
    : before_(std::move(before)), after_(std::move(after)), additional_(period.kind == '0') {
    month_ = static_cast<int>(valore(period.date.substr(2, 2)));
    year_ = static_cast<int>(valore(period.date.substr(4)));
    company_ = installation.read(kCompanies, company_of(installation, record)).value_or("");
    sector_ = installation.read(kSectors, static_cast<int>(number_in(T067, company_))).value_or("");
    yearly_ = installation.read(kFixedData, 1).value_or("");
    certificate_ = certificate_of(installation, LEGGICAMPO(P001, 0, after_));
    if (const auto fund = static_cast<int>(now(P401)); fund > 0) {
        fund_ = installation.read(kPensionFunds, fund).value_or("");
    }
    read_lines(installation);
    read_brackets(installation);
}

double CalculatedSlip::now(const Descriptor& field) const {
    return number_in(field, after_);
}

double CalculatedSlip::was(const Descriptor& field) const {
    return number_in(field, before_);
}

double CalculatedSlip::moved(const Descriptor& field) const {
    return now(field) - was(field);
}

double CalculatedSlip::sum(const std::vector<Descriptor>& fields) const {
    double sum = 0;
    for (const Descriptor& field : fields) {
        sum += now(field);
    }
    return sum;
}

std::string CalculatedSlip::text(const Descriptor& field) const {
    return after_.empty() ? "" : LEGGICAMPO(field, 0, after_);
}

std::string CalculatedSlip::text_before(const Descriptor& field) const {
    return before_.empty() ? "" : LEGGICAMPO(field, 0, before_);
}

double CalculatedSlip::company(const Descriptor& field) const {
    return number_in(field, company_);
}

double CalculatedSlip::sector(const Descriptor& field) const {
    return number_in(field, sector_);
}

double CalculatedSlip::yearly(const Descriptor& field) const {
    return number_in(field, yearly_);
}

double CalculatedSlip::certificate(const Descriptor& field) const {
    return number_in(field, certificate_);
}

double CalculatedSlip::fund(const Descriptor& field) const {
    return number_in(field, fund_);
}

bool CalculatedSlip::company_is(std::string_view tax_code) const {
    return !company_.empty() && rifila(LEGGICAMPO(T013, 0, company_)) == tax_code;
}

bool CalculatedSlip::entertainer() const {
    return now(P168) != 0;
}

bool CalculatedSlip::collaborator() const {
    return now(P447) == 1;
}

bool CalculatedSlip::settles_year() const {
    if (additional_) {
        return false;
    }
    if (entertainer()) {
        return month_ == 12 || text(P017).substr(2) == text(Q179).substr(2);
    }
    return now(P017) > 0 || (now(P169) == 0 && month_ == 12) || was(P118) == 1;
}

bool CalculatedSlip::waits_for_cap(const std::string& item) const {
    const auto mentions = [&item](std::string_view text) {
        return item.find(text) != std::string::npos;
    };
    return (mentions("P855") && now(P855) <= 0 && !mentions("=P855")) ||
           (mentions("P953") && now(P953) <= 0 && !mentions("=P953")) ||
           (mentions("P954") && now(P954) <= 0 && !mentions("=P954"));
}

void CalculatedSlip::read_lines(const Installation& installation) {
    constexpr int kLines = 100;
    constexpr int kEndOfTable = 999;
    for (int number = 0; number < kLines; ++number) {
        const std::string text = this->text(dopo(Q401, number));
        const int code = static_cast<int>(valore(ritaglia(text, 2, 3)));
        if (code == 0 || code == kEndOfTable) {
            return;
        }
        SlipLine line;
        line.item = installation.read(kPayItems, code).value_or("");
        if (line.item.empty() || line.of_item(Z049) == 99 || line.of_item(Z048) == 1 ||
            waits_for_cap(line.item)) {
            continue;
        }
        const bool plain = line.of_item(Z016) == 7;
        line.quantity = valore(ritaglia(text, 5, 13)) / (plain ? 1 : 100);
        line.rate = valore(ritaglia(text, 18, 13)) / 100000;
        line.amount = amount_of(line);
        lines_.push_back(std::move(line));
    }
}

void CalculatedSlip::read_brackets(const Installation& installation) {
    const std::string leaving = rifila(text(P017));
    if (leaving == "31122023") {  // L. 234/2021, art. 1, c. 2
        brackets_ = {{15000, 23}, {28000, 25}, {50000, 35}, {999999.99, 43}};
        return;
    }
    const int file = leaving == "31122004" ? kSeveranceBrackets : kTaxBrackets;
    for (int row = 1; const std::optional<std::string> record = installation.read(file, row);
         ++row) {
        brackets_.push_back(
            {valore(ritaglia(*record, 1, 9)), valore(ritaglia(*record, 10, 3)) / 10});
    }
}

}  // namespace nzutil
