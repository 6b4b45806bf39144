// A step is one statement or one call: every procedure is walked, every call that it makes fails once, and each answer
// to the error display is given. "Again" repeats the call that failed and nothing that does something before it, "go
// on" continues with what stands after it, "leave" and any other answer run nothing more of the procedure.

#include "component/Passi.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using prove::Caso;
using prove::Corsa;
using prove::esegui;
using Testi = std::vector<std::string>;

namespace {

/// Reads, and gives nothing away when it is done twice: it may stand in one statement with the call that it serves.
bool lettura(const std::string& chiamata) {
    static const Testi letture{"Theme.color", "ClsGlobal.connectionService", "ConnectionService.",
                               "ClsGlobal.companyService", "CompanyService.", "TRW_DISTINTEDEST.selected",
                               // The statements of the one call that checks a link
                               " SELECT * FROM QZ02_DISTINTA  WHERE", " SELECT  CG44_CLIFOR AS Anagrafica",
                               "SELECT TOP 1"};
    return std::any_of(letture.begin(), letture.end(),
                       [&](const auto& inizio) { return chiamata.starts_with(inizio); });
}

/// What is put right however a procedure is left, and is no step of it.
bool riparo(const std::string& chiamata) {
    return chiamata == "RollbackTrans" || chiamata.ends_with(".lockUpdate(false)") || chiamata.ends_with(".endUpdate");
}

/// Of the refresh at every activation, whose errors are ignored; and the log class itself, without which no error can
/// be shown.
bool senzaDomanda(const std::string& chiamata) {
    return chiamata == "ActiveFrame.Status()" || chiamata.starts_with("Navigator.setStatus(") ||
           chiamata == "ClsGlobal.newLogClass()";
}

/// The kind of a call, without what it is about.
std::string tipo(const std::string& chiamata) {
    const auto punto = chiamata.find('.');
    const auto parentesi = chiamata.find('(');
    if (chiamata.find("lockUpdate") != std::string::npos || chiamata.starts_with("GRIDNAV_"))
        return chiamata;
    if (punto != std::string::npos && punto < chiamata.find(' '))
        return chiamata.substr(0, parentesi);
    return chiamata.substr(0, 40);
}

Testi tipi(const Testi& chiamate) {
    Testi risultato;
    for (const auto& chiamata : chiamate)
        risultato.push_back(tipo(chiamata));
    return risultato;
}

Testi daA(const Testi& chiamate, std::size_t da, std::size_t fino) {
    return {chiamate.begin() + static_cast<std::ptrdiff_t>(da), chiamate.begin() + static_cast<std::ptrdiff_t>(fino)};
}

/// Where the step begins to which a call belongs: the call itself, but the whole of a transaction is one step, and what
/// is read for a call stands in its statement.
std::size_t inizioDelPasso(const Testi& pulita, std::size_t i) {
    std::size_t aperta = pulita.size();
    for (std::size_t k = 0; k <= i; ++k) {
        if (pulita[k] == "BeginTrans")
            aperta = k;
        else if ((pulita[k] == "CommitTrans" || pulita[k] == "RollbackTrans") && k != i)
            aperta = pulita.size();
    }
    return aperta;
}

class Passi : public testing::TestWithParam<Caso> {
protected:
    const Caso& caso = GetParam();
    Corsa senzaErrori = esegui(caso, {}, 3);
    const Testi& pulita = senzaErrori.chiamate;

