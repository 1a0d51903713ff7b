#include <pybind11/stl.h>

#include <cstdio>
#include <functional>

#include "korv_module.h"
#include "records.h"

namespace korv_python {
namespace {

/* One augment of a module; its record is the module's. */
struct Augment {
    ModulePtr module;
    size_t index;

    TELMYANG_AUGMENT_INFO_S &There() const { return module->File().astAugment[index]; }
};

/* What the library says of one module. */
struct Counted {
    const TELMYANG_YANG_FILE_INFO_S *file;
    uint32_t classes;
};

uint32_t CountOf(const YANGLIB_MODULE_S *module, void *cookie)
{
    auto *counted = static_cast<Counted *>(cookie);
    if (module->pstFile == counted->file)
        counted->classes = module->uiClassNum;
    return 0;
}

uint32_t ClassCount(const Module &module)
{
    Counted counted = {&module.loaded->File(), 0};
    (void)YANGLIB_ScanModules(module.loaded->Local(), CountOf, &counted);
    return counted.classes;
}

std::vector<Augment> Augments(const Module &module)
{
    std::vector<Augment> augments;
    for (size_t i = 0; i < module.loaded->File().ucAugmentNum; ++i)
        augments.push_back({module.loaded, i});
    return augments;
}

py::list Rows(const Module &module)
{
    py::list rows;
    AddRows(module.loaded, &rows);
    return rows;
}

void Unload(const Module &module)
{
    const TELMYANG_YANG_FILE_INFO_S &file = module.loaded->File();
    std::string name = module.loaded->Name();
    std::string revision = file.pcRevision != nullptr ? file.pcRevision : "";
    module.loaded->Owner()->Unload(name, revision.empty() ? nullptr : revision.c_str());
}

} // namespace

void DefineModule(py::module_ *korv)
{
    py::class_<Augment>(*korv, "Augment")
        .def("__repr__",
             [](const Augment &self) {
                 return self.module->IsThere() ? "<korv.Augment " + std::string(self.There().acAugNodeName) + ">"
                                               : std::string("<korv.Augment, gone>");
             })
        .def_property_readonly("target", [](const Augment &self) { return Text(self.There().acAugNodeName); })
        .def_property_readonly("target_tree",
                               [](const Augment &self) { return Siblings(self.module, self.There().pstTargetTree); })
        .def_property_readonly("self_tree",
                               [](const Augment &self) { return Siblings(self.module, self.There().pstSelfTree); });
    py::class_<Module>(*korv, "Module")
        .def_property_readonly("name", [](const Module &self) { return self.loaded->Name(); })
        .def_property_readonly("revision",
                               [](const Module &self) { return TextOrNone(self.loaded->File().pcRevision); })
        .def_property_readonly(
            "loaded_revision",
            [](const Module &self) {
                return TextOrNone(YANGLIB_GetYangRevision(self.loaded->Local(), self.loaded->File().pcModuleName));
            })
        .def_property_readonly("class_count", ClassCount)
        .def_property_readonly("task_id",
                               [](const Module &self) {
                                   const TELMYANG_MODULE_EXT_S *extension = self.loaded->File().pModuleExtInfo;
                                   return extension != nullptr ? extension->uiAaaTaskId : 0;
                               })
        .def_property_readonly("loaded", [](const Module &self) { return self.loaded->IsThere(); })
        .def_property_readonly(
            "top_nodes", [](const Module &self) { return Siblings(self.loaded, self.loaded->File().pstOriginTree); })
        .def_property_readonly("augments", Augments)
        .def_property_readonly("attributes", [](const Module &self) { return AttributesOf({self.loaded}); })
        .def("walk",
             [](const Module &self) {
                 return Walk{self.loaded, NodesOf(*self.loaded), 0};
             })
        .def("rows", Rows)
        .def("dump", [](const Module &self) { return Dump(*self.loaded); })
        .def("unload", Unload)
        .def(
            "__eq__", [](const Module &self, const Module &other) { return self.loaded == other.loaded; },
            py::is_operator())
        .def("__hash__", [](const Module &self) { return std::hash<const void *>()(self.loaded.get()); })
        .def("__repr__", [](const Module &self) {
            return "<korv.Module " + self.loaded->Name() + (self.loaded->IsThere() ? ">" : ", gone>");
        });
}

} // namespace korv_python
