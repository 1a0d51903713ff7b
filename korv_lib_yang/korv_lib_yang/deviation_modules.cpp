/* A few modules are used only together with a deviation module that adapts them to the device. */
#include "korv_lib_yang/korv_lib_yang.h"
#include "telem_yang_lib/log.h"

namespace {

constexpr const char *DEVIATION_LIST[] = {
    "quelvo-bras-dhcp-access",
    "quelvo-bras-dhcpv6-access",
    "quelvo-bras-pppox-access",
    "quelvo-bras-user-manage",
};
constexpr char FILE_PATTERN[] = "%s-deviations*.yin";
constexpr char NEVER_TAKEN[] = "-vs-";
constexpr uint32_t EXTENSION_LENGTH = 4; /* ".yin" */
constexpr uint32_t NAME_SIZE = 256;

/* A search of the host's find functions, ended on every way out. */
class FileSearch {
  public:
    explicit FileSearch(const char *pcPattern) : m_bOpen(XUR_VFS_FindFirst(pcPattern, &m_stFind) == 0) {}
    ~FileSearch() { Close(); }
    FileSearch(const FileSearch &) = delete;
    FileSearch &operator=(const FileSearch &) = delete;

    bool Found() const { return m_bOpen; }
    bool Next() { return XUR_VFS_FindNext(&m_stFind) == 0; }
    const char *FileName() const { return m_stFind.acFileName; }

    void Close()
    {
        if (m_bOpen)
            XUR_VFS_FindClose(&m_stFind);
        m_bOpen = false;
    }

  private:
    XUR_VFS_FIND_S m_stFind = {};
    bool m_bOpen;
};

/* Moves the search to the first file that may be taken. */
bool FindTakeable(FileSearch *pSearch)
{
    if (!pSearch->Found())
        return false;
    while (XUR_StrStr(pSearch->FileName(), NEVER_TAKEN) != nullptr) {
        if (!pSearch->Next())
            return false;
    }
    return true;
}

} // namespace

uint32_t YANGLIB_IsInDeviationList(const char *pcModuleName)
{
    for (const char *pcListed : DEVIATION_LIST) {
        if (XUR_StrStr(pcModuleName, pcListed) != nullptr)
            return 1;
    }
    return 0;
}

uint32_t YANGLIB_FindDeviationName(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcDir, const char *pcModuleName,
                                   char *pcOut, uint32_t uiOutSize)
{
    char acPattern[NAME_SIZE] = {};
    if (sprintf_s(acPattern, sizeof(acPattern), FILE_PATTERN, pcModuleName) < 0)
        return KORV_FAIL;
    if (XUR_VFS_SetWorkPath(pcDir) != 0)
        return KORV_FAIL;
    FileSearch search(acPattern);
    if (!FindTakeable(&search))
        return KORV_FAIL;
    search.Close();
    KORV_LOG_INFO(pstLocal, "Find deviation file %s", search.FileName());
    const uint32_t uiLength = XUR_StrLen(search.FileName());
    if (uiLength < EXTENSION_LENGTH || strncpy_s(pcOut, uiOutSize, search.FileName(), uiLength - EXTENSION_LENGTH) != 0)
        return KORV_FAIL;
    KORV_LOG_INFO(pstLocal, "Deviation mod is %s", pcOut);
    return KORV_OK;
}

uint32_t YANGLIB_LoadDeviationModule(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_CTX_S *pstYangCtx,
                                     const char *pcModuleName)
{
    char acFirst[NAME_SIZE] = {};
    char acSecond[NAME_SIZE] = {};
    const char *pcDeviation = nullptr;
    if (YANGLIB_FindDeviationName(pstLocal, pstYangCtx->acSearchDir1, pcModuleName, acFirst, NAME_SIZE) == KORV_OK)
        pcDeviation = acFirst;
    else if (YANGLIB_FindDeviationName(pstLocal, pstYangCtx->acSearchDir2, pcModuleName, acSecond, NAME_SIZE) ==
             KORV_OK)
        pcDeviation = acSecond;
    if (pcDeviation == nullptr) {
        KORV_LOG_INFO(pstLocal, "can not find deviation for mod %s", pcModuleName);
        return KORV_OK;
    }
    const uint32_t uiRet = TELMYANG_LoadYangModule(pstLocal, pstYangCtx, pcDeviation);
    KORV_LOG_INFO(pstLocal, "load deviation mod %s, ret is %u", pcDeviation, uiRet);
    return uiRet;
}
