/* The ids of a run: those that the models have, those of the registry, and new ones beside them. */
#pragma once

#include <bitset>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "ids/assign/class_ids.h"
#include "ids/assign/survey.h"

namespace inspect::ids {

class Numbering {
  public:
    Numbering(const Survey &survey, const Registry &registry, uint32_t firstClassId);

    /* A class that a model has, with the ids of its leaves and ancestor keys. */
    void TakeClass(uint32_t classId, uint32_t index);

    /* The class id of a node: the one that the registry has for it unless another node has that now, else a new one. */
    uint32_t GiveClass(uint32_t index);

    /* The same for a leaf, or for the ancestor key that stands for a leaf above; 0 when the class has no room. */
    uint32_t GiveField(uint32_t classId, uint32_t leaf, bool isAncestorKey);

    void TakeField(uint32_t classId, uint32_t id);
    size_t RoomIn(uint32_t classId) const;

    /* True if the registry has this class id for other nodes, and for this one none. */
    bool IsOfOthers(uint32_t classId, uint32_t index) const;

  private:
    struct Fields {
        FieldIds ids;
        std::bitset<256> inModels;
    };

    void TakeStatements(const QXYANG_FILE *file);
    static std::string FieldKey(uint32_t classId, const std::string &path, bool isAncestorKey);

    const Survey &survey_;
    ClassIds classIds_;
    std::unordered_set<uint32_t> inModels_;
    std::unordered_map<uint32_t, Fields> fields_;             /* by class id */
    std::unordered_map<std::string, uint32_t> lockedClasses_; /* by path */
    std::unordered_set<uint32_t> lockedIds_;                  /* class ids in the registry that are in use */
    std::unordered_map<std::string, uint32_t> lockedFields_;
};

} // namespace inspect::ids
