#include "host.h"

#include <dlfcn.h>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace bench {
namespace {

uint64_t g_allocations = 0;
uint64_t g_hookCalls = 0;

uint32_t Closed(uint64_t, uint32_t)
{
    ++g_hookCalls;
    return 0;
}

uint32_t CountNode(void *count, KorvTreeNode *)
{
    ++*static_cast<uint32_t *>(count);
    return 0;
}

} // namespace

void Fail(const std::string &what)
{
    std::fprintf(stderr, "korv_bench: %s\n", what.c_str());
    std::exit(1);
}

Instance::Instance(const std::string &dir)
{
    std::array<TELMYANG_DEBUG_HOOK_S, KORV_LOG_LEVEL_NUM> hooks = {};
    hooks.fill({0, nullptr, Closed});
    m_local = YANGLIB_Initial(1, 0, hooks.data(), dir.c_str(), nullptr);
    if (m_local == nullptr)
        Fail("no instance");
}

Instance::~Instance()
{
    YANGLIB_Uninitial(m_local);
}

void Instance::Load(const std::string &name) const
{
    if (YANGLIB_LoadYangModule(m_local, name.c_str(), nullptr) != 0)
        Fail("cannot load " + name);
}

void Instance::Unload(const std::string &name) const
{
    if (YANGLIB_UnloadYangModule(m_local, name.c_str(), nullptr) != 0)
        Fail("cannot unload " + name);
}

void Instance::LoadSchema(const std::string &name) const
{
    if (QY_CTX_LoadModule(m_local->pstYangCtx->pSchemaCtx, name.c_str(), nullptr) != 0)
        Fail("cannot load the schema of " + name);
}

const TELMYANG_YANG_FILE_INFO_S &Instance::File(const std::string &name) const
{
    const auto *file = TELMYANG_GetIfYangModuleExist(m_local, m_local->pstYangCtx, name.c_str(), nullptr);
    if (file == nullptr)
        Fail(name + " is not loaded");
    return *file;
}

KorvTreeNode *Instance::Tree(const std::string &name) const
{
    KorvTreeNode *tree = File(name).pstOriginTree;
    if (tree == nullptr)
        Fail("no tree of " + name);
    return tree;
}

uint32_t Instance::TreeNodes(const std::string &name) const
{
    uint32_t count = 0;
    (void)YANGLIB_TravelYangModuleSubTree(m_local, Tree(name), &count, nullptr, CountNode);
    return count;
}

Counts CountsOf(const std::function<void()> &call)
{
    const uint64_t allocations = g_allocations;
    const uint64_t hookCalls = g_hookCalls;
    call();
    return {g_allocations - allocations, g_hookCalls - hookCalls, {}};
}

} // namespace bench

/* Part of this program, so the library finds these functions before those of the host services library. */
void *ZOR_Malloc_F(uint64_t, uint8_t, uint64_t ulSize, const char *, uint32_t)
{
    ++bench::g_allocations;
    return std::malloc(ulSize);
}

void ZOR_Free_F(void *pvBlock, const char *, uint32_t)
{
    std::free(pvBlock);
}

VEC_VECTOR_S *VEC_VectorInit_F(uint64_t ulModuleId, uint32_t uiCapacity, const char *pcFile, uint32_t uiLine)
{
    static const auto real = reinterpret_cast<decltype(&VEC_VectorInit_F)>(dlsym(RTLD_NEXT, "VEC_VectorInit_F"));
    ++bench::g_allocations;
    return real(ulModuleId, uiCapacity, pcFile, uiLine);
}
