#include "support/schema_faults.h"

#include <dlfcn.h>

namespace test {
namespace {

uint32_t g_liveContexts = 0;

struct NameSearch {
    std::string name;
    QY_NODE *found;
};

uint32_t FindByName(QY_NODE *node, void *, void *cookie)
{
    auto *search = static_cast<NameSearch *>(cookie);
    if (search->name != QY_NODE_GetNodeName(node))
        return 0;
    search->found = node;
    return 1;
}

} // namespace

SchemaFaults &Faults()
{
    static SchemaFaults faults;
    return faults;
}

uint32_t LiveContexts()
{
    return g_liveContexts;
}

QY_NODE *SchemaChild(QY_NODE *node, const std::string &path)
{
    if (node == nullptr || path.empty())
        return node;
    const size_t slash = path.find('/');
    NameSearch search = {path.substr(0, slash), nullptr};
    QY_NODE_IterScanChildrenNode(node, FindByName, &search);
    return SchemaChild(search.found, slash == std::string::npos ? "" : path.substr(slash + 1));
}

QY_NODE *SchemaNode(QY_MOD *mod, const std::string &path)
{
    if (mod == nullptr)
        return nullptr;
    const size_t slash = path.find('/');
    NameSearch search = {path.substr(0, slash), nullptr};
    QY_MOD_IterScanTopmostNode(mod, FindByName, &search);
    return SchemaChild(search.found, slash == std::string::npos ? "" : path.substr(slash + 1));
}

} // namespace test

using test::Faults;

#define REAL(function) reinterpret_cast<decltype(&function)>(dlsym(RTLD_NEXT, #function))

QY_CTX *QY_CTX_Create(uint32_t uiOptions)
{
    QY_CTX *context = Faults().noContext || uiOptions != 17 ? nullptr : REAL(QY_CTX_Create)(uiOptions);
    test::g_liveContexts += context != nullptr ? 1 : 0;
    return context;
}

void QY_CTX_Delete(QY_CTX *pCtx)
{
    test::g_liveContexts -= pCtx != nullptr ? 1 : 0;
    REAL(QY_CTX_Delete)(pCtx);
}

uint32_t QY_CTX_SetSearchDir(QY_CTX *pCtx, const char *pcDir)
{
    Faults().setDirs.emplace_back(pcDir != nullptr ? pcDir : "NULL");
    return REAL(QY_CTX_SetSearchDir)(pCtx, pcDir);
}

void QY_CTX_UnSetSearchDir(QY_CTX *pCtx, const char *pcDir)
{
    Faults().unsetAll += pcDir == nullptr ? 1 : 0;
    REAL(QY_CTX_UnSetSearchDir)(pCtx, pcDir);
}

uint32_t QY_CTX_UnloadModule(QY_CTX *pCtx, const char *pcModuleName)
{
    return Faults().unloadResult != 0 ? Faults().unloadResult : REAL(QY_CTX_UnloadModule)(pCtx, pcModuleName);
}

QY_MOD *QY_CTX_GetModuleByModName(QY_CTX *pCtx, const char *pcModuleName)
{
    return Faults().modulesHidden ? nullptr : REAL(QY_CTX_GetModuleByModName)(pCtx, pcModuleName);
}

uint32_t QY_MOD_EnableFeature(QY_MOD *pMod, const char *pcFeature)
{
    return Faults().featureResult != 0 ? Faults().featureResult : REAL(QY_MOD_EnableFeature)(pMod, pcFeature);
}

uint32_t QY_NODE_GetNodeKeyNum(QY_NODE *pNode)
{
    return REAL(QY_NODE_GetNodeKeyNum)(pNode) | Faults().keyNumBits;
}

QY_MOD *QY_NODE_GetModule(QY_NODE *pNode)
{
    static const auto real = REAL(QY_NODE_GetModule);
    ++Faults().nodeCalls;
    return real(pNode);
}

void *QY_NODE_GetPrivate(QY_NODE *pNode)
{
    static const auto real = REAL(QY_NODE_GetPrivate);
    ++Faults().nodeCalls;
    return real(pNode);
}

void QY_NODE_SetPrivate(QY_NODE *pNode, void *pvPrivate)
{
    static const auto real = REAL(QY_NODE_SetPrivate);
    ++Faults().nodeCalls;
    real(pNode, pvPrivate);
}

uint32_t QY_NODE_ReplaceDstExtInst(QY_NODE *pDst, QY_NODE *pSrc)
{
    return Faults().replaceCalls++ == Faults().failReplaceAt ? 1 : REAL(QY_NODE_ReplaceDstExtInst)(pDst, pSrc);
}
