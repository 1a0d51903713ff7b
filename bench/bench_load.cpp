/* Loading a large module, against what the XML parser alone needs for the same bytes. */
#include <benchmark/benchmark.h>
#include <expat.h>

#include <array>

#include "korv_lib_yang.h"
#include "model_files.h"
#include "model_generator.h"
#include "ratio_report.h"

namespace {

constexpr uint32_t NODES = 100000;

uint32_t Closed(uint64_t, uint32_t)
{
    return 0;
}

std::array<TELMYANG_DEBUG_HOOK_S, KORV_LOG_LEVEL_NUM> ClosedHooks()
{
    std::array<TELMYANG_DEBUG_HOOK_S, KORV_LOG_LEVEL_NUM> hooks = {};
    hooks.fill({0, nullptr, Closed});
    return hooks;
}

void StartElement(void *, const char *, const char **) {}
void EndElement(void *, const char *) {}

void ExpatAlone(benchmark::State &state, const std::string &text)
{
    for (auto _ : state) {
        XML_Parser parser = XML_ParserCreate(nullptr);
        XML_SetElementHandler(parser, StartElement, EndElement);
        if (XML_Parse(parser, text.data(), static_cast<int>(text.size()), 1) != XML_STATUS_OK)
            state.SkipWithError("the generated module is no XML");
        XML_ParserFree(parser);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void LoadAndUnload(benchmark::State &state, const std::string &dir)
{
    for (auto _ : state) {
        state.PauseTiming();
        const auto hooks = ClosedHooks();
        TELMYANG_LOCAL_DATA_S *local = YANGLIB_Initial(1, 0, hooks.data(), dir.c_str(), nullptr);
        state.ResumeTiming();
        if (YANGLIB_LoadYangModule(local, "bench-mixed", nullptr) != 0)
            state.SkipWithError("load failed");
        state.PauseTiming();
        YANGLIB_Uninitial(local);
        state.ResumeTiming();
    }
}

} // namespace

int main(int argc, char **argv)
{
    const bench::ModelFiles files;
    const std::string text = files.Add("bench-mixed", bench::MixedModule("bench-mixed", NODES));
    benchmark::RegisterBenchmark("expat_alone", [&](benchmark::State &state) { ExpatAlone(state, text); });
    benchmark::RegisterBenchmark("load", [&](benchmark::State &state) { LoadAndUnload(state, files.Dir()); });

    std::vector<char *> args(argv, argv + argc);
    std::string repetitions = "--benchmark_repetitions=5";
    std::string interleaving = "--benchmark_enable_random_interleaving=true";
    args.insert(args.begin() + 1, {repetitions.data(), interleaving.data()});
    int count = static_cast<int>(args.size());
    benchmark::Initialize(&count, args.data());
    if (benchmark::ReportUnrecognizedArguments(count, args.data()))
        return 2;
    bench::RatioReport report;
    benchmark::RunSpecifiedBenchmarks(&report);
    report.Print(
        {{"load of " + std::to_string(NODES) + " nodes / expat on the same bytes", "load", "expat_alone", 3.0}});
    return 0;
}
