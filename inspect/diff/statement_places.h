/* Statements of the schema's nodes, and where they stand. */
#pragma once

#include <qxyang.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "base/model_request.h"
#include "diff/model.h"

namespace inspect::diff {

/* The names of files as a person knows them. Each folder is looked up once. */
class FileNames {
  public:
    FileNames(const SearchDirs &dirs, Version *version) : dirs_(dirs), version_(version) {}

    Where Of(const QXYANG_ORIGIN_S &origin);
    Where Of(const QXYANG_FILE *file, const QXYANG_STATEMENT_S &statement);

    /* Says which path the file has; the other functions have to hear of a file first. */
    void Learn(const QXYANG_FILE *file, const char *path);

  private:
    const std::string *Shown(const std::string &path);

    const SearchDirs &dirs_;
    Version *version_;
    std::map<const QXYANG_FILE *, const std::string *> known_;
    std::map<std::string, std::string> folders_; /* what stands in front of a file's name, by folder */
};

/* The statements of YANG with that keyword that hold for the node. */
std::vector<QXYANG_ORIGIN_S> StatementsOf(QY_NODE *node, const char *keyword);

/* The typedefs that the leaf's type leads through, the nearest first. */
std::vector<QXYANG_ORIGIN_S> TypedefsOf(QY_NODE *leaf);

/* The defaults that hold for the node. */
std::vector<std::string> DefaultsOf(QY_NODE *node);

/* The statement's argument, or "". */
std::string ArgumentOf(const QXYANG_ORIGIN_S &origin);

/* What YANG's statements with names of these rules, directly in the one given, say: in the order of the rules. */
std::vector<Fact> FactsIn(const QXYANG_FILE *file, const QXYANG_STATEMENT_S &around, std::initializer_list<Rule> rules,
                          FileNames *files);

/* The text with one blank for each run of white space, and none around it. */
std::string Smoothed(std::string_view text);

} // namespace inspect::diff
