/* The names of a schema node and of its module. */
#include "telem_yang/telem_yang.h"
#include "telem_yang_lib/host_memory.h"

namespace {

/* A copy of a text, or null: for no text, no memory, or a failed copy. */
char *CopyName(const TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcText)
{
    return pcText != nullptr ? korv::CopyText(pstLocal->ulModuleId, pcText, korv::OnViolation::GiveUp) : nullptr;
}

} // namespace

const char *TELMYANG_GetNodeModuleName(TELMYANG_LOCAL_DATA_S *, QY_NODE *pNode)
{
    QY_MOD *pMod = QY_NODE_GetModule(pNode);
    return pMod != nullptr ? QY_MOD_GetModuleName(pMod) : nullptr;
}

char *TELMYANG_AllocNodeModuleName(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode)
{
    return CopyName(pstLocal, TELMYANG_GetNodeModuleName(pstLocal, pNode));
}

char *TELMYANG_AllocNodeSelfName(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode)
{
    return CopyName(pstLocal, QY_NODE_GetNodeName(pNode));
}
