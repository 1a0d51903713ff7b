#include "compare.h"

#include <cinttypes>
#include <cstdio>
#include <fstream>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "instruction_count.h"
#include "lookup_path.h"
#include "model_files.h"
#include "model_generator.h"
#include "process_time.h"
#include "table.h"

namespace bench {
namespace {

constexpr double GROWTH = 1.03;
constexpr char HEAD[] =
    "# Instructions of the operations that ./dev bench --compare counts, as ./dev bench --update found them.\n";

constexpr char LOADED[] = "bench-load";
constexpr char EXTENDED[] = "bench-tree";
constexpr char EXTENDING[] = "bench-extending";
constexpr uint32_t NODES = 20000;
constexpr uint32_t LISTS = 500;
constexpr uint32_t AUGMENTS = 4;

struct Counted {
    const char *name;
    std::function<std::optional<uint64_t>()> count;
};

void WriteModels(const ModelFiles &files)
{
    (void)files.Add(LOADED, MixedModule(LOADED, NODES));
    files.AddCompact("bench-compact", MixedModule("bench-compact", NODES));
    (void)files.Add(EXTENDED, TreeModule(EXTENDED, LISTS));
    (void)files.Add(EXTENDING, ExtendingModule(EXTENDING, EXTENDED, AUGMENTS));
    (void)files.Add(LookupPath::MODULE, NestModule(LookupPath::MODULE, LookupPath::LEVELS));
    (void)files.Add(AugmentPath::AUGMENT,
                    AugmentModule(AugmentPath::AUGMENT, LookupPath::MODULE, AugmentPath().target));
}

std::vector<Counted> Operations(const std::string &dir)
{
    const auto operation = [dir](Operation what, const char *module) {
        return [dir, what, module] { return InstructionsOf(what, dir, module); };
    };
    return {
        {"load", operation(Operation::Load, LOADED)},
        {"load-compact", operation(Operation::Load, "bench-compact")},
        {"augment-trees", operation(Operation::OwnLoad, EXTENDING)},
        {"lookup", operation(Operation::Lookup, LookupPath::MODULE)},
        {"augment-lookup", operation(Operation::AugmentLookup, AugmentPath::AUGMENT)},
        {"check",
         [dir] {
             return InstructionsOf({Beside("korv-inspect"), "check", EXTENDING, "-d", dir}, dir);
         }},
    };
}

std::map<std::string, uint64_t> ReadKept(const std::string &file)
{
    std::map<std::string, uint64_t> kept;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) {
        const size_t blank = line.find(' ');
        if (!line.empty() && line[0] != '#' && blank != std::string::npos)
            kept[line.substr(0, blank)] = std::stoull(line.substr(blank));
    }
    return kept;
}

/* What the operation came to beside what was kept; false when that is too much. */
bool Judge(const char *name, uint64_t kept, uint64_t now)
{
    const double growth = static_cast<double>(now) / static_cast<double>(kept);
    const char *verdict = growth > GROWTH ? "MORE" : growth < 2 - GROWTH ? "less: --update keeps it" : "as before";
    std::printf("%-16s %15s %15s %+8.2f %%  %s\n", name, Grouped(kept).c_str(), Grouped(now).c_str(),
                100 * (growth - 1), verdict);
    return growth <= GROWTH;
}

} // namespace

bool CompareInstructions(const std::string &file)
{
    const ModelFiles files;
    WriteModels(files);
    const std::map<std::string, uint64_t> kept = ReadKept(file);
    bool isRight = true;
    std::printf("%-16s %15s %15s\n", "operation", "kept", "now");
    for (const Counted &counted : Operations(files.Dir())) {
        const auto known = kept.find(counted.name);
        const auto now = counted.count();
        if (!now || known == kept.end()) {
            std::printf("%-16s %s\n", counted.name,
                        now ? "is not kept: --update keeps it" : "cannot be counted without valgrind");
            isRight = false;
        } else {
            isRight = Judge(counted.name, known->second, *now) && isRight;
        }
    }
    return isRight;
}

bool WriteInstructions(const std::string &file)
{
    const ModelFiles files;
    WriteModels(files);
    std::string text = HEAD;
    for (const Counted &counted : Operations(files.Dir())) {
        const auto now = counted.count();
        if (!now)
            return false;
        text += std::string(counted.name) + " " + std::to_string(*now) + "\n";
    }
    std::ofstream out(file);
    out << text;
    return out.good();
}

} // namespace bench
