#pragma once
// The catalogue of the texts shown to the operator: boxes, questions, list lines, labels, messages
// of the support tool. Nothing is shown that does not stand here; tests know the texts from here.
// A text is written in UTF-8 in the source and leaves as bytes of code page 1252.

#include <array>
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

/// Told after two seconds of waiting.
inline constexpr Text kWaitingForSemaphore{
    Kind::line,
    "In attesa del semaforo NZSEMA.DAT: lo tiene un altro programma. Il calcolo prosegue appena è "
    "libero."};

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
inline constexpr Text kTerminalListNotWritten{Kind::line,
                                              platform::terminal_texts::kListNotWritten};
inline constexpr Text kTerminalNoGraphicWindow{Kind::line,
                                               platform::terminal_texts::kNoGraphicWindow};

// Formulas of the pay items
inline constexpr Text kFormulaUnknownTarget{Kind::box, "CAMPO NON DECIFRABILE  "};

// Program, failure, printer
inline constexpr Text kProgram{Kind::label, "VELMOR"};
/// How the program calls itself to who meets its lock.
inline constexpr Text kProgramFile{Kind::label, "velmor"};
inline constexpr Text kFailure{Kind::failure, "Errore "};
/// The file or record concerned follows.
inline constexpr Text kFailureCulprit{Kind::failure, "Archivio o record: "};
// What to do about a failure: it ends the failure's message.
inline constexpr Text kAdvice{Kind::failure, "Che cosa fare: "};
/// Code and name follow.
inline constexpr Text kAdviceEmployee{Kind::failure, "Dipendente in elaborazione: "};
/// Directory, file and record follow.
inline constexpr Text kAdviceShowEmployee{Kind::failure,
                                          "Il suo record si vede con: nzutil scheda "};
inline constexpr Text kAdviceFigures{Kind::failure,
                                     "correggere il dato indicato (nzutil scheda lo mostra, nzutil "
                                     "scrivi lo cambia), poi rilanciare."};
inline constexpr Text kAdviceMemory{Kind::failure, "chiudere altri programmi, poi rilanciare."};
inline constexpr Text kAdviceFileTable{
    Kind::failure,
    "controllare nome e lunghezza di record dell'archivio in NZBASE.DAT, poi rilanciare."};
inline constexpr Text kAdviceMissingFile{
    Kind::failure, "rimettere il file che manca da una copia degli archivi, poi rilanciare."};
inline constexpr Text kAdviceDevice{Kind::failure,
                                    "controllare il disco o la rete, poi rilanciare."};
inline constexpr Text kAdviceDiskFull{
    Kind::failure, "liberare spazio sul disco, poi rilanciare con la stessa selezione."};
inline constexpr Text kAdviceCutShort{
    Kind::failure,
    "il file è vuoto o tronco: rimetterlo da una copia degli archivi, poi rilanciare."};
inline constexpr Text kAdviceMissingRecord{
    Kind::failure,
    "il record non c'è: ripetere la selezione dal menu, o rimettere l'archivio da una "
    "copia, poi rilanciare."};
// Archives with tables (.MDB). The archive and what the failure is about stand on a line of their
// own.
inline constexpr Text kAdviceOlderArchive{
    Kind::failure,
    "l'archivio è nel vecchio formato: convertirlo con nzutil importa e il nome del file, poi "
    "rilanciare."};
inline constexpr Text kAdviceNotAnArchive{
    Kind::failure,
    "il file non è un archivio o è danneggiato: rimetterlo da una copia, poi rilanciare."};
inline constexpr Text kAdviceArchiveOnServer{
    Kind::failure,
    "l'archivio sta su un server, che questa versione non raggiunge: usare un archivio locale "
    "(nzutil modelli ne crea di vuoti), poi rilanciare."};
inline constexpr Text kAdviceArchiveLocked{
    Kind::failure,
    "un altro programma sta scrivendo nell'archivio: attendere che finisca, poi rilanciare."};
