/* Writers of the two syntaxes. Both indent by two blanks and put a text that is too long for its line on one of its own. */
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "convert/outline.h"

namespace inspect {

inline constexpr size_t INDENT = 2;      /* blanks a level */
inline constexpr size_t LINE_WIDTH = 72; /* characters of a line that texts keep to where they can */

/* What was written. */
struct Written {
    std::string text;
    size_t lostComments = 0; /* that the syntax cannot hold */
};

/* A prefix and the namespace that it stands for. */
using Namespaces = std::vector<std::pair<std::string, std::string>>;

Written WriteYin(const Outline &outline, const Namespaces &namespaces);
Written WriteCompact(const Outline &outline);

/* An argument as compact syntax has it. A quoted one begins `column` characters behind the beginning of its line; if it
 * needs further strings, they stand there too, behind a '+'. */
std::string CompactArgument(const OutlineItem &item, size_t column);

/* The lines of a comment's text behind the first, moved so that they stand to its new column as they did to the old. */
std::string MovedComment(const OutlineItem &comment, size_t column);

} // namespace inspect
