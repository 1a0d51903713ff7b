/* Turns a YIN file into statement records. */
#pragma once

#include "files/failures.h"
#include "syntax/statement.h"

namespace qxyang {

/* Namespace of the elements of YIN: RFC 7950, 13.1. */
inline constexpr std::string_view YIN_SPACE = "urn:ietf:params:xml:ns:yang:yin:1";

/* Parses the unit's source into unit.root. Checks which statements there are, where they stand and what their
 * arguments look like. Names that outlive the load go into the module's texts. False: a failure is recorded, and the
 * unit cannot be used. */
[[nodiscard]] bool ParseYin(Unit &unit, Failures &failures);

} // namespace qxyang
