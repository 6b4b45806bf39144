#include "component/DistinteFinte.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace prove {

using contract::FieldType;
using contract::Value;
using platform::headless::ScriptedRows;

namespace {

/// The number that follows the last occurrence of a piece of text, quotes passed over; nothing when there is none.
std::optional<std::int64_t> numero(const std::string& testo, std::string_view dopo) {
    auto inizio = testo.rfind(dopo);
    if (inizio == std::string::npos)
        return std::nullopt;
    inizio += dopo.size();
    while (inizio < testo.size() && (testo[inizio] == '\'' || testo[inizio] == ' '))
        ++inizio;
    std::int64_t valore = 0;
    const auto [fine, errore] = std::from_chars(testo.data() + inizio, testo.data() + testo.size(), valore);
    return errore == std::errc() ? std::optional(valore) : std::nullopt;
}

/// The dates of the text, in order.
std::vector<contract::Date> date(const std::string& testo) {
    constexpr std::string_view segno = "CONVERT(DateTime,'";
    std::vector<contract::Date> trovate;
    for (auto at = testo.find(segno); at != std::string::npos; at = testo.find(segno, at + 1))
        trovate.push_back(giorno(std::string_view(testo).substr(at + segno.size(), 10)));
    return trovate;
}

/// The text between quotes after the last occurrence of a piece.
std::string citato(const std::string& testo, std::string_view dopo) {
    const auto inizio = testo.rfind(dopo) + dopo.size();
    return testo.substr(inizio, testo.find('\'', inizio) - inizio);
}

Value data(const std::string& testo) {
    return testo.empty() ? Value::null() : Value(giorno(testo));
}

template <class T> Value oppureNulla(const std::optional<T>& valore) {
    return valore ? Value(*valore) : Value::null();
}

const std::vector<std::string>& colonneFacoltative() {
    static const std::vector<std::string> nomi{"QZ02_CLIFORFATT_CG44", "QZ02_TIPOANAGFATT", "QZ02_IDSTRUTTURA_LP09",
                                               "QZ02_IDLOCALIZZATA_LP09", "QZ02_INDEREPROMO"};
    return nomi;
}

std::vector<Value> facoltativi(const NodoFinto& nodo) {
    std::vector<Value> valori;
    for (const auto& nome : colonneFacoltative()) {
        const auto valore = nodo.facoltativi.find(nome);
        valori.push_back(valore == nodo.facoltativi.end() ? Value::null() : Value(valore->second));
    }
    return valori;
}

ScriptedRows conCampi(std::vector<std::pair<std::string, FieldType>> campi, std::vector<std::vector<Value>> righe) {
    ScriptedRows risposta;
    for (auto& [nome, tipo] : campi)
        risposta.fields.push_back({nome, tipo, 0, 0});
    risposta.rows = std::move(righe);
    return risposta;
}

bool registrato(const std::optional<std::int64_t>& account) {
    return account && *account < 1000;
}

Value ragioneSociale(const std::optional<std::int64_t>& account) {
    return registrato(account) ? Value("SOGGETTO " + std::to_string(*account)) : Value::null();
}

} // namespace

const TipoFinto* DistinteFinte::tipo(std::int64_t id) const {
    const auto trovato = std::find_if(tipi.begin(), tipi.end(), [id](const TipoFinto& t) { return t.id == id; });
    return trovato == tipi.end() ? nullptr : &*trovato;
}

int DistinteFinte::tipoCF(const NodoFinto& nodo) const {
    const auto* suo = tipo(nodo.distinta);
    return suo ? suo->tipoCF : 0;
}

const NodoFinto* DistinteFinte::nodo(std::int64_t id) const {
    const auto trovato = std::find_if(nodi.begin(), nodi.end(), [id](const NodoFinto& n) { return n.id == id; });
    return trovato == nodi.end() ? nullptr : &*trovato;
}

NodoFinto* DistinteFinte::nodo(std::int64_t id) {
    const auto trovato = std::find_if(nodi.begin(), nodi.end(), [id](const NodoFinto& n) { return n.id == id; });
    return trovato == nodi.end() ? nullptr : &*trovato;
}

