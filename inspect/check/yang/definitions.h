/* What the files of a module define, and the status of it. */
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "check/yang/own_files.h"

namespace inspect {

enum class DefinitionKind : uint8_t {
    Typedef,
    Grouping,
    Identity,
    Feature
};

struct Definition {
    const OwnFile *file;
    uint32_t statement;
};

class Definitions {
  public:
    /* The files outlive the object. */
    explicit Definitions(const std::vector<OwnFile> &files);

    /* The definition that a reference in a statement means; nothing if the module has none of that name. */
    std::optional<Definition> Find(DefinitionKind kind, const OwnFile &file, const QXYANG_STATEMENT_S &from,
                                   std::string_view reference) const;

    /* The QXYANG_STATUS_ value of a statement: of itself or of one around it, whichever is greater. */
    uint32_t StatusOf(const OwnFile &file, uint32_t statement) const;

    /* The name of the built-in type that a type statement comes to; its argument if that is another module's. */
    std::string_view BuiltinOf(const OwnFile &file, const QXYANG_STATEMENT_S &type) const;

  private:
    struct Key {
        uint64_t scope; /* file and statement around; of the module's own top, TOP */
        DefinitionKind kind;
        std::string_view name;
        bool operator==(const Key &other) const = default;
    };
    struct KeyHash {
        size_t operator()(const Key &key) const;
    };

    static uint64_t ScopeOf(const OwnFile &file, uint32_t around);
    void Read(const OwnFile &file);

    std::unordered_map<Key, Definition, KeyHash> definitions_;
    std::vector<std::vector<uint8_t>> statuses_; /* of each file's statements */
};

} // namespace inspect
