/* Loading a module: all or nothing, as far as the registry goes. */
#include "korv_lib_yang/load_steps.h"
#include "telem_yang/file_list.h"
#include "telem_yang/leaf_nodes.h"
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"

namespace {

/* A record that is not registered yet. It is released with what hangs on it unless it is registered. */
class NewYangFile {
  public:
    explicit NewYangFile(TELMYANG_LOCAL_DATA_S *pstLocal)
        : m_pstLocal(pstLocal), m_pstEntry(korv::NewZeroed<korv::RegistryEntry>(pstLocal).release())
    {
    }
    ~NewYangFile() { TELMYANG_FreeYangFileInfo(m_pstLocal, Get()); }
    NewYangFile(const NewYangFile &) = delete;
    NewYangFile &operator=(const NewYangFile &) = delete;

    TELMYANG_YANG_FILE_INFO_S *Get() const { return m_pstEntry != nullptr ? &m_pstEntry->stFile : nullptr; }

    /* bTwin: the module is registered under another revision as well. */
    void Register(bool bTwin)
    {
        korv::LinkAtEnd(m_pstLocal->pstYangCtx, &m_pstEntry->stFile);
        m_pstLocal->uiModuleNum++;
        korv::MarkBorrower(m_pstLocal, m_pstEntry, bTwin);
        m_pstEntry = nullptr;
    }

  private:
    TELMYANG_LOCAL_DATA_S *m_pstLocal;
    korv::RegistryEntry *m_pstEntry;
};

const char *FirstSearchDir(const TELMYANG_YANG_CTX_S *pstYangCtx)
{
    return pstYangCtx != nullptr && pstYangCtx->ppcSearchDir != nullptr ? korv::Shown(pstYangCtx->ppcSearchDir[0])
                                                                        : "NULL";
}

/* Step 3: the schema library's part, and the module's deviations. */
uint32_t LoadSchema(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_CTX_S *pstYangCtx, const char *pcModuleName,
                    const char *pcRevision)
{
    KORV_LOG_INFO(pstLocal, "3. Load module file: %s", pcModuleName);
    const uint32_t uiRet = TELMYANG_LoadYangModule(pstLocal, pstYangCtx, pcModuleName);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "-3. Load Module return 0x%x: pcModuleName(%s) pcReversionIn(%s) pcSearchDir(%s)",
                       uiRet, pcModuleName, korv::Shown(pcRevision), FirstSearchDir(pstYangCtx));
        if (pstYangCtx != nullptr)
            (void)QY_CTX_ScanAllSchemaLoadFail(pstYangCtx->pSchemaCtx, KORV_LIBYANG_LoadFailedPrint, pstLocal);
        return uiRet;
    }
    if (YANGLIB_IsInDeviationList(pcModuleName) != 0)
        (void)YANGLIB_LoadDeviationModule(pstLocal, pstYangCtx, pcModuleName);
    return KORV_OK;
}

/* Step 4: the extension statements become records on the schema nodes. */
uint32_t ReadExtensions(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile, const char *pcModuleName,
                        const char *pcRevision, QY_MOD *pMod)
{
    KORV_LOG_INFO(pstLocal, "4. Read module (%s) mimext info.", pcModuleName);
    const uint32_t uiRet = TELEMYANG_ReadAllYinExtensionData(pstLocal, pcModuleName, pstFile, pMod);
    if (uiRet != KORV_OK) {
        TELEMYANG_FreeAllYinExtensionInMouleEx(pstLocal, pcModuleName, pcRevision, pstFile);
        KORV_LOG_ERROR(pstLocal, "-4. Read module (%s) mimext info return 0x%x", pcModuleName, uiRet);
    }
    return uiRet;
}

/* Step 5: the trees are made from the records. The records are released afterwards, also when that fails. */
uint32_t GenerateTrees(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile, const char *pcModuleName,
                       const char *pcRevision, QY_MOD *pMod)
{
    KORV_LOG_INFO(pstLocal, "5. Generate Module (%s) tree.", pcModuleName);
    const uint32_t uiRet = TELEMYANG_GenerateYangMouleTree(pstLocal, pcModuleName, pcRevision, pstFile, pMod);
    TELEMYANG_FreeAllYinExtensionInMouleEx(pstLocal, pcModuleName, pcRevision, pstFile);
    if (uiRet != KORV_OK)
        KORV_LOG_ERROR(pstLocal, "-5. Generate Module (%s) tree return 0x%x", pcModuleName, uiRet);
    return uiRet;
}

