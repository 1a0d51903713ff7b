/* Finds values of enumerations and bits by their names. */
#pragma once

#include <unordered_map>

#include "schema/model.h"

namespace qxyang {

/* Made for one load. A type with many values gets an index when it is first searched. */
class EnumNames {
  public:
    /* The value of that name, or null. */
    const EnumValue *Find(const EnumSet &set, std::string_view name)
    {
        if (set.count <= SHORT) {
            for (uint32_t i = 0; i < set.count; ++i)
                if (name == set.values[i].name)
                    return &set.values[i];
            return nullptr;
        }
        auto [index, isNew] = indexes_.try_emplace(&set);
        for (uint32_t i = 0; isNew && i < set.count; ++i)
            index->second.Insert(const_cast<EnumValue *>(&set.values[i]));
        return index->second.Find(name);
    }

  private:
    static constexpr uint32_t SHORT = 16; /* so many values are searched without an index */

    std::unordered_map<const EnumSet *, NameTable<EnumValue>> indexes_;
};

} // namespace qxyang
