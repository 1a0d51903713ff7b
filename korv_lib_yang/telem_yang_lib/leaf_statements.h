/* The statements of a leaf from one pass over its extension instances: a leaf is asked for several, and most of a
 * load's own time went into looking for each of them from the start. */
#ifndef KORV_LEAF_STATEMENTS_H
#define KORV_LEAF_STATEMENTS_H

#include "telem_yang_lib/telem_yang_lib.h"

namespace korv {

/* ext_keywords.cpp: the two halves of TELMYANG_BSC_GetNodeMimExtType. */
bool IsExtModule(const char *pcExtModule);
MimExtType IdOfKeyword(const char *pcKeyword);

class LeafStatements {
  public:
    explicit LeafStatements(QY_NODE *pNode);

    /* Number of extension instances of any module. */
    uint32_t Num() const { return m_uiNum; }

    /* What TELMYANG_BSC_GetNodeSpecMimExtValue answers for the node and an id up to MIM_EXT_CLASS_TYPE. */
    uint32_t Value(TELMYANG_LOCAL_DATA_S *pstLocal, MimExtType uiId, uint32_t *puiValue) const;

  private:
    static uint32_t TakeCb(QY_EXT *pExt, const char *pcExtModule, const char *pcKeyword, const char *pcArgument,
                           void *pStatements);
    void Take(const char *pcExtModule, const char *pcKeyword, const char *pcArgument);

    /* The first statement of an id. */
    struct First {
        bool bFound;
        const char *pcArgument; /* may be null */
    };

    QY_NODE *m_pNode;
    First m_astFirst[MIM_EXT_CLASS_TYPE + 1] = {};
    uint32_t m_uiNum = 0;
    bool m_bHasForeign = false;
};

} // namespace korv

#endif // KORV_LEAF_STATEMENTS_H
