/* A host in C++ that does everything once, as complete_host.c does in C, with the same output: functions that print, two
 * search directories, datatypes of its own, loading, finding, walking, dumping and unloading.
 *
 *     korv_complete_host_cpp DIRECTORY [DIRECTORY]
 */
#include <cstdio>
#include <korv_lib_yang.hpp>

static void PrintKeys(const char *title, korv::Keys keys)
{
    if (!keys.empty())
        std::printf(", %s", title);
    for (uint32_t key : keys)
        std::printf(" %u", key);
}

/* A node of a tree or of a dump. */
template <class ClassNode>
static void PrintClass(const char *name, ClassNode node)
{
    std::printf("%s: class 0x%x", name, node.classId());
    PrintKeys("own keys", node.ownKeys());
    PrintKeys("ancestor keys", node.ancestorKeys());
    std::printf("\n");
}

static void Find(korv::Module module, const char *path, const char *prefixedPath)
{
    if (auto node = module.find(path, prefixedPath))
        PrintClass(path, *node);
    else
        std::printf("%s: nothing found\n", path);
}

static void Walk(korv::Node start)
{
    static const char *const kinds[] = {"node", "choice", "case"};
    unsigned visited = 0;
    for (korv::Node above : start.ancestors())
        std::printf("  below %s\n", above.name().data());
    for (korv::Node node : start.subtree()) {
        ++visited;
        std::printf("  %s %s\n", kinds[static_cast<int>(node.kind())], node.name().data());
        for (korv::Leaf leaf : node.leaves()) {
            if (!leaf.isEnum())
                continue;
            std::printf("    %s:", leaf.name().data());
            (void)leaf.forEachValue([](auto name, int value) { std::printf(" %s=%d", name.data(), value); });
            std::printf("\n");
        }
    }
    std::printf("  result 0, %u nodes\n", visited);
}

static void Ask(korv::Module interfaces, korv::Module qos)
{
    Find(interfaces, "/interfaces/interface", "if:interfaces/if:interface");
    Find(interfaces, "/interfaces/interface/mtu", "if:interfaces/if:interface/if:mtu");
    Find(qos, "/interfaces/interface/traffic", "if:interfaces/if:interface/ifq:traffic");
    std::printf("walk from /interfaces/interface\n");
    if (auto start = interfaces.find("/interfaces/interface", "if:interfaces/if:interface"))
        Walk(*start);
    std::printf("dump of %s\n", interfaces.name().data());
    auto dump = interfaces.dump();
    for (korv::DumpNode node : *dump)
        PrintClass(node.path().data(), node);
}

int main(int argc, char **argv)
{
    bool progress = false; /* progress is wanted, not errors alone */
    unsigned adapted = 0;  /* leaves that got a datatype of this host */
    korv::Options options;
    options.directory = argc > 1 ? argv[1] : ".";
    options.secondDirectory = argc > 2 ? argv[2] : nullptr;
    options.isOpen = [&](auto level) { return progress || level == korv::Level::Error; };
    options.print = [](auto level, auto text) {
        std::printf("%s: %s\n", level == korv::Level::Error ? "error" : "info", text.data());
    };
    options.adapt = [&](korv::NewLeaf leaf) {
        if (leaf.type() == korv::Type::Boolean && !leaf.hasDataType()) {
            leaf.setDataType(2); /* this host samples truth values as one byte */
            ++adapted;
        }
    };
    auto lib = korv::Instance::start(options);
    if (!lib)
        return 1;
    const auto load = [&](const char *name) {
        auto module = lib->load(name);
        std::printf("load %s: %u\n", name, module.code());
        return *module;
    };
    auto interfaces = load("example-interfaces");
    auto qos = interfaces ? load("example-interface-qos") : korv::Module();
    if (!qos)
        return 1;
    std::printf("%u modules, %u leaves with a datatype of this host\n", lib->moduleCount(), adapted);
    Ask(interfaces, qos);
    progress = true;
    (void)lib->unload("example-interface-qos");
    return 0;
}
