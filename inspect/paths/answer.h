/* What a node or leaf is, and how a host asks for it. */
#pragma once

#include <korv_lib_yang.h>

#include <memory>
#include <optional>

#include "base/json_out.h"
#include "base/paint.h"
#include "model/node_request.h"
#include "model/tree_places.h"
#include "paths/path_walk.h"

namespace inspect {

class Answers {
  public:
    Answers(const Instance &instance, const SearchDirs &dirs, const Paint &paint)
        : instance_(instance), dirs_(dirs), paint_(paint)
    {
    }

    void WriteText(const ModuleFile &file, const Place &place);
    void WriteJson(const ModuleFile &file, const Place &place, JsonOut *out);

    /* Of a node that may stand in no tree. */
    void WriteText(const PathNode &node);
    void WriteJson(const PathNode &node, JsonOut *out);

  private:
    TreePlaces &PlacesIn(const ModuleFile &file);

    const Instance &instance_;
    const SearchDirs &dirs_;
    Paint paint_;
    const ModuleFile *file_ = nullptr; /* the latest one */
    std::unique_ptr<TreePlaces> places_;
};

} // namespace inspect
