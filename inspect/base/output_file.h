/* Writing a result to a file. */
#pragma once

#include <string>

namespace inspect {

/* Writes the text to a new file beside `path` and gives it that name, so that `path` is never seen half written. What is
 * no regular file, such as a terminal, is written to directly. Throws Failure. */
void WriteOutputFile(const std::string &path, const std::string &text);

} // namespace inspect