NodoFinto& DistinteFinte::il(std::int64_t id) {
    if (auto* trovato = nodo(id))
        return *trovato;
    throw std::out_of_range("nodo " + std::to_string(id));
}

ScriptedRows DistinteFinte::nodiDellaDistinta(const std::string& testo) const {
    const auto distinta = numero(testo, "QZ02_ID_QZ01 = ");
    const auto kind = numero(testo, "QZ02_TIPOCF_CG44 = ");
    std::vector<std::vector<Value>> righe;
    for (const auto& n : nodi) {
        if (n.distinta != distinta || tipoCF(n) != kind || !n.account)
            continue;
        std::vector<Value> riga{n.id,        ragioneSociale(n.account), "",         oppureNulla(n.padre),
                                n.id,        oppureNulla(n.padre),      *n.account, data(n.inizio),
                                data(n.fine)};
        for (auto& valore : facoltativi(n))
            riga.push_back(std::move(valore));
        riga.push_back(oppureNulla(n.guid));
        righe.push_back(std::move(riga));
    }
    std::vector<std::pair<std::string, FieldType>> campi{{"QZ02_ID", FieldType::integer},
                                                         {"RagioneSociale", FieldType::varChar},
                                                         {"QZ02_DESCR", FieldType::varChar},
                                                         {"QZ02_IDPARENT_QZ02", FieldType::integer},
                                                         {"COD", FieldType::integer},
                                                         {"CODP", FieldType::integer},
                                                         {"QZ02_CLIFOR_CG44", FieldType::integer},
                                                         {"QZ02_DATAINIZIOVAL", FieldType::dbTimeStamp},
                                                         {"QZ02_DATAFINEVAL", FieldType::dbTimeStamp}};
    for (const auto& nome : colonneFacoltative())
        campi.emplace_back(nome, FieldType::integer);
    campi.emplace_back("QZ02_GUID", FieldType::guid);
    return conCampi(std::move(campi), std::move(righe));
}

ScriptedRows DistinteFinte::padri(const std::string& testo) const {
    const auto account = numero(testo, "QZ02_CLIFOR_CG44 = ");
    const auto kind = numero(testo, "QZ02_TIPOCF_CG44 = ");
    const auto distinta = numero(testo, "QZ02_ID_QZ01 = ");
    std::vector<std::vector<Value>> righe;
    for (const auto& figlio : nodi) {
        if (figlio.distinta != distinta || tipoCF(figlio) != kind || figlio.account != account)
            continue;
        const auto* padre = figlio.padre ? nodo(*figlio.padre) : nullptr;
        const auto suo = padre ? padre->account : std::nullopt;
        righe.push_back({oppureNulla(suo), ragioneSociale(suo), data(figlio.inizio), data(figlio.fine)});
    }
    return conCampi({{"Anagrafica", FieldType::integer},
                     {"RagSoc", FieldType::varChar},
                     {"DataI", FieldType::dbTimeStamp},
                     {"DataF", FieldType::dbTimeStamp}},
                    std::move(righe));
}

ScriptedRows DistinteFinte::sovrapposti(const std::string& testo) const {
    const auto account = numero(testo, "QZ02_CLIFOR_CG44 = ");
    const auto kind = numero(testo, "QZ02_TIPOCF_CG44 = ");
    const auto escluso = numero(testo, "QZ02_ID <> ");
    const auto periodo = date(testo);
    const auto inizio = periodo.at(0);
    const auto fine = periodo.at(1);
    std::vector<const NodoFinto*> trovati;
    for (const auto& n : nodi) {
        if (tipoCF(n) != kind || n.account != account || n.id == escluso || n.inizio.empty() || n.fine.empty())
            continue;
        const auto dal = giorno(n.inizio);
        const auto al = giorno(n.fine);
        if ((inizio >= dal && inizio <= al) || (fine >= dal && fine <= al) || (inizio <= dal && fine >= al))
            trovati.push_back(&n);
    }
    std::stable_sort(trovati.begin(), trovati.end(), [](auto* a, auto* b) { return a->distinta < b->distinta; });
    std::vector<std::vector<Value>> righe;
    for (const auto* n : trovati) {
        const auto* padre = n->padre ? nodo(*n->padre) : nullptr;
        const auto* suo = padre ? tipo(padre->distinta) : nullptr;
        const auto accountPadre = padre ? padre->account : std::nullopt;
        righe.push_back({oppureNulla(accountPadre), ragioneSociale(accountPadre), data(n->inizio), data(n->fine),
                         suo ? Value(suo->codice) : Value::null(), suo ? Value(suo->descrizione) : Value::null()});
    }
    return conCampi({{"Anagrafica", FieldType::integer},
                     {"RagSoc", FieldType::varChar},
                     {"DataI", FieldType::dbTimeStamp},
                     {"DataF", FieldType::dbTimeStamp},
                     {"CodDistinta", FieldType::varChar},
                     {"DescDistinta", FieldType::varChar}},
                    std::move(righe));
}

