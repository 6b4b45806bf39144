#include "component/maintenance/IstruzioniRegistro.h"

#include "component/maintenance/IstruzioniBlocchi.h"
#include "contract/RuntimeError.h"

#include <algorithm>
#include <array>
#include <utility>

namespace qz {

using contract::OperationKind;
using contract::RowOutcome;
using contract::RuntimeError;
using contract::Statement;

namespace {

constexpr std::array<std::pair<OperationKind, std::string_view>, 5> tipi{{{OperationKind::structure, "struttura"},
                                                                          {OperationKind::validity, "validità"},
                                                                          {OperationKind::edit, "modifica"},
                                                                          {OperationKind::list, "elenco"},
                                                                          {OperationKind::undo, "annullamento"}}};

constexpr std::array<std::pair<RowOutcome, std::string_view>, 7> esiti{{{RowOutcome::moves, "spostato"},
                                                                        {RowOutcome::copies, "chiuso e copiato"},
                                                                        {RowOutcome::opens, "aperto"},
                                                                        {RowOutcome::stays, "resta"},
                                                                        {RowOutcome::edits, "modificato"},
                                                                        {RowOutcome::restores, "ripristinato"},
                                                                        {RowOutcome::deletes, "eliminato"}}};

template <class Coppie, class Chiave> std::string_view testoDi(const Coppie& coppie, Chiave chiave) {
    return std::find_if(coppie.begin(), coppie.end(), [&](const auto& coppia) { return coppia.first == chiave; })
        ->second;
}

template <class Coppie> auto chiaveDi(const Coppie& coppie, std::string_view testo) {
    const auto trovata =
        std::find_if(coppie.begin(), coppie.end(), [&](const auto& coppia) { return coppia.second == testo; });
    if (trovata == coppie.end())
        throw RuntimeError(RuntimeError::typeMismatch,
                           "Tipo non corrispondente: il registro degli spostamenti contiene \"" + std::string(testo) +
                               "\", che non si può leggere.");
    return trovata->first;
}

void aggiungiData(Statement& s, contract::Date giorno) {
    s << "CONVERT(DateTime,'";
    s.date(giorno);
    s << "',103)";
}

void aggiungiNumero(Statement& s, std::optional<std::int64_t> numero) {
    if (numero)
        s.number(*numero);
    else
        s << "NULL";
}

void aggiungiColonneOperazione(Statement& s) {
    s << "SELECT QZ90_REGISTRO.QZ90_ID, QZ90_REGISTRO.QZ90_DATA, QZ90_REGISTRO.QZ90_ORA, QZ90_REGISTRO.QZ90_UTENTE, "
         "QZ90_REGISTRO.QZ90_GRUPPO, QZ90_REGISTRO.QZ90_TIPO, QZ90_REGISTRO.QZ90_DESCR, QZ90_REGISTRO.QZ90_RIGHE, "
         "QZ90_REGISTRO.QZ90_ID_QZ90, QZ90_ANNULLO.QZ90_ID AS ANNULLATADA FROM QZ90_REGISTRO LEFT OUTER JOIN "
         "QZ90_REGISTRO QZ90_ANNULLO ON QZ90_ANNULLO.QZ90_ID_QZ90 = QZ90_REGISTRO.QZ90_ID WHERE "
         "QZ90_REGISTRO.QZ90_DITTA_CG18 = ";
}

} // namespace

Statement istruzioneVariazioni(std::span<const NodoId> nodi) {
    Statement s;
    s << "SELECT QZ02_ID, QZ02_UTENTEVAR, QZ02_GRUPPOVAR, QZ02_DATAVAR FROM QZ02_DISTINTA QZ91_REGISTRORIGHE WHERE "
         "QZ02_ID IN (";
    elenca(s, nodi);
    return s << ")";
}

Statement istruzioneRighe(std::span<const NodoId> nodi) {
    Statement s;
    s << "SELECT * FROM QZ02_DISTINTA QZ91_REGISTRORIGHE WHERE QZ02_ID IN (";
    elenca(s, nodi);
    return s << ")";
}

Statement istruzioneLegamiInteri(std::int64_t ditta, TipoCF tipo, std::span<const CodiceAccount> account) {
    Statement s;
    s << "SELECT * FROM QZ02_DISTINTA QZ91_REGISTRORIGHE WHERE QZ02_DITTA_CG18 = ";
    s.number(ditta);
    s << " AND QZ02_TIPOCF_CG44 = ";
    s.number(tipo.numero());
    s << " AND QZ02_CLIFOR_CG44 IN (";
    elenca(s, account);
    return s << ")";
}

Statement istruzionePremiDefinitivi(std::int64_t ditta, std::span<const NodoId> nodi) {
    Statement s;
    s << "SELECT QZ14_ID_QZ02 FROM QZ14_SOGGCONTR QZ91_REGISTRORIGHE INNER JOIN QZ13_PREMI ON QZ14_ID_QZ13 = QZ13_ID "
         "INNER JOIN QZ18_LIQUIDAZIONE ON QZ18_ID_QZ13 = QZ13_ID WHERE QZ13_DITTA_CG18 = ";
    s.number(ditta);
    s << " AND QZ14_ID_QZ02 IN (";
    elenca(s, nodi);
    return s << ") AND QZ18_STATOSCADENZA >= 2 AND QZ14_ID_QZ02 NOT IN (SELECT QZ27_ID_QZ02 FROM QZ27_SOGGCONTRDISAB "
                "WHERE QZ27_DITTA_CG18 = QZ14_DITTA_CG18 AND QZ27_CODCONTR_QZ10 = QZ14_CODCONTR_QZ10 AND "
                "QZ27_VERCONTR_QZ10 = QZ14_VERCONTR_QZ10 AND QZ27_PROGRCOND_QZ13 = QZ14_PROGRCOND_QZ13)";
}

Statement istruzioneAppesi(std::span<const NodoId> nodi) {
    Statement s;
    s << "SELECT * FROM QZ02_DISTINTA QZ91_REGISTRORIGHE WHERE QZ02_IDPARENT_QZ02 IN (";
    elenca(s, nodi);
    return s << ")";
}

Statement istruzioneInserisciOperazione(const NuovaOperazione& operazione) {
    Statement s;
    s << "INSERT INTO QZ90_REGISTRO (QZ90_DITTA_CG18, QZ90_DATA, QZ90_ORA, QZ90_UTENTE, QZ90_GRUPPO, QZ90_TIPO, "
         "QZ90_DESCR, QZ90_RIGHE, QZ90_ID_QZ90, QZ90_ANNULLATA, QZ90_GUID) VALUES (";
    s.number(operazione.ditta);
    s << ", ";
    aggiungiData(s, operazione.autore.oggi);
    s << ", '";
    s.text(operazione.ora);
    s << "', '";
    s.text(operazione.autore.utente);
    s << "', '";
    s.text(operazione.autore.gruppo);
    s << "', '";
    s.text(testoDelTipo(operazione.tipo));
    s << "', '";
    s.text(operazione.descrizione);
    s << "', ";
    s.number(operazione.righe);
    s << ", ";
    aggiungiNumero(s, operazione.annulla);
    s << ", 0, '";
    s.text(operazione.guid);
    return s << "')";
}

Statement istruzioneIdOperazione(std::string_view guid) {
    Statement s;
    s << "SELECT QZ90_ID FROM QZ90_REGISTRO WHERE QZ90_GUID = '";
    s.text(guid);
    return s << "'";
}

Statement istruzioneInserisciRighe(std::int64_t operazione, std::int64_t prima,
                                   std::span<const RigaDaRegistrare> righe) {
    Statement s;
    s << "INSERT INTO QZ91_REGISTRORIGHE (QZ91_ID_QZ90, QZ91_RIGA, QZ91_ID_QZ02, QZ91_CLIFOR_CG44, QZ91_ESITO, "
         "QZ91_MOTIVO, QZ91_OSTACOLI, QZ91_PRIMA, QZ91_DOPO) VALUES ";
    for (std::size_t i = 0; i < righe.size(); ++i) {
        const auto& riga = righe[i];
        if (i > 0)
            s << ", ";
        s << "(";
        s.number(operazione);
        s << ", ";
        s.number(prima + static_cast<std::int64_t>(i));
        s << ", ";
        s.number(riga.nodo.numero());
        s << ", ";
        aggiungiNumero(s, riga.account ? std::optional(riga.account->numero()) : std::nullopt);
        s << ", '";
        s.text(testoDellEsito(riga.esito));
        s << "', '";
        s.text(riga.motivo);
        s << "', ";
        s.number(riga.ostacoli);
        s << ", '";
        s.text(riga.prima);
        s << "', '";
        s.text(riga.dopo);
        s << "')";
    }
    return s;
}

Statement istruzioneOperazioni(std::int64_t ditta, const contract::OperationFilter& filtro) {
    Statement s;
    aggiungiColonneOperazione(s);
    s.number(ditta);
    if (!filtro.user.empty()) {
        s << " AND QZ90_REGISTRO.QZ90_UTENTE = '";
        s.text(filtro.user);
        s << "'";
    }
    if (filtro.day) {
        s << " AND QZ90_REGISTRO.QZ90_DATA = ";
        aggiungiData(s, *filtro.day);
    }
    if (filtro.account) {
        s << " AND QZ90_REGISTRO.QZ90_ID IN (SELECT QZ91_ID_QZ90 FROM QZ91_REGISTRORIGHE WHERE QZ91_CLIFOR_CG44 = ";
        s.number(*filtro.account);
        s << ")";
    }
    return s << " ORDER BY QZ90_REGISTRO.QZ90_ID DESC";
}

Statement istruzioneOperazione(std::int64_t ditta, std::int64_t operazione) {
    Statement s;
    aggiungiColonneOperazione(s);
    s.number(ditta);
    s << " AND QZ90_REGISTRO.QZ90_ID = ";
    return s.number(operazione);
}

Statement istruzioneRigheOperazione(std::int64_t operazione) {
    Statement s;
    s << "SELECT QZ91_RIGA, QZ91_ID_QZ02, QZ91_CLIFOR_CG44, QZ91_ESITO, QZ91_MOTIVO, QZ91_OSTACOLI, QZ91_PRIMA, "
         "QZ91_DOPO "
         "FROM QZ91_REGISTRORIGHE WHERE QZ91_ID_QZ90 = ";
    s.number(operazione);
    return s << " ORDER BY QZ91_RIGA";
}

Statement istruzioneOperazioniSeguenti(std::int64_t operazione, std::span<const NodoId> nodi) {
    Statement s;
    s << "SELECT QZ91_ID_QZ02, QZ91_ID_QZ90, QZ90_ID_QZ90 FROM QZ91_REGISTRORIGHE INNER JOIN QZ90_REGISTRO ON "
         "QZ91_ID_QZ90 = QZ90_ID WHERE QZ91_ID_QZ90 > ";
    s.number(operazione);
    s << " AND QZ91_ESITO <> '";
    s.text(testoDellEsito(RowOutcome::stays));
    s << "' AND QZ91_ID_QZ02 IN (";
    elenca(s, nodi);
    return s << ") ORDER BY QZ91_ID_QZ90";
}

Statement istruzionePrendiOperazione(std::int64_t ditta, std::int64_t operazione) {
    Statement s;
    s << "UPDATE QZ90_REGISTRO SET QZ90_ANNULLATA = 1 WHERE QZ90_ID = ";
    s.number(operazione);
    s << " AND QZ90_DITTA_CG18 = ";
    s.number(ditta);
    return s << " AND QZ90_ANNULLATA = 0";
}

std::string_view testoDelTipo(OperationKind tipo) {
    return testoDi(tipi, tipo);
}
OperationKind tipoDelTesto(std::string_view testo) {
    return chiaveDi(tipi, testo);
}
std::string_view testoDellEsito(RowOutcome esito) {
    return testoDi(esiti, esito);
}
RowOutcome esitoDelTesto(std::string_view testo) {
    return chiaveDi(esiti, testo);
}

} // namespace qz
