#pragma once

#include "TestSession.h"
#include "host/database/DatabaseAccess.h"
#include "host/start/HostSession.h"
#include "host/windows/MainWindow.h"
#include "platform/qt/tree/TreeListControl.h"

#include <QCoreApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace host_test {

/// The component's form as a person meets it: over demo companies, in the program's window, at its own size.
class FormOnScreen : public testing::Test {
protected:
    static constexpr contract::Twips formWidth = 14685;
    static constexpr contract::Twips formHeight = 9058;

    explicit FormOnScreen(int nodes = 200) {
        host::createDatabase(host::embeddedDatabase(file), component().schema(), nodes);
        platform::qt::Session::instance().modalOpened = [](platform::qt::FormWindow&) {};
        host::SessionSettings settings;
        settings.connectionString = host::embeddedDatabase(file);
        settings.scripted = true;
        settings.logFile = QString::fromStdString(folder.file("errori.log"));
        session = std::make_unique<host::HostSession>(settings, component(), window.area(), &window);
        session->openDatabase();
        window.resize(1280, 800);
        window.attach(*session);
        window.show();
        window.activateWindow();
        EXPECT_EQ("", session->openForm());
        settle();
    }
    ~FormOnScreen() override {
        session.reset();
        platform::qt::Session::instance().modalOpened = {};
    }

    void settle() {
        QCoreApplication::processEvents();
        for (const char* name : {"TRW_ELEMDISTINTAORIG", "TRW_ELEMDISTINTADEST"})
            form().control(QLatin1String(name))->settle();
    }
    platform::qt::FormWindow& form() { return *session->formWindow(); }
    platform::qt::Scriptable& control(const char* name) { return *form().control(QLatin1String(name)); }
    contract::TreeList& tree(const char* name) {
        return *const_cast<contract::TreeList*>(
            dynamic_cast<const contract::TreeList*>(form().contractControl(QLatin1String(name))));
    }
    platform::qt::TreeView& view(const char* name) {
        return *qobject_cast<platform::qt::TreeView*>(control(name).widget());
    }
    /// What is seen of a cell, in the view's viewport.
    static QRect seen(const platform::qt::TreeView& view, std::int32_t position, const char* column) {
        return view.cellRect(position, view.nodes().findColumn(column)) & view.viewport()->rect();
    }
    contract::Value state(const std::string& name) {
        std::vector<std::pair<std::string, contract::Value>> values;
        EXPECT_EQ("", session->state(values));
        for (const auto& [known, value] : values)
            if (known == name)
                return value;
        ADD_FAILURE() << name;
        return {};
    }

    struct Application {
        Application() { needApplication(); }
    } application; // before the window
    Folder folder;
    std::string file = folder.file("prova.sqlite");
    host::MainWindow window{nullptr};
    std::unique_ptr<host::HostSession> session;
};

} // namespace host_test
