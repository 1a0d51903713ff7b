/* Rows of paths: what is known of a node in one line, in each format. A row is written as soon as its node is met. */
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/paint.h"
#include "diff/model.h"
#include "diff/statement_places.h"
#include "paths/path_walk.h"
#include "paths/type_words.h"

namespace inspect {

struct PathRow {
    const PathNode *node;
    const char *module;
    const char *kind;
    TypeText type; /* of a leaf */
    bool isKey;
    std::vector<uint32_t> selfKeys;
    std::vector<uint32_t> ancestorKeys;
    const char *units; /* or null */
    std::vector<std::string> defaults;
    bool isConfig;
    const char *status;
    std::string description; /* on one line */
    diff::Where where;
};

class PathRowReader {
  public:
    PathRowReader(const Instance &instance, const SearchDirs &dirs)
        : files_(dirs, &version_), types_(instance.Schema(), &files_, &version_)
    {
    }

    /* Refers to the node. */
    PathRow Read(const PathNode &node);

    /* The type of a leaf; nothing of any other node. */
    TypeText TypeOf(const PathNode &node) { return node.IsLeaf() ? types_.Of(node.node) : TypeText(); }

  private:
    diff::Version version_;
    diff::FileNames files_;
    TypeWords types_;
};

/* A column of text and CSV. */
struct PathColumn {
    const char *name;
    size_t width; /* in text; a longer value pushes the others to the right */
    Tone tone;
    std::string (*text)(const PathRow &row, bool isForPeople);
};

std::vector<const PathColumn *> AllColumns();

/* The columns of that name, separated by commas. Throws Failure for a name that no column has. */
std::vector<const PathColumn *> ColumnsOf(const std::string &names);

/* What is shown in text when nobody says so. */
inline constexpr const char *USUAL_COLUMNS = "class_id,field_id,key,kind,base_type,path,limits,units";

class PathWriter {
  public:
    PathWriter() = default;
    PathWriter(const PathWriter &) = delete;
    PathWriter &operator=(const PathWriter &) = delete;
    virtual ~PathWriter() = default;
    virtual void Write(const PathRow &row) = 0;
};

/* On standard output. */
std::unique_ptr<PathWriter> NewTextWriter(std::vector<const PathColumn *> columns, const Paint &paint);
std::unique_ptr<PathWriter> NewCsvWriter(std::vector<const PathColumn *> columns);
std::unique_ptr<PathWriter> NewJsonLinesWriter();

} // namespace inspect
