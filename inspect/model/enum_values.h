/* Names and values of an enumeration leaf. */
#pragma once

#include <string>
#include <vector>

#include <korv_lib_yang.h>

namespace inspect {

struct EnumValue {
    std::string name;
    int32_t value;

    bool operator==(const EnumValue &) const = default;
};

/* In the order of their declaration; empty for a leaf of another type. */
std::vector<EnumValue> EnumValues(const KorvTreeLeaf &leaf);

} // namespace inspect
