#include "ids/lock.h"

#include <unordered_map>
#include <unordered_set>

#include "ids/node_path.h"

namespace inspect::ids {
namespace {

class Locking {
  public:
    explicit Locking(const Sides &sides) : sides_(sides), given_(sides.models), made_(sides.registry) {}

    Registry Run()
    {
        ReserveGone();
        for (size_t i = 0; i < made_.classes.size(); ++i)
            classes_.emplace(std::to_string(made_.classes[i].id) + made_.classes[i].path, i);
        for (size_t i = 0; i < made_.fields.size(); ++i)
            fields_.emplace(KeyOf(made_.fields[i]), i);
        for (const ModelClass &found : sides_.models.classes)
            Take(found);
        for (const ModelField &found : sides_.models.fields)
            Take({found.classId, found.id, found.isAncestorKey, found.path});
        made_.Sort();
        return std::move(made_);
    }

  private:
    static std::string KeyOf(const FieldEntry &entry)
    {
        return std::to_string(entry.classId) + (entry.isAncestorKey ? "^" : " ") + std::to_string(entry.id) +
               entry.path;
    }

    /* "" for a module that has gone. */
    std::string RevisionOf(std::string_view path) const
    {
        auto found = sides_.models.revisions.find(std::string(ModuleOfPath(path)));
        return found != sides_.models.revisions.end() ? found->second : "";
    }

    /* Attributes go with their class, those of other modules' augments as well. */
    void ReserveGone()
    {
        std::unordered_set<uint32_t> liveClasses;
        for (ClassEntry &entry : made_.classes) {
            Item item = {0, entry.id, false, entry.path};
            if (!entry.gone && sides_.Has(entry) && given_.SameAs(item) == nullptr)
                entry.gone = RevisionOf(entry.path);
            if (!entry.gone)
                liveClasses.insert(entry.id);
        }
        for (size_t i = 0; i < made_.fields.size(); ++i) {
            FieldEntry &entry = made_.fields[i];
            Item item = {entry.classId, entry.id, entry.isAncestorKey, entry.path};
            bool isGone = sides_.Has(sides_.registry.fields[i]) && given_.SameAs(item) == nullptr;
            if (!entry.gone && (isGone || !liveClasses.contains(entry.classId)))
                entry.gone = RevisionOf(entry.path);
        }
    }

    void Take(const ModelClass &found)
    {
        auto [place, isNew] = classes_.try_emplace(std::to_string(found.id) + found.path, made_.classes.size());
        if (isNew)
            made_.classes.push_back({found.id, found.path});
        ClassEntry &entry = made_.classes[place->second];
        entry.gone.reset();
        entry.sample = found.sample;
    }

    void Take(const FieldEntry &found)
    {
        auto [place, isNew] = fields_.try_emplace(KeyOf(found), made_.fields.size());
        if (isNew)
            made_.fields.push_back(found);
        made_.fields[place->second].gone.reset();
    }

    const Sides &sides_;
    ItemIndex given_;
    Registry made_;
    std::unordered_map<std::string, size_t> classes_; /* by id and path */
    std::unordered_map<std::string, size_t> fields_;
};

} // namespace

Registry Locked(const Sides &sides)
{
    return Locking(sides).Run();
}

} // namespace inspect::ids
