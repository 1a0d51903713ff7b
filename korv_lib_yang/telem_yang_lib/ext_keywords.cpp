/* Recognising the statements of the extension module. */
#include "telem_yang_lib/leaf_statements.h"

constexpr MimExtKeyword g_astKorvMimExtnList[MIM_EXT_KEYWORD_NUM] = {
    {MIM_EXT_CLASS_ID, "class-id"},
    {MIM_EXT_FIELD_ID, "field-id"},
    {MIM_EXT_AAA_TASK_ID, "aaa-task-id"},
    {MIM_EXT_DATATYPE_ID, "datatype-id"},
    {MIM_EXT_REF_ID_KEY_FID, "ref-id-key-fid"},
    {MIM_EXT_NAME2ID_KEY_FID, "name2id-key-fid"},
    {MIM_EXT_ANCESTOR_KEY_FID, "ancestor-key-fid"},
    {MIM_EXT_CLASS_TYPE, "class-type"},
    {MIM_EXT_CLASS, "class"},
    {MIM_EXT_FIELD, "field"},
    {MIM_EXT_AAA_TASK, "aaa-task"},
    {MIM_EXT_DATATYPE, "datatype"},
    {MIM_EXT_ANCESTOR_KEY, "ancestor-key"},
    {MIM_EXT_NAME2ID_KEY, "name2id-key"},
    {MIM_EXT_REF_ID_KEY, "ref-id-key"},
    {MIM_EXT_TLMT_SAMPLE_ID, "tlmt-sample-id"},
    {MIM_EXT_NONE, ""},
};

namespace {

constexpr bool RowsAreInIdOrder()
{
    for (uint32_t uiRow = 0; uiRow < MIM_EXT_KEYWORD_NUM; ++uiRow) {
        if (g_astKorvMimExtnList[uiRow].uiId != uiRow)
            return false;
    }
    return true;
}
static_assert(RowsAreInIdOrder());

/* Most comparisons of this table end at the first character. */
bool TextEqual(const char *pcLeft, const char *pcRight)
{
    return pcLeft[0] == pcRight[0] && XUR_StrCmp(pcLeft, pcRight) == 0;
}

} // namespace

bool korv::IsExtModule(const char *pcExtModule)
{
    return pcExtModule != nullptr && TextEqual(pcExtModule, MIM_EXT_MODULE_NAME);
}

MimExtType korv::IdOfKeyword(const char *pcKeyword)
{
    if (pcKeyword == nullptr)
        return MIM_EXT_NONE;
    for (uint32_t uiRow = 0; uiRow < MIM_EXT_NONE; ++uiRow) {
        if (TextEqual(pcKeyword, g_astKorvMimExtnList[uiRow].pcName))
            return uiRow;
    }
    return MIM_EXT_NONE;
}

MimExtType TELMYANG_BSC_GetNodeMimExtType(const char *pcExtModule, const char *pcKeyword)
{
    if (!korv::IsExtModule(pcExtModule))
        return MIM_EXT_NONE;
    return korv::IdOfKeyword(pcKeyword);
}

const char *TELMYANG_BSC_GetNodeMimExtName(TELMYANG_LOCAL_DATA_S *, MimExtType uiId)
{
    return uiId < MIM_EXT_NONE ? g_astKorvMimExtnList[uiId].pcName : nullptr;
}

uint32_t TELMYANG_MimExt_NotNeedProc(MimExtType uiId)
{
    return uiId > MIM_EXT_CLASS_TYPE ? 1 : 0;
}
