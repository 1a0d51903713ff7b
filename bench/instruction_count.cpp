#include "instruction_count.h"

#include <fstream>
#include <sstream>

#include "allocator.h"
#include "host.h"
#include "lookup_path.h"
#include "model_generator.h"
#include "model_set.h"
#include "process_time.h"

namespace bench {
namespace {

struct OperationKind {
    const char *name;
    const char *function; /* counting goes on while this one runs */
};

constexpr OperationKind KINDS[] = {
    {"load", "YANGLIB_LoadYangModule"},
    {"own-load", "YANGLIB_LoadYangModule"},
    {"set-load", "YANGLIB_LoadYangModule"},
    {"lookup", "TELMYANG_KorvFindTreeNodeByXpath"},
    {"augment-lookup", "TELMYANG_KorvFindTreeNodeByXpath"},
    {"unloads", "YANGLIB_UnloadYangModule"},
    {"reversed-unloads", "YANGLIB_UnloadYangModule"},
};

/* The number behind "totals:" in callgrind's output. */
std::optional<uint64_t> TotalOf(const std::string &path)
{
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string key;
        uint64_t total = 0;
        if (words >> key >> total && key == "totals:")
            return total;
    }
    return {};
}

/* What the command executes under callgrind with those options; nothing without valgrind. */
std::optional<uint64_t> Count(const Command &options, const Command &command, const std::string &dir)
{
    static const bool hasValgrind = Succeeds({"valgrind", "--version"});
    if (!hasValgrind)
        return {};
    const std::string out = dir + "/callgrind.out";
    Command all = {"env", "LD_BIND_NOW=1", "valgrind", "--tool=callgrind", "--callgrind-out-file=" + out};
    all.insert(all.end(), options.begin(), options.end());
    all.insert(all.end(), command.begin(), command.end());
    if (!Finishes(all))
        Fail("callgrind failed");
    return TotalOf(out);
}

constexpr uint64_t MERGING_SIZE = 4096;

template <typename Path>
bool Finds(const Instance &instance, const Path &path)
{
    const YangXpathLookup lookup = path.Of(instance.Local());
    /* Blocks that the loads freed are merged by the first larger allocation. */
    ZOR_Free_F(ZOR_Malloc_F(1, g_aucZorMemPt[0], MERGING_SIZE, __FILE__, __LINE__), __FILE__, __LINE__);
    return TELMYANG_KorvFindTreeNodeByXpath(&lookup) != nullptr;
}

bool IsFor(const std::string &operation, Operation wanted)
{
    return operation == KINDS[static_cast<size_t>(wanted)].name;
}

/* Writes what the system says of this process's memory into a file. What it says of a child includes its parent's. */
bool NotePeakMemory(const std::string &path)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:"))
            std::ofstream(path) << line.substr(line.find_first_of("0123456789"));
    }
    return true;
}

/* The models that peers.py shows to other tools. */
void WriteModels(const std::string &dir)
{
    const ModelFiles files({}, dir);
    (void)files.Add("bench-load", MixedModule("bench-load", 100000));
    WriteSet(files);
}

bool UnloadEach(const Instance &instance, uint32_t count, bool reverse)
{
    const KeptMemory kept; /* else the few do without what the C runtime merges later */
    for (uint32_t i = 0; i < count; ++i)
        instance.Load(FlatName(i));
    for (uint32_t i = 0; i < count; ++i)
        instance.Unload(FlatName(reverse ? count - 1 - i : i));
    return true;
}

} // namespace

std::optional<uint64_t> InstructionsOf(const Command &command, const std::string &dir)
{
    return Count({}, command, dir);
}

std::optional<uint64_t> InstructionsOf(Operation operation, const std::string &dir, const std::string &module)
{
    const OperationKind &kind = KINDS[static_cast<size_t>(operation)];
    return Count({std::string("--toggle-collect=") + kind.function}, OperationCommand(kind.name, dir, module), dir);
}

bool Perform(const std::string &operation, const std::string &dir, const std::string &module)
{
    if (operation == "write") {
        WriteModels(dir);
        return true;
    }
    const Instance instance(dir);
    const bool reverse = IsFor(operation, Operation::ReversedUnloads);
    if (reverse || IsFor(operation, Operation::Unloads))
        return UnloadEach(instance, static_cast<uint32_t>(std::stoul(module)), reverse);
    if (IsFor(operation, Operation::SetLoad)) {
        ModelSet(dir).LoadInto(instance);
        return module.empty() || NotePeakMemory(module);
    }
    if (IsFor(operation, Operation::OwnLoad))
        instance.LoadSchema(module);
    instance.Load(module);
    if (IsFor(operation, Operation::Lookup))
        return Finds(instance, LookupPath());
    if (IsFor(operation, Operation::AugmentLookup))
        return Finds(instance, AugmentPath());
    return true;
}

} // namespace bench
