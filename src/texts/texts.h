#pragma once
// The catalogue of the texts shown to the operator: boxes, questions, list lines, labels, messages
// of the support tool. Nothing is shown that does not stand here; tests know the texts from here.
// A text is written in UTF-8 in the source and leaves as bytes of code page 1252.

#include <span>
#include <string>
#include <string_view>

#include "platform/code_page.h"
#include "platform/terminal_texts.h"

namespace texts {

enum class Kind {
    box,       ///< a plain box; the run goes on
    question,  ///< a Yes/No box
    failure,   ///< shown by the failure handler, or before the program ends with an error
    line,      ///< a line of LIST1
    label,     ///< a label or caption of the window
    tool,      ///< a message of nzutil
};

/// One text. Where a value follows or stands inside, the text holds the fixed part in front of it.
struct Text {
    Kind kind;
    std::string_view utf8;

    /// The text in code page 1252.
    [[nodiscard]] std::string bytes() const { return platform::from_utf8(utf8); }
};

/// Title of a plain box.
inline constexpr Text kPlainBoxTitle{Kind::label, "VELMOR"};
/// Title of the boxes of the suite.
inline constexpr Text kSuiteTitle{Kind::label, "Solmarel"};

// Records
inline constexpr Text kRepositoryUnknownTag{Kind::box, "ERRORE REPOSITORY - STRCOSTANTE"};
inline constexpr Text kRepositoryUnknownLetter{Kind::box,
                                               "ERRORE REPOSITORY - LETTERA SCONOSCIUTA"};
inline constexpr Text kRepositoryLetterNotFound{Kind::box,
                                                "ERRORE REPOSITORY: lettera non trovata "};
inline constexpr Text kRepositoryNameLength{Kind::box, "ERRORE REPOSITORY: lunghezza nomebreve "};
inline constexpr Text kRepositoryNoSuchName{Kind::box, "ERRORE REPOSITORY: nome inesistente "};
inline constexpr Text kRepositoryDisplacement{Kind::box, "ERRORE REPOSITORY: spostamento "};

// Logical files. The logical number follows the first one; the others hold the letters CSTR(...).
inline constexpr Text kMissingCompanyOfFile{Kind::failure, "ERRORE OPEN FILE - MANCA DITTAOPEN "};
inline constexpr Text kMissingYearOfFile{Kind::failure,
                                         "ERRORE OPEN - MANCA ANNO - CSTR(NUMEROBASE)"};
inline constexpr Text kMissingRegionOfFile{Kind::failure,
                                           "ERRORE OPEN - MANCA REGIONE - CSTR(NUMEROBASE)"};
inline constexpr Text kMissingProvinceOfFile{Kind::failure,
                                             "ERRORE OPEN - MANCA PROVINCIA - CSTR(NUMEROBASE)"};

// Indexed files. The logical number, and the code of the operation, follow.
inline constexpr Text kIndexFileEmpty{Kind::box, "ERRORE ISAM - FILE VUOTO "};
inline constexpr Text kIndexNoKey{Kind::box, "ERRORE ISAM - LUNK=0"};
inline constexpr Text kIndexKeyLength{Kind::box, "ERRORE ISAM - LUNK NO OK"};
inline constexpr Text kIndexBlankKey{Kind::box, "ERRORE ISAM - K=BLANK"};
inline constexpr Text kIndexOperation{Kind::box, "ERRORE CODICE ISAM "};
inline constexpr Text kIndexNoRecord{Kind::box, "ERR.ISAM - N.REC.=0"};

// The terminal
inline constexpr Text kTerminalAnswer{Kind::label, platform::terminal_texts::kAnswer};
inline constexpr Text kTerminalAsk{Kind::label, platform::terminal_texts::kAsk};
inline constexpr Text kTerminalPressReturn{Kind::label, platform::terminal_texts::kPressReturn};
inline constexpr Text kTerminalProgress{Kind::label, platform::terminal_texts::kProgress};
inline constexpr Text kTerminalNoGraphicWindow{Kind::line,
                                               platform::terminal_texts::kNoGraphicWindow};

// Formulas of the pay items
inline constexpr Text kFormulaUnknownTarget{Kind::box, "CAMPO NON DECIFRABILE  "};

// Program, failure, printer
inline constexpr Text kProgram{Kind::label, "VELMOR"};
inline constexpr Text kFailure{Kind::failure, "Errore "};
inline constexpr Text kRestoreTask{
    Kind::failure, "CHIUDERE TUTTE LE APPLICAZIONI DELLA TASK\r\nLANCIARE RIPRISTINO TASK"};
inline constexpr Text kPrinterRetry{Kind::question, "ERR.STAMPANTE - SI VUOLE RITENTARE ?"};
inline constexpr Text kPrinterClose{
    Kind::question, "CHIUDERE IL PROGRAMMA ? (se si risp.NO il progr.perde la riga e prosegue)"};

// Status of an employee on the list
inline constexpr Text kAlready{Kind::line, ":già elaborato"};
inline constexpr Text kDoneWithArchive{Kind::line,
                                       ":elaborato e aggiornato archivio retrib. mese INPS"};
inline constexpr Text kDone{Kind::line, ":elaborato"};
inline constexpr Text kAgencyAlready{
    Kind::line, ":LAV.INTERINALE  già elaborato solo per 'Libro Unico del Lavoro'"};
inline constexpr Text kAgencyDone{Kind::line,
                                  ":LAV.INTERINALE  elaborato solo per 'Libro Unico del Lavoro'"};
inline constexpr Text kAgencyDoneNoArchive{
    Kind::line, "LAV.INTERINALE  elaborato solo per 'Libro Unico del Lavoro'"};
inline constexpr Text kPartnerAlready{
    Kind::line, ":AS.IN PART.A.M. già elaborato solo per 'Libro Unico del Lavoro'"};
inline constexpr Text kPartnerDone{Kind::line,
                                   ":AS.IN PART.A.M. elaborato solo per 'Libro Unico del Lavoro'"};
inline constexpr Text kOtherKindAlready{
    Kind::line, ":ALTRE TIPOLOGIE già elaborato solo per 'Libro Unico del Lavoro'"};
inline constexpr Text kOtherKindDone{
    Kind::line, ":ALTRE TIPOLOGIE elaborato solo per 'Libro Unico del Lavoro'"};

// Start-up
inline constexpr Text kCaption{Kind::label, "Solmarel * VELMOR - Calcolo cedolino - "};
inline constexpr Text kLabel4WithArchive{
    Kind::label,
    "A fine elaborazione verra' evidenziata la lista dei dipendenti con il risultato del calcolo "
    "cedolino e aggiornamento archivio retribuzione mese per INPS"};
inline constexpr Text kLabel4{Kind::label,
                              "A fine elaborazione verra' evidenziata la lista dei dipendenti con "
                              "il risultato del calcolo cedolino"};
inline constexpr Text kPeriodCaption{Kind::label, " PERIODO IN         ELABORAZIONE"};
inline constexpr Text kNotFound{Kind::label, "Non trovato"};
inline constexpr Text kAdditionalRun{Kind::label, "MM aggiuntiva"};
inline constexpr Text kNormalRun{Kind::label, "MM normale"};
inline constexpr Text kPleaseWait{Kind::label, "Attendere prego .....elaborazione in corso"};
inline constexpr Text kConfigurationError{
    Kind::failure,
    "ERRORE DI CONFIGURAZIONE! CONTROLLARE I PERCORSI DI Solmarel CON IL PROGRAMMA VPERCORSO"};
/// Title of the municipal question; the year follows.
inline constexpr Text kAdvanceTitle{Kind::label, "Controllo calcolo acconto comunale "};
/// The municipal question in two pieces; the year stands between them.
inline constexpr Text kAdvanceQuestion{
    Kind::question, "Attenzione il programma 'CALCOLO ACCONTO ADDIZIONALE COMUNALE "};
inline constexpr Text kAdvanceQuestionRest{
    Kind::question,
    "' non e' stato eseguito.\r\rRispondendo si il calcolo del cedolino non gestira' la trattenuta "
    "'ACCONTO ADDIZIONALE COMUNALE'.\r\rRispondendo No il calcolo dell'ACCONTO ADDIZIONALE "
    "COMUNALE potra' essere effettuato nel seguente modo:\r\rDA MENU 'ELABORAZIONI ANNUALI' "
    "\rESEGUIRE LA SCELTA 'Calcolo e stampa addizionale acconto comunale'\rIL PROGRAMMA PRENDE IN "
    "ESAME TUTTI I DIPENDENTI IN FORZA IN ANNO\rCORRENTE E CALCOLA L'ACCONTO COMUNALE"};

// First walk
inline constexpr Text kMissingCompany{Kind::box, "MANCA DITTA "};
inline constexpr Text kMissingEmployee{Kind::box, "MANCA DIPENDENTE "};

// Second walk: lines of LIST1
inline constexpr Text kMissingFixedData{Kind::line, "MANCA DATI FISSI !"};
inline constexpr Text kMissingCompanyLine{Kind::line, "MANCA DITTA "};
/// The number of the company stands between the two pieces.
inline constexpr Text kMissingSector{Kind::line, "SETTORE INESISTENTE! PER LA DITTA "};
inline constexpr Text kMissingSectorRest{Kind::line, " Cedolini non elaborati"};

// End of the run
inline constexpr Text kReorganising{Kind::label,
                                    "Attendere prego.... riorganizzazione archivi mensili"};
inline constexpr Text kFinishedWithArchive{
    Kind::box,
    "Calcolo cedolino e aggiornamento archivio dati retribuzione mese per INPS terminato"};
inline constexpr Text kFinished{Kind::box, "Calcolo cedolino terminato"};
inline constexpr Text kPeriodOfRun{Kind::box, "\r\rPeriodo di elaborazione "};

// Closing
inline constexpr Text kOverCeiling{Kind::line, " HA SUPERATO IL MASSIMALE DI E."};

}  // namespace texts