ScriptedRows DistinteFinte::decodifica(const std::string& testo) const {
    const auto* origine = nodo(numero(testo, "QZ02_DISTINTA_ORIG.QZ02_ID = ").value());
    const auto inizio = date(testo);
    std::vector<std::vector<Value>> righe;
    for (const auto& n : nodi) {
        if (!origine || !origine->account || n.account != origine->account || tipoCF(n) != tipoCF(*origine))
            continue;
        if (inizio.empty() || n.inizio == inizio.front().text())
            righe.push_back({n.id, *n.account});
    }
    return conCampi({{"ID", FieldType::integer}, {"CODICE", FieldType::integer}}, std::move(righe));
}

ScriptedRows DistinteFinte::riletti(const std::string& testo) const {
    std::vector<std::vector<Value>> righe;
    const auto elenco = testo.substr(testo.find('(') + 1);
    for (const auto& n : nodi) {
        const auto cifre = std::to_string(n.id);
        for (const auto& forma : {cifre + ",", cifre + ")"})
            if (elenco.starts_with(forma) || elenco.find(" " + forma) != std::string::npos) {
                righe.push_back({n.id, n.distinta, oppureNulla(n.padre), data(n.inizio), data(n.fine)});
                break;
            }
    }
    return conCampi({{"QZ02_ID", FieldType::integer},
                     {"QZ02_ID_QZ01", FieldType::integer},
                     {"QZ02_IDPARENT_QZ02", FieldType::integer},
                     {"QZ02_DATAINIZIOVAL", FieldType::dbTimeStamp},
                     {"QZ02_DATAFINEVAL", FieldType::dbTimeStamp}},
                    std::move(righe));
}

ScriptedRows DistinteFinte::premio(const std::string& testo) const {
    const auto id = numero(testo, "QZ14_ID_QZ02       = ");
    const auto dopo = date(testo);
    for (const auto& p : premi)
        if (p.nodo == id && p.stato >= 2 && (dopo.empty() || giorno(p.scadenza) > dopo.front()))
            return conCampi({{"QZ13_ID", FieldType::integer}}, {{1}});
    return conCampi({{"QZ13_ID", FieldType::integer}}, {});
}

ScriptedRows DistinteFinte::intere(const std::vector<const NodoFinto*>& trovati) const {
    std::vector<std::vector<Value>> righe;
    for (const auto* n : trovati) {
        std::vector<Value> riga{
            n->id,           n->distinta,   oppureNulla(n->padre), 1, tipoCF(*n), oppureNulla(n->account),
            data(n->inizio), data(n->fine), oppureNulla(n->guid)};
        for (auto& valore : facoltativi(*n))
            riga.push_back(std::move(valore));
        righe.push_back(std::move(riga));
    }
    std::vector<std::pair<std::string, FieldType>> campi{{"QZ02_ID", FieldType::integer},
                                                         {"QZ02_ID_QZ01", FieldType::integer},
                                                         {"QZ02_IDPARENT_QZ02", FieldType::integer},
                                                         {"QZ02_DITTA_CG18", FieldType::integer},
                                                         {"QZ02_TIPOCF_CG44", FieldType::integer},
                                                         {"QZ02_CLIFOR_CG44", FieldType::integer},
                                                         {"QZ02_DATAINIZIOVAL", FieldType::dbTimeStamp},
                                                         {"QZ02_DATAFINEVAL", FieldType::dbTimeStamp},
                                                         {"QZ02_GUID", FieldType::guid}};
    for (const auto& nome : colonneFacoltative())
        campi.emplace_back(nome, FieldType::integer);
    return conCampi(std::move(campi), std::move(righe));
}

