// Search in a block of names of 29 bytes to one that stands last, beside memmem() over the same bytes and beside
// folding each name at each search.

#include "component/data/BloccoRicerca.h"
#include "component/data/Lettere.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

/// Names of exactly 29 bytes.
std::vector<std::string> names(std::int64_t count) {
    std::vector<std::string> all;
    all.reserve(static_cast<std::size_t>(count));
    char text[64];
    for (std::int64_t i = 0; i < count; ++i) {
        std::snprintf(text, sizeof text, "Commerciale Rossi %07lld Srl", static_cast<long long>(i));
        all.emplace_back(text);
    }
    all.back() = "Ultimo Caffe in fondo all Est";
    return all;
}

qz::BloccoRicerca blockOf(const std::vector<std::string>& all) {
    qz::BloccoRicerca block;
    block.prenota(all.size(), all.size() * 30);
    for (const auto& name : all)
        block.aggiungi(name);
    return block;
}

void search(benchmark::State& state, const char* wanted) {
    const auto all = names(state.range(0));
    const auto block = blockOf(all);
    for (auto _ : state)
        if (block.trova(qz::senzaMaiuscole(wanted), 0, block.numero()) != all.size() - 1)
            state.SkipWithError("not the last name");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void plainScan(benchmark::State& state, const char* wanted) {
    std::string bytes;
    for (const auto& name : names(state.range(0)))
        bytes += qz::senzaMaiuscole(name) + '\n';
    for (auto _ : state)
        benchmark::DoNotOptimize(memmem(bytes.data(), bytes.size(), wanted, std::strlen(wanted)));
}

void foldEach(benchmark::State& state) {
    const auto all = names(state.range(0));
    for (auto _ : state)
        for (const auto& name : all)
            benchmark::DoNotOptimize(qz::senzaMaiuscole(name).find("ultimo caffe"));
}

void build(benchmark::State& state) {
    const auto all = names(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(blockOf(all).numero());
}

} // namespace

BENCHMARK_CAPTURE(search, twelve, "ULTIMO CAFFE")->Name("search/12 letters")->Arg(100'000)->Arg(1'000'000);
BENCHMARK_CAPTURE(search, three, "est")->Name("search/3 letters")->Arg(100'000)->Arg(1'000'000);
BENCHMARK_CAPTURE(search, two, "fo")->Name("search/2 letters")->Arg(100'000)->Arg(1'000'000);
BENCHMARK_CAPTURE(plainScan, twelve, "ultimo caffe")->Name("search/memmem, 12 letters")->Arg(100'000)->Arg(1'000'000);
BENCHMARK_CAPTURE(plainScan, two, "fo")->Name("search/memmem, 2 letters")->Arg(100'000)->Arg(1'000'000);
BENCHMARK(foldEach)->Name("search/folding each name")->Arg(100'000);
BENCHMARK(build)->Name("search/making the block")->Arg(100'000)->Arg(1'000'000);
