/* Extension instances of a node while a module's deviations change them. */
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "schema/model.h"

namespace qxyang {

/* What one deviate does with the extension statements in it. */
struct ExtensionChange {
    enum class Kind : uint8_t {
        Add,
        Replace, /* all instances of the same extensions */
        Delete   /* all instances of the same extensions and arguments */
    };

    Kind kind;
    const ExtensionSet *operand;
};

/* Changes cost as much as there are instances in them, however many the node has. */
class ExtensionEdit {
  public:
    explicit ExtensionEdit(const ExtensionSet *set);

    /* True if a change of that kind, with this instance as its operand, would remove an instance. */
    bool Has(ExtensionChange::Kind kind, const QY_EXT &named);

    /* The instances that stay keep their order; added ones follow at the end. */
    void Apply(const ExtensionChange &change);

    size_t Count() const { return instances_.size() - removed_; }

    OwnedSet Result() const;

  private:
    struct Key {
        const ExtensionName *name;
        const char *argument;

        bool operator==(const Key &other) const;
    };
    struct KeyHash {
        size_t operator()(const Key &key) const;
    };
    using Places = std::vector<size_t>; /* in instances_ */

    void AddAll(const ExtensionSet &set);
    void Index();
    Places *Find(ExtensionChange::Kind kind, const QY_EXT &named);

    std::vector<QY_EXT> instances_; /* those without a name are removed */
    std::vector<Spot> spots_;       /* of the instances, in a context that keeps places; else none */
    size_t removed_ = 0;
    size_t indexed_ = 0;                              /* instances in the two indexes that follow */
    std::unordered_map<Key, Places, KeyHash> places_; /* of one extension and argument */
    std::unordered_map<const ExtensionName *, Places> ofExtension_;
};

} // namespace qxyang