inline constexpr Text kAdviceArchiveTable{
    Kind::failure,
    "all'archivio manca la tabella o la colonna indicata: ricrearlo dal modello (nzutil modelli), "
    "poi rilanciare."};
inline constexpr Text kAdviceKeyTaken{
    Kind::failure,
    "nell'archivio c'è già una riga con la stessa chiave: togliere il doppione, poi "
    "rilanciare."};
inline constexpr Text kAdviceArchiveReport{
    Kind::failure, "segnalare il messaggio all'assistenza, con una copia dell'archivio."};
inline constexpr Text kAdviceRights{
    Kind::failure,
    "controllare i diritti su file e directory, e che nessun altro programma li tenga "
    "aperti, poi rilanciare."};

// Tables that no slip can do without; what to do follows "Che cosa fare: ".
inline constexpr Text kCheckEmpty{
    Kind::failure, "l'archivio è vuoto: rimetterlo da una copia degli archivi, poi rilanciare."};
inline constexpr Text kCheckPartialRecord{
    Kind::failure,
    "la lunghezza del file non è un multiplo del record: rimetterlo da una copia degli "
    "archivi, poi rilanciare."};
inline constexpr Text kCheckShortDictionaryRecord{
    Kind::failure,
    "i record di un dizionario hanno almeno 72 caratteri: correggere NZBASE.DAT, poi rilanciare."};
/// The field stands between the two pieces, the item after them.
inline constexpr Text kCheckDictionaryLacks{Kind::failure, "nel dizionario manca il campo "};
inline constexpr Text kCheckDictionaryLacksRest{
    Kind::failure,
    ", che una formula usa: rimetterlo da una copia degli archivi, poi rilanciare. "
    "Voce "};
/// The field stands between the two pieces.
inline constexpr Text kCheckNoNumber{Kind::failure, "nel campo "};
inline constexpr Text kCheckNoNumberRest{
    Kind::failure, " non c'è un numero: correggerlo con nzutil scrivi, poi rilanciare."};
inline constexpr Text kCheckBracketNoNumber{
    Kind::failure,
    "limite (posizioni 1-9) o aliquota (10-12) dello scaglione non sono numeri: "
    "correggere la tabella degli scaglioni, poi rilanciare."};
inline constexpr Text kCheckNoClosingBracket{
    Kind::failure,
    "nessuno scaglione chiude la tabella con il limite 999999.99: correggere la "
    "tabella degli scaglioni, poi rilanciare."};
inline constexpr Text kCheckPeriodShort{
    Kind::failure,
    "il periodo è tronco: sceglierlo di nuovo dal menu, o con nzutil periodo, poi "
    "rilanciare."};
inline constexpr Text kCheckPeriodDate{
    Kind::failure,
    "la data del periodo non è nel calendario: sceglierlo di nuovo dal menu, o con "
    "nzutil periodo, poi rilanciare."};
inline constexpr Text kCheckSelectionShort{
    Kind::failure, "la selezione è tronca: ripeterla dal menu, poi rilanciare."};
/// The place of the entry in the selection follows, then what is wrong with it, then the rest.
inline constexpr Text kCheckSelectionEntry{Kind::failure, "nella selezione l'elemento "};
inline constexpr Text kCheckSelectionNoNumber{
    Kind::failure, " non ha i numeri di ditta (posizioni 1-3) e dipendente (7-10)"};
/// The records of the employee file stand between the two pieces.
inline constexpr Text kCheckSelectionBeyond{Kind::failure,
                                            " è un dipendente che non c'è (l'archivio 2 ha "};
inline constexpr Text kCheckSelectionBeyondRest{Kind::failure, " record)"};
inline constexpr Text kCheckSelectionRest{Kind::failure, ": ripeterla dal menu, poi rilanciare."};