    /// Whether a call is made during another one, by an event that it raises.
    bool dentro(std::size_t chiamata, std::size_t altra) const {
        auto madre = senzaErrori.madri[chiamata];
        while (madre && *madre != altra)
            madre = senzaErrori.madri[*madre];
        return madre.has_value();
    }
    /// Whether a call may be left out when another one failed and was passed over.
    bool mancante(std::size_t chiamata, std::size_t fallita) const {
        const auto aperta = inizioDelPasso(pulita, fallita);
        const bool stessoPasso =
            aperta < pulita.size() && std::none_of(pulita.begin() + static_cast<std::ptrdiff_t>(fallita),
                                                   pulita.begin() + static_cast<std::ptrdiff_t>(chiamata), chiude);
        return dentro(chiamata, fallita) || stessoPasso || prove::puoMancare(pulita[fallita], pulita[chiamata]);
    }
    static bool chiude(const std::string& chiamata) { return chiamata == "CommitTrans" || chiamata == "RollbackTrans"; }
};

TEST_P(Passi, RunWithoutErrors) {
    const auto corsa = esegui(caso, {}, 3);
    EXPECT_TRUE(corsa.errori.empty());
    EXPECT_FALSE(corsa.chiamate.empty());
}

TEST_P(Passi, AgainRepeatsTheFailedCallAlone) {
    for (std::size_t i = 0; i < pulita.size(); ++i) {
        if (senzaDomanda(pulita[i]))
            continue;
        SCOPED_TRACE(std::to_string(i) + " " + pulita[i]);
        const auto corsa = esegui(caso, i, 4);
        ASSERT_EQ(corsa.errori.size(), 1U);
        Testi attese = daA(pulita, 0, i + 1);
        auto da = i;
        if (const auto aperta = inizioDelPasso(pulita, i); aperta < pulita.size()) {
            da = aperta;
            if (i != aperta && pulita[i] != "RollbackTrans")
                attese.emplace_back("RollbackTrans");
        } else {
            const auto ripetute = corsa.chiamate.size() - std::min(corsa.chiamate.size(), pulita.size() + 1);
            for (std::size_t k = 0; k < ripetute && da > 0 && lettura(pulita[da - 1]); ++k)
                --da;
        }
        const auto resto = daA(pulita, da, pulita.size());
        attese.insert(attese.end(), resto.begin(), resto.end());
        // Whatever a transaction makes anew, a GUID or an id, has another value the second time.
        if (inizioDelPasso(pulita, i) < pulita.size())
            EXPECT_EQ(tipi(corsa.chiamate), tipi(attese));
        else
            EXPECT_EQ(corsa.chiamate, attese);
    }
}

TEST_P(Passi, GoOnContinuesWithWhatStandsAfterTheFailedCall) {
    for (std::size_t i = 0; i < pulita.size(); ++i) {
        if (senzaDomanda(pulita[i]))
            continue;
        SCOPED_TRACE(std::to_string(i) + " " + pulita[i]);
        const auto corsa = esegui(caso, i, 5);
        ASSERT_FALSE(corsa.errori.empty());
        const auto resto = tipi(daA(corsa.chiamate, i + 1, corsa.chiamate.size()));
        const auto attese = tipi(pulita);
        // What is left out, and what comes in its place, is what the table says depends on the failed call.
        std::size_t k = i + 1;
        for (const auto& chiamata : resto) {
            auto trovata = k;
            while (trovata < attese.size() &&
                   (dentro(trovata, i) || (attese[trovata] != chiamata && mancante(trovata, i))))
                ++trovata;
            if (trovata < attese.size() && attese[trovata] == chiamata)
                k = trovata + 1;
            else
                EXPECT_TRUE(riparo(chiamata) || prove::puoVenire(pulita[i], chiamata)) << "unexpected: " << chiamata;
            if (caso.conDialogo && k > i + 1)
                break; // what the user does next in a dialog differs with what the dialog holds
        }
        if (caso.conDialogo)
            continue;
        for (; k < attese.size(); ++k)
            EXPECT_TRUE(mancante(k, i)) << "missing: " << attese[k];
    }
}

TEST_P(Passi, LeaveAndAnyOtherAnswerRunNothingMoreOfTheProcedure) {
    std::vector<std::string> procedure;
    std::vector<Corsa> corse;
    for (std::size_t i = 0; i < pulita.size(); ++i) {
        corse.push_back(esegui(caso, i, 3));
        ASSERT_EQ(corse[i].errori.empty(), senzaDomanda(pulita[i])) << i << " " << pulita[i];
        procedure.push_back(senzaDomanda(pulita[i]) ? "-" : corse[i].errori.front());
    }
    for (std::size_t i = 0; i < pulita.size(); ++i) {
        if (senzaDomanda(pulita[i]))
            continue;
        SCOPED_TRACE(std::to_string(i) + " " + pulita[i] + " in " + procedure[i]);
        const auto& corsa = corse[i];
        EXPECT_EQ(corsa.chiamate, esegui(caso, i, 1).chiamate);
        if (prove::rimediaSempre(procedure[i]))
            continue; // what it does when it is left has tests of its own
        if (caso.conDialogo) {
            // What the user does next in a dialog differs with what the dialog holds.
            const bool seguita = i + 1 < pulita.size() && i + 1 < corsa.chiamate.size() && !dentro(i + 1, i);
            if (seguita && procedure[i] == procedure[i + 1] && !prove::chiamataPiuVolte(procedure[i])) {
                EXPECT_NE(corsa.chiamate[i + 1], pulita[i + 1]);
            }
            continue;
        }
        if (corsa.errori.size() > 1)
            continue; // what another procedure could not do without it is shown as well
        auto dopo = tipi(daA(corsa.chiamate, i + 1, corsa.chiamate.size()));
        const auto finisceCosi = [&] {
            return dopo.size() < pulita.size() - i &&
                   tipi(daA(pulita, pulita.size() - dopo.size(), pulita.size())) == dopo;
        };
        while (!finisceCosi() && !dopo.empty() && riparo(dopo.front()))
            dopo.erase(dopo.begin());
        EXPECT_TRUE(finisceCosi()) << testing::PrintToString(dopo);
        const auto da = pulita.size() - std::min(dopo.size(), pulita.size());
        // The next calls of the same procedure do not come, unless the procedure was called anew.
        if (prove::chiamataPiuVolte(procedure[i]))
            continue;
        for (std::size_t k = da; k < pulita.size(); ++k)
            EXPECT_TRUE(procedure[k] != procedure[i] || riparo(pulita[k])) << k << " " << pulita[k];
    }
}

INSTANTIATE_TEST_SUITE_P(Procedure, Passi, testing::ValuesIn(prove::casi()),
                         [](const auto& parametro) { return parametro.param.nome; });

/// Every name under which the component reports an error, so that none goes without.
TEST(Procedure, AreReportedUnderTheirNames) {
    std::vector<std::string> nomi;
    for (const auto& caso : prove::casi()) {
        const auto numero = esegui(caso, {}, 3).chiamate.size();
        for (std::size_t i = 0; i < numero; ++i)
            for (const auto& nome : esegui(caso, i, 3).errori)
                nomi.push_back(nome);
    }
    std::sort(nomi.begin(), nomi.end());
    nomi.erase(std::unique(nomi.begin(), nomi.end()), nomi.end());
    std::string righe;
    for (const auto& nome : nomi)
        righe += nome + "\n";
    EXPECT_EQ(righe, prove::nomiDelleProcedure());
}

} // namespace
