#include <rapidjson/ostreamwrapper.h>
#include <rapidjson/prettywriter.h>

#include <fstream>

#include "table.h"

namespace bench {
namespace {

using Writer = rapidjson::PrettyWriter<rapidjson::OStreamWrapper>;

void WriteCount(Writer &writer, const char *name, const std::optional<uint64_t> &count)
{
    writer.Key(name);
    if (count)
        writer.Uint64(*count);
    else
        writer.Null();
}

void WriteRow(Writer &writer, const Row &row)
{
    writer.StartObject();
    writer.Key("measure");
    writer.String(row.measure.c_str());
    writer.Key("against");
    writer.String(row.against.c_str());
    writer.Key("ratio");
    writer.Double(row.value);
    writer.Key("to_reach");
    writer.Double(row.bound);
    writer.Key("reached");
    writer.Bool(row.Reached());
    WriteCount(writer, "allocations", row.counts.allocations);
    WriteCount(writer, "hook_calls", row.counts.hookCalls);
    WriteCount(writer, "instructions", row.counts.instructions);
    writer.EndObject();
}

} // namespace

bool WriteJson(const Rows &rows, const std::string &path)
{
    std::ofstream file(path);
    rapidjson::OStreamWrapper stream(file);
    Writer writer(stream);
    writer.StartObject();
    writer.Key("rows");
    writer.StartArray();
    for (const Row &row : rows)
        WriteRow(writer, row);
    writer.EndArray();
    writer.EndObject();
    file << '\n';
    file.close();
    return !file.fail();
}

} // namespace bench