inline constexpr Text kInterrupted{Kind::failure, "Elaborazione interrotta su richiesta."};
/// The number of employees follows.
inline constexpr Text kNotCalculated{Kind::failure, "Dipendenti non elaborati: "};
inline constexpr Text kRestoreTask{
    Kind::failure, "CHIUDERE TUTTE LE APPLICAZIONI DELLA TASK\r\nLANCIARE RIPRISTINO TASK"};
inline constexpr Text kPrinterRetry{Kind::question, "ERR.STAMPANTE - SI VUOLE RITENTARE ?"};
inline constexpr Text kPrinterClose{
    Kind::question, "CHIUDERE IL PROGRAMMA ? (se si risp.NO il progr.perde la riga e prosegue)"};

// The archive in use by another program: program, process, time and machine follow, each after its
// piece.
inline constexpr Text kArchiveInUse{Kind::failure, "Gli archivi sono già in uso: "};
inline constexpr Text kArchiveInUseProcess{Kind::failure, ", processo "};
inline constexpr Text kArchiveInUseSince{Kind::failure, ", dal "};
inline constexpr Text kArchiveInUseMachine{Kind::failure, ", computer "};
inline constexpr Text kOtherProgram{Kind::failure, "altro programma"};

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
inline constexpr Text kCompanyCaption{Kind::label, " Azienda"};
inline constexpr Text kCompanyNameCaption{Kind::label, " codice e ragione sociale"};
inline constexpr Text kEmployeeCaption{Kind::label, " Dipendente"};
inline constexpr Text kEmployeeNameCaption{Kind::label, " Nominativo"};
inline constexpr Text kListCaption{Kind::label, "LISTA FINE CALCOLO"};
inline constexpr Text kExit{Kind::label, "Uscita"};
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

/// What the next start has finished for a run that was killed: the employee's line, or file and
/// record, and this status.
inline constexpr Text kFinishedStep{
    Kind::line, ":completata la scrittura lasciata a metà dall'elaborazione precedente"};
inline constexpr Text kFinishedFile{Kind::line, "Archivio "};
inline constexpr Text kFinishedRecord{Kind::line, " record "};

// The walks, as the progress names them
inline constexpr Text kFirstWalk{Kind::label, "Preparazione dei dipendenti"};
inline constexpr Text kSecondWalk{Kind::label, "Calcolo dei cedolini"};
/// The part of the run that the first walk takes, in percent.
inline constexpr int kFirstWalkPercent = 20;

// First walk
inline constexpr Text kMissingCompany{Kind::box, "MANCA DITTA "};

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

// Severance: price indexes that the revaluation lacks. The index of the month to which a fund is
/// revalued is told as December's, whichever month it is.
inline constexpr Text kIndexYearEndMissing{Kind::line,
                                           "Errore negli indici ISTAT: valore 31.12  a zero"};
inline constexpr Text kIndexDecemberMissing{
    Kind::line, "Errore negli indici ISTAT: valore mese dicembre a zero"};
inline constexpr Text kIndexAdvance1Wrong{
    Kind::line, "Errore negli indici ISTAT: valore mese Acconto 1 errato"};
inline constexpr Text kIndexAdvance2Wrong{
    Kind::line, "Errore negli indici ISTAT: valore mese Acconto 2 errato"};
inline constexpr Text kIndexAdvance3Wrong{
    Kind::line, "Errore negli indici ISTAT: valore mese Acconto 3 errato"};
inline constexpr Text kIndexAdvance4Wrong{
    Kind::line, "Errore negli indici ISTAT: valore mese Acconto 4 errato"};

// Pension funds: between the two the code of the fund.
inline constexpr Text kMissingFund{Kind::line, "Errore: Fondo pensione cod."};
inline constexpr Text kMissingFundRest{Kind::line, " non trovato in archivio"};

// Deductions
/// Status of an employee with a dependant that has a share and no tax code; the slip is dropped.
inline constexpr Text kMissingDependantTaxCode{Kind::line, ":INSERIRE CODFISC"};

