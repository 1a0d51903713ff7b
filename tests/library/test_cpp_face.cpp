/* The C++ face: what it shows is what the C interface reports, what it owns ends once, and nothing throws unasked. */
#include "korv_lib_yang.hpp"

#include <ranges>

#include "support/host.h"

namespace test {
namespace {

static_assert(std::is_trivially_copyable_v<korv::Node> && std::is_trivially_copyable_v<korv::Tree>);
static_assert(!std::is_copy_constructible_v<korv::Instance> && !std::is_copy_constructible_v<korv::Dump>);
#if defined(__cpp_lib_ranges)
static_assert(std::ranges::view<korv::Tree> && std::ranges::borrowed_range<korv::Leaves>);
static_assert(std::ranges::forward_range<korv::Modules> && std::ranges::forward_range<const korv::Dump>);
#endif

class CppFace : public HostTest {
  protected:
    void SetUp() override
    {
        HostTest::SetUp();
        dir.AddExamples();
        korv::Options options;
        options.directory = dir.Path().c_str();
        options.print = [this](korv::Level level, std::string_view text) {
            log.lines.push_back({static_cast<uint32_t>(level), std::string(text)});
        };
        options.adapt = [this](korv::NewLeaf leaf) {
            if (leaf.type() == korv::Type::Boolean && leaf.fieldId() != 0)
                leaf.setDataType(77);
            ++adapted;
        };
        lib = korv::Instance::start(std::move(options)).value();
    }

    void TearDown() override
    {
        lib = korv::Instance();
        HostTest::TearDown();
    }

