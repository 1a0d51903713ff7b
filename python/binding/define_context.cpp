#include <pybind11/stl.h>

#include <algorithm>

#include "korv_module.h"
#include "records.h"

namespace korv_python {
namespace {

using namespace py::literals;
using Revision = std::optional<std::string>;

const char *Given(const Revision &revision)
{
    return revision ? Name(*revision) : nullptr;
}

struct Context {
    std::shared_ptr<Session> session;
};

/* One path, or several. Each is to be a directory. */
std::vector<std::string> Directories(const py::object &given)
{
    py::module_ os = py::module_::import("os");
    bool isOne = py::isinstance<py::str>(given) || py::isinstance<py::bytes>(given) || py::hasattr(given, "__fspath__");
    py::list paths = isOne ? py::list(py::make_tuple(given)) : py::list(given);
    std::vector<std::string> dirs;
    for (const py::handle &path : paths) {
        if (!py::cast<bool>(os.attr("path").attr("isdir")(path)))
            RaiseObject(py::module_::import("builtins").attr("NotADirectoryError")(20, "no such directory", path));
        dirs.push_back(py::cast<std::string>(os.attr("fsencode")(path)));
    }
    return dirs;
}

std::vector<Module> Modules(const Context &context)
{
    std::vector<Module> modules;
    for (ModulePtr &loaded : context.session->Modules())
        modules.push_back({std::move(loaded)});
    return modules;
}

py::object FindPath(const Context &context, const std::string &path)
{
    std::optional<Found> found = Find(context.session->Modules(), path);
    if (!found)
        Raise("NotFoundError", "nothing has the path '" + path + "'");
    if (found->leaf != nullptr)
        return py::cast(Leaf{found->node.module, found->node.node, found->leaf});
    return py::cast(found->node);
}

[[noreturn]] void RaiseNoId(uint32_t classId, const char *what)
{
    char text[64];
    (void)std::snprintf(text, sizeof(text), "no %s has class id 0x%x", what, classId);
    Raise("NotFoundError", text);
}

/* Nodes of a class, those first that belong to their tree's module. */
std::vector<Node> OwnFirst(const Context &context, uint32_t classId)
{
    auto places = NodesOfClass(context.session.get(), classId);
    std::stable_partition(places.begin(), places.end(), [](const auto &place) { return place.second; });
    std::vector<Node> nodes;
    for (auto &place : places)
        if (place.first.node->ucNodeType == KORV_NODE_ORDINARY)
            nodes.push_back(std::move(place.first));
    return nodes;
}

Node ById(const Context &context, uint32_t classId)
{
    std::vector<Node> nodes = OwnFirst(context, classId);
    if (nodes.empty())
        RaiseNoId(classId, "node");
    return nodes.front();
}

Leaf AttributeById(const Context &context, uint32_t classId, uint32_t fieldId)
{
    if (fieldId != 0)
        for (const Node &node : OwnFirst(context, classId))
            for (KorvTreeLeaf *leaf : LeavesOf(*node.node, BOTH))
                if (leaf->uiFieldId == fieldId)
                    return {node.module, node.node, leaf};
    RaiseNoId(classId, ("attribute " + std::to_string(fieldId)).c_str());
}

std::vector<Node> NodesById(const Context &context, uint32_t classId)
{
    std::vector<Node> nodes;
    for (auto &place : NodesOfClass(context.session.get(), classId))
        nodes.push_back(std::move(place.first));
    return nodes;
}

py::list AllRows(const Context &context)
{
    py::list rows;
    for (const ModulePtr &module : context.session->Modules())
        AddRows(module, &rows);
    return rows;
}

/* A walk through one module after the other: each raises GoneError itself when its module goes. */
py::object AllNodes(const Context &context)
{
    py::list walks;
    for (const ModulePtr &module : context.session->Modules())
        walks.append(Walk{module, NodesOf(*module), 0});
    return py::module_::import("itertools").attr("chain").attr("from_iterable")(walks);
}

} // namespace

void DefineContext(py::module_ *korv)
{
    py::class_<Context>(*korv, "Context")
        .def(py::init([](const py::object &dirs) { return Context{std::make_shared<Session>(Directories(dirs))}; }),
             "dirs"_a = ".")
        .def("__enter__", [](py::object self) { return self; })
        .def("__exit__", [](const Context &self, const py::args &) { self.session->Close(); })
        .def("close", [](const Context &self) { self.session->Close(); })
        .def_property_readonly("closed", [](const Context &self) { return !self.session->IsOpen(); })
        .def_property_readonly("modules", Modules)
        .def_property_readonly("attributes", [](const Context &self) { return AttributesOf(self.session->Modules()); })
        .def(
            "load",
            [](const Context &self, const std::string &name, const Revision &revision) {
                return Module{self.session->Load(name, Given(revision))};
            },
            "name"_a, "revision"_a = py::none())
        .def(
            "unload",
            [](const Context &self, const std::string &name, const Revision &revision) {
                self.session->Unload(name, Given(revision));
            },
            "name"_a, "revision"_a = py::none())
        .def(
            "module",
            [](const Context &self, const std::string &name, const Revision &revision) {
                return Module{self.session->Module(name, Given(revision))};
            },
            "name"_a, "revision"_a = py::none())
        .def("find", FindPath, "path"_a)
        .def("by_id", ById, "class_id"_a)
        .def("by_id", AttributeById, "class_id"_a, "field_id"_a)
        .def("nodes_of", NodesById, "class_id"_a)
        .def("walk", AllNodes)
        .def("rows", AllRows);
}

} // namespace korv_python
