/* Contract functions of the schema context and of modules. No exception leaves them: the standard library throws when
 * memory runs out, and that is a failure result. */
#include <cstring>
#include <new>

#include "context.h"
#include "loader.h"

using namespace qxyang;

namespace {

constexpr uint32_t kOk = 0;
constexpr uint32_t kFailed = 1;

std::string_view orEmpty(const char *text)
{
    return text != nullptr ? text : std::string_view();
}

}  // namespace

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
        if (!orEmpty(pcDir).empty())
            pCtx->path.add(pcDir);
        return kOk;
    } catch (...) {
        return kFailed;
    }
}

void QY_CTX_UnSetSearchDir(QY_CTX *pCtx, const char *pcDir)
{
    try {
        if (pcDir == nullptr)
            pCtx->path.clear();
        else if (*pcDir != '\0')
            pCtx->path.remove(pcDir);
    } catch (...) {
        // No memory to make the name absolute: the directory stays.
    }
}

uint32_t QY_CTX_LoadModule(QY_CTX *pCtx, const char *pcModuleName, const char *pcRevision)
{
    size_t before = pCtx->modules.size();
    pCtx->failures.clear();
    try {
        Loader loader(*pCtx);
        if (QY_MOD *module = loader.load(orEmpty(pcModuleName), orEmpty(pcRevision))) {
            if (!module->byName)
                module->features.forEach([](Feature &feature) { feature.enabled = false; });
            module->byName = true;
            ++pCtx->featureEpoch;
            return kOk;
        }
    } catch (const LoadStopped &) {
        // Recorded.
    } catch (...) {
        pCtx->failures.addOutOfMemory();
    }
    pCtx->releaseFrom(before);
    return kFailed;
}

QY_MOD *QY_CTX_GetModuleByModName(QY_CTX *pCtx, const char *pcModuleName)
{
    return pCtx->moduleByName(orEmpty(pcModuleName));
}

uint32_t QY_CTX_UnloadModule(QY_CTX *pCtx, const char *pcModuleName)
{
    QY_MOD *module = pCtx->moduleByName(orEmpty(pcModuleName));
    if (module == nullptr)
        return kFailed;
    module->byName = false;
    if (!pCtx->releaseUnneeded()) {
        module->byName = true;
        return kFailed;
    }
    return kOk;
}

uint32_t QY_CTX_ScanAllSchemaLoadFail(QY_CTX *pCtx, QY_LOADFAIL_SCAN_PF pfnCb, void *pvCookie)
{
    return pCtx->failures.scan(pfnCb, pvCookie);
}

uint32_t QY_MOD_EnableFeature(QY_MOD *pMod, const char *pcFeature)
{
    std::string_view name = orEmpty(pcFeature);
    if (name == QY_FEATURE_ALL) {
        pMod->features.forEach([](Feature &feature) { feature.enabled = true; });
    } else {
        Feature *feature = pMod->features.find(name);
        if (feature == nullptr)
            return kFailed;
        feature->enabled = true;
    }
    ++pMod->context->featureEpoch;
    return kOk;
}

const char *QY_MOD_GetModuleName(QY_MOD *pMod)
{
    return pMod->name;
}

const char *QY_MOD_GetRevision(QY_MOD *pMod)
{
    return pMod != nullptr ? pMod->revision : nullptr;
}
