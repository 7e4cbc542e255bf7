// What a person reads when a document is wrong: Italian, with the file and the line.

#include "installation/document.h"

#include <gtest/gtest.h>

#include <fstream>

#include "tests/support/temp_directory.h"

namespace {

using MXREPOSITORY::Area;
using nzutil::Document;

/// Message of the error that reading a map of employee fields ends in; "fields" stands in line 1.
std::string error_of(const std::string& text) {
    try {
        const Document document("caso.yaml", text);
        static_cast<void>(document.fields(document.root(), Area::DIPX));
    } catch (const nzutil::ToolError& error) {
        return error.what();
    }
    return "nessun errore";
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST(Document, CommaInANumberIsAnsweredWithThePoint) {
    EXPECT_EQ(
        error_of("P002: ROSSI\nP058: 1733,31\n"),
        "caso.yaml:2: per i decimali usare il punto, senza separatore delle migliaia: 1733.31 "
        "e non 1733,31");
    EXPECT_TRUE(contains(error_of("P058: 1.908,75\n"), "1908.75 e non 1.908,75"));
    EXPECT_TRUE(contains(error_of("P058: \"-1.908,75\"\n"), "-1908.75"));
    EXPECT_TRUE(contains(error_of("P058: 1,908.75\n"), "1908.75 e non 1,908.75"));
}

TEST(Document, CommaBetweenBracesMakesAKeyOfTheDecimals) {
    EXPECT_TRUE(contains(error_of("{P058: 1733,31}\n"), "1733.31 e non 1733,31"));
    EXPECT_TRUE(contains(error_of("{P058: 1.908,75, P002: ROSSI}\n"), "1908.75 e non 1.908,75"));
    const Document line("caso.yaml", "a: {voce: 2, quantita: 26,5}\n");
    EXPECT_THROW(line.expect_keys(line.root()["a"], {"voce", "quantita"}), nzutil::DocumentError);
}

TEST(Document, CommaInAnOccurrenceIsNoSecondOccurrence) {
    const Document once("caso.yaml", "{J001: {5: 10,7}}\n");
    EXPECT_THROW(static_cast<void>(once.fields(once.root(), Area::DICX)), nzutil::DocumentError);
    const Document twice("caso.yaml", "{J001: {5: 10,5}}\n");
    try {
        static_cast<void>(twice.fields(twice.root(), Area::DICX));
        FAIL();
    } catch (const nzutil::DocumentError& error) {
        EXPECT_TRUE(contains(error.what(), "10.5 e non 10,5"));
    }
}

TEST(Document, TextWithACommaStaysAsItIs) {
    const Document document("caso.yaml", "P002: \"ROSSI, MARIA\"\n");
    EXPECT_EQ(document.fields(document.root(), Area::DIPX).at(0).value, "ROSSI, MARIA");
}

TEST(Document, SyntaxErrorsAreItalianAndNameTheLine) {
    const auto syntax = [](int line, const std::string& what) {
        return "caso.yaml:" + std::to_string(line) + ": atteso un documento YAML: " + what;
    };
    EXPECT_TRUE(error_of("a: 1\nb: {c: 1\n").starts_with(syntax(3, "manca la graffa")));
    EXPECT_TRUE(error_of("a: [1, 2\n").starts_with(syntax(2, "manca la parentesi quadra")));
    EXPECT_TRUE(error_of("a: 1]\nb: }\n").starts_with(syntax(2, "")));
    EXPECT_TRUE(error_of("a:\n  b: 1\n c: 2\n").starts_with(syntax(3, "la mappa non continua")));
    EXPECT_TRUE(error_of("a: b: c\n").starts_with(syntax(1, "rientro errato")));
    EXPECT_TRUE(error_of("a:\n  - 1\n b: 2\n").starts_with(syntax(3, "")));
    EXPECT_TRUE(error_of("a: {b: \"testo}\n").starts_with(syntax(2, "manca la graffa")));
    EXPECT_TRUE(error_of("a: |\n\tb\n").starts_with(syntax(2, "i rientri si fanno con spazi")));
    EXPECT_TRUE(error_of("%YAML 1.2 3\na: 1\n").starts_with(syntax(1, "sintassi non valida")));
    EXPECT_TRUE(error_of("a: \"C:\\Dati\"\n").starts_with(syntax(1, "sequenza con barra")));
    EXPECT_TRUE(error_of("a: *b\n").starts_with(syntax(1, "* e & non si usano")));
    EXPECT_TRUE(error_of("a: @b\n").starts_with(syntax(1, "carattere non ammesso")));
}

TEST(Document, FileThatCannotBeReadIsNoEmptyDocument) {
    const test_support::TempDirectory directory;
    const auto error = [](const std::string& file) {
        try {
            const Document document(file);
        } catch (const nzutil::ToolError& failure) {
            return std::string(failure.what());
        }
        return std::string("nessun errore");
    };
    const std::string missing = directory.file("manca.yaml");
    EXPECT_EQ(error(missing), "Impossibile leggere " + missing + ".");
    EXPECT_EQ(error(directory.path()), "Impossibile leggere " + directory.path() + ".");
    const std::string empty = directory.file("vuoto.yaml");
    std::ofstream(empty).flush();
    EXPECT_EQ(error(empty), empty + ":1: attesa una mappa chiave: valore");
}

TEST(Document, ExpectedNumberMayHaveATolerance) {
    const Document document("caso.yaml", "{P058: {valore: 10, tolleranza: 0.5}, P059: 3}\n");
    const nzutil::FieldValues values = document.expected_fields(document.root(), Area::DIPX);
    EXPECT_EQ(values.at(0).value, "10");
    EXPECT_EQ(values.at(0).tolerance, "0.5");
    EXPECT_EQ(values.at(1).tolerance, "");
    // Only what is compared has one.
    EXPECT_THROW(static_cast<void>(document.fields(document.root(), Area::DIPX)),
                 nzutil::DocumentError);
    for (const char* wrong :
         {"P002: {valore: ROSSI, tolleranza: 1}", "P058: {valore: 10, tolleranza: -1}",
          "P058: {valore: 10}", "P058: {valore: 10, tolleranza: uno}"}) {
        const Document bad("caso.yaml", std::string(wrong) + "\n");
        EXPECT_THROW(static_cast<void>(bad.expected_fields(bad.root(), Area::DIPX)),
                     nzutil::DocumentError)
            << wrong;
    }
}

}  // namespace
