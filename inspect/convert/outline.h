/* The statements and comments of a file as they are written again: what a line holds, and not how the file wrote it. */
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "convert/extensions.h"
#include "model/model_file.h"

namespace inspect {

/* A statement, or a comment. The texts are the file's. */
struct OutlineItem {
    bool isComment = false;
    std::string prefix; /* that the file's imports have for the module; "" for a statement of YANG */
    std::string module; /* that an extension statement is of; "" when that is not known */
    std::string keyword;
    std::optional<std::string> argument; /* or the comment's text */
    std::string argumentName;            /* attribute or element that YIN has for it; "" when that is not known */
    bool inElement = false;              /* YIN has an element for it */
    uint32_t level = 0;                  /* number of the statements around */
    bool isText = false;                 /* the argument is prose or an expression, which is written in quotes */
    bool blankBefore = false;            /* a blank line stands before it */
    bool onSameLine = false;             /* a comment behind something else */
    bool endsWithLine = false;           /* a comment that began with "//" */
    uint32_t line = 0;                   /* where it begins; 0: not known */
    uint32_t column = 0;

    std::string Name() const { return prefix.empty() ? keyword : prefix + ":" + keyword; }
};

/* Statements in the order of the file; those within another follow it with a higher level. */
using Outline = std::vector<OutlineItem>;

/* A statement that cannot be written in the other syntax. */
class ConvertError : public std::runtime_error {
  public:
    ConvertError(uint32_t atLine, uint32_t atColumn, const std::string &text)
        : std::runtime_error(text), line(atLine), column(atColumn)
    {
    }
    ConvertError(const OutlineItem &item, const std::string &text) : ConvertError(item.line, item.column, text) {}

    const uint32_t line;
    const uint32_t column;
};

/* Reads a file that is well formed. With `forYin`, each extension must be known. Throws ConvertError. */
Outline ReadOutline(const ModelFile &file, Extensions *extensions, bool forYin);

} // namespace inspect
