#include "ids/comparison.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "ids/node_path.h"

namespace inspect::ids {
namespace {

constexpr std::array KIND_NAMES = {"not-locked", "not-reserved", "missing",   "changed", "moved",
                                   "reused",     "twice",        "sample-id", "range"};
static_assert(KIND_NAMES.size() == static_cast<size_t>(Kind::Range) + 1);

/* "class id 0x10", "attribute id 3 of class 0x10" */
std::string IdText(const Item &item)
{
    if (item.scope == 0)
        return "class id " + Hex(item.id);
    return std::string(item.isAncestorKey ? "ancestor key " : "attribute id ") + std::to_string(item.id) +
           " of class " + Hex(item.scope);
}

/* "0x10", "3" */
std::string NumberText(const Item &item)
{
    return item.scope == 0 ? Hex(item.id) : std::to_string(item.id);
}

std::string PathText(const Item &item)
{
    std::string path = item.path.empty() ? "a key above" : std::string(item.path);
    return item.isAncestorKey && !item.path.empty() ? "the key " + path : path;
}

std::string SinceText(const Item &gone)
{
    return (*gone.gone)->empty() ? "" : " since revision " + **gone.gone;
}

Difference Make(Kind kind, const Item &item, const std::string &text)
{
    bool isClass = item.scope == 0;
    Difference made = {kind, isClass ? item.id : item.scope, isClass ? 0 : item.id, std::string(item.path),
                       PathText(item) + ": " + IdText(item) + " " + text};
    if (item.modelClass != nullptr)
        made.node = item.modelClass->node;
    if (item.modelField != nullptr) {
        made.node = item.modelField->node;
        made.statement = item.modelField->statement;
    }
    made.line = item.line;
    return made;
}

class Comparison {
  public:
    explicit Comparison(const Sides &sides) : sides_(sides), locked_(sides.registry), given_(sides.models) {}

    std::vector<Difference> Run()
    {
        for (const Item &item : given_.All())
            LookAt(item);
        for (const ClassEntry &entry : sides_.registry.classes)
            if (!entry.gone && sides_.Has(entry))
                LookForGone({0, entry.id, false, entry.path, nullptr, nullptr, nullptr, entry.sample, entry.line});
        for (const FieldEntry &entry : sides_.registry.fields)
            if (!entry.gone && given_.HasClass(entry.classId) && sides_.Has(entry))
                LookForGone({entry.classId, entry.id, entry.isAncestorKey, entry.path, nullptr, nullptr, nullptr, 0,
                             entry.line});
        return std::move(differences_);
    }

  private:
    void Report(Kind kind, const Item &item, const std::string &text)
    {
        differences_.push_back(Make(kind, item, text));
    }

    /* True if both are parts of one class. */
    static bool AreOne(const Item &left, const Item &right)
    {
        return left.modelClass != nullptr && right.modelClass != nullptr &&
               left.modelClass->top == right.modelClass->top;
    }

    /* Of the items of the models with one id, the first is right. */
    bool IsTwice(const Item &item)
    {
        std::vector<const Item *> same = given_.WithIdOf(item);
        const Item &first = *same.front();
        if (&first == &item || AreOne(first, item))
            return false;
        const Item *before = locked_.AtPathOf(item);
        Report(Kind::Twice, item,
               "is also that of " + PathText(first) +
                   (before != nullptr && before->id != item.id
                        ? "; the registry has " + NumberText(*before) + " for this one"
                        : ""));
        return true;
    }

    /* Parts of a class may lose the node above that made one of them. */
    bool AreNoLongerOne(const Item &item)
    {
        const Item *first = locked_.SameAs(*given_.WithIdOf(item).front());
        return first != nullptr && first->IsLive() && IsTwice(item);
    }

    void LookAt(const Item &item)
    {
        const Item *same = locked_.SameAs(item);
        if (same != nullptr && same->IsLive()) {
            if (!AreNoLongerOne(item))
                LookAtSample(item, *same);
            return;
        }
        if (IsTwice(item) || LookAtOthers(item, same != nullptr))
            return;
        if (const Item *before = locked_.AtPathOf(item))
            return Report(Kind::Changed, item, "is " + NumberText(*before) + " in the registry");
        if (same != nullptr)
            return Report(Kind::NotLocked, item,
                          "is reserved" + SinceText(*same) + " in the registry: the node is back");
        if (item.scope == 0 ? !IsOutOfRange(item)
                            : locked_.HasClass(item.scope)) // a new class stands for its attributes
            Report(Kind::NotLocked, item, "is not in the registry");
    }

