#pragma once

#include "component/Scena.h"
#include "component/interaction/ModificaNodo.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace prove {

/// Destination 20: 11 (201) with 12 (202) and 13 (203); 13 has no dates. The focus is on 12.
class ModificaNodoTest : public testing::Test {
protected:
    static constexpr const char* colonnaInizio = "trQZ02_DATAINIZIOVAL";
    static constexpr const char* colonnaFine = "trQZ02_DATAFINEVAL";
    static constexpr const char* parametri = " SELECT   QZ03_ID_WF02";
    static constexpr const char* dettaglio = " SELECT   RTrim(CAST(CG44_CLIFOR";
    static constexpr const char* premio = "SELECT TOP 1 *";

    ModificaNodoTest() {
        scena.tabelle.tipi = {{10, "A", "ORIGINE", 0, "DO"}, {20, "B", "DESTINAZIONE", 0, "DD"}, {30, "C", "VUOTA"}};
        scena.tabelle.nodi = {{1, 10, {}, 101},
                              {2, 10, 1, 102},
                              {11, 20, {}, 201},
                              {12, 20, 11, 202, "10/05/2024", "20/05/2024"},
                              {13, 20, 11, 203, "", ""}};
        auto& dest = *scena.stato.destinazione.albero;
        auto& orig = *scena.stato.origine.albero;
        orig.OnChangeNode = [this] { modifica.TRW_ELEMDISTINTAORIG_OnChangeNode(); };
        orig.OnChangeNodeEx = [this] { modifica.TRW_ELEMDISTINTAORIG_OnChangeNodeEx(); };
        dest.OnChangeNode = [this] { modifica.TRW_ELEMDISTINTADEST_OnChangeNode(); };
        dest.OnChangeNodeEx = [this] { modifica.TRW_ELEMDISTINTADEST_OnChangeNodeEx(); };
        dest.OnEdited = [this](contract::Node nodo) { modifica.TRW_ELEMDISTINTADEST_OnEdited(nodo); };
        dest.OnChangedColumn = [this](contract::Node nodo) { modifica.TRW_ELEMDISTINTADEST_OnChangedColumn(nodo); };
        modifica.apriEditorStato = [this](qz::FormBase::Passo&, contract::Node nodo) {
            editor.push_back(albero.key(nodo));
        };
        scena.db->change("UPDATE QZ02_DISTINTA  SET QZ02_DATAINIZIOVAL", [this](const std::string& testo) {
            scritte.push_back(testo);
            return righeScritte;
        });
        scena.carica(scena.stato.destinazione, "20", 12);
        albero.settle();
        scena.db->take();
    }

    bool scrivi(const char* colonna, std::string_view testo, std::int64_t nodo = 12) {
        return albero.editCell(albero.byKey(nodo), colonna, testo);
    }
    std::string cella(const char* colonna, std::int64_t nodo = 12) {
        return albero.value(albero.byKey(nodo), colonna).text();
    }
    void comePrima() {
        EXPECT_EQ(cella(colonnaInizio), "10/05/2024");
        EXPECT_EQ(cella(colonnaFine), "20/05/2024");
        EXPECT_TRUE(scritte.empty());
    }
    std::vector<std::string> inizi() {
        std::vector<std::string> testi;
        for (const auto& testo : scena.db->take())
            for (const auto& inizio : {parametri, dettaglio, premio})
                if (testo.starts_with(inizio))
                    testi.push_back(inizio);
        return testi;
    }

    Scena scena;
    qz::ModificaNodo modifica{scena.stato};
    platform::headless::HeadlessTree& albero = scena.alberoDest();
    std::vector<std::int64_t> editor;
    std::vector<std::string> scritte;
    std::int64_t righeScritte = 1;
};

} // namespace prove
