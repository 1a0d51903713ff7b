#include "ids/assign/numbering.h"

#include "base/numbers.h"
#include "ids/assign/statement_names.h"
#include "ids/node_path.h"
#include "model/schema_scan.h"
#include "model/statements.h"

namespace inspect::ids {

Numbering::Numbering(const Survey &survey, const Registry &registry, uint32_t firstClassId)
    : survey_(survey), classIds_(registry, firstClassId)
{
    for (uint32_t id : survey.Models().ClassIdsElsewhere())
        classIds_.Take(id, "");
    for (const LoadedModule &module : survey.Models().Modules())
        for (const SourceFile &source : module.files)
            TakeStatements(source.file);
    for (const ClassEntry &entry : registry.classes)
        if (!entry.gone) {
            lockedClasses_.emplace(entry.path, entry.id);
            lockedIds_.insert(entry.id);
        }
    for (const FieldEntry &entry : registry.fields) {
        fields_[entry.classId].ids.Take(entry.id);
        if (!entry.gone && !entry.path.empty())
            lockedFields_.emplace(FieldKey(entry.classId, entry.path, entry.isAncestorKey), entry.id);
    }
}

/* What nodes have that a deviation removed, or that stand in groupings which nothing uses. */
void Numbering::TakeStatements(const QXYANG_FILE *file)
{
    std::unordered_map<uint32_t, uint32_t> classes; /* class ids, by the statement that has one */
    QXYANG_STATEMENT_S statement = {};
    auto isOurs = [&statement](const char *keyword) {
        return statement.pcPrefix != nullptr && statement.pcArgument != nullptr && IsExtension(statement, keyword);
    };
    for (uint32_t i = 0; QXYANG_GetStatement(file, i, &statement) == 0; ++i)
        if (isOurs(CLASS_ID)) {
            uint32_t id = ReadNumber(statement.pcArgument).value;
            classIds_.Take(id, "");
            classes.emplace(statement.uiParent, id);
        }
    for (uint32_t i = 0; !classes.empty() && QXYANG_GetStatement(file, i, &statement) == 0; ++i) {
        if (!isOurs(FIELD_ID))
            continue;
        uint32_t id = ReadNumber(statement.pcArgument).value & 0xFFU;
        QXYANG_STATEMENT_S around = StatementAt(file, statement.uiParent);
        if (!IsYang(around, "leaf"))
            continue;
        do
            around = StatementAt(file, around.uiParent);
        while (IsYang(around, "choice") || IsYang(around, "case"));
        if (auto found = classes.find(around.uiIndex); found != classes.end())
            fields_[found->second].ids.Take(id);
    }
}

std::string Numbering::FieldKey(uint32_t classId, const std::string &path, bool isAncestorKey)
{
    return std::to_string(classId) + (isAncestorKey ? "^" : " ") + path;
}

void Numbering::TakeField(uint32_t classId, uint32_t id)
{
    Fields *fields = &fields_[classId];
    fields->ids.Take(id);
    fields->inModels.set(id & 0xFFU);
}

void Numbering::TakeClass(uint32_t classId, uint32_t index)
{
    classIds_.Take(classId, ModuleNameOf(survey_.At(index).node));
    inModels_.insert(classId);
    for (uint32_t leaf : survey_.LeavesOf(index)) {
        TakeField(classId, survey_.At(leaf).field);
        TakeField(classId, survey_.At(leaf).reference);
        TakeField(classId, survey_.At(leaf).indexMap);
    }
    if (const AncestorStatements *ancestors = survey_.AncestorsOf(index))
        for (const auto &[name, id] : ancestors->keys)
            TakeField(classId, id);
}

uint32_t Numbering::GiveClass(uint32_t index)
{
    uint32_t id = 0;
    if (!lockedClasses_.empty())
        if (auto locked = lockedClasses_.find(PathOf(survey_.At(index).node)); locked != lockedClasses_.end())
            id = inModels_.contains(locked->second) ? 0 : locked->second;
    if (id == 0)
        id = classIds_.Next(ModuleNameOf(survey_.At(index).node));
    TakeClass(id, index);
    return id;
}

uint32_t Numbering::GiveField(uint32_t classId, uint32_t leaf, bool isAncestorKey)
{
    Fields *fields = &fields_[classId];
    uint32_t id = 0;
    if (!lockedFields_.empty() && leaf != NO_NODE) {
        auto locked = lockedFields_.find(FieldKey(classId, PathOf(survey_.At(leaf).node), isAncestorKey));
        if (locked != lockedFields_.end() && !fields->inModels.test(locked->second & 0xFFU))
            id = locked->second;
    }
    if (id == 0)
        id = fields->ids.Next();
    TakeField(classId, id);
    return id;
}

size_t Numbering::RoomIn(uint32_t classId) const
{
    auto found = fields_.find(classId);
    return found != fields_.end() ? found->second.ids.Room() : FieldIds().Room();
}

bool Numbering::IsOfOthers(uint32_t classId, uint32_t index) const
{
    if (!lockedIds_.contains(classId))
        return false;
    auto locked = lockedClasses_.find(PathOf(survey_.At(index).node));
    return locked == lockedClasses_.end() || locked->second != classId;
}

} // namespace inspect::ids
