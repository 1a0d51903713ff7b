/* enums: names and values of an enumeration leaf. */
#include <algorithm>
#include <cstdio>

#include "commands.h"
#include "enum_values.h"
#include "failure.h"
#include "json_out.h"
#include "load_causes.h"
#include "path_finder.h"
#include "schema_places.h"
#include "text.h"

namespace inspect {
namespace {

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

void PrintJson(const std::vector<EnumValue> &values)
{
    JsonOut out;
    out.Array();
    for (const EnumValue &value : values) {
        out.Object();
        out.Member("name", value.name);
        out.Member("value", value.value);
        out.EndObject();
    }
    out.EndArray();
}

} // namespace

int RunEnums(const Arguments &args)
{
    Instance instance(args.dirs, args.verbose);
    LoadRequested(&instance, args);
    YinFiles files(args.dirs);
    const Place place = PathFinder(Loaded(instance, args.modules.front()), &files).Require(args.path);
    if (place.leaf == nullptr)
        throw Failure(PlainPath(place) + " is no leaf");
    const std::string broken = BrokenLeafrefText(place.leaf->pYinNode, &files);
    if (!broken.empty())
        throw Failure(PlainPath(place) + " " + broken);
    if (YANGLIB_IsEnumLeaf(place.leaf) != 1)
        throw Failure(PlainPath(place) + " is no enumeration" + ", but " + TypeName(*place.leaf));
    const std::vector<EnumValue> values = EnumValues(*place.leaf);
    if (args.format == Format::JSON)
        PrintJson(values);
    else
        PrintText(values);
    return 0;
}

} // namespace inspect