// Contracts
inline constexpr Text kErrorMessageTitle{Kind::label, "MESSAGGIO DI ERRORE"};
/// After the employee whose contract cannot be copied.
inline constexpr Text kCheckContract{
    Kind::failure, "Controllare contratto (P331), livello (P332) e percentuale (P333)."};
inline constexpr Text kContractNotFound{Kind::box, " CODICE CONTRATTO NON TROVATO "};

// Closing
inline constexpr Text kOverCeiling{Kind::line, " HA SUPERATO IL MASSIMALE DI E."};

// Bonuses taken back: the note of the slip, which the control lists show too
inline constexpr Text kBonusBackAtOnce{Kind::line, "REST.BONUS DL3/2020                "};
inline constexpr Text kBonusBackOnLeaving{Kind::line, "CESS. CON REST.BONUS DL3/2020  "};
inline constexpr Text kBonusBackByInstalments{Kind::line, "REST.BONUS RATEALE DL3/2020        "};
inline constexpr Text kFurtherDeductionBack{Kind::line, "RESTITUZIONE TUTTO ULTERIORE DETR. "};
inline constexpr Text kFurtherDeductionBackByInstalments{Kind::line,
                                                         "RESTITUZIONE RATE ULTERIORE DETR.  "};
inline constexpr Text kIntegrativeBackAtOnce{Kind::line, "REST.SOMMA INTEGRATIVA             "};
inline constexpr Text kIntegrativeBackOnLeaving{Kind::line, "CESS. CON REST.SOMMA INTEGRAT. "};
inline constexpr Text kIntegrativeBackByInstalments{Kind::line,
                                                    "REST.SOMMA INTEGRATIVA RATEALE     "};
/// Between the total and the number of instalments, and between that and the amount of each.
inline constexpr Text kRestitutionInstalments{Kind::line, " RATE "};
inline constexpr Text kRestitutionEach{Kind::line, " DA "};

// Control lists
/// The path of the printed list follows.
inline constexpr Text kListPrinted{Kind::line, "Lista stampata in "};
inline constexpr Text kBonusListQuestion{
    Kind::question,
    "Attenzione viene generata una lista dipendenti che in fase di conguaglio o cessazione devono "
    "restituire BONUS DL3/2020"};
inline constexpr Text kBonusListHeader{
    Kind::line, "LISTA DIPENDENTE CON RESTITUZIONE BONUS DL3/2020 E ULTERIORE DETRAZIONE DL3/2020"};
inline constexpr Text kIntegrativeListQuestion{
    Kind::question,
    "Attenzione viene generata una lista dipendenti che in fase di conguaglio o cessazione devono "
    "restituire SOMMA INTEGRATIVA"};
inline constexpr Text kIntegrativeListHeader{Kind::line,
                                             "LISTA DIPENDENTE CON RESTITUZIONE SOMMA INTEGRATIVA"};
inline constexpr Text kCeilingListQuestion{
    Kind::question,
    "Attenzione viene generata una stampa che identifica i co.co.co. che hanno superato il "
    "massimale specificato nel campo F421 dei dati fissi"};
inline constexpr Text kCeilingListHeader{
    Kind::line,
    "LISTA CO.CO.CO. che hanno superato il massimale specificato nel campo F421 dei dati fissi"};
inline constexpr Text kCeilingListEnd{Kind::line, "FINE LISTA CONTROLLO CO.CO.CO."};
inline constexpr Text kMunicipalListQuestion{
    Kind::question,
    "Vuoi stampare una lista di controllo dei campi utilizzati per calcolo add.comunale anno "
    "corrente da trattenere in 11 rate"};
inline constexpr Text kMunicipalListHeader{Kind::line,
                                           "INIZIO LISTA CONTROLLO CALCOLI ADDIZIONALE COMUNALE"};
inline constexpr Text kMunicipalListEnd{Kind::line,
                                        "FINE LISTA CONTROLLO CALCOLI ADDIZIONALE COMUNALE"};