    korv::Instance lib;
    uint32_t adapted = 0;
};

/* --- Rows --- */

std::string Row(const korv::Node &node)
{
    std::string row = std::string(node.name()) + " of " + std::string(node.parent() ? node.parent().name() : "none") +
                      " in " + std::string(node.moduleName()) + ", kind " +
                      std::to_string(static_cast<uint32_t>(node.kind())) + ", ids " + std::to_string(node.classId()) +
                      " " + std::to_string(node.sampleId()) + ", keys";
    for (uint32_t key : node.ownKeys())
        row += " " + std::to_string(key);
    for (uint32_t key : node.ancestorKeys())
        row += " ^" + std::to_string(key);
    return row;
}

std::string Row(const KorvTreeNode *node)
{
    const std::string own = Keys(node->aucSelfNodeKey);
    std::string row = std::string(node->pcName) + " of " + (node->pstParent ? node->pstParent->pcName : "none") +
                      " in " + node->pcModuleName + ", kind " + std::to_string(node->ucNodeType) + ", ids " +
                      std::to_string(node->uiClassId) + " " + std::to_string(node->uiSampleId) + ", keys" +
                      (own.empty() ? "" : " " + own);
    for (size_t i = 0; i < NODE_KEY_LIST_NUM && node->aucAncestorKey[i] != 0; ++i)
        row += " ^" + std::to_string(node->aucAncestorKey[i]);
    return row;
}

using Rows = std::vector<std::string>;

uint32_t AddLeaf(KorvTreeLeaf *leaf, void *rows)
{
    static_cast<Rows *>(rows)->emplace_back(leaf->pcName);
    return 0;
}

uint32_t AddNode(void *rows, KorvTreeNode *node)
{
    static_cast<Rows *>(rows)->push_back(Row(node));
    return YANGLIB_ScanLeaves(node, YANGLIB_LEAVES_DIRECT | YANGLIB_LEAVES_CASES, AddLeaf, rows);
}

uint32_t AddTop(const YANGLIB_PLACE_S *place, void *rows)
{
    return YANGLIB_TravelYangModuleSubTree(nullptr, place->pstNode, rows, nullptr, AddNode);
}

uint32_t AddModule(const YANGLIB_MODULE_S *module, void *rows)
{
    static_cast<Rows *>(rows)->emplace_back(module->pcModuleName);
    return YANGLIB_ScanTopNodes(module->pstFile, AddTop, rows);
}

void AddTree(korv::Tree tree, Rows *rows)
{
    for (korv::Node node : tree) {
        rows->push_back(Row(node));
        for (korv::Leaves leaves : {node.leaves(), node.caseLeaves()}) {
            for (korv::Leaf leaf : leaves)
                rows->emplace_back(leaf.name());
        }
    }
}

TEST_F(CppFace, RowsHaveWhatTheCInterfaceReports)
{
    for (const char *name : {"example-interfaces", "example-qos", "example-interface-qos", "example-interface-shaping"})
        ASSERT_TRUE(lib.load(name)) << name;
    Rows expected;
    ASSERT_EQ(YANGLIB_ScanModules(lib.get(), AddModule, &expected), 0u);
    Rows rows;
    for (korv::Module module : lib.modules()) {
        rows.emplace_back(module.name());
        AddTree(module.nodes(), &rows);
        for (korv::Augment augment : module.augments())
            AddTree(augment.target(), &rows);
        for (korv::Augment augment : module.augments())
            AddTree(augment.self(), &rows);
    }
    EXPECT_EQ(rows, expected);
    EXPECT_GT(rows.size(), 60u);

    korv::Node interface = lib.findClass(0x1001)->node;
    Rows around;
    for (korv::Node node : interface.child("address").child("history").ancestors())
        around.emplace_back(node.name());
    EXPECT_EQ(around, (Rows{"address", "interface", "interfaces"}));
    Rows below;
    AddTree(interface.child("address").subtree(), &below);
    EXPECT_EQ(below.front().substr(0, 7), "address");
    EXPECT_EQ(interface.leaf("duplex"), *interface.caseLeaves().begin()) << "leaves of cases stand behind the others";
    EXPECT_FALSE(interface.leaf("no such leaf"));
    EXPECT_TRUE(lib.findClass(0x1000)->node.ownKeys().empty());
}

TEST_F(CppFace, NodesAreFoundByPathsAndIds)
{
    korv::Module module = lib.load("example-interfaces").value();
    auto mtu = module.findLeaf("/interfaces/interface/mtu", "if:interfaces/if:interface/if:mtu");
    ASSERT_TRUE(mtu);
    EXPECT_EQ(mtu->leaf.name(), "mtu");
    EXPECT_EQ(module.find("/interfaces/interface/mtu", "if:interfaces/if:interface/if:mtu").value(), mtu->node);
    EXPECT_EQ(lib.findAttribute(mtu->node.classId(), mtu->leaf.fieldId())->leaf, mtu->leaf);
    EXPECT_EQ(mtu->node.path(mtu->leaf)->view(), "/interfaces/interface/mtu");
    EXPECT_EQ(mtu->node.path(korv::PathForm::Prefixed)->view(),
              "example-interfaces:interfaces/example-interfaces:interface");
    EXPECT_EQ(mtu->node.children().begin().operator*().path()->view(), "/interfaces/interface")
        << "a choice has no step";
    EXPECT_EQ(lib.module("example-interfaces").value(), module);
    EXPECT_EQ(module.loadedRevision(), YANGLIB_GetYangRevision(lib.get(), "example-interfaces"));
}

/* --- Results --- */

TEST_F(CppFace, AFailureHasCodeAndTextAndThrowsWhenAsked)
{
    dir.Add("broken", Container("c", Leaf("a", "unknown")));
    dir.Add("refused", Container("c", ClassId("1") + Leaf("a", "binary", Id("1"))));
    dir.Add("empty", "");
    ASSERT_TRUE(lib.load("empty"));
    korv::Module empty = lib.module("empty").value();
    const std::string file = dir.Path() + "/broken.yin";

    const auto expect = [](auto result, uint32_t code, const std::string &text) {
        EXPECT_FALSE(result) << text;
        EXPECT_EQ(result.code(), code) << text;
        EXPECT_EQ(std::string(result.text()).substr(0, text.size()), text);
        try {
            (void)result.value();
            ADD_FAILURE() << text;
        } catch (const korv::Error &error) {
            EXPECT_EQ(error.code(), code);
            EXPECT_EQ(error.what(), result.text());
        }
    };
    expect(lib.load("broken"), 1, file + ":");
    expect(lib.load("refused"), 1, "");
    expect(lib.module("broken"), KORV_NOT_FOUND, "no such module is loaded");
    expect(lib.unload("broken"), 1, "the module cannot be unloaded");
    expect(empty.find("/a", "p:a"), KORV_NOT_FOUND, "no such node");
    expect(empty.findLeaf("/a/b", "p:a/p:b"), KORV_NOT_FOUND, "no such leaf");
    expect(empty.dump(), 1, "there is no tree, or no memory");
    expect(lib.findClass(1), KORV_NOT_FOUND, "no node has that class id");
    expect(lib.findAttribute(1, 1), KORV_NOT_FOUND, "no leaf has these ids");
    korv::Options options;
    const std::string tooLong(300, 'd');
    options.directory = tooLong.c_str();
    expect(korv::Instance::start(options), 1, "the instance cannot be started");
    options.directory = nullptr;
    Services().FailAllocation(0, true);
    expect(korv::Instance::start(options), 1, "the instance cannot be started");
    Services().Reset();
}

TEST_F(CppFace, AFunctionEndsAScanOrThrowsThroughIt)
{
    dir.Add("broken", Container("c", Leaf("a", "unknown") + Leaf("b", "unknown")));
    ASSERT_FALSE(lib.load("broken"));
    ASSERT_TRUE(lib.load("example-interfaces"));
    ASSERT_TRUE(lib.load("example-qos"));
    korv::Leaf status = lib.findClass(0x1001)->node.leaf("status");

    uint32_t calls = 0;
    const auto once = [&calls](const auto &...) { return ++calls == 0; };
    const auto thrower = [&calls](const auto &...) {
        ++calls;
        throw std::string("the host's own");
    };
    const auto scan = [&](int which, auto function) {
        switch (which) {
            case 0:
                return lib.forEachOfClass(0x1001, function);
            case 1:
                return lib.forEachModule(function);
            case 2:
                return status.forEachValue(function);
            default:
                return lib.forEachLoadFailure("broken", nullptr, function);
        }
    };
    for (int which = 0; which < 4; ++which) {
        if (which == 3) {
            ASSERT_FALSE(lib.load("broken"));
        }
        calls = 0;
        EXPECT_TRUE(scan(which, [&calls](const auto &...) { ++calls; }));
        EXPECT_GT(calls, 1u) << which;
        calls = 0;
        EXPECT_TRUE(scan(which, once)) << which;
        EXPECT_EQ(calls, 1u) << which;
        calls = 0;
        EXPECT_THROW((void)scan(which, thrower), std::string) << which;
        EXPECT_EQ(calls, 1u) << which;
    }
}

/* --- What an instance and a dump own --- */

TEST_F(CppFace, FunctionsGoWithTheInstanceThatMoves)
{
    korv::Instance moved(std::move(lib));
    EXPECT_FALSE(lib);
    ASSERT_TRUE(moved.load("example-qos"));
    EXPECT_EQ(log.Errors(), (Rows{"augment can not findYangModuleTree!"})) << "without isOpen the errors are open";
    EXPECT_GT(adapted, 0u);
    korv::Leaf drop = moved.findAttribute(0x2002, 7)->leaf;
    EXPECT_EQ(drop.name(), "drop");
    EXPECT_EQ(drop.dataType(), 77u);

    Rows ends;
    korv::Options options;
    options.isOpen = [](korv::Level level) { return level == korv::Level::Progress; };
    options.print = [&ends](korv::Level, std::string_view text) { ends.emplace_back(text); };
    options.directory = dir.Path().c_str();
    korv::Instance other = korv::Instance::start(std::move(options)).value();
    ASSERT_TRUE(other.load("example-types"));
    ends.clear();
    other = std::move(moved); /* the one that it had ends with functions that are still there */
    EXPECT_EQ(ends, (Rows{"YANGLIB_UnloadYangModule (example-types)"}));
    EXPECT_EQ(other.moduleCount(), 1u);
    other.unloadAll();
    EXPECT_TRUE(other.modules().empty());
}

TEST_F(CppFace, ADumpOutlivesItsModule)
{
    ASSERT_TRUE(lib.load("example-interfaces"));
    korv::Module qos = lib.load("example-interface-qos").value();
    korv::Dump target = (*qos.augments().begin()).dumpTarget().value();
    ASSERT_TRUE(lib.unload("example-interface-qos"));
    Rows leaves;
    for (korv::DumpNode node : target) {
        if (node.classId() != 0x3001)
            continue;
        EXPECT_EQ(node.path(), "/interfaces/interface/traffic");
        for (korv::DumpLeaf leaf : node.leaves())
            leaves.push_back(std::string(leaf.path()) + " " + std::to_string(leaf.fieldId()));
    }
    EXPECT_EQ(leaves, (Rows{"/interfaces/interface/traffic/policy 1", "/interfaces/interface/traffic/matched 2"}));
    EXPECT_GT(target.size(), 5u);
}

} // namespace
} // namespace test
