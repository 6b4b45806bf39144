#include "component/interaction/FRMQZ_PARAMETRI.h"

namespace qz {

namespace {

// Measures for 8 points.
constexpr contract::Twips larghezza = 7200;
constexpr contract::Twips margine = 180;
constexpr contract::Twips rigaAlta = 420;
constexpr contract::Twips campoAlto = 345;
constexpr contract::Twips titoloAlto = 330;

} // namespace

void FRMQZ_PARAMETRI::creaControlli() {
    form_->setCaption("Parametri");
    KVT_RESIZEFORM = &form_->addResizeControl("KVT_RESIZEFORM");
    FME_Parametri = &form_->addDataFrame("FME_Parametri", nullptr);
    GRIDNAV_PARAMETRI = &form_->addGridNavigator("GRIDNAV_PARAMETRI", FME_Parametri);
    Frame2 = &form_->addGroupBox("Frame2", FME_Parametri);
    CHK_QZ03_FLG_CONDVEND = &form_->addCheckBox("CHK_QZ03_FLG_CONDVEND", Frame2);
    CHK_QZ03_FLG_CLAS = &form_->addCheckBox("CHK_QZ03_FLG_CLAS", Frame2);
    CHK_QZ03_FLG_PROV = &form_->addCheckBox("CHK_QZ03_FLG_PROV", Frame2);
    CHK_QZ03_FLG_ANAG = &form_->addCheckBox("CHK_QZ03_FLG_ANAG", Frame2);
    Frame3 = &form_->addGroupBox("Frame3", FME_Parametri);
    KVT_LABEL4 = &form_->addLabel("KVT_LABEL4", Frame3);
    TXT_QZ03_DATAINIZIOVAL = &form_->addDateField("TXT_QZ03_DATAINIZIOVAL", Frame3);
    KVT_LABEL5 = &form_->addLabel("KVT_LABEL5", Frame3);
    TXT_QZ03_DATAFINEVAL = &form_->addDateField("TXT_QZ03_DATAFINEVAL", Frame3);
    KVT_LABEL3 = &form_->addLabel("KVT_LABEL3", Frame3);
    CMB_QZ03_TIPOCARICODATA = &form_->addComboBox("CMB_QZ03_TIPOCARICODATA", Frame3);
    etichettaStato_ = &form_->addLabel("LBL_QZ03_ID_WF02", FME_Parametri);
    TXT_QZ03_ID_WF02 = &form_->addLookupField("TXT_QZ03_ID_WF02", FME_Parametri);
    TXT_WF02_DESCR = &form_->addTextField("TXT_WF02_DESCR", FME_Parametri);

    Frame2->setCaption("Parametri visualizzazione dati anagrafici");
    CHK_QZ03_FLG_CONDVEND->setCaption("Condizioni di vendita");
    CHK_QZ03_FLG_CLAS->setCaption("Classificazioni");
    CHK_QZ03_FLG_PROV->setCaption("Provvigioni e listini");
    CHK_QZ03_FLG_ANAG->setCaption("Anagrafica");
    Frame3->setCaption("Date validità del legame");
    KVT_LABEL3->setCaption("Tipo valorizzazione");
    KVT_LABEL4->setCaption("Data inizio");
    KVT_LABEL5->setCaption("Data fine");
    etichettaStato_->setCaption("Stato del legame");
    TXT_QZ03_ID_WF02->setToolTip("Stato del legame (F1 apre l'elenco)");
    TXT_WF02_DESCR->setToolTip("Descrizione dello stato");
    TXT_WF02_DESCR->setEnabled(false);
    form_->setBounds({0, 0, larghezza, 6300});
}

void FRMQZ_PARAMETRI::disponi() {
    procedura("Ridisponi", [&](auto& passo) {
        const auto scala = [this](contract::Twips misura) { return KVT_RESIZEFORM->scaled(misura); };
        const auto bordo = scala(margine);
        const auto riga = scala(rigaAlta);
        const auto campo = scala(campoAlto);
        const auto titolo = scala(titoloAlto);
        const auto largoForm = scala(larghezza);

        const auto altoGruppo2 = titolo + 2 * riga + bordo;
        const auto altoGruppo3 = titolo + 3 * riga + bordo;
        const auto altoFrame = riga + altoGruppo2 + altoGruppo3 + riga + 4 * bordo;
        if (const contract::Rect posto = form_->bounds();
            posto.width != largoForm || form_->clientHeight() != altoFrame)
            passo([&] {
                form_->setBounds({posto.left, posto.top, largoForm, posto.height + altoFrame - form_->clientHeight()});
            });

        const auto largo = form_->clientWidth() - 2 * bordo;
        passo([&] { FME_Parametri->setBounds({0, 0, form_->clientWidth(), form_->clientHeight()}); });
        passo([&] { GRIDNAV_PARAMETRI->setBounds({bordo, bordo / 2, largo, riga}); });

        auto alto = riga + bordo;
        passo([&] { Frame2->setBounds({bordo, alto, largo, altoGruppo2}); });
        const auto meta = (largo - 3 * bordo) / 2;
        passo([&] { CHK_QZ03_FLG_CONDVEND->setBounds({bordo, titolo, meta, campo}); });
        passo([&] { CHK_QZ03_FLG_CLAS->setBounds({2 * bordo + meta, titolo, meta, campo}); });
        passo([&] { CHK_QZ03_FLG_PROV->setBounds({bordo, titolo + riga, meta, campo}); });
        passo([&] { CHK_QZ03_FLG_ANAG->setBounds({2 * bordo + meta, titolo + riga, meta, campo}); });

        alto += altoGruppo2 + bordo;
        passo([&] { Frame3->setBounds({bordo, alto, largo, altoGruppo3}); });
        const auto etichetta = scala(1900);
        const auto valore = largo - etichetta - 2 * bordo;
        passo([&] { KVT_LABEL4->setBounds({bordo, titolo, etichetta, campo}); });
        passo([&] { TXT_QZ03_DATAINIZIOVAL->setBounds({bordo + etichetta, titolo, valore / 2, campo}); });
        passo([&] { KVT_LABEL5->setBounds({bordo, titolo + riga, etichetta, campo}); });
        passo([&] { TXT_QZ03_DATAFINEVAL->setBounds({bordo + etichetta, titolo + riga, valore / 2, campo}); });
        passo([&] { KVT_LABEL3->setBounds({bordo, titolo + 2 * riga, etichetta, campo}); });
        passo([&] { CMB_QZ03_TIPOCARICODATA->setBounds({bordo + etichetta, titolo + 2 * riga, valore, campo}); });

        alto += altoGruppo3 + bordo;
        passo([&] { etichettaStato_->setBounds({2 * bordo, alto, etichetta, campo}); });
        passo([&] { TXT_QZ03_ID_WF02->setBounds({2 * bordo + etichetta, alto, scala(1300), campo}); });
        const auto descrizione = 2 * bordo + etichetta + scala(1300) + bordo / 2;
        passo([&] {
            TXT_WF02_DESCR->setBounds({descrizione, alto, form_->clientWidth() - descrizione - bordo, campo});
        });
    });
}

} // namespace qz
