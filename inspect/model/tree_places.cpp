#include "model/tree_places.h"

#include "base/json_out.h"

namespace inspect {

TreePlaces::TreePlaces(const Instance &instance, const ModuleFile &file, const SearchDirs &dirs)
    : instance_(instance), file_(file), nodes_(instance, file), places_(dirs)
{
}

std::optional<Position> TreePlaces::Of(const Place &place)
{
    QY_NODE *node = nodes_.Of(place);
    return node != nullptr ? places_.Of(node) : std::nullopt;
}

std::optional<Position> TreePlaces::OfModule()
{
    QY_MOD *module = QY_CTX_GetModuleByModName(instance_.Schema(), file_.pcModuleName);
    return module != nullptr ? places_.Of(module) : std::nullopt;
}

std::optional<Position> TreePlaces::OfAugment(uint32_t augment)
{
    QY_NODE *node = file_.astAugment[augment].pAugNode;
    return node != nullptr ? places_.Of(node) : std::nullopt;
}

void WritePlace(JsonOut *out, const std::optional<Position> &position)
{
    out->Key("place");
    if (position)
        out->Place(position->file, position->line, position->column);
    else
        out->Null();
}

} // namespace inspect