/// Both structural updates: with a new parent and audit values, or the distinta alone.
std::int64_t DistinteFinte::sposta(const std::string& testo) {
    auto* n = nodo(numero(testo, "AND QZ02_ID = ").value());
    if (!n || n->distinta != numero(testo, "WHERE QZ02_ID_QZ01 = "))
        return 0;
    if (const auto padre = numero(testo, "SET QZ02_IDPARENT_QZ02 = ")) {
        n->padre = padre;
        n->dataVar = date(testo).front().text();
        n->gruppoVar = citato(testo, "QZ02_GRUPPOVAR = '");
        n->utenteVar = citato(testo, "QZ02_UTENTEVAR = '");
        n->distinta = numero(testo.substr(0, testo.find("WHERE")), "QZ02_ID_QZ01 = ").value();
    } else {
        n->distinta = numero(testo, "SET QZ02_ID_QZ01 = ").value();
    }
    return 1;
}

std::int64_t DistinteFinte::chiudi(const std::string& testo) {
    auto* n = nodo(numero(testo, "AND QZ02_ID = ").value());
    const auto fine = date(testo).front();
    if (!n || n->distinta != numero(testo, "WHERE QZ02_ID_QZ01 = ") || n->fine.empty() || giorno(n->fine) <= fine)
        return 0;
    n->fine = giorno(n->inizio) > fine ? n->inizio : fine.text();
    n->gruppoVar = citato(testo, "QZ02_GRUPPOVAR = '");
    n->utenteVar = citato(testo, "QZ02_UTENTEVAR = '");
    return 1;
}

std::int64_t DistinteFinte::inserisci(const std::string& testo) {
    const auto separa = [](std::string elenco) {
        std::vector<std::string> pezzi(1);
        int parentesi = 0;
        for (const char c : elenco) {
            parentesi += (c == '(') - (c == ')');
            if (c == ',' && parentesi == 0)
                pezzi.emplace_back();
            else if (c != ' ' && c != '\'')
                pezzi.back() += c;
        }
        return pezzi;
    };
    const auto aperta = testo.find('(');
    const auto mezzo = testo.find(" ) VALUES (");
    const auto nomi = separa(testo.substr(aperta + 1, mezzo - aperta - 1));
    const auto inizioValori = mezzo + std::string_view(" ) VALUES (").size();
    const auto valori = separa(testo.substr(inizioValori, testo.rfind(')') - inizioValori));
    if (nomi.size() != valori.size())
        throw contract::RuntimeError(contract::RuntimeError::database, "colonne e valori: " + testo);
    std::map<std::string, std::string> riga;
    for (std::size_t i = 0; i < nomi.size(); ++i)
        riga[nomi[i]] = valori[i];
    const auto intero = [&](const std::string& nome) { return Value(riga.at(nome)).integer().value(); };
    const auto dataDi = [&](const std::string& nome) {
        return riga.at(nome).substr(std::string_view("CONVERT(DateTime,").size(), 10);
    };

    NodoFinto nuovo;
    for (const auto& altro : nodi)
        nuovo.id = std::max(nuovo.id, altro.id);
    ++nuovo.id;
    nuovo.distinta = intero("QZ02_ID_QZ01");
    nuovo.padre = intero("QZ02_IDPARENT_QZ02");
    nuovo.account = intero("QZ02_CLIFOR_CG44");
    nuovo.stato = intero("QZ02_ID_WF02");
    nuovo.inizio = dataDi("QZ02_DATAINIZIOVAL");
    nuovo.fine = dataDi("QZ02_DATAFINEVAL");
    nuovo.dataCre = dataDi("QZ02_DATACRE");
    nuovo.dataVar = dataDi("QZ02_DATAVAR");
    nuovo.gruppoCre = riga.at("QZ02_GRUPPOCRE");
    nuovo.gruppoVar = riga.at("QZ02_GRUPPOVAR");
    nuovo.utenteCre = riga.at("QZ02_UTENTECRE");
    nuovo.utenteVar = riga.at("QZ02_UTENTEVAR");
    nuovo.guid = riga.at("QZ02_GUID");
    for (const auto& nome : colonneFacoltative())
        if (riga.contains(nome))
            nuovo.facoltativi[nome] = intero(nome);
    nodi.push_back(nuovo);
    return 1;
}

