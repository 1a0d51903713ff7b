/* What several files ask of a schema node, and what their scan callbacks answer. */
#ifndef KORV_SCHEMA_NODES_H
#define KORV_SCHEMA_NODES_H

#include "telem_yang_lib/log.h"

namespace korv {

/* What a scan callback answers: any other value than GO_ON ends the scan and is its result. */
inline constexpr uint32_t GO_ON = 0;
inline constexpr uint32_t STOP = 1;

/* The node's name as a message shows it. */
inline const char *NameOf(QY_NODE *pNode)
{
    return Shown(QY_NODE_GetNodeName(pNode));
}

inline bool IsChoiceOrCase(uint32_t uiNodeType)
{
    return uiNodeType == QY_NODE_TYPE_CHOICE || uiNodeType == QY_NODE_TYPE_CASE;
}

inline bool IsLeafOrLeafList(uint32_t uiNodeType)
{
    return uiNodeType == QY_NODE_TYPE_LEAF || uiNodeType == QY_NODE_TYPE_LEAF_LIST;
}

/* True for the types of node that can be a class. */
inline bool IsClassBearing(uint32_t uiNodeType)
{
    switch (uiNodeType) {
        case QY_NODE_TYPE_CONTAINER:
        case QY_NODE_TYPE_LEAF_LIST:
        case QY_NODE_TYPE_LIST:
        case QY_NODE_TYPE_RPC:
        case QY_NODE_TYPE_INPUT:
        case QY_NODE_TYPE_OUTPUT:
        case QY_NODE_TYPE_NOTIFICATION:
            return true;
        default:
            return false;
    }
}

} // namespace korv

#endif // KORV_SCHEMA_NODES_H
