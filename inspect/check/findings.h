/* What `check` has to say. */
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "base/cause.h"
#include "check/rules.h"
#include "model/schema_places.h"

namespace inspect {

struct Finding {
    Rule rule;
    std::string module;
    Cause cause;
    std::string path = {}; /* of the node that it is about; "" for anything else, and where the path adds nothing */
    size_t places = 1; /* nodes that it is about: the statement may stand in a grouping. `path` is the first one's */
    std::string statement = {}; /* the one that stands at its place, with those around it; "" when it is not known */
};

/* Gives the finding its place and the statement that stands there, if these are known. */
void PlaceAt(const std::optional<Position> &position, Finding *finding);

/* The text with the number of places, if there are several: "... (in 12 places, first /a/b)". */
std::string TextOf(const Finding &finding);

} // namespace inspect
