/* Two paths, separated by a line break, on loaded modules. */
#include <cstdlib>

#include "fuzz_host.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace {

uint32_t CountNode(void *user, KorvTreeNode *)
{
    ++*static_cast<uint32_t *>(user);
    return 0;
}

void LookUp(TELMYANG_LOCAL_DATA_S *local, const char *module, const std::string &path, const std::string &main)
{
    const YangXpathLookup lookup = {local, module, nullptr, path.c_str(), main.c_str(), 0, 0};
    const KorvTreeNode *node = TELMYANG_KorvFindTreeNodeByXpath(&lookup);
    const KorvTreeNode *holder =
        TELMYANG_KorvFindTreeNodeByLeafXpath(local, module, nullptr, path.c_str(), main.c_str());
    const YangPathRequest request = {module, nullptr, path.c_str(), main.c_str()};
    uint32_t visited = 0;
    const uint32_t ret = YANGLIB_TravelYangModule(local, &request, &visited, CountNode, CountNode);
    const bool found = node != nullptr || holder != nullptr;
    if (found != (ret == 0) || found != (visited != 0))
        std::abort();
    if (node == nullptr && YANGLIB_HasSubNodeInXpath(local, &request) != 0)
        std::abort();
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const fuzz::Instance instance;
    static const bool loaded = instance.Load("example-interfaces") && instance.Load("example-interface-shaping") &&
                               instance.Load("example-interface-qos");
    if (!loaded)
        std::abort();
    const std::string text(reinterpret_cast<const char *>(data), size);
    const size_t line = text.find('\n');
    const std::string path = text.substr(0, line);
    const std::string main = line == std::string::npos ? path : text.substr(line + 1);
    for (const char *module : {"example-interfaces", "example-interface-shaping", "example-interface-qos"})
        LookUp(instance.Local(), module, path, main);
    return 0;
}
