/* The files of a module and its submodules, as the rules for statements read them. */
#pragma once

#include <qxyang.h>

#include <string>
#include <string_view>
#include <vector>

#include "check/yang/file_names.h"
#include "model/statements.h"

namespace inspect {

struct OwnFile {
    const QXYANG_FILE *file;
    std::string path;
    std::string name; /* the module's or submodule's */
    size_t number;    /* among the module's files */
    bool isSubmodule;
    FileNames names;
};

/* The submodules' files in the order of inclusion, the module's own last. */
std::vector<OwnFile> OwnFilesOf(const QY_CTX *schema, const QY_MOD *module);

/* Calls visit(statement) for each of YANG's own statements of a file in its order. What stands in an extension statement is
 * that extension's business and left out. */
template <class Visit>
void ForEachStatement(const QXYANG_FILE *file, Visit visit)
{
    uint32_t outside = QXYANG_NO_STATEMENT; /* level of the extension statement around */
    QXYANG_STATEMENT_S statement = {};
    for (uint32_t i = 0; QXYANG_GetStatement(file, i, &statement) == 0; ++i) {
        if (statement.uiLevel > outside)
            continue;
        bool isExtension = statement.pcPrefix != nullptr;
        outside = isExtension ? statement.uiLevel : QXYANG_NO_STATEMENT;
        if (!isExtension)
            visit(static_cast<const QXYANG_STATEMENT_S &>(statement));
    }
}

/* The argument, or "". */
std::string_view ArgumentOf(const QXYANG_STATEMENT_S &statement);

} // namespace inspect
