/* The registry of loaded modules, keyed by name and revision as the host gave them. */
#include "telem_yang/id_index.h"
#include "telem_yang/name_index.h"
#include "telem_yang/tree_release.h"
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"

namespace {

/* Records that a lookup compares before it asks the index: where there are no more, that costs less. */
constexpr uint32_t COMPARED_NUM = 8;

/* A copy of the text, or null with a log line. */
char *NewText(TELMYANG_LOCAL_DATA_S *pstLocal, uint64_t ulModuleId, const char *pcText,
              uint32_t uiLine = __builtin_LINE())
{
    char *pcCopy = korv::CopyText(ulModuleId, pcText, korv::OnViolation::Assert, __FILE__, uiLine);
    if (pcCopy == nullptr)
        KORV_LOG_ERROR(pstLocal, "malloc failed!");
    return pcCopy;
}

void FreeTexts(TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    korv::HostFree(pstFile->pcModuleName);
    pstFile->pcModuleName = nullptr;
    korv::HostFree(pstFile->pcRevision);
    pstFile->pcRevision = nullptr;
    korv::HostFree(pstFile->pModuleExtInfo);
    pstFile->pModuleExtInfo = nullptr;
}

bool HasRevision(const TELMYANG_YANG_FILE_INFO_S *pstFile, const char *pcRevision)
{
    if (pcRevision == nullptr || pcRevision[0] == '\0')
        return pstFile->pcRevision == nullptr;
    return pstFile->pcRevision != nullptr && XUR_StrCmp(pstFile->pcRevision, pcRevision) == 0;
}

/* Notes what the record adds to the answer of a lookup; true if it is the one that is looked for. */
bool IsWanted(TELMYANG_YANG_FILE_INFO_S *pstFile, const char *pcModuleName, const char *pcRevision,
              korv::Registered *pstFound)
{
    if (pstFile->ucInUse == 0 || XUR_StrCmp(pstFile->pcModuleName, pcModuleName) != 0)
        return false;
    pstFound->bAnyRevision = true;
    if (!HasRevision(pstFile, pcRevision))
        return false;
    pstFound->pstFile = pstFile;
    return true;
}

korv::Registered FindByIndex(TELMYANG_YANG_CTX_S *pstYangCtx, const char *pcModuleName, const char *pcRevision)
{
    korv::Registered stFound = {};
    (void)korv::AnyOfName(pstYangCtx, pcModuleName, [&](korv::RegistryEntry *pstEntry) {
        return IsWanted(&pstEntry->stFile, pcModuleName, pcRevision, &stFound);
    });
    return stFound;
}

} // namespace

korv::Registered korv::FindRegistered(TELMYANG_YANG_CTX_S *pstYangCtx, const char *pcModuleName, const char *pcRevision)
{
    Registered stFound = {};
    uint32_t uiLeft = COMPARED_NUM;
    TELMYANG_YANG_FILE_INFO_S *const pstEnd = ListEnd(pstYangCtx);
    for (auto *pstFile = pstYangCtx->stYangFileList.pstNext; pstFile != pstEnd; pstFile = pstFile->pstNext) {
        if (uiLeft-- == 0 && HasAllNames(pstYangCtx))
            return FindByIndex(pstYangCtx, pcModuleName, pcRevision);
        if (IsWanted(pstFile, pcModuleName, pcRevision, &stFound))
            break;
    }
    return stFound;
}

TELMYANG_YANG_FILE_INFO_S *TELMYANG_GetIfYangModuleExist(TELMYANG_LOCAL_DATA_S *, TELMYANG_YANG_CTX_S *pstYangCtx,
                                                         const char *pcModuleName, const char *pcRevision)
{
    return pcModuleName != nullptr ? korv::FindRegistered(pstYangCtx, pcModuleName, pcRevision).pstFile : nullptr;
}

uint32_t TELMYANG_FillYangModuleInfo(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile,
                                     uint64_t ulModuleId, const char *pcModuleName, const char *pcRevision)
{
    if (pcRevision != nullptr) {
        pstFile->pcRevision = NewText(pstLocal, ulModuleId, pcRevision);
        if (pstFile->pcRevision == nullptr)
            return KORV_FAIL;
    }
    pstFile->pcModuleName = NewText(pstLocal, ulModuleId, pcModuleName);
    if (pstFile->pcModuleName == nullptr)
        return KORV_FAIL;
    pstFile->ucInUse = 1;
    return KORV_OK;
}

void TELMYANG_RemoveYangFile(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    if (korv::RegistryEntry *pstEntry = korv::EntryOf(pstFile)) {
        korv::LeaveIndex(pstEntry);
        korv::LeaveNames(pstEntry);
    }
    korv::IdIndex *pstIds = korv::TakeIds(pstLocal->pstYangCtx);
    korv::Unlink(pstLocal->pstYangCtx, pstFile);
    korv::HostFree(pstIds);
    pstFile->ucInUse = 0;
    FreeTexts(pstFile);
    korv::HostFree(pstFile);
    pstLocal->uiModuleNum--;
}

uint32_t TELMYANG_RemoveYangFileInfoFromCtx(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                            const char *pcRevision)
{
    TELMYANG_YANG_FILE_INFO_S *pstFile =
        TELMYANG_GetIfYangModuleExist(pstLocal, pstLocal->pstYangCtx, pcModuleName, pcRevision);
    if (pstFile == nullptr) {
        KORV_LOG_ERROR(pstLocal, "can not find yang module!\n");
        return KORV_FAIL;
    }
    TELMYANG_RemoveYangFile(pstLocal, pstFile);
    return KORV_OK;
}

void TELMYANG_FreeYangFileInfo(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    if (pstFile == nullptr)
        return;
    (void)korv::ReleaseTree(pstLocal, pstFile->pstOriginTree);
    pstFile->pstOriginTree = nullptr;
    (void)TELMYANG_FreeYangtreeAllAugmentNodes(pstLocal, pstFile);
    FreeTexts(pstFile);
    korv::HostFree(pstFile);
}
