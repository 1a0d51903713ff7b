/* The registry of ids: what each class id and attribute id was given to, for as long as there are data with it. What is no
 * longer in the models stays as reserved. It is a JSON file beside the models, one id a line; class ids stand in
 * it as in models, "0x1000". */
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace inspect::ids {

constexpr const char *REGISTRY_FILE_NAME = "korv-ids.json";
constexpr unsigned REGISTRY_VERSION = 1;

/* Class ids from which a module takes new ones, both ends included. */
struct RangeEntry {
    std::string module;
    uint32_t first = 0;
    uint32_t last = 0;
    uint32_t line = 0; /* of the file; 0: not in it yet, as in the entries below */
};

/* A node that is a class. The parts of one class are nodes with the same id, each in an entry of its own. */
struct ClassEntry {
    uint32_t id = 0;
    std::string path;                               /* as PathOf has it */
    uint32_t sample = 0;                            /* 0: none */
    std::optional<std::string> gone = std::nullopt; /* reserved: the revision in which it went, "" when not known */
    uint32_t line = 0;
};

/* An attribute of a class, or an id in which the class carries a key of the classes above. */
struct FieldEntry {
    uint32_t classId = 0;
    uint32_t id = 0;
    bool isAncestorKey = false;
    std::string path; /* of the leaf; of an ancestor key the leaf above, "" when not known */
    std::optional<std::string> gone = std::nullopt;
    uint32_t line = 0;
};

/* Entries are sorted: ranges by number, classes by id and path, attributes by class, id and path. */
struct Registry {
    std::vector<RangeEntry> ranges;
    std::vector<ClassEntry> classes;
    std::vector<FieldEntry> fields;

    /* The ranges of a module, by number. */
    std::vector<RangeEntry> RangesOf(std::string_view module) const;

    /* The range that has the class id, or null. */
    const RangeEntry *RangeAt(uint32_t classId) const;

    void Sort();
};

enum class IfMissing : uint8_t {
    Fail,
    Empty /* a registry without entries */
};

/* Reads a registry. Throws Failure, with file, line and column, when the file cannot be read, is damaged or contradicts
 * itself: conflict marks, an id twice for one node, two ids for one node, attributes without their class, ranges that
 * overlap. */
Registry LoadRegistry(const std::string &path, IfMissing ifMissing);

/* The same of a text; `path` is its name in messages. */
Registry ReadRegistry(const std::string &path, const std::string &text);

/* The text of the file: the same for the same entries. */
std::string RegistryText(const Registry &registry);

/* Makes the file of a sorted registry, by a new one that takes its name. `before` is what the file has held so far: throws Failure when somebody
 * else has changed it, when the registry contradicts itself, or when it cannot be written. */
void SaveRegistry(const std::string &path, const Registry &registry, const Registry &before);

} // namespace inspect::ids
