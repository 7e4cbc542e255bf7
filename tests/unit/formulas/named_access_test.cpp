// Fields reached by their short name, through dictionary files of a small archive.

#include "formulas/named_access.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <random>
#include <string>

#include "files/logical_files.h"
#include "platform/failure.h"
#include "records/dictionary/DICX.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "tests/support/dictionary_archive.h"
#include "tests/support/record_areas.h"
#include "tests/support/scripted_window.h"

namespace {

using namespace MXREPOSITORY;
using test_support::dictionary_of;
using test_support::dictionary_record;
using test_support::ScriptedWindow;

constexpr std::string_view kOwnLetters = "PQTFSZGRXJ";

class NamedAccess : public testing::Test {
  protected:
    void SetUp() override {
        window = &ScriptedWindow::install();
        test_support::fill_areas();
    }
    void TearDown() override { window->verify(); }

    /// A buffer of `length` hash signs and a field of letter E over its positions 4 on.
    void one_field(char type, int length) {
        archive.add(25, dictionary_record("E001", 4, length, type));
        repository = {};
        buffer = "###" + std::string(static_cast<std::size_t>(length), '#') + "###";
    }
    /// What E001 holds after a value was written to it; its neighbours must stay.
    std::string written(const std::string& value) {
        XREPOW("E001", 0, value, buffer);
        EXPECT_EQ(buffer.substr(0, 3), "###");
        EXPECT_EQ(buffer.substr(buffer.size() - 3), "###");
        return buffer.substr(3, buffer.size() - 6);
    }
    std::string written(char type, int length, const std::string& value) {
        one_field(type, length);
        return written(value);
    }