inline constexpr Text kMunicipalListNote{Kind::line,
                                         "** = LA % IN TABELLA E' INDICATA CON '0*', IN QUESTO "
                                         "CASO VIENE UTILIZZATA LA % DEL CAMPO Q319"};
// Parts of a line of the municipal list: type, code, mark, and how the rate was chosen.
inline constexpr Text kMunicipalType{Kind::line, " Q901 T.CALC. "};
inline constexpr Text kMunicipalCode{Kind::line, " COD.COM 01/01/AC "};
inline constexpr Text kMunicipalMark{Kind::line, " **"};
inline constexpr Text kMunicipalTableRate{Kind::line, " % ADD.COM IN TAB.Q902 "};
inline constexpr Text kMunicipalByBands{Kind::line, " CALCOLO A FASCIE"};
inline constexpr Text kMunicipalByBrackets{Kind::line, " % ADD.COM CALCOLO A SCAGLIONI"};
inline constexpr Text kMunicipalEmployeeRate{Kind::line, " % ADD.COM CAMPO  Q319 "};
inline constexpr Text kTreasuryListQuestion{
    Kind::question,
    "Verra' stampata una lista dei dipendenti in estrazione per verifica capienza fondo "
    "tesoreria\r\r"
    "Rispondere Si se non si e' compilato il campo Q896PROGRESSIVOCINPS\r"
    "Rispondere NO se  si e' compilato il campo Q896PROGRESSIVOCINPS"};
inline constexpr Text kTreasuryContributions{Kind::line, "CTR DM + CF01"};
inline constexpr Text kTreasuryBenefit{Kind::line, "R.PREST.F.TES."};
inline constexpr Text kTreasuryCF01{Kind::line, "CF01"};
inline constexpr Text kTreasuryQ896{Kind::line, "CAMPO Q896"};
inline constexpr Text kTreasuryTotal{Kind::line, "Totale ditta "};
inline constexpr std::array<Text, 10> kTreasuryNoteToFill{{
    {Kind::line, "N.B. IL VALORE INDICATO NELLA COLONNA 'CAMPO Q896 E' DATO DALLA COLONNA "},
    {Kind::line,
     "     'R.PREST.F.TES.' TUTTO A CARICO INPS ('R.PREST.F.TES.' MAGGIORE 'CTR DM + CF01')"},
    {Kind::line, "     PRIMA DI STORNARE I DIPENDENTI CALCOLARE IL RELATIVO DM10 PER VERIFICARE"},
    {Kind::line, "     EFFETTIVAMENTE L'INCAPIENZA. DOPO AVER ESEGUITO IL DM10 E EFFETTUATE LE "},
    {Kind::line, "     VARIE VERIFICHE STORNARE I DIPENDENTI INSERIRE IL VALORE NEL CAMPO  "},
    {Kind::line, "     Q896PROGRESSIVOCINPS DELLA COLONNA 'CAMPO Q896' E RIELABORE IL CEDOLINO,"},
    {Kind::line, "     IL CAMPO Q039FONDORESIDUOAP VERRA' ABBATTUTO DEL VALORE INDICATO NEL CAMPO"},
    {Kind::line, "     Q896PROGRESSIVOCINPS. "},
    {Kind::line, "     NELLA STAMPA CEDOLINO LA VOCE *** REC.PREST.TFR F.T. SARA' INTEGRATA CON "},
    {Kind::line, "     VOCE *** REC.PREST.TFR F.T.C/INPS (DI CUI)"},
}};
inline constexpr std::array<Text, 2> kTreasuryNoteFilled{{
    {Kind::line, "N.B. NESSUN VALORE DA INSERIRE NEL CAMPO Q896PROGRESSIVOCINPS"},
    {Kind::line, "     PER RETTIFICA RECUPERO DM10 'R.PREST.F.TES.'"},
}};

