#pragma once

#include "TestFolder.h"
#include "TestSchema.h"
#include "host/database/DatabaseSetup.h"
#include "host/database/StateTables.h"
#include "host/services/HostContext.h"
#include "platform/qt/forms/Session.h"
#include "platform/sqlite/Connection.h"
#include "platform/sqlite/DatabaseFile.h"

#include <QApplication>

#include <functional>
#include <memory>
#include <string>

namespace host_test {

/// The application object that windows need, made once, without a screen.
inline void needApplication() {
    if (QCoreApplication::instance() != nullptr)
        return;
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    static int argc = 1;
    static char name[] = "test_host";
    static char* argv[] = {name, nullptr};
    // Never destroyed: it would go after what Qt itself takes down when the program ends.
    new QApplication(argc, argv);
}

/// A new database with its tables and what fill writes, and the host's context over it, driven by a script.
class ContextOnDatabase {
public:
    explicit ContextOnDatabase(const std::function<void(platform::sqlite::Connection&)>& fill = {}) {
        platform::sqlite::createDatabase(file, host::withStates(component().schema()), fill);
        auto connection = std::make_shared<platform::sqlite::Connection>("embedded:" + file);
        connection->Open();
        context->connection = connection;
        context->connectionString = "embedded:" + file;
        context->states = std::make_unique<host::StateStore>(file);
        context->company = 1;
        context->user = "ROSSI";
        context->group = "VENDITE";
        context->journal.setRecording(true);
        context->dialogs.setScripted(true);
        context->errorLog.setFile(QString::fromStdString(folder.file("errori.log")));
    }

    Folder folder;
    std::string file = folder.file("prova.sqlite");
    std::shared_ptr<host::HostContext> context = std::make_shared<host::HostContext>();
};

} // namespace host_test
