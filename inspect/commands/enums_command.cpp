/* enums: names and values of an enumeration leaf. */
#include <algorithm>
#include <cstdio>

#include "base/failure.h"
#include "base/json_out.h"
#include "base/text.h"
#include "commands/commands.h"
#include "commands/node_command.h"
#include "model/enum_places.h"
#include "model/enum_values.h"
#include "model/load_causes.h"
#include "model/path_finder.h"
#include "model/schema_places.h"
#include "model/tree_places.h"

namespace inspect {
namespace {

constexpr const char *HELP = R"(Values follow typedefs and leafrefs.

Example:
  korv-inspect enums example-interfaces /interfaces/interface/status -d examples/yin)";

void PrintText(const std::vector<EnumValue> &values)
{
    size_t width = 0;
    for (const EnumValue &value : values)
        width = std::max(width, Printable(value.name).size());
    for (const EnumValue &value : values) {
        std::string name = Printable(value.name);
        PadTo(&name, width);
        std::printf("%s  %d\n", name.c_str(), value.value);
    }
}

void PrintJson(const std::vector<EnumValue> &values, uint32_t taskId, const std::map<std::string, Position> &places)
{
    JsonOut out;
    out.Array();
    for (const EnumValue &value : values) {
        out.Object();
        out.Member("name", value.name);
        out.Member("value", value.value);
        out.NumberOrNull("task_id", taskId);
        auto place = places.find(value.name);
        WritePlace(&out, place != places.end() ? std::optional(place->second) : std::nullopt);
        out.EndObject();
    }
    out.EndArray();
}

class EnumsCommand final : public NodeCommand {
  public:
    int Run() override;
};

int EnumsCommand::Run()
{
    Instance instance(options_.Request().dirs, options_.Request().verbose);
    LoadRequested(&instance, options_.Request());
    const ModuleFile &file = Loaded(instance, options_.Module());
    Place place = PathFinder(instance, file).Require(options_.Path(), options_.Request().notes);
    if (place.leaf == nullptr)
        throw Failure(PlainPath(place) + " is no leaf");
    std::string broken = BrokenLeafrefText(place.leaf->pYinNode);
    if (!broken.empty())
        throw Failure(PlainPath(place) + " " + broken);
    if (YANGLIB_IsEnumLeaf(place.leaf) != 1)
        throw Failure(PlainPath(place) + " is no enumeration" + ", but " + TypeName(*place.leaf));
    std::vector<EnumValue> values = EnumValues(*place.leaf);
    Places places(options_.Request().dirs);
    if (options_.OutputFormat() == Format::Json)
        PrintJson(values, TaskId(file), EnumPlaces(place.leaf->pYinNode, &places));
    else
        PrintText(values);
    return 0;
}

} // namespace

const CommandEntry ENUMS_COMMAND = {"enums", "List names and values of an enumeration leaf", HELP, Make<EnumsCommand>};

} // namespace inspect
