/* Contract functions of the schema context and of modules. No exception leaves them: the standard library throws when
 * memory runs out, and that is a failure result. */
#include <cstring>
#include <new>

#include "base/text.h"
#include "load/loader.h"
#include "schema/context.h"

using namespace qxyang;

namespace {

constexpr uint32_t OK = 0;
constexpr uint32_t FAILED = 1;

} // namespace

QY_CTX *QY_CTX_Create(uint32_t)
{
    return new (std::nothrow) QY_CTX;
}

void QY_CTX_Delete(QY_CTX *pCtx)
{
    delete pCtx;
}

void QY_CTX_SetPridataFreeFunc(QY_CTX *pCtx, QY_PRIDATA_FREE_PF pfnFree)
{
    pCtx->freePrivate = pfnFree;
}

uint32_t QY_CTX_SetSearchDir(QY_CTX *pCtx, const char *pcDir)
{
    try {
        if (!OrEmpty(pcDir).empty())
            pCtx->path.Add(pcDir);
        return OK;
    } catch (...) {
        return FAILED;
    }
}

void QY_CTX_UnSetSearchDir(QY_CTX *pCtx, const char *pcDir)
{
    try {
        if (pcDir == nullptr)
            pCtx->path.Clear();
        else if (*pcDir != '\0')
            pCtx->path.Remove(pcDir);
    } catch (...) {
        // No memory to make the name absolute: the directory stays.
    }
}

uint32_t QY_CTX_LoadModule(QY_CTX *pCtx, const char *pcModuleName, const char *pcRevision)
{
    QY_MOD *before = pCtx->Latest();
    pCtx->failures.Begin(OrEmpty(pcModuleName));
    pCtx->extensionsGiven = 0;
    try {
        Loader loader(*pCtx);
        if (QY_MOD *module = loader.Load(OrEmpty(pcModuleName), OrEmpty(pcRevision))) {
            if (!module->byName)
                module->features.ForEach([](Feature &feature) { feature.enabled = false; });
            pCtx->Promote(module);
            return OK;
        }
    } catch (const LoadStopped &) {
        // Recorded.
    } catch (...) {
        pCtx->failures.AddOutOfMemory();
    }
    pCtx->ReleaseAfter(before);
    return FAILED;
}

QY_MOD *QY_CTX_GetModuleByModName(QY_CTX *pCtx, const char *pcModuleName)
{
    return pCtx->ModuleByName(OrEmpty(pcModuleName));
}

uint32_t QY_CTX_UnloadModule(QY_CTX *pCtx, const char *pcModuleName)
{
    QY_MOD *module = pCtx->ModuleByName(OrEmpty(pcModuleName));
    return module != nullptr && pCtx->Unload(module) ? OK : FAILED;
}

uint32_t QY_CTX_ScanAllSchemaLoadFail(QY_CTX *pCtx, QY_LOADFAIL_SCAN_PF pfnCb, void *pvCookie)
{
    return pCtx->failures.Scan(pfnCb, pvCookie);
}

uint32_t QY_MOD_EnableFeature(QY_MOD *pMod, const char *pcFeature)
{
    std::string_view name = OrEmpty(pcFeature);
    if (name == QY_FEATURE_ALL) {
        pMod->features.ForEach([](Feature &feature) { feature.enabled = true; });
    } else {
        Feature *feature = pMod->features.Find(name);
        if (feature == nullptr)
            return FAILED;
        feature->enabled = true;
    }
    ++pMod->context->featureEpoch;
    return OK;
}

const char *QY_MOD_GetModuleName(QY_MOD *pMod)
{
    return pMod->name;
}

const char *QY_MOD_GetRevision(QY_MOD *pMod)
{
    return pMod != nullptr ? pMod->revision : nullptr;
}
