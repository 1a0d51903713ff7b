/* Writing a result to a file. */
#ifndef KORV_INSPECT_OUTPUT_FILE_H
#define KORV_INSPECT_OUTPUT_FILE_H

#include <string>

namespace inspect {

/* Writes the text to a new file beside `path` and gives it that name, so that `path` is never seen half written. What is
 * no regular file, such as a terminal, is written to directly. Throws Failure. */
void WriteOutputFile(const std::string &path, const std::string &text);

} // namespace inspect

#endif // KORV_INSPECT_OUTPUT_FILE_H
