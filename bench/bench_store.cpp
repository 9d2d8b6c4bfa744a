// Writing and reading a case of 100 nodes with 30 quantities each through the PostgreSQL store, in a
// database of its own: wall time and the number of statements sent.
#include "TemporaryDatabase.h"

#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/persistency/Object.h>
#include <tarvo/persistency/PersistencyPostgres.h>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

using Tarvo::Persistency::Defaults;

constexpr int nodes = 100, quantitiesPerNode = 30;

class Block : public Object {
public:
    Block(const Defaults& d, uint32_t id, Persistency* p, Persistent* parent, Persistent* root) : Object(d, id, p, parent, root) {
        addVariables(values, quantitiesPerNode, "q", "Benchmark value", "K", 300.0);
        if (p || !isRoot()) return;
        for (int i = 1; i < nodes; ++i) addChild("BenchBlock", Defaults("B" + std::to_string(i), "Block"));
    }
    std::vector<Quantity> values;
};

void registerBlocks() {
    if (!NodeFactory::registered("BenchBlock"))
        NodeFactory::registerType<Block>("BenchBlock", "Benchmark block", "unit", false, {}, {}, {}, "", 1, 1);
}

std::unique_ptr<Node> newCase() {
    registerBlocks();
    return std::unique_ptr<Node>(NodeFactory::create("BenchBlock", Defaults("case", ""), 0, nullptr, nullptr, nullptr));
}

void BM_StoreInsert100x30(benchmark::State& state) {
    TemporaryDatabase database;
    PersistencyPostgres store(database.connection());
    std::unique_ptr<Node> tree = newCase();
    long statements = 0;
    for (auto _ : state) {
        const long before = store.statements();
        tree->insert(&store);
        statements = store.statements() - before;
        state.PauseTiming();
        store.purgeAll();
        state.ResumeTiming();
    }
    state.counters["statements"] = static_cast<double>(statements);
}
BENCHMARK(BM_StoreInsert100x30)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_StoreRetrieve100x30(benchmark::State& state) {
    TemporaryDatabase database;
    PersistencyPostgres store(database.connection());
    const int id = newCase()->insert(&store);
    long statements = 0;
    for (auto _ : state) {
        // A kernel reads a tree once, over a connection of its own: nothing of an earlier read is kept.
        state.PauseTiming();
        auto reader = std::make_unique<PersistencyPostgres>(database.connection());
        state.ResumeTiming();
        std::unique_ptr<Node> back(NodeFactory::create("BenchBlock", Defaults(), id, reader.get(), nullptr, nullptr));
        statements = reader->statements();
        benchmark::DoNotOptimize(back);
        state.PauseTiming();
        reader.reset();
        state.ResumeTiming();
    }
    state.counters["statements"] = static_cast<double>(statements);
}
BENCHMARK(BM_StoreRetrieve100x30)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_StoreUpdate100x30(benchmark::State& state) {
    TemporaryDatabase database;
    PersistencyPostgres store(database.connection());
    std::unique_ptr<Node> tree = newCase();
    tree->insert(&store);
    long statements = 0;
    for (auto _ : state) {
        const long before = store.statements();
        tree->update(&store);
        statements = store.statements() - before;
    }
    state.counters["statements"] = static_cast<double>(statements);
}
BENCHMARK(BM_StoreUpdate100x30)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
