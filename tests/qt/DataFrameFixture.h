#pragma once

#include "contract/RuntimeError.h"
#include "platform/headless/ScriptedConnection.h"
#include "qt/FormFixture.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace qt_tests {

/// A dialog over a table of parameters: key DITTA, a combo, a date, a flag, a code and a text.
class DataFrameTest : public FormTest {
protected:
    void SetUp() override {
        platform::qt::DataEntryHooks::instance().showMessage = [this](const QString& title, const QString& text,
                                                                      int style) {
            asked.push_back(title + QStringLiteral(": ") + text);
            styles.push_back(style);
            return answer;
        };
        platform::qt::DataEntryHooks::instance().showError = [this](const contract::RuntimeError& error,
                                                                    const contract::ErrorList& records) {
            errors.push_back(error.number());
            errorRecords = records.size();
        };
        auto& dlg = dialog("FRM_PARAMETRI");
        dlg.setCaption("Parametri");
        frame = &dlg.addDataFrame("FME", nullptr);
        frame->setBounds({0, 0, 7500, 3900});
        combo = &dlg.addComboBox("CMB", frame);
        combo->setBounds({100, 100, 2000, 400});
        combo->addItem("zero");
        combo->addItem("uno");
        date = &dlg.addDateField("DATA", frame);
        date->setBounds({100, 600, 2000, 400});
        check = &dlg.addCheckBox("CHK", frame);
        check->setBounds({100, 1100, 2000, 400});
        code = &dlg.addLookupField("COD", frame);
        code->setBounds({100, 1600, 2000, 400});
        note = &dlg.addTextField("NOTA", frame);
        note->setBounds({100, 2100, 2000, 400});
        frame->bindField(*combo, "TIPO");
        frame->bindField(*date, "INIZIO");
        frame->bindField(*check, "FLAG");
        frame->bindField(*code, "STATO");
        frame->bindField(*note, "NOTA");
        frame->setTable("PARAMETRI", {"DITTA"});
        frame->setDefault("TIPO", std::int64_t{0});
        frame->setDefault("ALTRO", std::int64_t{5});
        frame->ChangeStatus = [this](int status) { statuses.push_back(status); };
        frame->BeforeUpdate = [this](bool& cancel) {
            frame->setRecordValue("DITTA", std::int64_t{1});
            cancel = refuse;
        };
    }

    static contract::Value day(const char* text) { return *contract::Date::parse(text); }

    static platform::headless::ScriptedRows answerOf(std::vector<std::vector<contract::Value>> records) {
        platform::headless::ScriptedRows rows;
        rows.fields = {{"DITTA", contract::FieldType::integer},      {"TIPO", contract::FieldType::integer},
                       {"INIZIO", contract::FieldType::dbTimeStamp}, {"FLAG", contract::FieldType::tinyInt},
                       {"STATO", contract::FieldType::integer},      {"NOTA", contract::FieldType::varWChar}};
        rows.rows = std::move(records);
        return rows;
    }

    void openOn(std::vector<std::vector<contract::Value>> records) {
        connection->Open();
        connection->answer("SELECT * FROM PARAMETRI", answerOf(std::move(records)));
        contract::Cinterface* none = nullptr;
        const contract::Statement statement("SELECT * FROM PARAMETRI");
        frame->initialise(none, connection, nullptr, statement, "DITTA");
        data = frame->load(statement, nullptr);
        connection->take();
        form->show(false);
        frame->show();
        QCoreApplication::processEvents();
    }
    static std::vector<contract::Value> record(std::int64_t company = 1) {
        return {company, std::int64_t{1}, day("01/03/2024"), std::int64_t{1}, std::int64_t{3}, "prima"};
    }

    std::shared_ptr<platform::headless::ScriptedConnection> connection =
        std::make_shared<platform::headless::ScriptedConnection>();
    std::shared_ptr<contract::Recordset> data;
    contract::DataFrame* frame = nullptr;
    contract::ComboBox* combo = nullptr;
    contract::DateField* date = nullptr;
    contract::CheckBox* check = nullptr;
    contract::LookupField* code = nullptr;
    contract::TextField* note = nullptr;
    std::vector<int> statuses;
    std::vector<QString> asked;
    std::vector<int> styles;
    std::vector<int> errors;
    std::size_t errorRecords = 0;
    int answer = 7;
    bool refuse = false;
};

} // namespace qt_tests
