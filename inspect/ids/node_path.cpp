#include "ids/node_path.h"

#include <vector>

#include "model/schema_scan.h"

namespace inspect::ids {

std::string PathOf(QY_NODE *node)
{
    std::vector<QY_NODE *> way;
    for (; node != nullptr; node = QY_NODE_GetParentNode(node)) {
        uint32_t type = QY_NODE_GetNodeType(node);
        if (type != QY_NODE_TYPE_CHOICE && type != QY_NODE_TYPE_CASE)
            way.push_back(node);
    }
    std::string path;
    const QY_MOD *above = nullptr;
    for (auto step = way.rbegin(); step != way.rend(); ++step) {
        const QY_MOD *module = QY_NODE_GetModule(*step);
        path += "/";
        if (module != above)
            path.append(ModuleNameOf(*step)).append(":");
        path += NameOf(*step);
        above = module;
    }
    return path;
}

std::string_view ModuleOfPath(std::string_view path)
{
    size_t colon = path.rfind(':');
    if (colon == std::string_view::npos)
        return {};
    size_t slash = path.rfind('/', colon);
    return path.substr(slash + 1, colon - slash - 1);
}

} // namespace inspect::ids
