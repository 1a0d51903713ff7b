/* New class ids and new attribute ids: such as nobody has, and nobody had. */
#pragma once

#include <bitset>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "ids/registry.h"

namespace inspect::ids {

inline constexpr uint32_t LAST_CLASS_ID = 0xFFFFFFFE;

class ClassIds {
  public:
    /* `first` is where modules begin that have no range in the registry. */
    ClassIds(const Registry &registry, uint32_t first);

    /* The id is used in a model; `module` "" for one that is not among those of the run. */
    void Take(uint32_t id, const std::string &module);

    /* An id for the module, behind those that it has as long as there is room. Throws Failure when there is none left. */
    uint32_t Next(const std::string &module);

  private:
    struct Supply {
        std::vector<RangeEntry> ranges;
        size_t range = 0;     /* in use */
        uint64_t next = 0;    /* the id to look at */
        bool isAgain = false; /* the gaps in front of the module's first ids are looked through */
    };

    Supply *SupplyOf(const std::string &module);
    bool Advance(Supply *supply) const;

    const Registry &registry_;
    uint32_t first_;
    std::unordered_set<uint32_t> taken_;
    std::map<std::string, std::vector<uint32_t>> own_; /* ids that modules have */
    std::map<std::string, Supply> supplies_;
};

/* Attribute ids of one class, with those of its ancestor keys. */
class FieldIds {
  public:
    void Take(uint32_t id);
    size_t Room() const { return LAST - used_.count(); }

    /* The id behind the highest, or when that is 255 the lowest free one; 0 when there is none. */
    uint32_t Next();

  private:
    static constexpr size_t LAST = 255;

    std::bitset<LAST + 1> used_; /* 0 is none and never set */
    size_t highest_ = 0;
};

} // namespace inspect::ids
