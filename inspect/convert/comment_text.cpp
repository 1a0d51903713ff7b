#include <string_view>

#include "convert/writers.h"

namespace inspect {

std::string MovedComment(const OutlineItem &comment, size_t column)
{
    std::string moved;
    std::string_view rest = *comment.argument;
    size_t before = comment.column > 0 ? comment.column - 1 : 0;
    for (;;) {
        size_t end = rest.find('\n');
        moved += rest.substr(0, end);
        if (end == std::string_view::npos)
            return moved;
        moved += '\n';
        rest.remove_prefix(end + 1);
        size_t blanks = 0;
        while (blanks < before && blanks < rest.size() && rest[blanks] == ' ')
            ++blanks;
        rest.remove_prefix(blanks);
        if (!rest.empty() && rest.front() != '\n' && rest.front() != '\r')
            moved.append(column, ' ');
    }
}

} // namespace inspect
