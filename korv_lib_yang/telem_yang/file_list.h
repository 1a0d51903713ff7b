/* Links of the registry. Its head is no record, so that a neighbour may only be touched through these functions. */
#ifndef KORV_FILE_LIST_H
#define KORV_FILE_LIST_H

#include "telem_yang/telem_yang.h"

namespace korv {

/* The head as the records' links show it. */
inline TELMYANG_YANG_FILE_INFO_S *ListEnd(TELMYANG_YANG_CTX_S *pstYangCtx)
{
    return reinterpret_cast<TELMYANG_YANG_FILE_INFO_S *>(&pstYangCtx->stYangFileList);
}

inline void SetNext(TELMYANG_YANG_CTX_S *pstYangCtx, TELMYANG_YANG_FILE_INFO_S *pstAt, TELMYANG_YANG_FILE_INFO_S *pstTo)
{
    if (pstAt == ListEnd(pstYangCtx))
        pstYangCtx->stYangFileList.pstNext = pstTo;
    else
        pstAt->pstNext = pstTo;
}

inline void SetPrev(TELMYANG_YANG_CTX_S *pstYangCtx, TELMYANG_YANG_FILE_INFO_S *pstAt, TELMYANG_YANG_FILE_INFO_S *pstTo)
{
    if (pstAt == ListEnd(pstYangCtx))
        pstYangCtx->stYangFileList.pstPrev = pstTo;
    else
        pstAt->pstPrev = pstTo;
}

inline void MakeEmpty(TELMYANG_YANG_CTX_S *pstYangCtx)
{
    pstYangCtx->stYangFileList = {ListEnd(pstYangCtx), ListEnd(pstYangCtx)};
}

inline void LinkAtEnd(TELMYANG_YANG_CTX_S *pstYangCtx, TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    TELMYANG_YANG_FILE_INFO_S *pstLast = pstYangCtx->stYangFileList.pstPrev;
    pstFile->pstNext = ListEnd(pstYangCtx);
    pstFile->pstPrev = pstLast;
    SetNext(pstYangCtx, pstLast, pstFile);
    pstYangCtx->stYangFileList.pstPrev = pstFile;
}

inline void Unlink(TELMYANG_YANG_CTX_S *pstYangCtx, TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    SetNext(pstYangCtx, pstFile->pstPrev, pstFile->pstNext);
    SetPrev(pstYangCtx, pstFile->pstNext, pstFile->pstPrev);
}

/* What the registry knows of a module. */
struct Registered {
    TELMYANG_YANG_FILE_INFO_S *pstFile; /* the first record of that name and revision, or null */
    bool bAnyRevision;                  /* one of that name was met on the way to it, or to the end */
};
Registered FindRegistered(TELMYANG_YANG_CTX_S *pstYangCtx, const char *pcModuleName, const char *pcRevision);

} // namespace korv

#endif // KORV_FILE_LIST_H
