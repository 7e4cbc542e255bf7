#pragma once
// The catalogue of the texts of the support tool: what it tells whoever looks after an
// installation.

#include "texts/texts.h"

namespace texts {

// Support tool: "{}" stands for a value
inline constexpr Text kToolCannotWrite{Kind::tool, "Impossibile scrivere {}."};
inline constexpr Text kToolCannotRead{Kind::tool, "Impossibile leggere {}."};
inline constexpr Text kToolInstallationExists{
    Kind::tool, "In {} esiste già un'installazione: indicare una directory nuova."};
inline constexpr Text kToolNoDirectory{Kind::tool, "Manca il nome della directory: è vuoto."};
inline constexpr Text kToolNoInstallation{
    Kind::tool, "In {} non c'è un'installazione: manca NZBASE.DAT o registro.ini."};
inline constexpr Text kToolFileNumber{
    Kind::tool, "{} non è un numero di archivio logico: sono ammessi i numeri da 1 a 600."};
inline constexpr Text kToolNoFile{Kind::tool, "L'archivio logico {} non esiste ({})."};
inline constexpr Text kToolRecordLength{
    Kind::tool, "La lunghezza di record dell'archivio logico {} in NZBASE.DAT non è valida."};
inline constexpr Text kToolRecordNumber{
    Kind::tool, "{} non è un numero di record: il primo record è il numero 1."};
inline constexpr Text kToolNoRecord{Kind::tool,
                                    "L'archivio logico {} non ha il record {}: ne contiene {}."};
inline constexpr Text kToolNoArea{
    Kind::tool, "I record dell'archivio logico {} non hanno campi nel dizionario."};
inline constexpr Text kToolNoField{Kind::tool, "Il campo {} non esiste."};
inline constexpr Text kToolNoAreaOrField{Kind::tool,
                                         "{} non è un campo né un'area, e nessun significato ne ha "
                                         "le parole. Aree con campi: {}."};
inline constexpr Text kToolFieldOfOtherArea{
    Kind::tool, "Il campo {} è dell'area {}: i record dell'archivio logico {} sono dell'area {}."};
inline constexpr Text kToolOccurrence{Kind::tool, "Il campo {} non ha l'occorrenza {}."};
inline constexpr Text kToolValueRefused{Kind::tool, "Il campo {} non può contenere \"{}\": {}."};
inline constexpr Text kToolNoDemoData{
    Kind::tool, "I dati dell'installazione dimostrativa non ci sono (cercati anche in {})."};
inline constexpr Text kToolWhole{Kind::tool, "{} non è un numero intero da {} a {}."};
inline constexpr Text kToolUnknownCommand{
    Kind::tool, "Comando sconosciuto: {}. L'elenco dei comandi: nzutil --help"};
/// The version follows.
inline constexpr Text kToolVersion{Kind::tool, "nzutil "};
inline constexpr Text kToolUsage{Kind::tool, "Uso: nzutil {}"};
inline constexpr Text kToolFailure{Kind::tool, "Errore {}: {}."};
inline constexpr Text kToolRefused{Kind::tool, "Operazione rifiutata: {}"};
/// File and record.
inline constexpr Text kToolFinishedRecord{
    Kind::tool,
    "Completata la scrittura lasciata a metà dall'elaborazione precedente: archivio {} record {}."};
inline constexpr Text kToolHelp{Kind::tool,
                                "nzutil: strumento di assistenza per gli archivi paghe\n\nUso:\n"
                                "  nzutil --help, nzutil --version\n"};
inline constexpr Text kToolUsageDemo{Kind::tool, "demo DIR"};
inline constexpr Text kToolHelpDemo{Kind::tool,
                                    "crea un'installazione dimostrativa nella directory DIR"};
inline constexpr Text kToolUsagePeriod{Kind::tool, "periodo DIR ggmmaaaa TIPO"};
inline constexpr Text kToolHelpPeriod{
    Kind::tool, "cambia il periodo da elaborare (tipo 0: mensilità aggiuntiva)"};
inline constexpr Text kToolUsageFields{Kind::tool, "campi AREA|CODICE|PAROLE..."};
inline constexpr Text kToolHelpFields{
    Kind::tool, "dice che cos'è un campo, elenca un'area, trova i campi per significato"};
inline constexpr Text kToolUsageRead{Kind::tool, "leggi DIR ARCHIVIO RECORD CODICE [OCCORRENZA]"};
inline constexpr Text kToolHelpRead{Kind::tool, "mostra un campo"};
inline constexpr Text kToolUsageWrite{Kind::tool,
                                      "scrivi DIR ARCHIVIO RECORD CODICE VALORE [OCCORRENZA]"};
inline constexpr Text kToolHelpWrite{Kind::tool, "scrive un campo"};
inline constexpr Text kToolUsageCard{Kind::tool, "scheda DIR ARCHIVIO RECORD"};
inline constexpr Text kToolHelpCard{Kind::tool, "mostra tutti i campi non vuoti di un record"};
inline constexpr Text kToolUsageIndex{Kind::tool,
                                      "isam DIR ARCHIVIO cerca CHIAVE | elenca | verifica"};
inline constexpr Text kToolHelpIndex{Kind::tool,
                                     "cerca una chiave, elenca le chiavi, verifica un indice"};
inline constexpr Text kToolUsageScenario{Kind::tool,
                                         "scenario [--mostra CODICE [--corsa N]] FILE..."};
inline constexpr Text kToolHelpScenario{
    Kind::tool, "esegue gli scenari, mostra le differenze (campo, atteso, trovato) o un cedolino"};
inline constexpr Text kToolUsageInstall{Kind::tool, "installa FILE DIR"};
inline constexpr Text kToolHelpInstall{Kind::tool,
                                       "crea nella directory DIR l'installazione di uno scenario"};
inline constexpr Text kToolUsageTemplates{Kind::tool, "modelli DIR"};
inline constexpr Text kToolHelpTemplates{
    Kind::tool, "crea gli archivi .MDB vuoti da cui partono gli altri; non ne sovrascrive"};
inline constexpr Text kToolTemplateMade{Kind::tool, "Creato {}"};
inline constexpr Text kToolTemplateThere{Kind::tool, "C'è già {}"};
inline constexpr Text kToolUsageMunicipalities{Kind::tool, "comuni CSV DIR"};
inline constexpr Text kToolHelpMunicipalities{
    Kind::tool, "carica le aliquote dell'addizionale comunale in TABCOM.MDB"};
inline constexpr Text kToolMunicipalitiesWritten{Kind::tool, "Comuni caricati: {}."};
inline constexpr Text kToolCsvColumn{Kind::tool, "la tabella CATASTO non ha la colonna {}"};
inline constexpr Text kToolCsvNoKey{Kind::tool, "attesa nella prima riga la colonna {}"};
inline constexpr Text kToolCsvCells{Kind::tool, "attesi {} valori, come nella prima riga: sono {}"};
inline constexpr Text kToolCsvCode{Kind::tool,
                                   "atteso il codice del comune, di 4 caratteri, trovato \"{}\""};
inline constexpr Text kToolCsvNumber{Kind::tool, "{}: atteso un numero, trovato \"{}\""};
inline constexpr Text kToolCsvNoLimit{
    Kind::tool, "{}: manca il limite {} (un'aliquota unica vale fino a 999999.99)"};
inline constexpr Text kToolCsvLimits{Kind::tool, "{}: i limiti devono crescere, senza salti"};
inline constexpr Text kToolCsvTwice{Kind::tool, "il comune {} è ripetuto"};
inline constexpr Text kToolDemoMade{
    Kind::tool, "Installazione dimostrativa creata in {}: {} dipendenti, periodo {}."};
inline constexpr Text kToolInstallationMade{Kind::tool, "Installazione creata in {}."};
inline constexpr Text kToolRegistry{Kind::tool, "Per usarla: SOLMAREL_REGISTRO={}"};
inline constexpr Text kToolPeriodSet{Kind::tool, "Periodo {}, tipo {}."};
inline constexpr Text kToolKeyFound{Kind::tool, "{} record {}"};
inline constexpr Text kToolKeyMissing{Kind::tool, "La chiave {} non c'è."};
/// Employee's code and index.
inline constexpr Text kToolNoCodeInIndex{Kind::tool, "Il dipendente {} non è nell'indice {}."};
inline constexpr Text kToolKeyLength{Kind::tool, "Le chiavi dell'indice {} hanno {} caratteri."};
inline constexpr Text kToolNoIndex{Kind::tool, "L'archivio logico {} non è un indice."};
inline constexpr Text kToolIndexSound{Kind::tool, "Indice {} integro: {} chiavi, {} blocchi."};
inline constexpr Text kToolIndexDamaged{Kind::tool, "Indice {} danneggiato: {}"};
inline constexpr Text kToolIndexEmptyFile{Kind::tool, "il file è vuoto."};
inline constexpr Text kToolIndexPartialBlock{Kind::tool,
                                             "la lunghezza del file non è un multiplo del blocco."};
inline constexpr Text kToolIndexBadBlock{Kind::tool, "il blocco {} del livello {} non esiste."};
inline constexpr Text kToolIndexBlockTwice{Kind::tool, "al blocco {} portano due voci."};
inline constexpr Text kToolIndexLevel{Kind::tool,
                                      "nel blocco {} una voce porta il livello {} invece di {}."};
inline constexpr Text kToolIndexOrder{
    Kind::tool, "nel blocco {} le chiavi non sono in ordine crescente (voce {})."};
inline constexpr Text kToolIndexUsedAfterFree{
    Kind::tool, "nel blocco {} una voce usata segue una libera (voce {})."};
inline constexpr Text kToolIndexFirstKey{
    Kind::tool, "la voce che porta al blocco {} non ha la sua prima chiave."};
inline constexpr Text kToolIndexEmptyBlock{Kind::tool, "il blocco {} in uso è vuoto."};
inline constexpr Text kToolIndexFull{Kind::tool, "il blocco {} non ha voci libere."};
inline constexpr Text kToolIndexPointer{
    Kind::tool, "nel blocco {} il numero di record della voce {} non è valido."};
// What the tool expected of a typed value
inline constexpr Text kToolExpectedNumber{Kind::tool, "atteso un numero"};
inline constexpr Text kToolUsePoint{
    Kind::tool, "per i decimali usare il punto, senza separatore delle migliaia: {} e non {}"};
inline constexpr Text kToolExpectedRealDate{
    Kind::tool, "attesa una data del calendario, ggmmaaaa: \"{}\" non esiste"};
inline constexpr Text kToolExpectedMonthYear{Kind::tool,
                                             "attesi un mese e un anno, mmaaaa: \"{}\" non esiste"};
inline constexpr Text kToolExpectedYearMonth{Kind::tool,
                                             "attesi un anno e un mese, aaaamm: \"{}\" non esiste"};
inline constexpr Text kToolExpectedDecimals{Kind::tool, "atteso un numero con al più {} decimali"};
inline constexpr Text kToolExpectedWidth{Kind::tool, "atteso un numero che entri in {} cifre"};
inline constexpr Text kToolExpectedLength{Kind::tool, "atteso un testo di al più {} caratteri"};
inline constexpr Text kToolExpectedDigits{Kind::tool, "attese al più {} cifre"};
inline constexpr Text kToolExpectedDate{Kind::tool,
                                        "attesa una data di 8 cifre ggmmaaaa, trovato \"{}\""};
inline constexpr Text kToolExpectedKind{
    Kind::tool, "atteso il tipo di elaborazione, una cifra, trovato \"{}\""};
inline constexpr Text kToolExpectedYaml{Kind::tool, "atteso un documento YAML: {}"};
inline constexpr Text kYamlMapEnd{
    Kind::tool, "la mappa non continua qui: controllare i rientri e i due punti delle chiavi"};
inline constexpr Text kYamlBraceEnd{Kind::tool,
                                    "manca la graffa di chiusura, una virgola tra due chiavi, o la "
                                    "fine di un testo tra virgolette"};
inline constexpr Text kYamlListEnd{Kind::tool,
                                   "la lista non continua qui: controllare i rientri e i trattini"};
inline constexpr Text kYamlBracketEnd{
    Kind::tool, "manca la parentesi quadra di chiusura, o una virgola tra due elementi"};
inline constexpr Text kYamlBracketStray{Kind::tool, "parentesi di chiusura senza la sua apertura"};
inline constexpr Text kYamlQuoteEnd{Kind::tool, "mancano le virgolette di chiusura"};
inline constexpr Text kYamlTabulator{Kind::tool, "i rientri si fanno con spazi, senza tabulazioni"};
inline constexpr Text kYamlIndentation{
    Kind::tool, "rientro errato (solo spazi), o manca lo spazio dopo i due punti o il trattino"};
inline constexpr Text kYamlCharacter{
    Kind::tool, "carattere non ammesso qui: un testo con segni speciali va tra virgolette"};
inline constexpr Text kYamlEscape{
    Kind::tool, "sequenza con barra inversa non valida: usare gli apici semplici"};
inline constexpr Text kYamlAlias{
    Kind::tool, "* e & non si usano: un testo che comincia così va tra virgolette"};
inline constexpr Text kYamlOther{Kind::tool, "sintassi non valida"};
inline constexpr Text kToolExpectedMap{Kind::tool, "attesa una mappa chiave: valore"};
inline constexpr Text kToolExpectedMapOrList{Kind::tool, "attesa una mappa o una lista di mappe"};
inline constexpr Text kToolExpectedList{Kind::tool, "attesa una lista"};
inline constexpr Text kToolExpectedScalar{Kind::tool, "atteso un valore semplice"};
inline constexpr Text kToolExpectedCodePage{Kind::tool,
                                            "atteso un testo di caratteri della code page 1252"};
inline constexpr Text kToolExpectedKey{Kind::tool, "attesa una chiave fra {}; trovata {}"};
inline constexpr Text kToolKeyTwice{Kind::tool, "attesa una sola chiave {}: è ripetuta"};
inline constexpr Text kToolExpectedWhole{Kind::tool,
                                         "atteso un numero intero da {} a {}, trovato \"{}\""};
inline constexpr Text kToolExpectedField{Kind::tool, "atteso un campo dell'area {}, trovato {}"};
inline constexpr Text kToolExpectedBrackets{
    Kind::tool, "attesa una lista di coppie [limite, aliquota], con il punto per i decimali"};
inline constexpr Text kToolExpectedNumberField{Kind::tool,
                                               "{}: atteso un campo che contiene un numero"};
inline constexpr Text kToolExpectedTolerance{
    Kind::tool,
    "{}: atteso un numero con {valore: ..., tolleranza: ...}, senza segno la tolleranza"};
inline constexpr Text kToolExpectedFewBrackets{Kind::tool, "attesi al più {} scaglioni"};
inline constexpr Text kToolExpectedRising{Kind::tool,
                                          "attesi limiti crescenti: {} non supera quello prima"};
inline constexpr Text kToolExpectedClosing{
    Kind::tool, "atteso come ultimo scaglione quello senza limite, [999999.99, aliquota]"};
inline constexpr Text kToolExpectedRate{Kind::tool,
                                        "attesa un'aliquota tra 0 e 99.9 per cento, trovato {}"};
inline constexpr Text kToolExpectedYear{Kind::tool,
                                        "atteso un anno con le sue tabelle ({}), trovato {}"};
inline constexpr Text kToolExpectedRegion{
    Kind::tool, "atteso un codice di regione di 2 caratteri, trovato \"{}\""};
inline constexpr Text kToolExpectedCells{Kind::tool, "attese al più 100 celle"};
inline constexpr Text kToolExpectedCell{Kind::tool,
                                        "attesa una cella di 1-11 caratteri: operatore e operando"};
inline constexpr Text kToolExpectedLines{Kind::tool, "attese al più 100 righe"};
inline constexpr Text kToolExpectedItem{Kind::tool, "atteso il codice della voce"};
inline constexpr Text kToolNoProgram{Kind::tool, "Impossibile avviare {}."};
inline constexpr Text kToolDuplicateRecord{
    Kind::tool, "atteso un numero di record non ancora usato: il {} è di un altro dipendente"};
inline constexpr Text kToolExpectedAnswer{Kind::tool, "attesa la risposta si o no, trovato \"{}\""};
inline constexpr Text kToolExpectedTitle{Kind::tool, "attesa la chiave {}"};
inline constexpr Text kToolExpectedOneEmployee{
    Kind::tool, "attese le chiavi attesi dentro ciascun dipendente: i dipendenti sono {}"};
inline constexpr Text kToolExpectedDamage{
    Kind::tool, "attesi archivio o nome, e uno fra elimina, lunghezza, byte con posizione"};
inline constexpr Text kToolExpectedRunEmployee{
    Kind::tool, "atteso il record di un dipendente dello scenario, trovato {}"};
inline constexpr Text kToolNoArchives{Kind::tool,
                                      "gli archivi ({}) non sono ancora gestiti dagli scenari"};
inline constexpr Text kToolScenarioGood{Kind::tool, "ok  {}: {}"};
inline constexpr Text kToolScenarioBad{Kind::tool, "NO  {}: {}"};
inline constexpr Text kToolDifference{Kind::tool, "    {}: atteso {}, trovato {}"};
inline constexpr Text kToolWithTolerance{Kind::tool, "{} (tolleranza {})"};
inline constexpr Text kToolPlaceSum{Kind::tool, "somma {}"};
inline constexpr Text kToolScenarioSum{Kind::tool,
                                       "Scenari: {}, con differenze: {}, non eseguiti: {}"};
inline constexpr Text kToolShownRun{Kind::tool, "Corsa {}, periodo {}, tipo {}"};
inline constexpr Text kToolNoRun{Kind::tool, "Lo scenario {} non ha la corsa {}: ne ha {}."};
inline constexpr Text kToolNothing{Kind::tool, "niente"};
inline constexpr Text kToolPlaceRun{Kind::tool, "corsa {} "};
inline constexpr Text kToolPlaceEmployee{Kind::tool, "dipendente {} "};
inline constexpr Text kToolPlaceListLine{Kind::tool, "lista, riga {}"};
inline constexpr Text kToolPlaceLine{Kind::tool, "riga {}, {}"};
inline constexpr Text kToolPlaceBox{Kind::tool, "riquadro {}"};
inline constexpr Text kToolPlaceStatus{Kind::tool, "uscita"};
inline constexpr Text kToolPlaceArchive{Kind::tool, "archivio {}"};
inline constexpr Text kToolPlaceRecord{Kind::tool, "archivio {}, record {}"};
inline constexpr Text kToolPlaceIdentity{Kind::tool, "identità {}"};
inline constexpr Text kToolTooLong{Kind::tool, "il programma non termina"};
inline constexpr Text kToolExpectedReason{Kind::tool,
                                          "atteso un motivo per l'identità che non si verifica"};
inline constexpr Text kWordCalculated{Kind::tool, "elaborato"};
inline constexpr Text kWordAlready{Kind::tool, "già"};

// anno
inline constexpr Text kToolUsageYear{Kind::tool, "anno DIR ANNO [--prova] [--si]"};
inline constexpr Text kToolHelpYear{
    Kind::tool, "apre un anno: riporta ciò che lascia dicembre e azzera i progressivi"};
inline constexpr Text kToolYearEmployee{Kind::tool, "{} {}: reddito {}, "};
inline constexpr Text kToolYearCarried{
    Kind::tool, "addizionali regionale {} e comunale {}, TFR {} (rivalutazione {})"};
inline constexpr Text kToolYearLeft{Kind::tool, "cessato: addizionali e TFR non si riportano"};
inline constexpr Text kToolYearHasSlip{Kind::tool, "{}: ha già un cedolino del {}, resta com'è"};
inline constexpr Text kToolYearSum{
    Kind::tool, "Dipendenti da aprire: {}; senza nulla da aprire: {}; con cedolini dell'anno: {}."};
inline constexpr Text kToolYearTrial{Kind::tool, "Prova: non è stato scritto nulla."};
inline constexpr Text kToolYearQuestion{Kind::tool, "Aprire il {}? (si/no) "};
inline constexpr Text kToolYearLeftAlone{Kind::tool, "Non è stato scritto nulla."};
inline constexpr Text kToolYearOpened{Kind::tool, "Anno {} aperto per {} dipendenti."};
inline constexpr Text kToolAndMore{Kind::tool, "{} e altri {}"};
inline constexpr Text kToolYearOpen{Kind::tool, "Il {} è già aperto."};
inline constexpr Text kToolYearBegun{
    Kind::tool,
    "Il {} è già cominciato: ci sono cedolini di quell'anno e nessun anno da chiudere."};
inline constexpr Text kToolNoFormerYear{Kind::tool,
                                        "Nel {} non c'è nessun cedolino: il {} non si può aprire."};
inline constexpr Text kToolYearSkipped{
    Kind::tool, "Il {} non è mai stato aperto per {}: aprire prima quell'anno."};
inline constexpr Text kToolDecemberMissing{
    Kind::tool,
    "Il {} non è chiuso: manca il cedolino ordinario di dicembre di {}. Calcolarlo, o registrare "
    "la cessazione (P017)."};
inline constexpr Text kToolNoDecemberIndex{
    Kind::tool,
    "Manca l'indice dei prezzi di dicembre {} (F034), pubblicato a gennaio: serve per rivalutare "
    "il TFR. Registrarlo nelle tabelle annuali prima di aprire l'anno."};
inline constexpr Text kToolNoBaseIndex{
    Kind::tool,
    "Manca l'indice dei prezzi al 31 dicembre {} (F021): serve per rivalutare il TFR. Registrarlo "
    "nelle tabelle annuali prima di aprire l'anno."};

// cedolino
inline constexpr Text kToolUsageSlip{Kind::tool, "cedolino DIR CODICE [--pdf FILE]"};
inline constexpr Text kToolHelpSlip{Kind::tool, "mostra il cedolino calcolato di un dipendente"};
inline constexpr Text kToolNoEmployee{Kind::tool, "Il dipendente {} non esiste."};
inline constexpr Text kToolNoCompany{Kind::tool, "La ditta {} non esiste."};
inline constexpr Text kToolNoPeriod{
    Kind::tool, "Il periodo degli archivi non è una data (\"{}\"): scriverlo con nzutil periodo."};
inline constexpr Text kToolPdfMade{Kind::tool, "Cedolino scritto in {}."};

// campi, scheda
inline constexpr Text kToolAreaCompany{Kind::tool, "ditta"};
inline constexpr Text kToolAreaEmployee{Kind::tool, "dipendente"};
inline constexpr Text kToolAreaCertificate{Kind::tool, "totali annui della certificazione"};
inline constexpr Text kToolAreaMonths{Kind::tool, "tabella dei dodici mesi"};
inline constexpr Text kToolAreaContract{Kind::tool, "contratto collettivo"};
inline constexpr Text kToolAreaFixed{Kind::tool, "tabelle annuali"};
inline constexpr Text kToolAreaItem{Kind::tool, "voce"};
inline constexpr Text kToolAreaSector{Kind::tool, "settore"};
inline constexpr Text kToolAreaFund{Kind::tool, "fondo pensione"};
inline constexpr Text kToolFieldMeaning{Kind::tool, "{}: {}"};
inline constexpr Text kToolFieldPlace{Kind::tool,
                                      "{} ({}), posizioni da {} a {}, caratteri {}, {}"};
inline constexpr Text kToolTypeText{Kind::tool, "testo"};
inline constexpr Text kToolTypeDate{Kind::tool, "data ggmmaaaa"};
inline constexpr Text kToolTypeDigits{Kind::tool, "cifre"};
inline constexpr Text kToolTypeWhole{Kind::tool, "numero intero"};
inline constexpr Text kToolTypeDecimals{Kind::tool, "numero con {} decimali"};
inline constexpr Text kToolReadBy{Kind::tool, "Letto da:"};
inline constexpr Text kToolWrittenBy{Kind::tool, "Scritto da:"};
inline constexpr Text kToolNoProcedure{
    Kind::tool, "nessuna procedura del calcolo (le formule delle voci possono farlo)"};
inline constexpr Text kToolNoMeaning{Kind::tool, "nessuna regola del calcolo lo usa"};
inline constexpr Text kToolDifferenceOfField{Kind::tool, "    {} ({}): atteso {}, trovato {}"};

}  // namespace texts