// Command line of velmor
inline constexpr Text kHelp{
    Kind::tool,
    "Uso: velmor\n"
    "Calcola i cedolini dei dipendenti selezionati dal menu, per il periodo indicato dal menu.\n"
    "Nessun argomento cambia il calcolo; le cartelle degli archivi e dei programmi stanno nel "
    "registro.\n"
    "\n"
    "  --help     questo testo\n"
    "  --version  la versione del programma\n"
    "\n"
    "Variabili: SOLMAREL_REGISTRO, PRIMULAX, VELMOR_TASK, VELMOR_INTERFACCIA, VELMOR_RISPOSTE,\n"
    "VELMOR_STAMPE, VELMOR_STAMPANTE.\n"
    "Uscita: 0 fine regolare, 1 errore, 2 configurazione, 3 programma già in esecuzione.\n"};
/// The version follows.
inline constexpr Text kVersion{Kind::tool, "VELMOR "};
/// The argument follows.
inline constexpr Text kUnknownArgument{Kind::tool,
                                       "velmor: argomento non previsto (vedi --help): "};

// The slip as nzutil shows it
inline constexpr Text kSlipTitle{Kind::tool, "CEDOLINO PAGA"};
inline constexpr Text kSlipAdditional{Kind::tool, "(MENSILITA' AGGIUNTIVA)"};
inline constexpr Text kSlipAgreement{Kind::tool, "Contratto "};
inline constexpr Text kSlipLevel{Kind::tool, " livello "};
inline constexpr Text kSlipCompanyTaxCode{Kind::tool, "Codice fiscale "};
inline constexpr Text kSlipTaxCode{Kind::tool, "Codice fiscale "};
inline constexpr Text kSlipHired{Kind::tool, "Assunzione "};
inline constexpr Text kSlipLeft{Kind::tool, "Cessazione "};
inline constexpr Text kSlipMonthlyPay{Kind::tool, "Retribuzione mensile"};
inline constexpr Text kSlipHourlyPay{Kind::tool, "Retribuzione oraria"};
inline constexpr Text kSlipDays{Kind::tool, "Giorni retribuiti"};
inline constexpr Text kSlipTaxDays{Kind::tool, "Giorni di detrazione"};
inline constexpr Text kSlipDescription{Kind::tool, "DESCRIZIONE"};
inline constexpr Text kSlipQuantity{Kind::tool, "QUANTITA'"};
inline constexpr Text kSlipRate{Kind::tool, "VALORE"};
inline constexpr Text kSlipEarnings{Kind::tool, "COMPETENZE"};
inline constexpr Text kSlipDeductions{Kind::tool, "TRATTENUTE"};
inline constexpr Text kSlipAllowance{Kind::tool, "Assegno nucleo familiare"};
inline constexpr Text kSlipBonus{Kind::tool, "Trattamento integrativo"};
inline constexpr Text kSlipIntegrativeSum{Kind::tool, "Somma integrativa"};
inline constexpr Text kSlipOneOff{Kind::tool, "Indennita' una tantum"};
inline constexpr Text kSlipLargeFamily{Kind::tool, "Detrazione famiglie numerose"};
inline constexpr Text kSlipRefund{Kind::tool, "Irpef a rimborso conguaglio"};
inline constexpr Text kSlipContributions{Kind::tool, "Contributi previdenziali"};
inline constexpr Text kSlipIncomeTax{Kind::tool, "Irpef del mese"};
inline constexpr Text kSlipTaxDue{Kind::tool, "Irpef da conguaglio"};
inline constexpr Text kSlipFlatTax{Kind::tool, "Ritenuta d'acconto"};
inline constexpr Text kSlipReliefTax{Kind::tool, "Imposta sostitutiva premi"};
inline constexpr Text kSlipTipsTax{Kind::tool, "Imposta sostitutiva mance"};
inline constexpr Text kSlipRegional{Kind::tool, "Rata addizionale regionale"};
inline constexpr Text kSlipMunicipal{Kind::tool, "Rata addizionale comunale"};
inline constexpr Text kSlipMunicipalAdvance{Kind::tool, "Rata acconto comunale"};
inline constexpr Text kSlipRoundingIn{Kind::tool, "Arrotondamento precedente"};
inline constexpr Text kSlipRoundingOut{Kind::tool, "Arrotondamento del mese "};
inline constexpr Text kSlipWage{Kind::tool, "Imponibile contributivo"};
inline constexpr Text kSlipTaxable{Kind::tool, "Imponibile fiscale"};
inline constexpr Text kSlipGrossTax{Kind::tool, "Irpef lorda"};
inline constexpr Text kSlipEmploymentDeduction{Kind::tool, "Detrazione lavoro dip."};
inline constexpr Text kSlipFurtherDeduction{Kind::tool, "Ulteriore detrazione"};
inline constexpr Text kSlipSpouse{Kind::tool, "Detrazione coniuge"};
inline constexpr Text kSlipChildren{Kind::tool, "Detrazione figli"};
inline constexpr Text kSlipOthers{Kind::tool, "Detrazione altri familiari"};
inline constexpr Text kSlipRegionalYear{Kind::tool, "Addizionale regionale anno"};
inline constexpr Text kSlipMunicipalYear{Kind::tool, "Addizionale comunale anno"};
inline constexpr Text kSlipSeveranceWage{Kind::tool, "Retribuzione utile TFR"};
inline constexpr Text kSlipSeveranceYear{Kind::tool, "TFR maturato nell'anno"};
inline constexpr Text kSlipSeveranceFund{Kind::tool, "TFR al 31 dicembre precedente"};
inline constexpr Text kSlipRevaluation{Kind::tool, "Rivalutazione TFR"};
inline constexpr Text kSlipSeveranceTax{Kind::tool, "Imposta sul TFR"};
inline constexpr Text kSlipAccrualContribution{Kind::tool, "Contributo sul TFR maturato"};
inline constexpr Text kSlipSubstituteTax{Kind::tool, "Imposta sostitutiva TFR"};
inline constexpr Text kSlipAdvances{Kind::tool, "Anticipazioni TFR dell'anno"};
inline constexpr Text kSlipSeveranceAtFund{Kind::tool, "TFR al fondo pensione"};
inline constexpr Text kSlipAdvanceTax{Kind::tool, "Imposta su anticipazione TFR"};
inline constexpr Text kSlipAdvanceTaxBack{Kind::tool, "Imposta su anticipazioni TFR"};
inline constexpr Text kSlipSeverancePacket{Kind::tool, "TFR del mese in busta"};
inline constexpr Text kSlipPacketTax{Kind::tool, "Imposta sul TFR in busta"};
inline constexpr Text kSlipBackPayTax{Kind::tool, "Imposta su arretrati"};
inline constexpr Text kSlipYearToDate{Kind::tool, "PROGRESSIVI ANNO"};
inline constexpr Text kSlipTaxWithheld{Kind::tool, "Irpef trattenuta"};
inline constexpr Text kSlipTotalEarnings{Kind::tool, "Totale competenze "};
inline constexpr Text kSlipTotalDeductions{Kind::tool, "Totale trattenute "};
inline constexpr Text kSlipNet{Kind::tool, "NETTO IN BUSTA EURO "};
inline constexpr Text kSlipNegativeNet{Kind::tool, "Da trattenere sul prossimo cedolino "};
inline constexpr std::array<Text, 12> kMonths{{{Kind::tool, "GENNAIO"},
                                               {Kind::tool, "FEBBRAIO"},
                                               {Kind::tool, "MARZO"},
                                               {Kind::tool, "APRILE"},
                                               {Kind::tool, "MAGGIO"},
                                               {Kind::tool, "GIUGNO"},
                                               {Kind::tool, "LUGLIO"},
                                               {Kind::tool, "AGOSTO"},
                                               {Kind::tool, "SETTEMBRE"},
                                               {Kind::tool, "OTTOBRE"},
                                               {Kind::tool, "NOVEMBRE"},
                                               {Kind::tool, "DICEMBRE"}}};

}  // namespace texts
