/* The chain of top nodes that a generation context builds. */
#ifndef KORV_TOP_CHAIN_H
#define KORV_TOP_CHAIN_H

#include "telem_yang/telem_yang.h"

namespace korv {

/* Puts a tree behind the context's others. The context remembers its last top node, so that the chain is not walked. */
inline void AppendTopNode(KorvTreeGenCtx *pstChain, KorvTreeNode *pstTop)
{
    if (pstChain->pstRoot == nullptr)
        pstChain->pstRoot = pstTop;
    else
        (void)TELMYANG_AddKorvSiblingNode(pstChain->pstLastNode != nullptr ? pstChain->pstLastNode : pstChain->pstRoot,
                                          pstTop);
    pstChain->pstLastNode = pstTop;
}

} // namespace korv

#endif // KORV_TOP_CHAIN_H
