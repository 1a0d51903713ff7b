/* A schema library of two modules, held in tables: what a host may bring instead of ours. Its handles are odd numbers, since
 * nothing promises that they are addresses. */
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

/* Calls with a handle that was never handed out, or with a node that is gone. */
extern unsigned g_uiWrongHandles;

#endif /* TINY_SCHEMA_H */
