/* Arguments of extension statements as numbers and lists of numbers. */
#include "telem_yang_lib/log.h"

namespace {

constexpr uint64_t NOT_A_NUMBER = 0xFFFFFFFFFFFFFFFF; /* overflow, and what "-1" gives */
constexpr uint32_t BASE_BY_PREFIX = 0;

const char *SkipBlanks(const char *pcText)
{
    while (*pcText == ' ')
        ++pcText;
    return pcText;
}

/* The number that nearly every argument is: a few decimal digits, the first of them not 0. False: the host's services read
 * the text. */
bool ReadShortNumber(const char *pcText, uint32_t *puiValue)
{
    constexpr uint32_t DIGITS_MAX = 9;
    if (*pcText < '1' || *pcText > '9')
        return false;
    uint32_t uiValue = 0;
    for (uint32_t uiLoop = 0; uiLoop <= DIGITS_MAX; ++uiLoop) {
        const auto uiDigit = static_cast<uint32_t>(pcText[uiLoop] - '0');
        if (pcText[uiLoop] == '\0') {
            *puiValue = uiValue;
            return true;
        }
        if (uiDigit > 9 || uiLoop == DIGITS_MAX)
            return false;
        uiValue = uiValue * 10 + uiDigit;
    }
    return false;
}

} // namespace

uint32_t TELMYANG_BSC_ParseMimExtIntoInt(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcText, uint32_t *puiValue)
{
    if (pcText == nullptr) {
        KORV_LOG_ERROR(pstLocal, "number text null error!");
        return KORV_FAIL;
    }
    if (ReadShortNumber(pcText, puiValue))
        return KORV_OK;
    const uint64_t ulValue = XUR_strtoul(pcText, nullptr, BASE_BY_PREFIX);
    if (ulValue == NOT_A_NUMBER) {
        KORV_LOG_ERROR(pstLocal, "uiTmpVal error,uiTmpVal(%lu)!", ulValue);
        return KORV_FAIL;
    }
    *puiValue = static_cast<uint32_t>(ulValue);
    return KORV_OK;
}

uint32_t TELMYANG_BSC_ParseMimExtIntoArray(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcText, uint32_t *puiValArray,
                                           uint32_t uiTotalNum, uint32_t *puiFillNum)
{
    if (puiValArray == nullptr || puiFillNum == nullptr) {
        KORV_LOG_ERROR(pstLocal, "puiValArray or puiFillNum null error!");
        return KORV_FAIL;
    }
    if (uiTotalNum == 0) {
        KORV_LOG_ERROR(pstLocal, "uiTotalNum(%d) error!", 0);
        return KORV_FAIL;
    }
    uint32_t uiNum = 0;
    const char *pcCur = pcText;
    while (pcCur != nullptr && *(pcCur = SkipBlanks(pcCur)) != '\0') {
        char *pcEnd = nullptr;
        const uint64_t ulValue = XUR_strtoul(pcCur, &pcEnd, BASE_BY_PREFIX);
        if (ulValue == NOT_A_NUMBER) {
            KORV_LOG_ERROR(pstLocal, "pcCurPtr(%s)i(%d) error!", pcEnd, static_cast<int>(uiNum));
            return KORV_FAIL;
        }
        if (uiNum == uiTotalNum) {
            KORV_LOG_ERROR(pstLocal, "uiTotalNum(%d)i(%d) error!", static_cast<int>(uiTotalNum),
                           static_cast<int>(uiTotalNum));
            return KORV_FAIL;
        }
        puiValArray[uiNum++] = static_cast<uint32_t>(ulValue);
        pcCur = XUR_StrChr(pcEnd, ' ');
    }
    *puiFillNum = uiNum;
    return KORV_OK;
}

uint32_t TELMYANG_UTL_CountWordInStr(const char *pcText)
{
    if (pcText == nullptr)
        return 0;
    uint32_t uiNum = 1;
    while ((pcText = XUR_StrChr(pcText, ' ')) != nullptr) {
        ++uiNum;
        ++pcText;
    }
    return uiNum;
}
