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

/* Any number of changes costs no more than the instances in them. */
class ExtensionEdit {
  public:
    explicit ExtensionEdit(const ExtensionSet *set);

    /* True if there is an instance that a change of that kind would take away for this one. */
    bool Has(ExtensionChange::Kind kind, const QY_EXT &named);

    /* Instances taken away leave their place to nobody, added ones follow at the end. */
    void Apply(const ExtensionChange &change);

    size_t Count() const { return instances_.size() - gone_; }

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

    std::vector<QY_EXT> instances_; /* without a name: taken away */
    size_t gone_ = 0;
    size_t indexed_ = 0;                              /* instances that the index knows */
    std::unordered_map<Key, Places, KeyHash> places_; /* of one extension and argument */
    std::unordered_map<const ExtensionName *, Places> ofExtension_;
};

} // namespace qxyang
