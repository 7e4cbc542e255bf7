#include "installation/file_layout.h"

#include <algorithm>
#include <array>

#include "installation/field_value.h"
#include "records/fields.h"

namespace nzutil {

namespace {

using MXREPOSITORY::Area;

constexpr int kEmployeeLength = 16600;
constexpr int kRow = 80;  // dictionary rows and short tables

/// The file of a code letter's dictionary; some letters have several.
constexpr int dictionary(char letter, std::size_t part = 0) {
    return dictionary_files(letter)[part];
}

constexpr std::array kLayouts{
    FileLayout{kCompanies, "DITTE.DAT", 6600, Content::records, Area::DITX},
    FileLayout{kEmployees, "DIPEND.DAT", kEmployeeLength, Content::records, Area::DIPX},
    FileLayout{kSelection, "SELEZ.DAT", 200},
    FileLayout{kPeriod, "PERIODO.DAT", kRow},
    FileLayout{kSectors, "SETTORI.DAT", 1400, Content::records, Area::SETX},
    FileLayout{dictionary('F'), "CAMPIF.DAT", kRow},
    FileLayout{dictionary('S'), "CAMPIS.DAT", kRow},
    FileLayout{dictionary('P'), "CAMPIP.DAT", kRow},
    FileLayout{dictionary('T'), "CAMPIT.DAT", kRow},
    FileLayout{kSemaphore, "NZSEMA.DAT", 2000, Content::lock},
    FileLayout{dictionary('I'), "CAMPII.DAT", kRow},
    FileLayout{kTaxBrackets, "SCAGLIRP.DAT", kRow},
    FileLayout{kFixedData, "FISSI.DAT", 3100, Content::records, Area::FISX},
    FileLayout{dictionary('Y'), "CAMPIY.DAT", kRow},
    FileLayout{kSlipImages, "TABIMM.DAT", kRow},
    FileLayout{dictionary('E'), "CAMPIE.DAT", kRow},
    FileLayout{dictionary('Q'), "CAMPIQ.DAT", kRow},
    FileLayout{kBeforeImages, "DIPPRIMA.DAT", kEmployeeLength, Content::records, Area::DIPX},
    FileLayout{kBeforeImageIndex, "DIPPRIMA.IDX", index_block(kEmployeeKey), Content::index},
    FileLayout{dictionary('B'), "CAMPIB.DAT", kRow},
    FileLayout{kInstallation, "INSTALL.DAT", 200},
    FileLayout{dictionary('M'), "CAMPIM.DAT", kRow},
    FileLayout{dictionary('N'), "CAMPIN.DAT", kRow},
    FileLayout{dictionary('G'), "CAMPIG.DAT", kRow},
    FileLayout{kContracts, "CONTRATT.DAT", 6000, Content::records, Area::CONX},
    FileLayout{dictionary('H'), "CAMPIH1.DAT", kRow},
    FileLayout{dictionary('H', 1), "CAMPIH2.DAT", kRow},
    FileLayout{kTwelveMonths, "DIPMESI.DAT", 7800, Content::records, Area::DICX},
    FileLayout{dictionary('J'), "CAMPIJ1.DAT", kRow},
    FileLayout{dictionary('J', 1), "CAMPIJ2.DAT", kRow},
    FileLayout{dictionary('J', 2), "CAMPIJ3.DAT", kRow},
    FileLayout{dictionary('W'), "CAMPIW.DAT", kRow},
    FileLayout{kPensionFundTexts, "FONDIPEN.TXT", kRow, Content::text},
    FileLayout{kFirstAllowanceTable, "ASSFAM00.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 1, "ASSFAM01.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 2, "ASSFAM02.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 3, "ASSFAM03.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 4, "ASSFAM04.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 5, "ASSFAM05.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 6, "ASSFAM06.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 7, "ASSFAM07.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 8, "ASSFAM08.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 9, "ASSFAM09.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 10, "ASSFAM10.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 11, "ASSFAM11.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 12, "ASSFAM12.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 13, "ASSFAM13.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 14, "ASSFAM14.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 15, "ASSFAM15.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 16, "ASSFAM16.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 17, "ASSFAM17.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 18, "ASSFAM18.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 19, "ASSFAM19.DAT", kRow},
    FileLayout{kFirstAllowanceTable + 20, "ASSFAM20.DAT", kRow},
    FileLayout{kDailyWages, "SPETTAC.TXT", kRow, Content::text},
    FileLayout{kSeveranceBrackets, "SCAGLTFR.DAT", kRow},
    FileLayout{kYearTables, "TABANNO.DAT", kRow},
    FileLayout{dictionary('X'), "CAMPIX.DAT", kRow},
    FileLayout{kCertificates, "CERTIF.DAT", 6100, Content::records, Area::CUDX},
    FileLayout{kFormerCertificates, "CERTPREC.DAT", 6100, Content::records, Area::CUDX},
    FileLayout{kCertificateIndex, "CERTIF.IDX", index_block(kEmployeeKey), Content::index},
    FileLayout{kFormerCertificateIndex, "CERTPREC.IDX", index_block(kEmployeeKey), Content::index},
    FileLayout{dictionary('A'), "CAMPIA.DAT", kRow},
    FileLayout{dictionary('O'), "CAMPIO1.DAT", kRow},
    FileLayout{dictionary('O', 1), "CAMPIO2.DAT", kRow},
    FileLayout{dictionary('V'), "CAMPIV.DAT", kRow},
    FileLayout{kHistory, "STORICO.DAT", 2500},
    FileLayout{kHistoryIndex, "STORICO.IDX", index_block(20), Content::index},
    FileLayout{kUser, "UTENTE.DAT", 100},
    FileLayout{kPayItems, "VOCI.DAT", 1500, Content::records, Area::FOTX},
    FileLayout{dictionary('Z'), "CAMPIZ.DAT", kRow},
    FileLayout{kPensionFunds, "FONDI.DAT", 700, Content::records, Area::FOPX},
    FileLayout{dictionary('R'), "CAMPIR.DAT", kRow},
    FileLayout{dictionary('K'), "CAMPIK.DAT", kRow},
    FileLayout{dictionary('L'), "CAMPIL.DAT", kRow},
    FileLayout{dictionary('U'), "CAMPIU.DAT", kRow},
    FileLayout{kRegions, "REGIONI.TXT", kRow, Content::text},
};
static_assert(std::ranges::is_sorted(kLayouts, {}, &FileLayout::number));

}  // namespace

std::span<const FileLayout> file_layouts() {
    return kLayouts;
}

const FileLayout* find_layout(int number) {
    const auto found = std::ranges::lower_bound(kLayouts, number, {}, &FileLayout::number);
    return found != kLayouts.end() && found->number == number ? &*found : nullptr;
}

std::string empty_record(MXREPOSITORY::Area area, std::size_t length) {
    std::string record(length, ' ');
    for (const MXREPOSITORY::Descriptor& field : MXREPOSITORY::fields_of(area)) {
        const auto width = static_cast<std::size_t>(field.length);
        const auto step = static_cast<std::size_t>(MXREPOSITORY::SPOSTAMENTOOCCORRENZA(field, 2));
        std::size_t start = static_cast<std::size_t>(field.offset - 1);
        for (int n = occurrences(field, length); field.type != 'A' && n > 0; --n, start += step) {
            if (start + width <= length) {
                record.replace(start, width, width, '0');
            }
        }
    }
    return record;
}

}  // namespace nzutil
