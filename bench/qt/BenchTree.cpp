// Times of the tree list over a large distinta: binding with everything open, jumps, levels closed and opened.

#include "contract/Recordset.h"
#include "platform/qt/look/Appearance.h"
#include "platform/qt/tree/TreeListControl.h"

#include <QApplication>
#include <QWidget>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace {

using contract::FieldType;
using contract::TreeColumnKind;

/// Nodes in levels of seven, each parent with about ten children.
std::shared_ptr<contract::Recordset> forest(std::int64_t nodes) {
    auto records = std::make_shared<contract::Recordset>();
    auto& rows = records->fill();
    rows.start(std::make_shared<const contract::FieldList>(contract::FieldList{{"ID", FieldType::integer, 0, 0},
                                                                               {"PARENT", FieldType::integer, 0, 0},
                                                                               {"NAME", FieldType::varWChar, 0, 0},
                                                                               {"START", FieldType::date, 0, 0}}));
    const auto day = contract::Date::of(2024, 1, 1).value_or(contract::Date());
    for (std::int64_t id = 1; id <= nodes; ++id) {
        rows.column(0).append(id);
        if (id <= 10)
            rows.column(1).appendNull();
        else
            rows.column(1).append((id - 1) / 10);
        rows.column(2).append(std::string_view("Rossi S.p.A. " + std::to_string(id)));
        rows.column(3).append(day);
        rows.rowDone();
    }
    records->MoveFirst();
    return records;
}

struct Scene {
    Scene() : tree("TREE", &window) {
        window.resize(900, 700);
        tree.setBounds({0, 0, 13000, 10000});
        tree.addColumn({"HIDDEN", "", "ID", TreeColumnKind::code, false});
        tree.addColumn({"CODE", "Codice", "ID", TreeColumnKind::code, true, false, true});
        tree.addColumn({"NAME", "Ragione Sociale", "NAME", TreeColumnKind::text, true, false, true, 3000});
        tree.addColumn({"START", "Data inizio", "START", TreeColumnKind::date, true, true});
        tree.addColumn({"MARK", "Seleziona", "", TreeColumnKind::check, true, false, false, 900, "True"});
        window.show();
        QApplication::processEvents();
    }
    QWidget window;
    platform::qt::TreeListControl tree;
};

void bindAndDraw(benchmark::State& state) {
    Scene scene;
    const auto records = forest(state.range(0));
    for (auto _ : state) {
        scene.tree.bind(records, "ID", "PARENT");
        scene.window.grab();
    }
}

/// Expanding everything alone.
void expandAll(benchmark::State& state) {
    Scene scene;
    scene.tree.bind(forest(state.range(0)), "ID", "PARENT");
    auto& view = static_cast<platform::qt::TreeView&>(*scene.tree.widget());
    for (auto _ : state) {
        state.PauseTiming();
        view.collapseAll();
        view.blockSignals(true);
        state.ResumeTiming();
        view.expandAll();
        state.PauseTiming();
        view.blockSignals(false);
        state.ResumeTiming();
    }
}

void jump(benchmark::State& state) {
    Scene scene;
    scene.tree.bind(forest(state.range(0)), "ID", "PARENT");
    std::int64_t key = 1;
    for (auto _ : state) {
        key = (key * 7919 + 104729) % state.range(0) + 1;
        scene.tree.setFocused(scene.tree.byKey(key));
    }
}

void level(benchmark::State& state) {
    Scene scene;
    scene.tree.bind(forest(state.range(0)), "ID", "PARENT");
    bool open = false;
    for (auto _ : state) {
        scene.tree.beginUpdate();
        for (auto node = scene.tree.firstNode(); node; node = scene.tree.next(node))
            if (scene.tree.level(node) == 3)
                scene.tree.setExpanded(node, open);
        scene.tree.endUpdate();
        open = !open;
    }
}

void markAll(benchmark::State& state) {
    Scene scene;
    scene.tree.bind(forest(state.range(0)), "ID", "PARENT");
    bool on = true;
    for (auto _ : state) {
        for (auto node = scene.tree.firstNode(); node; node = scene.tree.next(node))
            scene.tree.setValue(node, "MARK", on ? "True" : "False");
        on = !on;
    }
}

BENCHMARK(bindAndDraw)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(expandAll)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(jump)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(level)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(markAll)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int count, char** arguments) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    platform::qt::Appearance::instance().apply();
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
