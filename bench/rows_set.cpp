/* A set of modules in one instance: its load, what it holds in memory, and what tools need for it. */
#include <fstream>

#include "instruction_count.h"
#include "model_set.h"
#include "process_time.h"
#include "rows.h"
#include "schema_bytes.h"
#include "tree_copy.h"
#include "xml_parse.h"

namespace bench {
namespace {

constexpr int REPETITIONS = 9;

void Load(benchmark::State &state, const ModelSet &set)
{
    for (auto _ : state) {
        state.PauseTiming();
        {
            const Instance instance(set.dir);
            state.ResumeTiming();
            set.LoadInto(instance);
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}

void Bare(benchmark::State &state, const ModelSet &set, const Instance &instance)
{
    for (auto _ : state) {
        for (const std::string &text : set.texts)
            ParseXml(state, text);
        for (const std::string &module : set.modules)
            TreeCopy copy(instance.File(module));
    }
}

/* What a loaded set consists of. */
size_t Bytes(const ModelSet &set, const Instance &instance)
{
    SchemaBytes schema;
    size_t trees = 0;
    for (const std::string &module : set.modules) {
        schema.Add(QY_CTX_GetModuleByModName(instance.Local()->pstYangCtx->pSchemaCtx, module.c_str()));
        trees += TreeBytes(instance.File(module)) + sizeof(TELMYANG_YANG_FILE_INFO_S);
    }
    return trees + schema.Bytes();
}

/* Of a process that loads the modules of the directory, in bytes. */
double PeakMemory(const ModelFiles &files, const std::string &dir)
{
    const std::string path = files.Dir() + "/peak";
    if (!Succeeds(OperationCommand("set-load", dir, path)))
        Fail("cannot load " + dir);
    double kibibytes = 0;
    std::ifstream(path) >> kibibytes;
    return kibibytes * 1024;
}

void AddProcess(Rows &rows, const std::string &measure, const Command &command, const Command &load, double bound)
{
    rows.push_back({measure, "a process that loads them", ProcessTimes::Ratio(command, load, REPETITIONS), bound});
}

} // namespace

Rows SetRows(Runner &runner, const ModelFiles &files)
{
    if (files.Given().empty())
        WriteSet(files);
    const ModelSet set(files.Given().empty() ? files.Dir() : files.Given());
    const Instance instance(set.dir);
    Counts counts = CountsOf([&] { set.LoadInto(instance); });
    counts.instructions = InstructionsOf(Operation::SetLoad, set.dir, "");
    runner.Add("set", [&](benchmark::State &state) { Load(state, set); });
    runner.Add("set_bare", [&](benchmark::State &state) { Bare(state, set, instance); });
    runner.Run();
    const std::string modules = Grouped(set.modules.size()) + " modules";
    Rows rows = {{"load of " + modules, "expat on their bytes, the blocks of their trees made and freed",
                  runner.Ratio("set", "set_bare"), 2.0, counts}};
    const Command load = OperationCommand("set-load", set.dir, "");
    rows.push_back({"peak memory of " + modules, "their records, texts and schema nodes",
                    (PeakMemory(files, set.dir) - PeakMemory(files, ModelFiles().Dir())) /
                        static_cast<double>(Bytes(set, instance)),
                    1.5});
    const std::string inspect = Beside("korv-inspect");
    AddProcess(rows, "korv-inspect check --all of " + modules,
               {inspect, "check", "--all", "--format", "json", "-d", set.dir}, load, 4);
    AddProcess(rows, "korv-inspect page of " + modules, {inspect, "page", "--all", "-d", set.dir}, load, 4);
    return rows;
}

} // namespace bench
