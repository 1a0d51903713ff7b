/* Statements as YIN files. */
#ifndef KORV_FUZZ_YIN_WRITER_H
#define KORV_FUZZ_YIN_WRITER_H

#include "statement.h"

namespace fuzz {

struct ModelFile {
    std::string name; /* NAME.yin */
    std::string text;
};

/* A file for each module and submodule of an expanded input, the first of each name. */
std::vector<ModelFile> YinFiles(const Statement &expanded);

bool IsModule(const Statement &statement);

} // namespace fuzz

#endif // KORV_FUZZ_YIN_WRITER_H