    test_support::DictionaryArchive archive;
    ScriptedWindow* window = nullptr;
    std::string buffer;
};

int failure_of(const std::function<void()>& operation) {
    try {
        operation();
    } catch (const platform::Failure& failure) {
        return failure.number();
    }
    return 0;
}

// ---- Both ways of access, for every field of every letter ----

void fill_with_digits(std::mt19937& random) {
    for (std::size_t i = 0; i < kAreaCount; ++i) {
        for (char& c : area(static_cast<Area>(i))) {
            c = static_cast<char>('0' + random() % 10);
        }
    }
}

template <class Check>
void for_every_field(Check check) {
    for (const char letter : kOwnLetters) {
        for (const Descriptor& field : fields_of(area_of_letter(letter))) {
            if (field.code[0] == letter) {
                SCOPED_TRACE(field.text());
                check(field);
                if (testing::Test::HasFatalFailure()) {
                    return;
                }
            }
        }
    }
}

TEST_F(NamedAccess, EveryFieldReadsTheSameByNameAndByDescriptor) {
    std::mt19937 random(1);
    fill_with_digits(random);
    std::size_t fields = 0;
    for_every_field([&fields](const Descriptor& field) {
        ++fields;
        ASSERT_EQ(XREPOR(field.name(), 0, ""), testo(field));
        ASSERT_EQ(repository.type, std::string(1, field.type));
    });
    EXPECT_EQ(fields, 4448U);  // 815 + 2074 + 654 + 67 + 33 + 312 + 164 + 267 + 62
}

TEST_F(NamedAccess, EveryFieldReadsTheSameNegativeNumberByNameAndByDescriptor) {
    for_every_field([](const Descriptor& field) {
        if (field.type != 'A') {
            scrivi(field, field.length > 1 ? -3.0 : 3.0);
            ASSERT_EQ(valore(XREPOR(field.name(), 0, "")), num(field));
        }
    });
}

TEST_F(NamedAccess, EveryFieldIsWrittenTheSameByNameAndByDescriptor) {
    std::mt19937 random(2);
    fill_with_digits(random);
    for_every_field([&random](const Descriptor& field) {
        std::string value = std::to_string(random() % 1000);
        if (field.decimals() > 0) {
            value += '.' + std::to_string(100 + random() % 900).substr(0, 2);
        }
        std::string by_descriptor = area(field.area);
        SCRIVICAMPO(field, value, 0, by_descriptor);
        XREPOW(field.name(), 0, value);
        ASSERT_EQ(area(field.area), by_descriptor);
    });
}

// ---- Loading ----

TEST_F(NamedAccess, TheDictionaryIsReadOnce) {
    scrivi(P017, "31052024");
    EXPECT_EQ(XREPOR("P017", 0, ""), "31052024");
    archive.add(11, "");  // nothing to be read any more
    EXPECT_EQ(XREPOR("P017", 0, ""), "31052024");
}

TEST_F(NamedAccess, TheIndexHoldsBaseAndHighestIndexOfEachLetter) {
    (void)XREPOR("P017", 0, "");
    EXPECT_EQ(repository.INDICELETTERE, "00000P4048");  // PC48 is the last of P
    (void)XREPOR("QA01", 0, "");
    EXPECT_EQ(repository.INDICELETTERE, "00000P4048Q6092");  // 4048 + 2044 for QA44
    EXPECT_EQ(repository.TABELLACAMPI.size(), 6093U);
    // P017 stands at 4225 with 8 characters, a date.
    EXPECT_EQ(repository.TABELLACAMPI[17], "0422508D0");
    EXPECT_EQ(repository.TABELLACAMPI[0], "");
    INIZIALIZZAREPOSITORY('Z');
    EXPECT_EQ(repository.INDICELETTERE, "00000P4048Q6092Z6268");  // Z176
}

TEST_F(NamedAccess, BasesBeyondFourDigitsStillLead) {
    scrivi(P017, "31052024");
    scrivi(Z002, "RETRIBUZIONE");
    for (const char letter : kOwnLetters) {
        INIZIALIZZAREPOSITORY(letter);
    }
    EXPECT_GT(repository.TABELLACAMPI.size(), 10000U);
    EXPECT_EQ(XREPOR("P017", 0, ""), "31052024");
    EXPECT_EQ(rifila(XREPOR("Z002", 0, "")), "RETRIBUZIONE");
    scrivi(J791, 12.34);
    EXPECT_EQ(XREPOR("J791", 0, ""), testo(J791));
}

TEST_F(NamedAccess, TheFilesOfALetterShareItsBase) {
    // J001 comes from the first file, J791 from the third.
    (void)XREPOR("P001", 0, "");
    scrivi(J001, 1);
    scrivi(J791, 2);
    EXPECT_EQ(valore(XREPOR("J001", 0, "")), 1);
    EXPECT_EQ(valore(XREPOR("J791", 0, "")), 2);
    EXPECT_EQ(repository.INDICELETTERE, "00000P4048J4839");  // 4048 + 791
}

TEST_F(NamedAccess, AnOpenDictionaryStaysOpenAndAClosedOneIsClosedAgain) {
    (void)XREPOR("P001", 0, "");
    EXPECT_EQ(MXLIBRERIA::file_table.entries[11].CANALI, 0);
    MXLIBRERIA::FAIOPEN(33);
    (void)XREPOR("Q001", 0, "");
    EXPECT_NE(MXLIBRERIA::file_table.entries[33].CANALI, 0);
}

TEST_F(NamedAccess, NamesWithTwoLettersHaveTheirOwnSlots) {
    (void)XREPOR("P001", 0, "");
    EXPECT_EQ(repository.TABELLACAMPI[2012],
              (std::string(PA12.text(), 6, 5) + PA12.text().substr(12, 2) + PA12.type + "0"));
    archive.add(11, dictionary_record("PB21", 11, 3, 'A') + dictionary_record("PC03", 21, 4, 'A'));
    archive.add(33, dictionary_record("QB21", 31, 3, 'A') + dictionary_record("QC03", 41, 4, 'A'));
    archive.add(13, dictionary_record("TB21", 51, 3, 'A') + dictionary_record("TC03", 61, 4, 'A'));
    repository = {};
    for (const char* name : {"PB21", "QB21", "TB21"}) {
        EXPECT_EQ(XREPOR(name, 0, "").size(), 3U);
    }
    for (const char* name : {"PC03", "QC03", "TC03"}) {
        EXPECT_EQ(XREPOR(name, 0, "").size(), 4U);
    }
    // 3021, 4003; then Q from 4003 on: 7024, 8006; then T.
    EXPECT_EQ(repository.TABELLACAMPI[3021], "0001103A0");
    EXPECT_EQ(repository.TABELLACAMPI[8006], "0004104A0");
}

TEST_F(NamedAccess, NoMoreThanTenThousandRecordsAreRead) {
    const std::string empty(80, ' ');
    std::string records;
    for (int i = 0; i < 9999; ++i) {
        records += empty;
    }
    archive.add(
        25, records + dictionary_record("E001", 1, 2, 'A') + dictionary_record("E002", 3, 2, 'A'));
    EXPECT_EQ(XREPOR("E001", 0, "AABB"), "AA");
    EXPECT_EQ(XREPOR("E002", 0, "AABB"), "");
}

// ---- Reading ----

TEST_F(NamedAccess, ALetterAloneIsReachedByItsDisplacement) {
    scrivi(Q401, "0001");
    EXPECT_EQ(rifila(XREPOR("Q", 401, "")), "0001");
    scrivi(Q407, "0007");
    EXPECT_EQ(rifila(XREPOR("Q400", 7, "")), "0007");
    EXPECT_EQ(rifila(XREPOR("Q408", -1, "")), "0007");
}

TEST_F(NamedAccess, SlotZeroIsNoField) {
    window->expect_box("nome inesistente Q 0");
    EXPECT_EQ(XREPOR("Q", 0, ""), "");
    EXPECT_EQ(window->boxes.back().text, "ERRORE REPOSITORY: nome inesistente Q 0");
    (void)XREPOR("T001", 0, "");  // T begins after the last field of Q
    window->expect_box("ERRORE REPOSITORY: nome inesistente T 0");
    EXPECT_EQ(XREPOR("T", 0, ""), "");
    window->expect_box("ERRORE REPOSITORY: nome inesistente T -3");
    EXPECT_EQ(XREPOR("T", -3, ""), "");
    EXPECT_EQ(repository.type, "");
}

TEST_F(NamedAccess, LettersWithoutDictionaryAreNotFound) {
    for (const char* name : {"C001", "D001", "p017", "0123", "", "?"}) {
        window->expect_box(std::string("ERRORE REPOSITORY: lettera non trovata ") + name);
        EXPECT_EQ(XREPOR(name, 1, ""), "");
        window->expect_box(std::string("ERRORE REPOSITORY: lettera non trovata ") + name);
        XREPOW(name, 1, "1");
    }
    EXPECT_EQ(window->boxes.front().text, "ERRORE REPOSITORY: lettera non trovata C001");
}

TEST_F(NamedAccess, ANameHasFourCharactersOrOne) {
    for (const char* name : {"P17", "P0017", "PA"}) {
        window->expect_box(std::string("ERRORE REPOSITORY: lunghezza nomebreve ") + name);
        EXPECT_EQ(XREPOR(name, 0, ""), "");
        window->expect_box(std::string("ERRORE REPOSITORY: lunghezza nomebreve ") + name);
        XREPOW(name, 0, "1");
    }
}

TEST_F(NamedAccess, ANameThatDoesNotExistShowsNameAndDisplacement) {
    ASSERT_EQ(find_field("P999"), nullptr);
    window->expect_box("ERRORE REPOSITORY: nome inesistente P999 0");
    EXPECT_EQ(XREPOR("P999", 0, ""), "");
    window->expect_box("ERRORE REPOSITORY: nome inesistente P998 1");
    XREPOW("P998", 1, "1");
}

TEST_F(NamedAccess, ASlotAboveTheLettersOwnLastIsNoFieldOfTheNextLetter) {
    (void)XREPOR("Q001", 0, "");
    (void)XREPOR("P001", 0, "");  // P begins after the last field of Q: QC50 would be PA06
    ASSERT_EQ(repository.letter_bases['P' - 'A'].base + 2006,
              repository.letter_bases['Q' - 'A'].base + 4050);
    scrivi(PA06, 7);
    const std::string before = area(Area::DIPX);
    window->expect_box("ERRORE REPOSITORY: nome inesistente QC50 0");
    XREPOW("QC50", 0, "1");
    EXPECT_EQ(area(Area::DIPX), before);
    window->expect_box("ERRORE REPOSITORY: nome inesistente QC50 0");
    EXPECT_EQ(XREPOR("QC50", 0, ""), "");
    window->expect_box("ERRORE REPOSITORY: nome inesistente Q 4050");
    EXPECT_EQ(XREPOR("Q", 4050, ""), "");
}

TEST_F(NamedAccess, AboveTheTableReadingIsEmptyAndWritingTellsTheDisplacement) {
    EXPECT_EQ(XREPOR("P", 5000, ""), "");
    window->expect_box("ERRORE REPOSITORY: spostamento 5000");
    XREPOW("P", 5000, "1");
    window->expect_box("ERRORE REPOSITORY: spostamento 4040");
    XREPOW("P017", 4040, "1");
}

TEST_F(NamedAccess, ABufferIsReadInsteadOfTheArea) {
    std::string copy = area(Area::DIPX);
    scrivi(P017, "31052024");
    EXPECT_EQ(XREPOR("P017", 0, copy), "00000000");
    EXPECT_EQ(XREPOR("P017", 0, "short"), "");
}

TEST_F(NamedAccess, ReadingHasNoSignHandling) {
    archive.add(25, dictionary_record("E001", 1, 8, '2') + dictionary_record("E002", 1, 8, 'N') +
                        dictionary_record("E003", 1, 8, '0') +
                        dictionary_record("E004", 1, 5, '5'));
    EXPECT_EQ(XREPOR("E001", 0, "000-1250"), "000-12.50");
    EXPECT_EQ(XREPOR("E002", 0, "000-1250"), "000-1250");
    EXPECT_EQ(XREPOR("E003", 0, "00001250"), "00001250");
    EXPECT_EQ(XREPOR("E004", 0, "12345678"), ".12345");
    EXPECT_EQ(XREPOR("E001", 0, "12"), "12.");
    clear_areas();
    EXPECT_EQ(XREPOR("E001", 0, ""), ".");
    EXPECT_EQ(XREPOR("E002", 0, ""), "");
}

TEST_F(NamedAccess, ReadingLeavesTheTypeOfTheField) {
    (void)XREPOR("P017", 0, "");
    EXPECT_EQ(repository.type, "D");
    (void)XREPOR("P210", 0, "");
    EXPECT_EQ(repository.type, std::string(1, P210.type));
    XREPOW("P017", 0, "1");
    EXPECT_EQ(repository.type, std::string(1, P210.type));
}

TEST_F(NamedAccess, LetterOHasItsAreasByNumber) {
    archive.add(383, dictionary_record("O001", 1, 2, 'A') + dictionary_record("O004", 3, 2, 'A') +
                         dictionary_record("O016", 5, 2, 'A'));
    archive.add(384, dictionary_record("O005", 1, 2, 'A') + dictionary_record("O015", 3, 2, 'A') +
                         dictionary_record("O017", 5, 2, 'A'));
    area(Area::GLAX) = "aabbcc";
    area(Area::GLCX) = "AABBCC";
    EXPECT_EQ(XREPOR("O001", 0, ""), "aa");
    EXPECT_EQ(XREPOR("O004", 0, ""), "bb");
    EXPECT_EQ(XREPOR("O016", 0, ""), "cc");
    EXPECT_EQ(XREPOR("O", 5, ""), "AA");
    EXPECT_EQ(XREPOR("O015", 0, ""), "BB");
    EXPECT_EQ(XREPOR("O017", 0, ""), "");
    EXPECT_EQ(XREPOR("O017", 0, "xxyyzz"), "zz");
    XREPOW("O", 16, "11");
    XREPOW("O005", 0, "22");
    XREPOW("O017", 0, "33");
    EXPECT_EQ(area(Area::GLAX), "aabb11");
    EXPECT_EQ(area(Area::GLCX), "22BBCC");
    clear_areas();
}

// ---- Writing ----

TEST_F(NamedAccess, DecimalsAreCutAndNotRounded) {
    EXPECT_EQ(written('2', 8, "12,345"), "00001234");
    EXPECT_EQ(written('2', 8, "12.999"), "00001299");
    EXPECT_EQ(written('2', 8, "12"), "00001200");
    EXPECT_EQ(written('2', 8, "12.5"), "00001250");
    EXPECT_EQ(written('5', 8, ".000019"), "00000001");
    EXPECT_EQ(written('2', 8, ""), "00000000");
}

TEST_F(NamedAccess, AMinusStaysAmongTheDigits) {
    EXPECT_EQ(written('2', 8, "-12.5"), "000-1250");
    EXPECT_EQ(LEGGICAMPO("STUX$,00004,08,2,0,E001", 0, buffer), "-000012.50");
    EXPECT_EQ(XREPOR("E001", 0, buffer), "000-12.50");
    EXPECT_EQ(written('N', 5, "-12"), "00-12");
}

TEST_F(NamedAccess, DigitsThatDoNotFitAreLostOnTheLeft) {
    EXPECT_EQ(written('2', 5, "123456.78"), "45678");
    EXPECT_EQ(written('N', 3, "12345"), "345");
    EXPECT_EQ(written('2', 15, "1"), "000000000000100");
}

TEST_F(NamedAccess, WholeNumbersDatesAndDigitStringsDropTheirDecimals) {
    for (const char type : {'N', 'D', '0'}) {
        EXPECT_EQ(written(type, 8, "12.99"), "00000012");
        EXPECT_EQ(written(type, 8, "12,99"), "00000012");
        EXPECT_EQ(written(type, 8, "1052024"), "01052024");
        EXPECT_EQ(written(type, 8, ""), "00000000");
    }
}

TEST_F(NamedAccess, TextIsCutOrFilledWithBlanks) {
    EXPECT_EQ(written('A', 5, "ROSSI MARIA"), "ROSSI");
    EXPECT_EQ(written('A', 8, "A,B,C"), "A.B,C   ");
    EXPECT_EQ(written('A', 8, "1E+02"), "1E+02   ");
}

TEST_F(NamedAccess, NoExponentReachesARecord) {
    EXPECT_EQ(written('2', 8, "1.5E+02"), "00015000");
    EXPECT_EQ(written('5', 8, "1.5E-04"), "00000015");
    EXPECT_EQ(written('N', 8, "1.5E+02"), "00000150");
}

TEST_F(NamedAccess, OtherTypesAreRightAlignedAsTheyStand) {
    EXPECT_EQ(written('B', 8, "12.5"), "000012.5");
}

TEST_F(NamedAccess, TheCallersValueStays) {
    one_field('2', 8);
    const std::string value = "12,5";
    XREPOW("E001", 0, value, buffer);
    EXPECT_EQ(value, "12,5");
    EXPECT_EQ(buffer, "###00001250###");
}

TEST_F(NamedAccess, ALetterAloneIsWrittenOnlyWithADisplacement) {
    window->expect_box("ERRORE REPOSITORY: lunghezza nomebreve Q");
    XREPOW("Q", 0, "1");
    XREPOW("Q", 401, "0001");
    EXPECT_EQ(rifilato(Q401), "0001");
}

TEST_F(NamedAccess, RefusedWritesChangeNothing) {
    const std::string before = area(Area::DIPX);
    window->expect_box("lunghezza nomebreve");
    XREPOW("P", 0, "1");
    window->expect_box("nome inesistente");
    XREPOW("P999", 0, "1");
    window->expect_box("spostamento");
    XREPOW("P017", 9000, "1");
    EXPECT_EQ(area(Area::DIPX), before);
}

// ---- Damaged and missing dictionaries ----

TEST_F(NamedAccess, ADamagedRecordDescribesNoFieldOrFails) {
    std::string no_length = dictionary_record("E001", 1, 2, 'A');
    test_support::put(no_length, 30, "XX");
    std::string no_code = dictionary_record("????", 1, 2, 'A');
    std::string endless = dictionary_record("E9E9", 1, 2, 'A');
    std::string no_offset = dictionary_record("E003", 1, 2, 'A');
    test_support::put(no_offset, 50, "?????");
    archive.add(25, no_length + no_code + endless + no_offset +
                        dictionary_record("E004", 2, 2, '9') +
                        dictionary_record("E005", 1, 2, 'A'));
    window->expect_box("ERRORE REPOSITORY: nome inesistente E001 0");
    EXPECT_EQ(XREPOR("E001", 0, "AABB"), "");
    EXPECT_EQ(repository.TABELLACAMPI.size(), 6U);
    EXPECT_EQ(failure_of([] { (void)XREPOR("E003", 0, "AABB"); }), platform::kInvalidCall);
    EXPECT_EQ(XREPOR("E004", 0, "AABB"), ".AB");  // more decimals than characters
    EXPECT_EQ(XREPOR("E005", 0, "AABB"), "AA");
}

TEST_F(NamedAccess, AFileCutShortGivesItsWholeRecords) {
    archive.add(25, dictionary_record("E001", 1, 2, 'A') +
                        dictionary_record("E002", 3, 2, 'A').substr(0, 40));
    EXPECT_EQ(XREPOR("E001", 0, "AABB"), "AA");
    EXPECT_EQ(XREPOR("E002", 0, "AABB"), "");
}

TEST_F(NamedAccess, AMissingDictionaryFileIsAFailure) {
    archive.add(25, "");
    std::filesystem::remove(archive.directory().file(test_support::DictionaryArchive::name_of(25)));
    EXPECT_EQ(failure_of([] { (void)XREPOR("E001", 0, ""); }), platform::kFileNotFound);
}

TEST_F(NamedAccess, ARecordShorterThanTheFieldIsAFailureInWriting) {
    buffer = "short";
    EXPECT_EQ(failure_of([this] { XREPOW("P017", 0, "1", buffer); }),
              platform::kSubscriptOutOfRange);
    EXPECT_EQ(buffer, "short");
}

// ---- The slip's table ----

TEST_F(NamedAccess, TheHundredLinesOfTheSlipGoOutAndComeBack) {
    std::mt19937 random(3);
    std::string lines(3500, ' ');
    for (char& c : lines) {
        c = static_cast<char>('0' + random() % 10);
    }
    std::string expected = area(Area::DIPX);
    scrivi_blocco_righe(lines);
    expected.replace(5000, 3500, lines);  // Q401 to Q500 stand from 5001 on, one after the other
    EXPECT_EQ(area(Area::DIPX), expected);
    EXPECT_EQ(leggi_blocco_righe(), lines);
    scrivi_blocco_righe("0001");
    EXPECT_EQ(leggi_blocco_righe(), "0001" + std::string(3496, ' '));
}

TEST_F(NamedAccess, TheFirstCommaOfEachLineOfTheSlipBecomesAPoint) {
    std::string lines(3500, '0');
    lines[3] = ',';
    lines[5] = ',';
    lines[35] = ',';  // in the second line
    scrivi_blocco_righe(lines);
    lines[3] = '.';
    lines[35] = '.';
    EXPECT_EQ(leggi_blocco_righe(), lines);
}

TEST_F(NamedAccess, LinesThatTheDictionaryHasElsewhereAreReachedOneByOne) {
    std::string content = dictionary_of('Q');
    const auto place_of = [&](const std::string& code) { return content.find(code) - 68; };
    content.replace(place_of("Q401"), 80, dictionary_record("Q401", 5036, 35, 'A'));
    content.replace(place_of("Q402"), 80, dictionary_record("Q402", 5001, 35, 'A'));
    archive.add(33, content);
    repository = {};
    const std::string first(35, '1');
    const std::string second(35, '2');
    scrivi_blocco_righe(first + second + std::string(3430, '0'));
    EXPECT_EQ(area(Area::DIPX).substr(5000, 70), second + first);
    EXPECT_EQ(leggi_blocco_righe().substr(0, 70), first + second);
}

}  // namespace
