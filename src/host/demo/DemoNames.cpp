#include "host/demo/DemoNames.h"

#include <algorithm>

namespace host::demo {

std::uint64_t Sequence::next() {
    state_ += 0x9E3779B97F4A7C15ULL;
    std::uint64_t z = state_;
    z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27U)) * 0x94D049BB133111EBULL;
    return z ^ (z >> 31U);
}

const std::array<MacroArea, 4>& macroAreas() {
    static constexpr std::array<MacroArea, 4> all{
        {{"NO", "Nord-Ovest"}, {"NE", "Nord-Est"}, {"CE", "Centro"}, {"SI", "Sud e isole"}}};
    return all;
}

const std::array<Region, regionCount>& regions() {
    static constexpr std::array<Region, regionCount> all{{{"PIE", "Piemonte", "NO"},
                                                          {"LOM", "Lombardia", "NO"},
                                                          {"LIG", "Liguria", "NO"},
                                                          {"VEN", "Veneto", "NE"},
                                                          {"FVG", "Friuli-Venezia Giulia", "NE"},
                                                          {"EMR", "Emilia-Romagna", "NE"},
                                                          {"TOS", "Toscana", "CE"},
                                                          {"MAR", "Marche", "CE"},
                                                          {"LAZ", "Lazio", "CE"},
                                                          {"CAM", "Campania", "SI"},
                                                          {"PUG", "Puglia", "SI"},
                                                          {"SIC", "Sicilia", "SI"}}};
    return all;
}

const std::array<Place, placeCount>& places() {
    static constexpr std::array<Place, placeCount> all{{
        {"Torino", "TO", "011", "PIE", "TO1", "PIE"},  {"Cuneo", "CN", "0171", "PIE", "CN1", "PIE"},
        {"Milano", "MI", "02", "LOM", "MI1", "LOM"},   {"Bergamo", "BG", "035", "LOM", "BG1", "LOM"},
        {"Genova", "GE", "010", "LIG", "GE1", "LIG"},  {"Savona", "SV", "019", "LIG", "SV1", "LIG"},
        {"Verona", "VR", "045", "VEN", "VR1", "VEN"},  {"Padova", "PD", "049", "VEN", "PD1", "VEN"},
        {"Udine", "UD", "0432", "FVG", "UD1", "FVG"},  {"Trieste", "TS", "040", "FVG", "TS1", "FVG"},
        {"Bologna", "BO", "051", "EMR", "BO1", "EMR"}, {"Parma", "PR", "0521", "EMR", "PR1", "EMR"},
        {"Firenze", "FI", "055", "TOS", "FI1", "TOS"}, {"Pisa", "PI", "050", "TOS", "PI1", "TOS"},
        {"Ancona", "AN", "071", "MAR", "AN1", "MAR"},  {"Pesaro", "PU", "0721", "MAR", "PU1", "MAR"},
        {"Roma", "RM", "06", "LAZ", "RM1", "LAZ"},     {"Latina", "LT", "0773", "LAZ", "LT1", "LAZ"},
        {"Napoli", "NA", "081", "CAM", "NA1", "CAM"},  {"Salerno", "SA", "089", "CAM", "SA1", "CAM"},
        {"Bari", "BA", "080", "PUG", "BA1", "PUG"},    {"Lecce", "LE", "0832", "PUG", "LE1", "PUG"},
        {"Palermo", "PA", "091", "SIC", "PA1", "SIC"}, {"Catania", "CT", "095", "SIC", "CT1", "SIC"},
    }};
    return all;
}

const Region& regionOf(const Place& place) {
    return *std::find_if(regions().begin(), regions().end(),
                         [&](const Region& region) { return region.code == place.region; });
}

const std::array<Trade, tradeCount>& customerTrades() {
    static constexpr std::array<Trade, tradeCount> all{{{"Alimentari", "DET", "AL", "ALD"},
                                                        {"Supermercati", "GDO", "SM", "SMM"},
                                                        {"Ferramenta", "DET", "FE", "FEC"},
                                                        {"Panificio", "DET", "AL", "ALP"},
                                                        {"Ristorante", "HOR", "RI", "RIT"},
                                                        {"Hotel", "HOR", "HO", "HOT"},
                                                        {"Enoteca", "DET", "AL", "ALV"},
                                                        {"Ingrosso", "GDO", "CC", "CCG"},
                                                        {"Farmacia", "DET", "FA", "FAU"},
                                                        {"Trattoria", "HOR", "RI", "RIR"},
                                                        {"Casalinghi", "DET", "FE", "FEU"},
                                                        {"Cash & Carry", "GDO", "CC", "CCA"}}};
    return all;
}

const std::array<Trade, tradeCount>& supplierTrades() {
    static constexpr std::array<Trade, tradeCount> all{{{"Molini", "DET", "AL", "ALP"},
                                                        {"Caseificio", "DET", "AL", "ALD"},
                                                        {"Oleificio", "DET", "AL", "ALV"},
                                                        {"Salumificio", "DET", "AL", "ALD"},
                                                        {"Imballaggi", "GDO", "CC", "CCG"},
                                                        {"Trasporti", "GDO", "CC", "CCA"},
                                                        {"Tipografia", "GDO", "CC", "CCG"},
                                                        {"Vetreria", "DET", "FE", "FEU"},
                                                        {"Officine", "DET", "FE", "FEC"},
                                                        {"Cantina", "DET", "AL", "ALV"},
                                                        {"Pastificio", "DET", "AL", "ALP"},
                                                        {"Logistica", "GDO", "CC", "CCA"}}};
    return all;
}

