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
    size_t lostComments = 0;    /* that the syntax cannot hold */
    std::vector<size_t> begins; /* where each statement stands in the text; each begins a line */
};

/* A prefix and the namespace that it stands for. */
using Namespaces = std::vector<std::pair<std::string, std::string>>;

/* Hands the items of an outline to a writer: CloseTo(level) ends the open statements of that level and below it,
 * Comment(item) and Statement(item, hasBlock) write an item. A module has a block even if nothing stands in it. */
template <class Writer>
void WriteItems(const Outline &outline, Writer &writer)
{
    for (size_t i = 0; i < outline.size(); ++i) {
        const OutlineItem &item = outline[i];
        writer.CloseTo(item.level);
        if (item.isComment)
            writer.Comment(item);
        else
            writer.Statement(item, item.level == 0 || (i + 1 < outline.size() && outline[i + 1].level > item.level));
    }
    writer.CloseTo(0);
}

Written WriteYin(const Outline &outline, const Namespaces &namespaces);
Written WriteCompact(const Outline &outline);

/* An argument as compact syntax has it. A quoted one begins `column` characters behind the beginning of its line; if it
 * needs further strings, they stand there too, behind a '+'. */
std::string CompactArgument(const OutlineItem &item, size_t column);

/* The lines of a comment's text behind the first, moved so that they stand to its new column as they did to the old. */
std::string MovedComment(const OutlineItem &comment, size_t column);

} // namespace inspect
