#include "session.h"

#include <cstdlib>
#include <cstring>
#include <ctime>
#include <iostream>

#include "checks.h"
#include "fuzz_host.h"
#include "host_memory.h"

namespace fuzz {
namespace {

constexpr size_t STEPS = 48;
constexpr size_t CHECKED_WHILE_UNLOADING = 6;

Step StepOf(const Statement &statement)
{
    const size_t blank = statement.argument.find(' ');
    return {statement.keyword == "%load", statement.argument.substr(0, blank),
            blank != std::string::npos ? statement.argument.substr(blank + 1) : ""};
}

const char *RevisionOf(const Step &step)
{
    return step.revision.empty() ? nullptr : step.revision.c_str();
}

} // namespace

std::vector<Step> StepsOf(const Statement &expanded)
{
    std::vector<Step> named;
    std::vector<Step> loads;
    for (const Statement &statement : expanded.children) {
        if (statement.keyword == "%load" || statement.keyword == "%unload")
            named.push_back(StepOf(statement));
        else if (statement.keyword == "module")
            loads.push_back({true, statement.argument, ""});
        else if (statement.keyword == "%file" && ChildArgument(statement, "module") != "")
            loads.push_back({true, ChildArgument(statement, "module"), ""});
    }
    std::vector<Step> &steps = named.empty() ? loads : named;
    steps.resize(std::min(steps.size(), STEPS));
    return steps;
}

Session::Session(unsigned openLevels) : m_openLevels(openLevels)
{
    TELMYANG_DEBUG_HOOK_S hooks[KORV_LOG_LEVEL_NUM] = {};
    for (uint32_t level = 0; level < KORV_LOG_LEVEL_NUM; ++level)
        hooks[level] = {level, Print, IsOpen};
    m_local = YANGLIB_Initial(1, reinterpret_cast<uint64_t>(this), hooks, ModelDir().c_str(), ExamplesDir().c_str());
    Require(m_local != nullptr, "an instance");
}

Session::~Session()
{
    YANGLIB_Uninitial(m_local);
    Require(LiveHostBlocks() == 0 || TreeGivenUp(), "every block is released");
    ReleaseHostBlocks();
}

uint32_t Session::IsOpen(uint64_t session, uint32_t level)
{
    return reinterpret_cast<const Session *>(session)->m_openLevels >> level & 1;
}

void Session::Print(uint64_t session, uint32_t level, const char *reserved, const char *text)
{
    Require(std::strcmp(reserved, "NULL") == 0 && std::strlen(text) < 1024, "arguments of a hook");
    reinterpret_cast<Session *>(session)->m_failuresSaid += level == 0 ? 1 : 0;
    static const bool shown = std::getenv("KORV_FUZZ_SHOW") != nullptr;
    if (shown)
        std::cerr << level << ": " << text << '\n';
}

std::vector<const TELMYANG_YANG_FILE_INFO_S *> Session::Registered() const
{
    std::vector<const TELMYANG_YANG_FILE_INFO_S *> files;
    const TELMYANG_YANG_FILE_LIST_S &list = m_local->pstYangCtx->stYangFileList;
    const auto *end = reinterpret_cast<const TELMYANG_YANG_FILE_INFO_S *>(&list);
    for (const TELMYANG_YANG_FILE_INFO_S *file = list.pstNext; file != end; file = file->pstNext)
        files.push_back(file);
    Require(files.size() == m_local->uiModuleNum, "number of modules");
    return files;
}

bool Session::Load(const Step &step)
{
    const uint32_t before = m_local->uiModuleNum;
    const uint64_t saidBefore = m_failuresSaid;
    Arm(true);
    const uint32_t ret = YANGLIB_LoadYangModule(m_local, step.module.c_str(), RevisionOf(step));
    Arm(false);
    const TELMYANG_YANG_FILE_INFO_S *file =
        TELMYANG_GetIfYangModuleExist(m_local, m_local->pstYangCtx, step.module.c_str(), RevisionOf(step));
    Require((file != nullptr) == (ret == 0), "result of a load", step.module);
    Require(ret == 0 || m_local->uiModuleNum == before, "registry after a failed load", step.module);
    Require(ret == 0 || m_failuresSaid != saidBefore || (m_openLevels & 1) == 0, "failure is said", step.module);
    return ret == 0;
}

bool Session::Take(const Step &step)
{
    const ProcessorTimeLimit limit;
    return step.load ? Load(step) : YANGLIB_UnloadYangModule(m_local, step.module.c_str(), RevisionOf(step)) == 0;
}

void Session::TakeInto(const Step &step, Outcome *outcome)
{
    const bool metBefore = FaultMet();
    bool done = Take(step);
    const bool met = FaultMet() && !metBefore;
    outcome->faultForgiven = outcome->faultForgiven || (met && done);
    if (met && !done)
        done = Take(step);
    outcome->results.push_back(done);
}

Outcome Session::Run(const std::vector<Step> &steps)
{
    Outcome outcome;
    for (const Step &step : steps)
        TakeInto(step, &outcome);
    outcome.dumps = CheckAll();
    return outcome;
}

Outcome Session::RunAndCut(std::vector<Step> *steps)
{
    Outcome outcome;
    for (size_t i = 0; i < steps->size(); ++i) {
        const std::clock_t begin = std::clock();
        TakeInto((*steps)[i], &outcome);
        if (std::clock() - begin > CLOCKS_PER_SEC)
            steps->resize(i + 1);
    }
    outcome.dumps = CheckAll();
    return outcome;
}

std::string Session::CheckAll()
{
    const ProcessorTimeLimit limit;
    std::string dumps;
    for (const TELMYANG_YANG_FILE_INFO_S *file : Registered()) {
        dumps += std::string(file->pcModuleName) + "\n" + CheckTrees(m_local, file);
        CheckLookups(m_local, file);
        (void)YANGLIB_GetYangRevision(m_local, file->pcModuleName);
    }
    return dumps;
}

void Session::UnloadOneByOne(bool fromFirst)
{
    for (auto files = Registered(); !files.empty(); files = Registered()) {
        const TELMYANG_YANG_FILE_INFO_S *file = fromFirst ? files.front() : files.back();
        const Step step = {false, file->pcModuleName, file->pcRevision != nullptr ? file->pcRevision : ""};
        if (!Take(step)) {
            UnloadAll(); /* two registrations of one module: its schema went with the first */
            return;
        }
        if (files.size() <= CHECKED_WHILE_UNLOADING)
            (void)CheckAll();
    }
}

void Session::UnloadAll()
{
    Require(YANGLIB_UnloadYangModuleAll(m_local) == 0 && m_local->uiModuleNum == 0, "unload of everything");
}

} // namespace fuzz