    /* True if the item is a further part of a class of the registry, whose other parts may be of modules that are not
     * looked at. */
    bool IsPartOf(const std::vector<const Item *> &others, const Item &item) const
    {
        return std::any_of(others.begin(), others.end(), [&](const Item *other) {
            const Item *there = given_.SameAs(*other);
            bool isTop = item.modelClass != nullptr && item.modelClass->top == other->path;
            return other->IsLive() && (isTop || (there != nullptr && AreOne(*there, item)));
        });
    }

    /* True if the id is one that the registry has for another node. What was reserved for both may come back. */
    bool LookAtOthers(const Item &item, bool isBack)
    {
        std::vector<const Item *> others = locked_.WithIdOf(item);
        if (IsPartOf(others, item))
            return false;
        for (const Item *other : others) {
            if (!other->IsLive())
                continue;
            if (given_.SameAs(*other) != nullptr)
                Report(Kind::Twice, item, "is also that of " + PathText(*other) + ", which has it in the registry");
            else
                Report(Kind::Moved, item, "is that of " + PathText(*other) + " in the registry" + BeforeText(item));
            return true;
        }
        if (others.empty() || isBack)
            return false;
        Report(Kind::Reused, item,
               "is reserved" + SinceText(*others.front()) + " in the registry: it was that of " +
                   PathText(*others.front()) + BeforeText(item));
        return true;
    }

    /* What the registry has for the node instead. */
    std::string BeforeText(const Item &item) const
    {
        const Item *before = locked_.AtPathOf(item);
        return before != nullptr ? ", and this one has " + NumberText(*before) : "";
    }

    /* Parts of a class have its id, wherever they stand. */
    bool IsOutOfRange(const Item &item)
    {
        if (item.modelClass->top != item.path)
            return false;
        std::string_view module = ModuleOfPath(item.path);
        const RangeEntry *range = sides_.registry.RangeAt(item.id);
        if (range != nullptr && range->module != module)
            Report(Kind::Range, item, "is in the range of module '" + range->module + "'");
        else if (range == nullptr && !sides_.registry.RangesOf(module).empty())
            Report(Kind::Range, item, "is in no range of module '" + std::string(module) + "'");
        else
            return false;
        return true;
    }

    void LookAtSample(const Item &item, const Item &locked)
    {
        if (item.sample == locked.sample)
            return;
        std::string now = item.sample != 0 ? "has the sample id " + Hex(item.sample) : "has no sample id";
        if (locked.sample == 0)
            Report(Kind::NotLocked, item, now + ", which is not in the registry");
        else
            Report(Kind::Sample, item, now + ", and " + Hex(locked.sample) + " in the registry");
    }

    /* Another id at the same place has been reported. */
    void LookForGone(const Item &locked)
    {
        if (given_.SameAs(locked) == nullptr && given_.AtPathOf(locked) == nullptr)
            Report(Kind::NotReserved, locked, "is in the registry, and no node of the models has it");
    }

    const Sides &sides_;
    ItemIndex locked_;
    ItemIndex given_;
    std::vector<Difference> differences_;
};

} // namespace

const char *KindName(Kind kind)
{
    return KIND_NAMES[static_cast<size_t>(kind)];
}

bool IsOrdinary(const Difference &difference)
{
    return difference.kind == Kind::NotLocked || difference.kind == Kind::NotReserved;
}

bool Sides::Has(const ClassEntry &entry) const
{
    return modules.contains(std::string(ModuleOfPath(entry.path)));
}

/* An ancestor key is of the module that has the class, wherever the key's leaf stands. */
bool Sides::Has(const FieldEntry &entry) const
{
    if (!entry.isAncestorKey)
        return modules.contains(std::string(ModuleOfPath(entry.path)));
    auto order = [](const ClassEntry &left, const ClassEntry &right) { return left.id < right.id; };
    auto [first, end] = std::equal_range(registry.classes.begin(), registry.classes.end(),
                                         ClassEntry{.id = entry.classId, .path = ""}, order);
    return std::any_of(first, end, [this](const ClassEntry &found) { return !found.gone && Has(found); });
}

std::vector<Difference> Compare(const Sides &sides)
{
    return Comparison(sides).Run();
}

void TellMissing(const Instance &instance, const std::vector<ModuleKey> &modules, std::vector<Difference> *differences)
{
    std::set<std::string> paths;
    for (const Difference &difference : *differences)
        if (difference.kind == Kind::NotReserved)
            paths.insert(difference.path);
    std::map<std::string, QY_NODE *> nodes = NodesAt(instance, modules, paths);
    for (Difference &difference : *differences) {
        auto found = nodes.find(difference.path);
        if (difference.kind != Kind::NotReserved || found == nodes.end())
            continue;
        difference.kind = Kind::Missing;
        difference.node = found->second;
        difference.text = difference.text.substr(0, difference.text.rfind(", and ")) + ", and the node has none";
    }
}

} // namespace inspect::ids
