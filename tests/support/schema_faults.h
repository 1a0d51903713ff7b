/* Failures of the schema library that a test asks for. */
#ifndef KORV_TEST_SCHEMA_FAULTS_H
#define KORV_TEST_SCHEMA_FAULTS_H

#include <cstdint>
#include <string>
#include <vector>

#include "korv_platform.h"

namespace test {

struct SchemaFaults {
    bool noContext = false;       /* QY_CTX_Create answers null */
    uint32_t unloadResult = 0;    /* QY_CTX_UnloadModule answers this and does nothing */
    uint32_t featureResult = 0;   /* QY_MOD_EnableFeature answers this */
    uint32_t failReplaceAt = ~0u; /* this call (from 0) of QY_NODE_ReplaceDstExtInst fails */
    uint32_t replaceCalls = 0;
    uint32_t keyNumBits = 0;          /* set in what QY_NODE_GetNodeKeyNum answers */
    bool modulesHidden = false;       /* QY_CTX_GetModuleByModName answers null once a module was loaded */
    std::vector<std::string> setDirs; /* what QY_CTX_SetSearchDir was given: "NULL" for null */
    uint32_t unsetAll = 0;            /* calls of QY_CTX_UnSetSearchDir with null */
    uint64_t nodeCalls = 0;           /* calls of QY_NODE_GetModule, QY_NODE_GetPrivate and QY_NODE_SetPrivate */

    bool Any() const { return featureResult != 0 || failReplaceAt != ~0u || modulesHidden; }
};

SchemaFaults &Faults();

/* Schema contexts that were created and not deleted. */
uint32_t LiveContexts();

/* The schema node at the path of names ("a/b/c"), from a module's top-level nodes down; null when there is none. */
QY_NODE *SchemaNode(QY_MOD *mod, const std::string &path);
QY_NODE *SchemaChild(QY_NODE *node, const std::string &path);

} // namespace test

#endif // KORV_TEST_SCHEMA_FAULTS_H
