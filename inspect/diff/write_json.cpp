#include "base/json_out.h"
#include "diff/write.h"

namespace inspect::diff {
namespace {

const char *OrNull(const std::string &text)
{
    return text.empty() ? nullptr : text.c_str();
}

void WritePlace(JsonOut *out, const char *name, const Where &where)
{
    out->Key(name);
    if (where.file == nullptr) {
        out->Null();
        return;
    }
    out->Object();
    out->Member("file", *where.file);
    out->Member("line", where.line);
    out->Member("column", where.column);
    out->EndObject();
}

void WriteChange(JsonOut *out, const Change &change)
{
    out->Object();
    out->Member("change", change.rule->name); /* the first name of the member, which scripts know */
    out->Member("rule", change.rule->name);
    out->Member("breaking", change.breaking);
    out->Member("path", OrNull(change.path));
    out->Key("old");
    WriteValue(out, change.before);
    out->Key("new");
    WriteValue(out, change.after);
    WritePlace(out, "old_place", change.oldWhere);
    WritePlace(out, "new_place", change.newWhere);
    out->EndObject();
}

void WriteModule(JsonOut *out, const ModuleChanges &module)
{
    size_t breaking = CountBreaking(module.changes);
    out->Object();
    out->Member("module", module.module);
    out->Member("old_revision", OrNull(module.oldRevision));
    out->Member("new_revision", OrNull(module.newRevision));
    out->Member("breaking", breaking);
    out->Member("compatible", module.changes.size() - breaking);
    out->Key("changes");
    out->Array();
    for (const Change &change : module.changes)
        WriteChange(out, change);
    out->EndArray();
    out->EndObject();
}

} // namespace

void WriteJson(const ModuleChanges &module)
{
    JsonOut out;
    WriteModule(&out, module);
}

void WriteAllJson(const std::vector<ModuleChanges> &modules, const std::vector<std::string> &failed)
{
    size_t changes = 0;
    size_t breaking = 0;
    for (const ModuleChanges &module : modules) {
        changes += module.changes.size();
        breaking += CountBreaking(module.changes);
    }
    JsonOut out;
    out.Object();
    out.Member("breaking", breaking);
    out.Member("compatible", changes - breaking);
    out.Key("not_loaded");
    out.Array();
    for (const std::string &name : failed)
        out.Text(name);
    out.EndArray();
    out.Key("modules");
    out.Array();
    for (const ModuleChanges &module : modules)
        WriteModule(&out, module);
    out.EndArray();
    out.EndObject();
}

} // namespace inspect::diff
