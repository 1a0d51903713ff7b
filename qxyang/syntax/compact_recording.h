/* Turns a file in compact syntax into statement records. */
#pragma once

#include "files/failures.h"
#include "syntax/statement.h"

namespace qxyang {

/* Does for a file in compact syntax what ParseYin does for one in YIN. */
[[nodiscard]] bool ParseCompact(Unit &unit, Failures &failures);

} // namespace qxyang
