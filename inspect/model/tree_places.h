/* Where the statements of tree nodes and leaves stand. */
#pragma once

#include <optional>

#include "model/schema_nodes.h"
#include "model/schema_places.h"

namespace inspect {

class JsonOut;

/* The trees of one loaded module. */
class TreePlaces {
  public:
    TreePlaces(const Instance &instance, const ModuleFile &file, const SearchDirs &dirs);

    std::optional<Position> Of(const Place &place);

    /* The module statement, and that of the module's augment. */
    std::optional<Position> OfModule();
    std::optional<Position> OfAugment(uint32_t augment);

  private:
    const Instance &instance_;
    const ModuleFile &file_;
    SchemaNodes nodes_;
    Places places_;
};

/* Writes "place": null when it is not known. */
void WritePlace(JsonOut *out, const std::optional<Position> &position);

} // namespace inspect
