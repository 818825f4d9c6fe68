// What reading a file costs for each resource: with 8 times as many resources the time for one
// should stay what it was.
#include "exe/catalog.h"
#include "exe/probe.h"
#include "tests/bench/many_resources.h"

#include <benchmark/benchmark.h>

static void ReadFile(benchmark::State &state, const BuiltExecutable &built)
{
    const char *path = BUILD_FOLDER "/tests/bench.tmp";
    FILE *file = WriteBytes(path, built.bytes) ? fopen(path, "rb") : nullptr;
    if (!file) {
        state.SkipWithError("cannot write the file");
        return;
    }
    for (auto run : state) {
        if (ProbeFile(nullptr, file) != ProbeRead || openCatalog.count != state.range(0)) {
            state.SkipWithError("the file was not read");
            break;
        }
        ReleaseCatalog(&openCatalog);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    fclose(file);
    remove(path);
}

static void ReadPe(benchmark::State &state)
{
    ReadFile(state, BuildPe(DescribeMany((int)state.range(0))));
}
BENCHMARK(ReadPe)->Arg(8000)->Arg(64000)->Unit(benchmark::kMillisecond);

static void ReadNe(benchmark::State &state)
{
    ReadFile(state, BuildNe(DescribeMany((int)state.range(0))));
}
BENCHMARK(ReadNe)->Arg(8000)->Arg(64000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
