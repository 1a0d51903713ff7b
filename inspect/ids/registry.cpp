#include "ids/registry.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <tuple>

#include "base/text.h"

namespace inspect::ids {
namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

auto Order(const RangeEntry &entry)
{
    return std::tie(entry.first, entry.last, entry.module);
}

auto Order(const ClassEntry &entry)
{
    return std::tie(entry.id, entry.path, entry.gone);
}

auto Order(const FieldEntry &entry)
{
    return std::tie(entry.classId, entry.id, entry.path, entry.isAncestorKey, entry.gone);
}

template <class Entry>
void SortEntries(std::vector<Entry> *entries)
{
    std::stable_sort(entries->begin(), entries->end(),
                     [](const Entry &left, const Entry &right) { return Order(left) < Order(right); });
}

/* An object on a line of its own, with a blank behind each colon and comma. */
class Line {
  public:
    void Number(const char *name, uint32_t number)
    {
        Begin(name);
        text_ += std::to_string(number);
    }

    void Text(const char *name, const std::string &value)
    {
        Begin(name);
        rapidjson::StringBuffer buffer;
        Writer writer(buffer);
        writer.String(value.c_str(), static_cast<rapidjson::SizeType>(value.size()));
        text_.append(buffer.GetString(), buffer.GetSize());
    }

    void Gone(const std::optional<std::string> &revision)
    {
        if (revision)
            Text("gone", *revision);
    }

    std::string End() const { return "    {" + text_ + "}"; }

  private:
    void Begin(const char *name) { text_.append(text_.empty() ? "\"" : ", \"").append(name).append("\": "); }

    std::string text_;
};

std::string LineOf(const RangeEntry &entry)
{
    Line line;
    line.Text("module", entry.module);
    line.Text("first", Hex(entry.first));
    line.Text("last", Hex(entry.last));
    return line.End();
}

std::string LineOf(const ClassEntry &entry)
{
    Line line;
    line.Text("class", Hex(entry.id));
    line.Text("path", entry.path);
    if (entry.sample != 0)
        line.Text("sample", Hex(entry.sample));
    line.Gone(entry.gone);
    return line.End();
}

std::string LineOf(const FieldEntry &entry)
{
    Line line;
    line.Text("class", Hex(entry.classId));
    line.Number(entry.isAncestorKey ? "key" : "field", entry.id);
    line.Text("path", entry.path);
    line.Gone(entry.gone);
    return line.End();
}

/* The lines of a list, separated by commas. */
class Lines {
  public:
    explicit Lines(std::string *text) : text_(text) {}

    void Add(const std::string &line)
    {
        text_->append(isFirst_ ? "\n" : ",\n").append(line);
        isFirst_ = false;
    }

    void End() { text_->append(isFirst_ ? "]" : "\n  ]"); }

  private:
    std::string *text_;
    bool isFirst_ = true;
};

} // namespace

std::vector<RangeEntry> Registry::RangesOf(std::string_view module) const
{
    std::vector<RangeEntry> own;
    std::copy_if(ranges.begin(), ranges.end(), std::back_inserter(own),
                 [module](const RangeEntry &range) { return range.module == module; });
    return own;
}

const RangeEntry *Registry::RangeAt(uint32_t classId) const
{
    auto behind = std::upper_bound(ranges.begin(), ranges.end(), classId,
                                   [](uint32_t id, const RangeEntry &range) { return id < range.first; });
    if (behind == ranges.begin() || std::prev(behind)->last < classId)
        return nullptr;
    return &*std::prev(behind);
}

void Registry::Sort()
{
    SortEntries(&ranges);
    SortEntries(&classes);
    SortEntries(&fields);
}

/* A class stands before its attributes: who reads a change sees the class beside it. */
std::string RegistryText(const Registry &registry)
{
    Registry sorted = registry;
    sorted.Sort();
    std::string text = "{\n  \"version\": " + std::to_string(REGISTRY_VERSION) + ",\n  \"ranges\": [";
    Lines ranges(&text);
    for (const RangeEntry &entry : sorted.ranges)
        ranges.Add(LineOf(entry));
    ranges.End();
    text += ",\n  \"ids\": [";
    Lines ids(&text);
    auto field = sorted.fields.begin();
    for (auto entry = sorted.classes.begin(); entry != sorted.classes.end(); ++entry) {
        ids.Add(LineOf(*entry));
        if (std::next(entry) != sorted.classes.end() && std::next(entry)->id == entry->id)
            continue;
        for (; field != sorted.fields.end() && field->classId <= entry->id; ++field)
            ids.Add(LineOf(*field));
    }
    ids.End();
    return text + "\n}\n";
}

} // namespace inspect::ids
