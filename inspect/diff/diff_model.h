/* One version of a module's class model as `diff` compares it: what a host can address, by value. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/enum_values.h"
#include "model/instance.h"
#include "model/integer_range.h"

namespace inspect {

struct DiffNode {
    std::string key;   /* path with modules, without choices and cases: tells the same node in both versions */
    std::string above; /* key of the node above, "" for a top node */
    std::string path;  /* without modules */
    uint32_t classId;  /* 0: no class */
    uint32_t sampleId; /* 0: none */
    std::vector<uint32_t> selfKeys;
    std::vector<uint32_t> ancestorKeys;
};

struct DiffLeaf {
    std::string key;
    std::string above; /* key of the holder */
    std::string path;
    uint32_t classId; /* of the holder */
    uint32_t fieldId; /* 0: none; this and the next three */
    uint32_t dataType;
    uint32_t indexMap;
    uint32_t referenceKey;
    bool isList; /* a leaf-list */
    std::string type;
    IntegerRange range; /* empty unless the type is one of integers */
    std::vector<EnumValue> enums;

    bool Addressable() const { return classId != 0 && fieldId != 0; }
};

struct DiffModel {
    std::string revision;        /* "" for none */
    uint32_t taskId;             /* 0: none */
    std::vector<DiffNode> nodes; /* parents first */
    std::vector<DiffLeaf> leaves;
};

/* The module's own tree, and of its augments' target trees what the module itself has added. */
DiffModel MakeDiffModel(const Instance &instance, const ModuleFile &file);

} // namespace inspect
