/* From a node of the schema to its statements. */
#pragma once

#include <qxyang.h>

#include <map>
#include <optional>
#include <span>
#include <string>

#include "base/cause.h"
#include "base/model_request.h"

namespace inspect {

struct Position {
    std::string file; /* as the command line has it */
    uint32_t line;
    uint32_t column;
    QXYANG_ORIGIN_S statement = {}; /* the schema library's, as long as it has the file */
};

/* Gives the cause its place, if that is known. */
void PlaceAt(const std::optional<Position> &position, Cause *cause);

/* " (line 12)", or " (FILE:12)" unless it is the file of `from`; "" when the place is not known. */
std::string SeeText(const std::optional<Position> &place, const std::optional<Position> &from);

class Places {
  public:
    explicit Places(const SearchDirs &dirs) : dirs_(dirs) {}

    /* Where a node's statement stands, or a module's. */
    std::optional<Position> Of(QY_NODE *node);
    std::optional<Position> Of(QY_MOD *module);
    std::optional<Position> Of(const QXYANG_ORIGIN_S &origin);

    /* Where the node's first extension statement with one of these keywords stands, the first keyword before the others.
     * The node's own place when it has none, or has taken it over from another node. */
    std::optional<Position> OfExtension(QY_NODE *node, std::span<const char *const> keywords);

    /* The same for the statement with that argument. */
    std::optional<Position> OfExtension(QY_NODE *node, const std::string &keyword, const std::string &argument);

    /* Where the node's statement of YANG with that keyword stands, the last one that holds for it; else the node. */
    std::optional<Position> OfStatement(QY_NODE *node, const char *keyword);

  private:
    const std::string &Shown(const std::string &file);

    const SearchDirs &dirs_;
    std::map<std::string, std::string> shown_; /* names of files, by path */
};

/* "/sys/ports/port", choices and cases left out. */
std::string DataPath(QY_NODE *node);

/* The statement that makes the node; without file when it is not known. */
QXYANG_ORIGIN_S OriginOf(QY_NODE *node);

/* True if the extension statement stands in the node's own statement, or in one that changes the node; false when the node has
 * taken it over from another one. */
bool IsOfNode(const QXYANG_ORIGIN_S &extension, const QXYANG_ORIGIN_S &node);

/* What is wrong with a leafref leaf that has no final type, to follow its name: "is a leafref whose target is not found
 * (...)", or "leads through more than 64 leafrefs". "" for any other leaf. */
std::string BrokenLeafrefText(QY_NODE *leaf);

} // namespace inspect
