/* Turns a YIN file into statement records. */
#pragma once

#include "files/failures.h"
#include "syntax/statement.h"

namespace qxyang {

/* Namespace of the elements of YIN. */
inline constexpr std::string_view YIN_SPACE = "urn:ietf:params:xml:ns:yang:yin:1";

/* Parses the unit's source into unit.root and checks it against the grammar of statements, their places and the form of
 * their arguments. What is wrong is recorded; the unit is of no use then. Names that outlive the load go into the
 * module's texts. True: the whole file was read, and nothing is wrong with it. */
[[nodiscard]] bool ParseYin(Unit &unit, Failures &failures);

} // namespace qxyang
