/* Models as statements: modules, submodules and deviation modules that are loaded together. fuzz/model/statement.h has the
 * form of an input, fuzz/model/mutator.cpp what the fuzzer does with it. */
#include <cstdio>
#include <vector>

#include "fuzz_host.h"
#include "model/checks.h"
#include "model/expansion.h"
#include "model/host_memory.h"
#include "model/session.h"
#include "model/statement.h"
#include "model/yin_writer.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace {

constexpr unsigned ALL_LEVELS = 15;

/* Puts the files of this input in place of those of the last one. */
void WriteModels(const fuzz::Statement &expanded)
{
    static std::vector<std::string> last;
    for (const std::string &name : last)
        (void)std::remove((fuzz::ModelDir() + "/" + name).c_str());
    last.clear();
    for (const fuzz::ModelFile &file : fuzz::YinFiles(expanded)) {
        fuzz::WriteModel(file.name, file.text);
        last.push_back(file.name);
    }
}

unsigned LevelsOf(const fuzz::Statement &expanded)
{
    const std::string levels = fuzz::ChildArgument(expanded, "%levels");
    return levels.empty() ? ALL_LEVELS : static_cast<unsigned>(fuzz::Count(levels, ALL_LEVELS));
}

/* A deviation module that was taken along stays in force, so that a second round may find other models. */
bool TakesDeviationsAlong(const std::vector<fuzz::Step> &steps)
{
    for (const fuzz::Step &step : steps) {
        if (step.module.find("quelvo-bras-") != std::string::npos)
            return true;
    }
    return false;
}

/* Two rounds in one instance: the second with the other log levels, and another way out. */
fuzz::Outcome RunTwice(const fuzz::Statement &expanded, std::vector<fuzz::Step> *steps)
{
    const unsigned levels = LevelsOf(expanded);
    fuzz::SetFault(fuzz::Memory::Host, UINT64_MAX);
    fuzz::Session session(levels);
    fuzz::Outcome first = session.RunAndCut(steps);
    session.UnloadOneByOne((levels & 2) == 0);
    session.SetLevels(levels ^ ALL_LEVELS);
    const fuzz::Outcome second = session.Run(*steps);
    if (!TakesDeviationsAlong(*steps)) {
        fuzz::Require(first.results == second.results, "the second load comes out as the first");
        fuzz::Require(first.dumps == second.dumps, "the second load has the dumps of the first",
                      first.dumps + "--\n" + second.dumps);
    }
    session.UnloadAll();
    return first;
}

/* Once more with a failing allocation: what is loaded in the end is what is loaded without. */
void RunWithFault(const std::vector<fuzz::Step> &steps, const fuzz::Outcome &expected)
{
    fuzz::Session session(1);
    const fuzz::Outcome outcome = session.Run(steps);
    if (!outcome.faultForgiven && outcome.results == expected.results)
        fuzz::Require(outcome.dumps == expected.dumps, "dumps after a failed allocation",
                      expected.dumps + "--\n" + outcome.dumps);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    const fuzz::Statement root = fuzz::ParseStatements(text);
    const fuzz::Statement expanded = fuzz::Expand(root);
    WriteModels(expanded);
    std::vector<fuzz::Step> steps = fuzz::StepsOf(expanded);
    const fuzz::Outcome outcome = RunTwice(expanded, &steps);
    const struct {
        fuzz::Memory memory;
        const char *keyword;
    } faults[] = {{fuzz::Memory::Host, "%fail-host"}, {fuzz::Memory::Schema, "%fail-schema"}};
    for (const auto &[memory, keyword] : faults) {
        if (const fuzz::Statement *fault = fuzz::FindChild(expanded, keyword)) {
            fuzz::SetFault(memory, fuzz::Count(fault->argument, SIZE_MAX));
            RunWithFault(steps, outcome);
        }
    }
    return 0;
}
