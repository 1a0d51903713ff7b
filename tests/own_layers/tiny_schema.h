/* A schema library of one module, held in tables: what a host may bring instead of ours. */
#ifndef TINY_SCHEMA_H
#define TINY_SCHEMA_H

#include "korv_platform.h"

/* What the host services of this program have seen. */
extern unsigned g_uiLiveBlocks;
extern unsigned g_uiAssertions;
extern unsigned g_uiContexts;

/* Node of the table by index, to look at its private data. */
QY_NODE *TinyNode(unsigned uiIndex);
extern const unsigned g_uiTinyNodeNum;

#endif /* TINY_SCHEMA_H */
