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

constexpr std::array kLayouts{
    FileLayout{kCompanies, "DITTE.DAT", 6600, Content::records, Area::DITX},
    FileLayout{kEmployees, "DIPEND.DAT", kEmployeeLength, Content::records, Area::DIPX},
    FileLayout{kSelection, "SELEZ.DAT", 200},
    FileLayout{kPeriod, "PERIODO.DAT", kRow},
    FileLayout{kSectors, "SETTORI.DAT", 1400, Content::records, Area::SETX},
    FileLayout{9, "CAMPIF.DAT", kRow},
    FileLayout{10, "CAMPIS.DAT", kRow},
    FileLayout{kEmployeeFields, "CAMPIP.DAT", kRow},
    FileLayout{13, "CAMPIT.DAT", kRow},
    FileLayout{kSemaphore, "NZSEMA.DAT", 2000, Content::lock},
    FileLayout{17, "CAMPII.DAT", kRow},
    FileLayout{kTaxBrackets, "SCAGLIRP.DAT", kRow},
    FileLayout{kFixedData, "FISSI.DAT", 3100, Content::records, Area::FISX},
    FileLayout{21, "CAMPIY.DAT", kRow},
    FileLayout{23, "TABIMM.DAT", kRow},
    FileLayout{25, "CAMPIE.DAT", kRow},
    FileLayout{33, "CAMPIQ.DAT", kRow},
    FileLayout{kBeforeImages, "DIPPRIMA.DAT", kEmployeeLength, Content::records, Area::DIPX},
    FileLayout{kBeforeImageIndex, "DIPPRIMA.IDX", index_block(kEmployeeKey), Content::index},
    FileLayout{47, "CAMPIB.DAT", kRow},
    FileLayout{kInstallation, "INSTALL.DAT", 200},
    FileLayout{62, "CAMPIM.DAT", kRow},
    FileLayout{64, "CAMPIN.DAT", kRow},
    FileLayout{70, "CAMPIG.DAT", kRow},
    FileLayout{kContracts, "CONTRATT.DAT", 6000, Content::records, Area::CONX},
    FileLayout{73, "CAMPIH1.DAT", kRow},
    FileLayout{74, "CAMPIH2.DAT", kRow},
    FileLayout{kTwelveMonths, "DIPMESI.DAT", 7800, Content::records, Area::DICX},
    FileLayout{99, "CAMPIJ1.DAT", kRow},
    FileLayout{100, "CAMPIJ2.DAT", kRow},
    FileLayout{103, "CAMPIJ3.DAT", kRow},
    FileLayout{163, "CAMPIW.DAT", kRow},
    FileLayout{190, "FONDIPEN.TXT", kRow, Content::text},
    FileLayout{232, "ASSFAM00.DAT", kRow},
    FileLayout{233, "ASSFAM01.DAT", kRow},
    FileLayout{234, "ASSFAM02.DAT", kRow},
    FileLayout{235, "ASSFAM03.DAT", kRow},
    FileLayout{236, "ASSFAM04.DAT", kRow},
    FileLayout{237, "ASSFAM05.DAT", kRow},
    FileLayout{238, "ASSFAM06.DAT", kRow},
    FileLayout{239, "ASSFAM07.DAT", kRow},
    FileLayout{240, "ASSFAM08.DAT", kRow},
    FileLayout{241, "ASSFAM09.DAT", kRow},
    FileLayout{242, "ASSFAM10.DAT", kRow},
    FileLayout{243, "ASSFAM11.DAT", kRow},
    FileLayout{244, "ASSFAM12.DAT", kRow},
    FileLayout{245, "ASSFAM13.DAT", kRow},
    FileLayout{246, "ASSFAM14.DAT", kRow},
    FileLayout{247, "ASSFAM15.DAT", kRow},
    FileLayout{248, "ASSFAM16.DAT", kRow},
    FileLayout{249, "ASSFAM17.DAT", kRow},
    FileLayout{250, "ASSFAM18.DAT", kRow},
    FileLayout{251, "ASSFAM19.DAT", kRow},
    FileLayout{252, "ASSFAM20.DAT", kRow},
    FileLayout{kDailyWages, "SPETTAC.TXT", kRow, Content::text},
    FileLayout{kSeveranceBrackets, "SCAGLTFR.DAT", kRow},
    FileLayout{kYearTables, "TABANNO.DAT", kRow},
    FileLayout{353, "CAMPIX.DAT", kRow},
    FileLayout{kCertificates, "CERTIF.DAT", 6100, Content::records, Area::CUDX},
    FileLayout{kFormerCertificates, "CERTPREC.DAT", 6100, Content::records, Area::CUDX},
    FileLayout{kCertificateIndex, "CERTIF.IDX", index_block(kEmployeeKey), Content::index},
    FileLayout{kFormerCertificateIndex, "CERTPREC.IDX", index_block(kEmployeeKey), Content::index},
    FileLayout{359, "CAMPIA.DAT", kRow},
    FileLayout{383, "CAMPIO1.DAT", kRow},
    FileLayout{384, "CAMPIO2.DAT", kRow},
    FileLayout{kHistoryColumns, "CAMPIV.DAT", kRow},
    FileLayout{kHistory, "STORICO.DAT", 2500},
    FileLayout{kHistoryIndex, "STORICO.IDX", index_block(kHistoryKey), Content::index},
    FileLayout{kUser, "UTENTE.DAT", 100},
    FileLayout{kPayItems, "VOCI.DAT", 1500, Content::records, Area::FOTX},
    FileLayout{402, "CAMPIZ.DAT", kRow},
    FileLayout{kPensionFunds, "FONDI.DAT", 700, Content::records, Area::FOPX},
    FileLayout{404, "CAMPIR.DAT", kRow},
    FileLayout{412, "CAMPIK.DAT", kRow},
    FileLayout{415, "CAMPIL.DAT", kRow},
    FileLayout{421, "CAMPIU.DAT", kRow},
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
