#include "fuzz_host.h"

#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace fuzz {
namespace {

namespace fs = std::filesystem;

/* Removed when the process ends. */
struct Directory {
    Directory()
    {
        const fs::path base = fs::exists("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path();
        std::string pattern = (base / "korv-fuzz-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            std::abort();
        path = pattern;
    }
    ~Directory()
    {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
    std::string path;
};

uint32_t Open(uint64_t, uint32_t)
{
    return 1;
}

void Drop(uint64_t, uint32_t, const char *, const char *) {}

uint32_t Visit(void *, KorvTreeNode *)
{
    return 0;
}

void DumpTree(TELMYANG_LOCAL_DATA_S *local, KorvTreeNode *augmentTree, bool isAugment)
{
    const YangDumpRequest request = {local, "fuzz", nullptr, augmentTree, isAugment ? 1u : 0u};
    YangDumpNodeData **records = nullptr;
    uint32_t count = 0;
    (void)YANGLIB_DumpYangModuleDataEx(&request, &records, &count);
    YANGLIB_FreeDumpDataEx(records, count);
    ZOR_Free_F(records, __FILE__, __LINE__);
}

constexpr time_t SECONDS_OF_ONE_STEP = 10;

void SetTimer(time_t seconds)
{
    const itimerval limit = {{0, 0}, {seconds, 0}};
    if (setitimer(ITIMER_PROF, &limit, nullptr) != 0)
        std::abort();
}

extern "C" void EndLate(int)
{
    constexpr char TEXT[] = "this step takes too much processor time\n";
    (void)!write(STDERR_FILENO, TEXT, sizeof(TEXT) - 1);
    std::abort();
}

} // namespace

const std::string &ModelDir()
{
    static const Directory directory;
    return directory.path;
}

std::string ExamplesDir()
{
    return KORV_SOURCE_DIR "/examples/yin";
}

void WriteModel(const std::string &fileName, const std::string &text)
{
    std::ofstream(ModelDir() + "/" + fileName, std::ios::binary) << text;
}

Instance::Instance()
{
    const TELMYANG_DEBUG_HOOK_S hooks[KORV_LOG_LEVEL_NUM] = {
        {0, Drop, Open}, {1, Drop, Open}, {2, Drop, Open}, {3, Drop, Open}};
    m_local = YANGLIB_Initial(1, 0, hooks, ModelDir().c_str(), ExamplesDir().c_str());
    if (m_local == nullptr)
        std::abort();
}

Instance::~Instance()
{
    YANGLIB_Uninitial(m_local);
}

ProcessorTimeLimit::ProcessorTimeLimit()
{
    if (std::signal(SIGPROF, EndLate) == SIG_ERR)
        std::abort();
    SetTimer(SECONDS_OF_ONE_STEP);
}

ProcessorTimeLimit::~ProcessorTimeLimit()
{
    SetTimer(0);
}

void LoadAndUse()
{
    const ProcessorTimeLimit limit;
    const Instance instance;
    TELMYANG_LOCAL_DATA_S *local = instance.Local();
    if (!instance.Load("fuzz")) {
        if (local->uiModuleNum != 0 || !instance.Load("example-optics"))
            std::abort();
        return;
    }
    const TELMYANG_YANG_FILE_INFO_S *file = TELMYANG_GetIfYangModuleExist(local, local->pstYangCtx, "fuzz", nullptr);
    for (KorvTreeNode *top = file->pstOriginTree; top != nullptr; top = top->pstNextSibling)
        (void)YANGLIB_TravelYangModuleSubTree(local, top, nullptr, Visit, Visit);
    DumpTree(local, nullptr, false);
    for (uint32_t i = 0; i < file->ucAugmentNum; ++i)
        DumpTree(local, file->astAugment[i].pstTargetTree, true);
    if (YANGLIB_UnloadYangModule(local, "fuzz", nullptr) != 0)
        std::abort();
}

} // namespace fuzz