const std::array<Described, 3>& macroCategories() {
    static constexpr std::array<Described, 3> all{
        {{"DET", "Dettaglio"}, {"GDO", "Grande distribuzione"}, {"HOR", "Alberghi e ristorazione"}}};
    return all;
}

const std::array<Described, 7>& categories() {
    static constexpr std::array<Described, 7> all{{{"AL", "Alimentare"},
                                                   {"FE", "Casa e ferramenta"},
                                                   {"FA", "Farmacie"},
                                                   {"SM", "Supermercati"},
                                                   {"CC", "Ingrosso"},
                                                   {"RI", "Ristoranti"},
                                                   {"HO", "Alberghi"}}};
    return all;
}

const std::array<Described, 5>& payments() {
    static constexpr std::array<Described, 5> all{{{"RD", "Rimessa diretta"},
                                                   {"RB30", "Ricevuta bancaria 30 giorni"},
                                                   {"RB60", "Ricevuta bancaria 60 giorni fine mese"},
                                                   {"BB30", "Bonifico bancario 30 giorni"},
                                                   {"BB90", "Bonifico bancario 90 giorni fine mese"}}};
    return all;
}

const std::array<Described, 5>& workflowStates() {
    static constexpr std::array<Described, 5> all{
        {{"1", "Da approvare"}, {"2", "Approvato"}, {"3", "In revisione"}, {"4", "Sospeso"}, {"5", "Chiuso"}}};
    return all;
}

const std::array<Bank, 6>& banks() {
    static constexpr std::array<Bank, 6> all{{{90101, "Banca Popolare delle Langhe"},
                                              {90202, "Cassa di Risparmio del Ticino"},
                                              {90303, "Credito Cooperativo Veneto"},
                                              {90404, "Banca dell'Appennino"},
                                              {90505, "Banco di Partenope"},
                                              {90606, "Credito delle Due Sicilie"}}};
    return all;
}

namespace {

template <std::size_t N> std::string_view pick(Sequence& sequence, const std::array<std::string_view, N>& all) {
    return all[sequence.below(N)];
}

constexpr std::array<std::string_view, 40> surnames{
    "Rossi",      "Bianchi", "Ferrari",  "Russo",   "Esposito", "Romano",    "Colombo", "Ricci",
    "Marino",     "Greco",   "Bruno",    "Gallo",   "Conti",    "De Luca",   "Costa",   "Giordano",
    "Mancini",    "Rizzo",   "Lombardi", "Moretti", "Barbieri", "Fontana",   "Santoro", "Mariani",
    "Rinaldi",    "Caruso",  "Ferrara",  "Galli",   "Martini",  "Leone",     "Longo",   "Gentile",
    "Martinelli", "Vitale",  "Serra",    "Coppola", "D'Angelo", "Marchetti", "Parisi",  "Villa"};
constexpr std::array<std::string_view, 20> firstNames{
    "Mario",  "Luca",   "Giulia", "Anna",  "Paolo",  "Chiara", "Marco", "Elena",  "Sara", "Andrea",
    "Franca", "Pietro", "Laura",  "Carlo", "Silvia", "Dario",  "Irene", "Nicola", "Rosa", "Stefano"};
constexpr std::array<std::string_view, 14> streets{
    "Via Roma",    "Via Garibaldi",  "Corso Italia",  "Via Mazzini",  "Piazza del Duomo",
    "Via Dante",   "Viale Europa",   "Via Verdi",     "Corso Cavour", "Via della Libertà",
    "Via Marconi", "Strada Vecchia", "Via dei Mille", "Largo Augusto"};
constexpr std::array<std::string_view, 4> forms{"S.r.l.", "S.p.A.", "S.n.c.", "S.a.s."};

} // namespace

std::string personName(Sequence& sequence) {
    std::string name(pick(sequence, surnames));
    return name.append(" ").append(pick(sequence, firstNames));
}

std::string companyName(Sequence& sequence, const Trade& trade) {
    std::string name;
    const std::string_view surname = pick(sequence, surnames);
    switch (sequence.below(4)) {
    case 0:
        return name.append(surname).append(" ").append(pick(sequence, forms));
    case 1:
        return name.append(trade.name)
            .append(" ")
            .append(surname)
            .append(" di ")
            .append(surname)
            .append(" ")
            .append(pick(sequence, firstNames))
            .append(" & C. S.n.c.");
    case 2:
        return name.append(trade.name).append(" F.lli ").append(surname).append(" ").append(pick(sequence, forms));
    default:
        return name.append(trade.name).append(" ").append(surname).append(" ").append(pick(sequence, forms));
    }
}

std::string address(Sequence& sequence) {
    std::string text(pick(sequence, streets));
    return text.append(", ").append(std::to_string(1 + sequence.below(180)));
}

std::string phone(Sequence& sequence, const Place& place) {
    std::string text(place.prefix);
    return text.append(" ").append(std::to_string(100000 + sequence.below(900000)));
}

std::string guid(Sequence& sequence) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr std::string_view pattern = "xxxxxxxx-xxxx-4xxx-8xxx-xxxxxxxxxxxx";
    std::string text(pattern);
    std::uint64_t bits = 0;
    int left = 0;
    for (char& c : text) {
        if (c != 'x')
            continue;
        if (left == 0) {
            bits = sequence.next();
            left = 16;
        }
        c = digits[bits & 15U];
        bits >>= 4U;
        --left;
    }
    return text;
}

std::string longestName() {
    return "Consorzio Interregionale Cooperative Agricole Ortofrutticole Riunite Val Bormida";
}

} // namespace host::demo