void DistinteFinte::collega(platform::headless::ScriptedConnection& db) {
    db.answer("SELECT *  FROM QZ01_TIPODISTINTA", [this](const std::string& testo) {
        std::vector<std::vector<Value>> righe;
        for (const auto& t : tipi)
            if (t.tipoCF == numero(testo, "QZ01_INDTIPOSOGG = "))
                righe.push_back({t.id, t.codice, t.descrizione, t.tipoCF});
        return conCampi({{"QZ01_ID", FieldType::integer},
                         {"QZ01_CODICE", FieldType::varChar},
                         {"QZ01_DESCR", FieldType::varChar},
                         {"QZ01_INDTIPOSOGG", FieldType::integer}},
                        std::move(righe));
    });
    db.answer(" SELECT QZ01_IDDIV_CO1A", [this](const std::string& testo) {
        std::vector<std::vector<Value>> righe;
        if (const auto* t = tipo(numero(testo, "QZ01_ID = ").value()))
            righe.push_back({oppureNulla(t->divisione), oppureNulla(t->guid)});
        return conCampi({{"QZ01_IDDIV_CO1A", FieldType::varChar}, {"QZ01_GUID", FieldType::guid}}, std::move(righe));
    });
    db.answer(" SELECT QZ02_ID,  ", [this](const std::string& testo) { return nodiDellaDistinta(testo); });
    db.answer(" SELECT Count(*) as Conta ", [this](const std::string& testo) {
        const auto distinta = numero(testo, "QZ02_ID_QZ01 = ");
        const auto conta =
            std::count_if(nodi.begin(), nodi.end(), [&](const NodoFinto& n) { return n.distinta == distinta; });
        return conCampi({{"Conta", FieldType::integer}}, {{static_cast<std::int32_t>(conta)}});
    });
    db.answer(" SELECT  CG44_CLIFOR AS Anagrafica, CG16_RAGSOANAG AS RagSoc, QZ02",
              [this](const std::string& testo) { return padri(testo); });
    db.answer(" SELECT  CG44_CLIFOR AS Anagrafica, CG16_RAGSOANAG AS RagSoc,  QZ02",
              [this](const std::string& testo) { return sovrapposti(testo); });
    db.answer("SELECT QZ02_DISTINTA_DEST", [this](const std::string& testo) { return decodifica(testo); });
    db.answer("SELECT  *  FROM  QZ02_DISTINTA  WHERE QZ02_IDPARENT_QZ02", [this](const std::string& testo) {
        const auto padre = numero(testo, "QZ02_IDPARENT_QZ02 = ");
        const auto distinta = numero(testo, "QZ02_ID_QZ01 = ");
        std::vector<const NodoFinto*> trovati;
        for (const auto& n : nodi)
            if (n.padre == padre && n.distinta == distinta)
                trovati.push_back(&n);
        return intere(trovati);
    });
    db.answer(" SELECT * FROM QZ02_DISTINTA ", [this](const std::string& testo) {
        const auto* n = nodo(numero(testo, "QZ02_ID  = ").value());
        return intere(n ? std::vector<const NodoFinto*>{n} : std::vector<const NodoFinto*>{});
    });
    db.answer("SELECT QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02,",
              [this](const std::string& testo) { return riletti(testo); });
    db.answer("SELECT TOP 1 *", [this](const std::string& testo) { return premio(testo); });
    db.change("UPDATE QZ02_DISTINTA  SET QZ02_ID", [this](const std::string& testo) { return sposta(testo); });
    db.change("UPDATE QZ02_DISTINTA  SET QZ02_DATAFINEVAL = (CASE",
              [this](const std::string& testo) { return chiudi(testo); });
    db.change("INSERT INTO QZ02_DISTINTA", [this](const std::string& testo) { return inserisci(testo); });
    db.transaction = [this](std::string_view parola) {
        if (parola == "BeginTrans")
            primaDellaTransazione_ = nodi;
        else if (parola == "RollbackTrans")
            nodi = primaDellaTransazione_;
    };
}

} // namespace prove
