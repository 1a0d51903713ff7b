/* Turns a file in compact syntax into statement records. */
#pragma once

#include "files/failures.h"
#include "syntax/statement.h"

namespace qxyang {

/* Does for such a file what ParseYin does for one in YIN, with the same result. */
[[nodiscard]] bool ParseCompact(Unit &unit, Failures &failures);

} // namespace qxyang
