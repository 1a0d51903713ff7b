/* A registry as it is shown. */
#pragma once

#include <string>

#include "ids/registry.h"

namespace inspect::ids {

enum class By : uint8_t {
    Id,
    Path
};

/* The registry with the entries of these modules only. */
Registry Narrowed(const Registry &registry, const std::vector<std::string> &modules);

void ListText(const Registry &registry, By by);
void ListJson(const Registry &registry, By by);
void ListCsv(const Registry &registry, By by);

} // namespace inspect::ids
