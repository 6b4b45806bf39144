// The whole program without a screen, over demo companies: what a person waits for after a key, a click or a text,
// until the window has been drawn again.

#include "host/database/DatabaseAccess.h"
#include "host/database/DatabaseSetup.h"
#include "host/database/StateStore.h"
#include "host/database/StateTables.h"
#include "host/start/ComponentLibrary.h"
#include "host/start/HostSession.h"
#include "host/windows/MainWindow.h"
#include "platform/qt/forms/Scriptable.h"
#include "platform/qt/forms/Session.h"
#include "platform/qt/look/Appearance.h"
#include "platform/sqlite/DatabaseFile.h"

#include <QApplication>
#include <QJsonArray>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <string>

namespace {

using platform::qt::Scriptable;

host::ComponentLibrary& library() {
    static host::ComponentLibrary only =
        host::ComponentLibrary::load(std::filesystem::read_symlink("/proc/self/exe").parent_path(),
                                     std::filesystem::temp_directory_path() / "distinte-bench-registro");
    return only;
}

/// The main form with the largest demo distinta loaded on the left.
class Program {
public:
    explicit Program(std::int64_t nodes) : nodes_(nodes) {
        const std::string file = folder_.filePath("prova.sqlite").toStdString();
        host::createDatabase(host::embeddedDatabase(file), library().schema(), nodes);
        platform::qt::Session::instance().modalOpened = [](platform::qt::FormWindow&) {};
        host::SessionSettings settings;
        settings.connectionString = host::embeddedDatabase(file);
        settings.scripted = true;
        settings.logFile = folder_.filePath("errori.log");
        session_ = std::make_unique<host::HostSession>(settings, library(), window_.area(), &window_);
        session_->openDatabase();
        window_.attach(*session_);
        window_.resize(1280, 800);
        window_.show();
        session_->openForm({{"WindowState", 2}});
        must(control("TRW_DISTINTEORIG").select("C1"));
        QApplication::processEvents();
    }

    Scriptable& control(const char* name) {
        auto* found = session_->formWindow()->control(QString::fromLatin1(name));
        if (found == nullptr)
            std::abort();
        return *found;
    }
    Scriptable& tree() { return control("TRW_ELEMDISTINTAORIG"); }
    std::int64_t nodes() const { return nodes_; }

    void must(const QString& refusal) {
        if (!refusal.isEmpty()) {
            qCritical("%s", qPrintable(refusal));
            std::abort();
        }
    }
    /// The events of what was done, and what they draw.
    void finish() { QApplication::processEvents(); }

private:
    std::int64_t nodes_;
    QTemporaryDir folder_;
    host::MainWindow window_{nullptr};
    std::unique_ptr<host::HostSession> session_;
};

/// One program at a time: the controls belong to the whole process.
Program& program(std::int64_t nodes) {
    static std::unique_ptr<Program> current;
    if (!current || current->nodes() != nodes) {
        current.reset();
        current = std::make_unique<Program>(nodes);
    }
    return *current;
}

void focusToGrid(benchmark::State& state) {
    auto& p = program(state.range(0));
    std::int64_t id = 1;
    for (auto _ : state) {
        id = (id * 7919 + 104729) % (state.range(0) / 2) + 1;
        p.must(p.tree().focusNode(id, std::nullopt));
        p.tree().settle();
        p.finish();
    }
    if (p.control("GRD_DETTDISTINTAORIG").read().value("rows").toArray().isEmpty())
        state.SkipWithError("the grid is empty");
}

void level(benchmark::State& state) {
    auto& p = program(state.range(0));
    for (auto _ : state) {
        p.must(p.control("CMD_ESPANDICOLLASSAORIG").click());
        p.finish();
    }
}

void propagate(benchmark::State& state) {
    auto& p = program(state.range(0));
    int mark = 1;
    for (auto _ : state) {
        p.must(p.tree().check(1, mark));
        p.finish();
        mark = 1 - mark;
    }
}

/// A search that finds nothing looks at every name twice.
void searchInVain(benchmark::State& state) {
    auto& p = program(state.range(0));
    p.must(p.control("txtCercaOrig").set(QStringLiteral("questo nome non esiste")));
    for (auto _ : state) {
        p.must(p.control("txtCercaOrig").key(13, Qt::NoModifier));
        p.finish();
    }
}

void stateStore(benchmark::State& state) {
    const QTemporaryDir folder;
    const std::string file = folder.filePath("prova").toStdString();
    platform::sqlite::createDatabase(file, host::stateSchema());
    host::StateStore store(file, [](auto) {});
    std::int64_t number = 0;
    for (auto _ : state) {
        for (std::int64_t i = 0; i < state.range(0); ++i)
            store.setState("00000000-0000-4000-8000-" + std::to_string(100'000'000'000 + ++number), 1, "ADMIN", "G");
        store.commit();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(focusToGrid)->Name("focus change to filled grid")->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(level)->Name("one click on the level button")->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(propagate)->Name("check over the whole tree")->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(searchInVain)->Name("search in vain")->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(stateStore)->Name("workflow states")->Arg(1)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int count, char** arguments) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    platform::qt::Appearance::instance().apply();
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    std::fflush(stdout);
    std::_Exit(0); // the windows live as long as the process
}
