/* Loading a large module: against what the XML parser alone needs for the same bytes, and the library's own part of it
 * against the schema layer's. */
#include "host.h"
#include "instruction_count.h"
#include "model_generator.h"
#include "rows.h"
#include "xml_parse.h"

namespace bench {
namespace {

constexpr char NAME[] = "bench-load";
constexpr uint32_t NODES = 100000;

void ExpatAlone(benchmark::State &state, const std::string &text)
{
    for (auto _ : state)
        ParseXml(state, text);
}

void Load(benchmark::State &state, const std::string &dir)
{
    for (auto _ : state) {
        state.PauseTiming();
        {
            const Instance instance(dir);
            state.ResumeTiming();
            instance.Load(NAME);
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}

/* The two parts of a load, one after the other. */
void LoadInParts(benchmark::State &state, const std::string &dir, bool timeSchema)
{
    for (auto _ : state) {
        state.PauseTiming();
        {
            const Instance instance(dir);
            if (timeSchema)
                state.ResumeTiming();
            instance.LoadSchema(NAME);
            if (timeSchema)
                state.PauseTiming();
            else
                state.ResumeTiming();
            instance.Load(NAME);
            if (!timeSchema)
                state.PauseTiming();
        }
        state.ResumeTiming();
    }
}

Counts CountLoad(const std::string &dir, bool schemaFirst)
{
    const Instance instance(dir);
    if (schemaFirst)
        instance.LoadSchema(NAME);
    Counts counts = CountsOf([&] { instance.Load(NAME); });
    counts.instructions = InstructionsOf(schemaFirst ? Operation::OwnLoad : Operation::Load, dir, NAME);
    return counts;
}

} // namespace

Rows LoadRows(Runner &runner, const ModelFiles &files)
{
    const std::string text = files.Add(NAME, MixedModule(NAME, NODES));
    runner.Add("expat", [&](benchmark::State &state) { ExpatAlone(state, text); });
    runner.Add("load", [&](benchmark::State &state) { Load(state, files.Dir()); });
    const ModelFiles compact;
    compact.AddCompact(NAME, text);
    runner.Add("load_compact", [&](benchmark::State &state) { Load(state, compact.Dir()); });
    runner.Add("load_schema", [&](benchmark::State &state) { LoadInParts(state, files.Dir(), true); });
    runner.Add("load_own", [&](benchmark::State &state) { LoadInParts(state, files.Dir(), false); });
    runner.Run();
    const std::string load = "load of " + Grouped(NODES) + " nodes";
    return {
        {load, "expat on the same bytes", runner.Ratio("load", "expat"), 1.6, CountLoad(files.Dir(), false)},
        {load + " in compact syntax", "expat on the same model in YIN", runner.Ratio("load_compact", "expat"), 0.8,
         CountLoad(compact.Dir(), false)},
        {"the library's own part of it", "the schema layer's part", runner.Ratio("load_own", "load_schema"), 1.0,
         CountLoad(files.Dir(), true)},
    };
}

} // namespace bench
