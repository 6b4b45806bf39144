#include "component/maintenance/IstruzioniBlocchi.h"

#include "component/maintenance/IstruzioniSpostamento.h"

#include <algorithm>
#include <array>

namespace qz {

using contract::Statement;

namespace {

constexpr std::array<std::size_t, 3> lunghezze{10, 100, elementiPerIstruzione};

void aggiungiColonneNodo(Statement& s) {
    s << "SELECT QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_DITTA_CG18, QZ02_TIPOCF_CG44, QZ02_CLIFOR_CG44, "
         "QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL, QZ02_CLIFORFATT_CG44, QZ02_TIPOANAGFATT, QZ02_IDSTRUTTURA_LP09, "
         "QZ02_IDLOCALIZZATA_LP09, QZ02_INDEREPROMO, CG44_CLIFOR.CG44_CLIFOR AS Anagrafica"
         " FROM QZ02_DISTINTA LEFT OUTER JOIN CG44_CLIFOR ON QZ02_DISTINTA.QZ02_DITTA_CG18 = "
         "CG44_CLIFOR.CG44_DITTA_CG18 AND QZ02_DISTINTA.QZ02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF AND "
         "QZ02_DISTINTA.QZ02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR";
}

void aggiungiConti(Statement& s, std::int64_t ditta, TipoCF tipo, std::span<const CodiceAccount> account) {
    s << " WHERE QZ02_DITTA_CG18 = ";
    s.number(ditta);
    s << " AND QZ02_TIPOCF_CG44 = ";
    s.number(tipo.numero());
    s << " AND QZ02_CLIFOR_CG44 IN (";
    elenca(s, account);
    s << ")";
}

} // namespace

std::size_t lunghezzaElenco(std::size_t elementi) {
    return *std::find_if(lunghezze.begin(), lunghezze.end() - 1, [&](std::size_t l) { return l >= elementi; });
}

std::size_t prossimoBlocco(std::size_t rimasti) {
    return std::min(rimasti, elementiPerIstruzione);
}

std::size_t prossimoInserimento(std::size_t rimaste) {
    return rimaste >= righePerInserimento ? righePerInserimento : rimaste >= 10 ? 10 : 1;
}

Statement istruzioneNodiNoti(std::span<const NodoId> nodi) {
    Statement s;
    aggiungiColonneNodo(s);
    s << " WHERE QZ02_ID IN (";
    elenca(s, nodi);
    return s << ")";
}

Statement istruzioneFigliDi(std::span<const NodoId> padri, DistintaId distinta) {
    Statement s;
    aggiungiColonneNodo(s);
    s << " WHERE QZ02_IDPARENT_QZ02 IN (";
    elenca(s, padri);
    s << ") AND QZ02_ID_QZ01 = ";
    return s.number(distinta.numero());
}

Statement istruzioneLegamiDi(std::int64_t ditta, TipoCF tipo, std::span<const CodiceAccount> account) {
    Statement s;
    s << "SELECT QZ02_DISTINTA_FIGLIO.QZ02_ID, QZ02_DISTINTA_FIGLIO.QZ02_ID_QZ01, "
         "QZ02_DISTINTA_FIGLIO.QZ02_IDPARENT_QZ02, QZ02_DISTINTA_FIGLIO.QZ02_CLIFOR_CG44, "
         "QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL, QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL, "
         "QZ02_DISTINTA_PADRE.QZ02_ID_QZ01 AS DistintaPadre, QZ02_DISTINTA_PADRE.QZ02_DITTA_CG18 AS DittaPadre, "
         "QZ02_DISTINTA_PADRE.QZ02_TIPOCF_CG44 AS TipoPadre, CG44_CLIFOR.CG44_CLIFOR AS Anagrafica"
         " FROM QZ02_DISTINTA QZ02_DISTINTA_FIGLIO LEFT OUTER JOIN QZ02_DISTINTA QZ02_DISTINTA_PADRE ON "
         "QZ02_DISTINTA_FIGLIO.QZ02_IDPARENT_QZ02 = QZ02_DISTINTA_PADRE.QZ02_ID LEFT OUTER JOIN CG44_CLIFOR ON "
         "QZ02_DISTINTA_PADRE.QZ02_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18 AND "
         "QZ02_DISTINTA_PADRE.QZ02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF AND "
         "QZ02_DISTINTA_PADRE.QZ02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR"
         " WHERE QZ02_DISTINTA_FIGLIO.QZ02_DITTA_CG18 = ";
    s.number(ditta);
    s << " AND QZ02_DISTINTA_FIGLIO.QZ02_TIPOCF_CG44 = ";
    s.number(tipo.numero());
    s << " AND QZ02_DISTINTA_FIGLIO.QZ02_CLIFOR_CG44 IN (";
    elenca(s, account);
    return s << ")";
}

Statement istruzioneNomi(std::int64_t ditta, TipoCF tipo, std::span<const CodiceAccount> account) {
    Statement s;
    s << "SELECT CG44_CLIFOR.CG44_CLIFOR AS Anagrafica, CG16_RAGSOANAG AS RagSoc FROM CG44_CLIFOR LEFT OUTER JOIN "
         "CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE WHERE CG44_CLIFOR.CG44_DITTA_CG18 = ";
    s.number(ditta);
    s << " AND CG44_CLIFOR.CG44_TIPOCF = ";
    s.number(tipo.numero());
    s << " AND CG44_CLIFOR.CG44_CLIFOR IN (";
    elenca(s, account);
    return s << ")";
}

Statement istruzioneCodiceDistinta(DistintaId distinta) {
    Statement s;
    s << "SELECT QZ01_CODICE FROM QZ01_TIPODISTINTA WHERE QZ01_ID = ";
    return s.number(distinta.numero());
}

Statement istruzioneAggiornaDistinte(std::span<const NodoId> nodi, DistintaId da, DistintaId a) {
    Statement s;
    s << "UPDATE QZ02_DISTINTA SET QZ02_ID_QZ01 = '";
    s.number(a.numero());
    s << "' WHERE QZ02_ID_QZ01 = '";
    s.number(da.numero());
    s << "' AND QZ02_ID IN (";
    elenca(s, nodi);
    return s << ")";
}

Statement istruzioneChiudiLegami(std::span<const NodoId> nodi, DistintaId distinta, contract::Date fine,
                                 const Autore& autore) {
    // The date of the last change is left alone, on purpose.
    Statement s;
    s << "UPDATE QZ02_DISTINTA SET QZ02_DATAFINEVAL = (CASE WHEN QZ02_DATAINIZIOVAL > CONVERT(DateTime,'";
    s.date(fine);
    s << "',103) THEN QZ02_DATAINIZIOVAL ELSE CONVERT(DateTime,'";
    s.date(fine);
    s << "',103) END), QZ02_GRUPPOVAR = '";
    s.text(autore.gruppo);
    s << "', QZ02_UTENTEVAR = '";
    s.text(autore.utente);
    s << "' WHERE QZ02_ID_QZ01 = '";
    s.number(distinta.numero());
    s << "' AND QZ02_DATAFINEVAL > CONVERT(DateTime,'";
    s.date(fine);
    s << "',103) AND QZ02_ID IN (";
    elenca(s, nodi);
    return s << ")";
}

Statement istruzioneInserisciLegami(std::span<const RigaNuova> righe, const NuovoLegame& legame, const Autore& autore) {
    Statement s;
    aggiungiColonneLegame(s, righe.front().nodo);
    for (std::size_t i = 0; i < righe.size(); ++i) {
        if (i > 0)
            s << ",";
        aggiungiValoriLegame(s, righe[i].nodo, legame, righe[i].guid, autore);
    }
    return s;
}

Statement istruzioneIdNuovi(std::int64_t ditta, TipoCF tipo, std::span<const CodiceAccount> account,
                            DistintaId distinta, contract::Date inizio) {
    Statement s;
    s << "SELECT QZ02_ID, QZ02_GUID FROM QZ02_DISTINTA";
    aggiungiConti(s, ditta, tipo, account);
    s << " AND QZ02_ID_QZ01 = ";
    s.number(distinta.numero());
    s << " AND QZ02_DATAINIZIOVAL = CONVERT(DateTime,'";
    s.date(inizio);
    return s << "',103)";
}

} // namespace qz
