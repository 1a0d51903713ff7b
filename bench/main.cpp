/* Measures the library against what the same work costs without it. */
#include <cstdio>
#include <regex>

#include "allocator.h"
#include "command_line.h"
#include "compare.h"
#include "instruction_count.h"
#include "rows.h"

namespace {

constexpr char INSTRUCTIONS[] = KORV_SOURCE_DIR "/bench/instructions.txt";

struct Group {
    const char *name;
    bench::Rows (*measure)(bench::Runner &runner, const bench::ModelFiles &files);
};

constexpr Group GROUPS[] = {
    {"load", bench::LoadRows},        {"growth", bench::GrowthRows}, {"shapes", bench::ShapeRows},
    {"lookup", bench::LookupRows},    {"ids", bench::IdRows},        {"travel", bench::TravelRows},
    {"dump", bench::DumpRows},        {"memory", bench::MemoryRows}, {"process", bench::ProcessRows},
    {"augments", bench::AugmentRows}, {"set", bench::SetRows},       {"assign", bench::AssignRows},
};

void InitializeBenchmarks(char *program)
{
    std::string repetitions = "--benchmark_repetitions=7";
    std::string interleaving = "--benchmark_enable_random_interleaving=true";
    std::string time = "--benchmark_min_time=0.3";
    char *args[] = {program, repetitions.data(), interleaving.data(), time.data(), nullptr};
    int count = 4;
    benchmark::Initialize(&count, args);
}

bench::Rows Measure(const bench::CommandLine &line)
{
    const std::regex groups(line.groups);
    bench::Rows rows;
    for (const Group &group : GROUPS) {
        if (!std::regex_search(group.name, groups))
            continue;
        std::fprintf(stderr, "%s ", group.name);
        bench::Runner runner;
        const bench::ModelFiles files(line.models);
        for (bench::Row &row : group.measure(runner, files))
            rows.push_back(std::move(row));
    }
    return rows;
}

bool AllReached(const bench::Rows &rows)
{
    for (const bench::Row &row : rows) {
        if (!row.Reached())
            return false;
    }
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    const bench::CommandLine line = bench::ReadCommandLine(argc, argv);
    if (!line.right)
        return 2;
    if (!line.operation.empty())
        return bench::Perform(line.operation, line.dir, line.module) ? 0 : 1;
    if (line.update)
        return bench::WriteInstructions(INSTRUCTIONS) ? 0 : 2;
    if (line.compare)
        return bench::CompareInstructions(INSTRUCTIONS) ? 0 : 1;
    bench::UseFreshMemory();
    InitializeBenchmarks(argv[0]);
    const bench::Rows rows = Measure(line);
    bench::PrintTable(rows);
    if (!line.json.empty() && !bench::WriteJson(rows, line.json))
        return 2;
    return line.strict && !AllReached(rows) ? 1 : 0;
}
