#include <pybind11/stl.h>

#include <functional>

#include "korv_module.h"
#include "records.h"

namespace korv_python {
namespace {

std::vector<Leaf> Leaves(const Node &node, Which which)
{
    std::vector<Leaf> leaves;
    for (KorvTreeLeaf *leaf : LeavesOf(node.There(), which))
        leaves.push_back({node.module, node.node, leaf});
    return leaves;
}

std::vector<Leaf> Attributes(const Node &node)
{
    std::vector<Leaf> attributes;
    if (node.There().ucNodeType == KORV_NODE_ORDINARY)
        for (Leaf &leaf : Leaves(node, BOTH))
            if (leaf.leaf->uiFieldId != 0)
                attributes.push_back(std::move(leaf));
    return attributes;
}

std::vector<Leaf> OwnKeys(const Node &node)
{
    std::vector<Leaf> keys;
    for (Leaf &leaf : Leaves(node, DIRECT))
        if (leaf.leaf->ucIsKey != 0)
            keys.push_back(std::move(leaf));
    return keys;
}

std::vector<Node> Children(const Node &node)
{
    std::vector<Node> children;
    for (KorvTreeNode *child : ChildrenOf(node.There()))
        children.push_back({node.module, child});
    return children;
}

std::optional<Node> Parent(const Node &node)
{
    KorvTreeNode *parent = node.There().pstParent;
    if (parent == nullptr)
        return std::nullopt;
    return Node{node.module, parent};
}

Walk WalkFrom(const Node &node)
{
    Walk walk = {node.module, {}, 0};
    AddBelow(&node.There(), &walk.nodes);
    return walk;
}

std::string Hex(uint32_t id)
{
    char text[16];
    (void)std::snprintf(text, sizeof(text), "0x%x", id);
    return text;
}

std::string Describe(const Node &node)
{
    if (!node.module->IsThere())
        return "<korv.Node, gone>";
    std::string text = std::string("<korv.Node ") + KindName(*node.node) + " " + node.node->pcName;
    return text + (node.node->uiClassId != 0 ? ", class " + Hex(node.node->uiClassId) + ">" : ">");
}

std::string Describe(const Leaf &leaf)
{
    if (!leaf.module->IsThere())
        return "<korv.Leaf, gone>";
    std::string text = std::string("<korv.Leaf ") + leaf.leaf->pcName;
    return text + (leaf.leaf->uiFieldId != 0 ? ", attribute " + std::to_string(leaf.leaf->uiFieldId) + ">" : ">");
}

/* Equal are objects of the same node or leaf; of those of unloaded modules only an object and itself. */
template <class T, class Pointer>
void DefineIdentity(py::class_<T> *type, Pointer T::*pointer)
{
    type->def(
        "__eq__",
        [pointer](const T &self, const T &other) {
            return &self == &other || (self.module->IsThere() && other.module->IsThere() &&
                                       self.*pointer == other.*pointer && self.module == other.module);
        },
        py::is_operator());
    type->def("__hash__", [pointer](const T &self) { return std::hash<const void *>()(self.*pointer); });
    type->def("__repr__", [](const T &self) { return Describe(self); });
    type->def_property_readonly("path", [](const T &self) { return PathOf(self, YANGLIB_PATH_NAMES); });
    type->def_property_readonly("prefixed_path", [](const T &self) { return PathOf(self, YANGLIB_PATH_PREFIXED); });
}

void DefineNode(py::module_ *korv)
{
    py::class_<Node> node(*korv, "Node");
    DefineIdentity(&node, &Node::node);
    node.def_property_readonly("name", [](const Node &self) { return Text(self.There().pcName); })
        .def_property_readonly("module", [](const Node &self) { return Text(self.There().pcModuleName); })
        .def_property_readonly("kind", [](const Node &self) { return KindName(self.There()); })
        .def_property_readonly("class_id", [](const Node &self) { return uint32_t{self.There().uiClassId}; })
        .def_property_readonly("sample_id", [](const Node &self) { return uint32_t{self.There().uiSampleId}; })
        .def_property_readonly("self_keys", [](const Node &self) { return Keys(self.There().aucSelfNodeKey); })
        .def_property_readonly("ancestor_keys", [](const Node &self) { return Keys(self.There().aucAncestorKey); })
        .def_property_readonly("keys", OwnKeys)
        .def_property_readonly("leaves", [](const Node &self) { return Leaves(self, DIRECT); })
        .def_property_readonly("case_leaves", [](const Node &self) { return Leaves(self, CASES); })
        .def_property_readonly("attributes", Attributes)
        .def_property_readonly("parent", Parent)
        .def_property_readonly("children", Children)
        .def("walk", WalkFrom);
}

void DefineLeaf(py::module_ *korv)
{
    py::class_<Leaf> leaf(*korv, "Leaf");
    DefineIdentity(&leaf, &Leaf::leaf);
    leaf.def_property_readonly("name", [](const Leaf &self) { return Text(self.There().pcName); })
        .def_property_readonly("module", [](const Leaf &self) { return Text(self.There().pcModuleName); })
        .def_property_readonly("node",
                               [](const Leaf &self) {
                                   self.module->Check();
                                   return Node{self.module, self.node};
                               })
        .def_property_readonly("key", [](const Leaf &self) { return self.There().ucIsKey != 0; })
        .def_property_readonly("base_type", [](const Leaf &self) { return TypeName(self.There()); })
        .def_property_readonly("mask", [](const Leaf &self) { return uint32_t{self.There().ucMask}; })
        .def_property_readonly("class_id", [](const Leaf &self) { return uint32_t{self.There().uiClassId}; })
        .def_property_readonly("field_id", [](const Leaf &self) { return uint32_t{self.There().uiFieldId}; })
        .def_property_readonly("data_type", [](const Leaf &self) { return uint32_t{self.There().uiDataType}; })
        .def_property_readonly("ref_id_key_fid", [](const Leaf &self) { return uint32_t{self.There().uiRefIdKeyFid}; })
        .def_property_readonly("name2id_key_fid",
                               [](const Leaf &self) { return uint32_t{self.There().uiName2IdKeyFid}; })
        .def_property_readonly("range", [](const Leaf &self) { return Range(self.There()); })
        .def_property_readonly("enum_values", EnumValues);
}

} // namespace

void DefineTree(py::module_ *korv)
{
    DefineNode(korv);
    DefineLeaf(korv);
    py::class_<Walk>(*korv, "Walk")
        .def("__iter__", [](py::object self) { return self; })
        .def("__next__", [](Walk &self) {
            self.module->Check();
            if (self.next == self.nodes.size())
                throw py::stop_iteration();
            return Node{self.module, self.nodes[self.next++]};
        });
}

} // namespace korv_python