/* Steps 2 to 5 for a module that is not registered. */
uint32_t LoadNewModule(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName, const char *pcRevision, bool bTwin)
{
    NewYangFile file(pstLocal);
    if (file.Get() == nullptr) {
        KORV_LOG_ERROR(pstLocal, "malloc failed!");
        return KORV_FAIL;
    }
    KORV_LOG_INFO(pstLocal, "2. Init module (%s) file info", pcModuleName);
    uint32_t uiRet = TELMYANG_FillYangModuleInfo(pstLocal, file.Get(), pstLocal->ulModuleId, pcModuleName, pcRevision);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "-2. Init module (%s) file info return 0x%x", pcModuleName, uiRet);
        return uiRet;
    }
    uiRet = YANGLIB_PrepareYangModuleData_(pstLocal, file.Get(), pstLocal->pstYangCtx, pcModuleName, pcRevision);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Load Module (%s) fail!", pcModuleName);
        return uiRet;
    }
    file.Register(bTwin);
    KORV_LOG_INFO(pstLocal, "Load Module (%s) success. Now total module : %u.", pcModuleName, pstLocal->uiModuleNum);
    return KORV_OK;
}

} // namespace

uint32_t korv::ReadAndBuild(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile,
                            const char *pcModuleName, const char *pcRevision, QY_MOD *pMod)
{
    const uint32_t uiRet = ReadExtensions(pstLocal, pstFile, pcModuleName, pcRevision, pMod);
    return uiRet == KORV_OK ? GenerateTrees(pstLocal, pstFile, pcModuleName, pcRevision, pMod) : uiRet;
}

uint32_t YANGLIB_LoadYangModule(TELMYANG_LOCAL_DATA_S *pYangModule, const char *pcModuleName, const char *pcReversionIn)
{
    if (pYangModule == nullptr || pcModuleName == nullptr) {
        KORV_LOG_ERROR(pYangModule, "pcModuleName or pYangModule error!");
        return KORV_FAIL;
    }
    const char *pcRevision = pcReversionIn != nullptr && pcReversionIn[0] != '\0' ? pcReversionIn : nullptr;
    KORV_LOG_INFO(pYangModule, "1. Check module (%s) is exists or not", pcModuleName);
    const korv::Registered stFound = korv::FindRegistered(pYangModule->pstYangCtx, pcModuleName, pcRevision);
    if (stFound.pstFile != nullptr) {
        KORV_LOG_INFO(pYangModule, "No need load exists Module (%s).", pcModuleName);
        return KORV_OK;
    }
    const uint32_t uiRet = LoadNewModule(pYangModule, pcModuleName, pcRevision, stFound.bAnyRevision);
    if (uiRet == KORV_OK)
        YANGLIB_PrintYangModuleData(pYangModule, pcModuleName, pcReversionIn);
    return uiRet;
}

uint32_t YANGLIB_PrepareYangModuleData_(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile,
                                        TELMYANG_YANG_CTX_S *pstYangCtx, const char *pcModuleName,
                                        const char *pcRevision)
{
    const uint32_t uiRet = LoadSchema(pstLocal, pstYangCtx, pcModuleName, pcRevision);
    if (uiRet != KORV_OK)
        return uiRet;
    QY_MOD *pMod = QY_CTX_GetModuleByModName(pstYangCtx->pSchemaCtx, pcModuleName);
    if (pMod == nullptr) {
        KORV_LOG_ERROR(pstLocal,
                       "-3. Load Module return null: uiRet(0x%x) pcModuleName(%s) pcReversionIn(%s) pcSearchDir(%s)",
                       uiRet, pcModuleName, korv::Shown(pcRevision), FirstSearchDir(pstYangCtx));
        return KORV_OK;
    }
    return korv::ReadAndBuild(pstLocal, pstFile, pcModuleName, pcRevision, pMod);
}
