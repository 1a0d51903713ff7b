#include "records.h"

#include <exception>
#include <iterator>
#include <new>

namespace korv_python {
namespace {

using namespace py::literals;

constexpr const char *TYPE_NAMES[] = {
    "",       "binary", "bits",  "boolean", "decimal64", "empty",  "enumeration", "identityref", "instance-identifier",
    "int8",   "int16",  "int32", "int64",   "leafref",   "string", "uint8",       "uint16",      "uint32",
    "uint64", "union"};
static_assert(std::size(TYPE_NAMES) == QY_TYPE_UNION + 1);

struct Values {
    std::vector<std::pair<std::string, int32_t>> pairs;
    std::exception_ptr error;
};

uint32_t AddValue(const char *name, int32_t value, void *cookie)
{
    auto *values = static_cast<Values *>(cookie);
    try {
        values->pairs.emplace_back(name, value);
    } catch (...) {
        values->error = std::current_exception(); /* the result would not end the scan */
    }
    return 0;
}

py::dict Row(const ModulePtr &module, const Leaf &leaf)
{
    py::dict row;
    Node node = {module, leaf.node};
    row["module"] = Text(leaf.leaf->pcModuleName);
    row["node_path"] = PathOf(node, YANGLIB_PATH_NAMES);
    row["class_id"] = uint32_t{leaf.node->uiClassId};
    row["sample_id"] = uint32_t{leaf.node->uiSampleId};
    row["self_keys"] = Keys(leaf.node->aucSelfNodeKey);
    row["ancestor_keys"] = Keys(leaf.node->aucAncestorKey);
    row["leaf_path"] = PathOf(leaf, YANGLIB_PATH_NAMES);
    row["leaf"] = Text(leaf.leaf->pcName);
    row["key"] = leaf.leaf->ucIsKey != 0;
    row["base_type"] = TypeName(*leaf.leaf);
    row["mask"] = leaf.leaf->ucMask;
    row["field_id"] = uint32_t{leaf.leaf->uiFieldId};
    row["data_type"] = uint32_t{leaf.leaf->uiDataType};
    row["index_map"] = uint32_t{leaf.leaf->uiName2IdKeyFid};
    py::object range = Range(*leaf.leaf);
    row["range_min"] = range.is_none() ? py::none() : py::object(range[py::int_(0)]);
    row["range_max"] = range.is_none() ? py::none() : py::object(range[py::int_(1)]);
    return row;
}

/* The records of a dump, released with it. */
struct DumpRecords {
    YangDumpNodeData **records = nullptr;
    uint32_t count = 0;

    DumpRecords() = default;
    DumpRecords(const DumpRecords &) = delete;
    DumpRecords &operator=(const DumpRecords &) = delete;
    ~DumpRecords()
    {
        YANGLIB_FreeDumpDataEx(records, count);
        ZOR_Free_F(records, "python", 0);
    }
};

py::list DumpLeaves(const VEC_VECTOR_S *list)
{
    py::list leaves;
    for (uint32_t i = 0; list != nullptr && i < list->uiCount; ++i) {
        const auto &leaf = *static_cast<const YangDumpLeafData *>(list->ppvItem[i]);
        leaves.append(py::dict("name"_a = Text(leaf.pcName), "path"_a = Text(leaf.pcPath), "mask"_a = leaf.ucMask,
                               "field_id"_a = uint32_t{leaf.uiFieldId}, "data_type"_a = uint32_t{leaf.uiDataType},
                               "index_map"_a = uint32_t{leaf.uiIndexMap}, "range_min"_a = int64_t{leaf.llRangeMin},
                               "range_max"_a = int64_t{leaf.llRangeMax}));
    }
    return leaves;
}

} // namespace

const char *TypeName(const KorvTreeLeaf &leaf)
{
    return leaf.ucBaseType < std::size(TYPE_NAMES) ? TYPE_NAMES[leaf.ucBaseType] : "";
}

const char *KindName(const KorvTreeNode &node)
{
    if (node.ucNodeType == KORV_NODE_ORDINARY)
        return "node";
    return node.ucNodeType == KORV_NODE_CHOICE ? "choice" : "case";
}

py::tuple Keys(const uint8_t (&keys)[NODE_KEY_LIST_NUM])
{
    size_t count = NODE_KEY_LIST_NUM;
    while (count > 0 && keys[count - 1] == 0)
        --count;
    py::tuple ids(count);
    for (size_t i = 0; i < count; ++i)
        ids[i] = keys[i];
    return ids;
}

py::object Range(const KorvTreeLeaf &leaf)
{
    if (leaf.ucBaseType != QY_TYPE_UINT16 && leaf.ucBaseType != QY_TYPE_UINT32 && leaf.ucBaseType != QY_TYPE_UINT64)
        return py::none();
    return py::make_tuple(static_cast<uint64_t>(leaf.llRangeMin), static_cast<uint64_t>(leaf.llRangeMax));
}

py::dict EnumValues(const Leaf &leaf)
{
    const KorvTreeLeaf &there = leaf.There();
    py::dict values;
    if (YANGLIB_IsEnumLeaf(&there) == 0)
        return values;
    Values found;
    if (YANGLIB_ScanNameValuePair(&there, AddValue, &found) != KORV_OK)
        Raise("GoneError", std::string("the type of leaf '") + there.pcName + "' has gone with another module");
    if (found.error)
        std::rethrow_exception(found.error);
    for (const auto &[name, value] : found.pairs)
        values[Text(name.c_str())] = value;
    return values;
}

void AddRows(const ModulePtr &module, py::list *rows)
{
    for (const Leaf &leaf : LeavesOf(module))
        rows->append(Row(module, leaf));
}

py::list Dump(const LoadedModule &module)
{
    const TELMYANG_YANG_FILE_INFO_S &file = module.File();
    DumpRecords dump;
    YangDumpRequest request = {module.Local(), file.pcModuleName, file.pcRevision, nullptr, 0};
    py::list nodes;
    if (file.pstOriginTree == nullptr)
        return nodes;
    if (YANGLIB_DumpYangModuleDataEx(&request, &dump.records, &dump.count) != KORV_OK || dump.count == 0)
        throw std::bad_alloc();
    for (uint32_t i = 0; i < dump.count; ++i) {
        const YangDumpNodeData &node = *dump.records[i];
        nodes.append(py::dict("name"_a = Text(node.pcName), "path"_a = Text(node.pcXpath),
                              "class_id"_a = uint32_t{node.uiClassId}, "sample_id"_a = uint32_t{node.uiSampleId},
                              "self_keys"_a = Keys(node.aucSelfNodeKey), "ancestor_keys"_a = Keys(node.aucAncestorKey),
                              "leaves"_a = DumpLeaves(node.pstLeafList)));
    }
    return nodes;
}

} // namespace korv_python
