/* Unloading modules, and what is left of them. */
#include <malloc.h>

#include <filesystem>
#include <set>
#include <sstream>

#include "support/host.h"
#include "telem_yang/telem_yang.h"

namespace test {
namespace {

const std::string ENUM =
    "<type name=\"enumeration\"><enum name=\"down\"/><enum name=\"up\"><value value=\"7\"/></enum></type>";

uint32_t CountPair(const char *, int32_t, void *cookie)
{
    ++*static_cast<uint32_t *>(cookie);
    return 5;
}

class UnloadModule : public HostTest {
  protected:
    void SetUp() override
    {
        HostTest::SetUp();
        dir.Add("m", Container("c", Ext("class-id", "1") + Leaf("e", ENUM, Ext("field-id", "1")) +
                                        "<choice name=\"ch\">" + Leaf("f", ENUM) + "</choice>"));
        dir.Add("x",
                "<augment target-node=\"/m:c\">" + Leaf("g", ENUM) + Container("d", Leaf("h", ENUM)) + "</augment>",
                "m");
    }

    /* Pairs that the leaf reports, or -1 when its type cannot be found. */
    static int Pairs(const KorvTreeLeaf *leaf)
    {
        uint32_t count = 0;
        return YANGLIB_ScanNameValuePair(leaf, CountPair, &count) == 0 ? static_cast<int>(count) : -1;
    }
};

TEST_F(UnloadModule, ReversesALoadOnce)
{
    ASSERT_EQ(Load("m"), 0u);
    log.Clear();
    EXPECT_EQ(Unload("m", ""), 0u);
    EXPECT_EQ(log.lines, (std::vector<LogLine>{{2, "YANGLIB_UnloadYangModule (m)"}}));
    EXPECT_EQ(SchemaModule("m"), nullptr);
    EXPECT_EQ(Local()->uiModuleNum, 0u);
    EXPECT_EQ(Services().LiveBlocks().size(), 2u);
    log.Clear();
    EXPECT_EQ(Unload("m"), 1u);
    EXPECT_EQ(log.Errors(), (std::vector<std::string>{"can not findYangModuleTree,module(m)version(NULL)!",
                                                      "TELEMYANG_DestroyYangMouleTree error!"}));
    log.Clear();
    EXPECT_EQ(YANGLIB_UnloadYangModule(Local(), nullptr, nullptr), 1u);
    EXPECT_EQ(YANGLIB_UnloadYangModule(nullptr, "m", nullptr), 1u);
    EXPECT_EQ(log.Errors(), std::vector<std::string>{"pcModuleName or pYangModule error!"});
}

TEST_F(UnloadModule, RefusedBySchemaLibraryLeavesAModuleWithoutTrees)
{
    ASSERT_EQ(Load("x"), 0u);
    ASSERT_EQ(Load("m"), 0u);
    Faults().unloadResult = 0x16;
    log.Clear();
    EXPECT_EQ(Unload("m"), 1u);
    EXPECT_EQ(Unload("x"), 1u);
    EXPECT_EQ(log.Errors(), (std::vector<std::string>{"QY_CTX_UnloadModule m fail return 0x16!",
                                                      "QY_CTX_UnloadModule x fail return 0x16!"}));
    EXPECT_EQ(Local()->uiModuleNum, 2u);
    const YangXpathLookup plain = {Local(), "m", nullptr, "/c", "m:c", 0, 0};
    EXPECT_EQ(TELMYANG_KorvFindTreeNodeByXpath(&plain), nullptr);
    const YangXpathLookup augment = {Local(), "x", nullptr, "/c/d", "m:c/x:d", 0, 0};
    EXPECT_EQ(TELMYANG_KorvFindTreeNodeByXpath(&augment), nullptr);
    YangDumpNodeData **records = nullptr;
    uint32_t count = 9;
    const YangDumpRequest dump = {Local(), "m", nullptr, nullptr, 0};
    EXPECT_EQ(YANGLIB_DumpYangModuleDataEx(&dump, &records, &count), 1u);
    EXPECT_EQ(count, 0u);
    YANGLIB_PrintYangModuleData(Local(), "x", nullptr);
    EXPECT_EQ(Unload("x"), 1u);
    EXPECT_EQ(YANGLIB_UnloadYangModuleAll(Local()), 0u);
    EXPECT_EQ(Local()->uiModuleNum, 0u);
    Faults().unloadResult = 0;
}

TEST_F(UnloadModule, AllAtOnce)
{
    EXPECT_EQ(YANGLIB_UnloadYangModuleAll(Local()), 0u);
    ASSERT_EQ(Load("x"), 0u);
    ASSERT_EQ(Load("m", "1"), 0u);
    ASSERT_EQ(Load("m", "2"), 0u);
    EXPECT_EQ(YANGLIB_UnloadYangModuleAll(Local()), 0u) << "the second m is refused by the schema library";
    EXPECT_EQ(Local()->uiModuleNum, 0u);
    EXPECT_EQ(Services().LiveBlocks().size(), 2u);
    TELMYANG_LOCAL_DATA_S without = {};
    EXPECT_EQ(YANGLIB_UnloadYangModuleAll(&without), 1u);
}

TEST_F(UnloadModule, AugmentedFirst)
{
    ASSERT_EQ(Load("m"), 0u);
    ASSERT_EQ(Load("x"), 0u);
    ASSERT_EQ(Unload("m"), 0u);
    const KorvTreeNode *target = File("x")->astAugment[0].pstTargetTree;
    EXPECT_EQ(Pairs(LeafOf(target, "e")), 2) << "x imports m, whose nodes stay";
    EXPECT_EQ(Pairs(LeafOf(target, "f", true)), 2);
    EXPECT_STREQ(target->pcModuleName, "m");
    EXPECT_EQ(Unload("x"), 0u);
}

TEST_F(UnloadModule, AugmentingFirst)
{
    ASSERT_EQ(Load("x"), 0u);
    ASSERT_EQ(Load("m"), 0u);
    EXPECT_EQ(Pairs(LeafOf(Node("m", "c"), "g")), 2);
    ASSERT_EQ(Unload("x"), 0u);
    EXPECT_EQ(Pairs(LeafOf(Node("m", "c"), "g")), -1) << "x took its nodes away";
    EXPECT_EQ(Pairs(LeafOf(Node("m", "c/d"), "h")), -1);
    EXPECT_EQ(Pairs(LeafOf(Node("m", "c"), "e")), 2);
    EXPECT_STREQ(Node("m", "c/d")->pcModuleName, "x") << "names live as long as the context";
    ASSERT_EQ(Unload("m"), 0u);
    ASSERT_EQ(Load("m"), 0u);
    EXPECT_EQ(Node("m", "c/d"), nullptr);
}

TEST_F(UnloadModule, SecondRevisionStaysReadable)
{
    ASSERT_EQ(Load("m", "1"), 0u);
    ASSERT_EQ(Load("m", "2"), 0u);
    ASSERT_EQ(Unload("m", "1"), 0u);
    const TELMYANG_YANG_FILE_INFO_S *second = File("m", "2");
    ASSERT_NE(second, nullptr);
    EXPECT_STREQ(second->pstOriginTree->pcModuleName, "m");
    EXPECT_EQ(Pairs(LeafOf(second->pstOriginTree, "e")), -1);
    EXPECT_EQ(Pairs(LeafOf(second->pstOriginTree, "f", true)), -1);
    const YangXpathLookup lookup = {Local(), "m", "2", "/c", "m:c", 0, 0};
    EXPECT_EQ(TELMYANG_KorvFindTreeNodeByXpath(&lookup), second->pstOriginTree);
    EXPECT_EQ(Load("m", "1"), 0u);
    EXPECT_EQ(Pairs(LeafOf(File("m", "1")->pstOriginTree, "e")), 2);
    EXPECT_EQ(Unload("m", "2"), 0u);
    ASSERT_EQ(Load("x", "1"), 0u);
    ASSERT_EQ(Load("x", "2"), 0u);
    ASSERT_EQ(Unload("x", "1"), 0u);
    EXPECT_EQ(Pairs(LeafOf(File("x", "2")->astAugment[0].pstSelfTree, "h")), -1);
    EXPECT_EQ(Pairs(LeafOf(NodeBelow(File("x", "2")->astAugment[0].pstTargetTree, "c/d"), "h")), -1);
}

/* Checks whenever host code runs that no record of the registry points at a schema node that is gone. */
class BorrowedNodes : public UnloadModule {
  protected:
    void SetUp() override
    {
        UnloadModule::SetUp();
        dir.Add("y", "<augment target-node=\"/m:c/x:d\"><choice name=\"ch\">" + Leaf("i", ENUM) + "</choice></augment>",
                "m x");
        dir.Add("bare", "<augment target-node=\"/m:c\"/>" + Container("b", Leaf("l", "int8")), "m");
        dir.Add("keeper", Container("k", Leaf("l", "int8")), "x");
        ASSERT_NE(Local(), nullptr);
        Services().watcher = [this] { CheckRegistry(); };
    }

    static uint32_t AddNode(QY_NODE *node, uint32_t, void *live)
    {
        static_cast<std::set<QY_NODE *> *>(live)->insert(node);
        return 0;
    }

    static uint32_t AddTree(QY_NODE *node, void *, void *live) { return QY_NODE_TreeScanAllNode(node, AddNode, live); }

    static uint32_t AddAugment(QY_NODE *node, void *, void *live)
    {
        (void)AddTree(node, nullptr, live);
        QY_NODE *top = QY_NODE_GetAugmentTargetNode(node);
        while (QY_NODE *parent = QY_NODE_GetParentNode(top))
            top = parent;
        return AddTree(top, nullptr, live);
    }

    /* Every node that a module loaded by name has or sees, or one that was and is still imported. */
    std::set<QY_NODE *> LiveNodes()
    {
        std::set<QY_NODE *> live;
        if (SchemaModule("x") != nullptr || SchemaModule("keeper") == nullptr)
            kept = SchemaModule("x");
        for (QY_MOD *mod : {kept, SchemaModule("m"), SchemaModule("y"), SchemaModule("bare"), SchemaModule("keeper")}) {
            if (mod != nullptr) {
                (void)QY_MOD_IterScanTopmostNode(mod, AddTree, &live);
                (void)QY_MOD_IterScanAugmentNode(mod, AddAugment, &live);
            }
        }
        return live;
    }

    /* Does the steps of a life but for its end. */
    void Live(const std::string &text)
    {
        std::istringstream steps(text);
        for (std::string step; steps >> step;) {
            const bool refused = step.back() == '!';
            const bool unload = step.front() == '-';
            const std::string key = step.substr(unload ? 1 : 0, step.size() - (unload ? 1 : 0) - (refused ? 1 : 0));
            const std::string name = key.substr(0, key.find('/'));
            const std::string revision = key == name ? "" : key.substr(name.size() + 1);
            const uint32_t result = unload ? Unload(name, revision.c_str()) : Load(name, revision.c_str());
            EXPECT_EQ(result, refused ? 1u : 0u) << step;
        }
    }

    void CheckLeaves(const VEC_VECTOR_S *leaves, const std::set<QY_NODE *> &live)
    {
        for (uint32_t i = 0; leaves != nullptr && i < leaves->uiCount; ++i)
            Check(static_cast<const KorvTreeLeaf *>(leaves->ppvItem[i])->pYinNode, live);
    }

    void CheckTree(const KorvTreeNode *node, const std::set<QY_NODE *> &live)
    {
        for (; node != nullptr; node = node->pstNextSibling) {
            CheckLeaves(node->pstLeafList, live);
            CheckLeaves(node->pstCaseLeafList, live);
            CheckTree(node->pstFirstChild, live);
        }
    }

    void Check(QY_NODE *node, const std::set<QY_NODE *> &live)
    {
        dangling += node != nullptr && live.count(node) == 0 ? 1 : 0;
        shown += node != nullptr ? 1 : 0;
    }

    void CheckRegistry()
    {
        const TELMYANG_YANG_FILE_LIST_S &list = Local()->pstYangCtx->stYangFileList;
        const std::set<QY_NODE *> live = LiveNodes();
        shown = 0;
        for (const auto *file = list.pstNext; static_cast<const void *>(file) != &list; file = file->pstNext) {
            CheckTree(file->pstOriginTree, live);
            for (uint32_t i = 0; i < file->ucAugmentNum; ++i) {
                const TELMYANG_AUGMENT_INFO_S &augment = file->astAugment[i];
                CheckTree(augment.pstTargetTree, live);
                CheckTree(augment.pstSelfTree, live);
                Check(augment.pAugNode, live);
                Check(augment.pFirstChild, live);
            }
        }
    }

    QY_MOD *kept = nullptr; /* x, while it is loaded or keeper imports it */
    uint32_t dangling = 0;
    uint32_t shown = 0; /* pointers at schema nodes in the registry */
};

TEST_F(BorrowedNodes, NeverDangle)
{
    struct Life {
        std::string steps; /* module and revision; "-": unload, "!": refused; all that is left goes at the end */
        uint32_t shown;    /* before the end */
    };
    const Life lives[] = {
        {"x m -x", 3},
        {"x m -m", 8},
        {"m/1 m/2 -m/1", 0},
        {"m/1 m/2 -m/2 -m/1!", 0},
        {"x/1 x/2 -x/1", 0},
        {"x/1 x/2 m -x/2", 6},
        {"y m -y", 3},
        {"keeper m -keeper", 3},
        {"keeper y m -keeper", 16},
        {"x m keeper -x -keeper", 3},
        {"keeper x/1 x/2 m -x/1 -keeper", 6},
        {"keeper x/1 x/2 -x/1 m -keeper", 6},
        {"x bare/1 bare/2 m -bare/1", 18},
        {"y x m/1 m/2 -y -m/1 -x", 0},
    };
    for (const Life &life : lives) {
        uint64_t n = 0;
        for (bool met = true; met; ++n) {
            SCOPED_TRACE(life.steps + ", no memory for note " + std::to_string(n));
            Services().FailAllocationOf("telem_yang/leaf_notes.cpp", n);
            Live(life.steps);
            met = Services().failOfFile == NEVER;
            CheckRegistry();
            EXPECT_EQ(shown, life.shown);
            EXPECT_EQ(YANGLIB_UnloadYangModuleAll(Local()), 0u);
            EXPECT_EQ(dangling, 0u);
            EXPECT_EQ(shown, 0u);
            EXPECT_EQ(Services().LiveBlocks().size(), 2u) << Services().Leaks();
            dangling = 0;
        }
    }
}

TEST_F(UnloadModule, CostsWhatGoesAmongManyModules)
{
    constexpr uint32_t FEW = 100;
    for (uint32_t i = 0; i < 2 * FEW; ++i) {
        const std::string number = std::to_string(i);
        const std::string container = Container("d" + number, Leaf("l", "int8"));
        dir.Add("own" + number, container);
        dir.Add("a" + number, "<augment target-node=\"/m:c\">" + container + "</augment>", "m");
    }
    log.open = {false, false, false, false};
    const auto cost = [this](const std::string &name, uint32_t count, bool reverse) {
        for (uint32_t i = 0; i < count; ++i)
            EXPECT_EQ(YANGLIB_LoadYangModule(Local(), (name + std::to_string(i)).c_str(), nullptr), 0u);
        uint64_t calls = 0; /* of the host and of the schema layer */
        Services().watcher = [&calls] { ++calls; };
        Faults().nodeCalls = 0;
        for (uint32_t i = 0; i < count; ++i)
            EXPECT_EQ(Unload(name + std::to_string(reverse ? count - 1 - i : i)), 0u);
        Services().watcher = nullptr;
        return calls + Faults().nodeCalls;
    };
    for (const bool reverse : {false, true}) {
        const char *const order = reverse ? " in reverse" : "";
        const uint64_t own = cost("own", FEW, reverse);
        EXPECT_LE(cost("own", 2 * FEW, reverse), own * 21 / 10) << own << order;
        /* Each adds to one tree, so that its record shows what those before it added. */
        const uint64_t few = cost("a", FEW, reverse);
        EXPECT_LE(cost("a", 2 * FEW, reverse), few * 44 / 10) << few << order;
        EXPECT_LE(few, uint64_t{FEW} * FEW * 30) << "calls for what each shows of each other";
    }
}

TEST_F(UnloadModule, TreesThatTheHostReleasedAreNotLookedAt)
{
    for (const char *name : {"a", "b"})
        dir.Add(name, "<augment target-node=\"/m:c\">" + Container(name, Leaf("l", "int8")) + "</augment>", "m");
    EXPECT_EQ(Load("a"), 0u);
    EXPECT_EQ(Load("b"), 0u);
    TELMYANG_YANG_FILE_INFO_S *file = TELMYANG_GetIfYangModuleExist(Local(), Local()->pstYangCtx, "b", nullptr);
    EXPECT_EQ(TELMYANG_FreeYangtreeAllNodes(Local(), file->astAugment[0].pstTargetTree), 0u);
    file->astAugment[0].pstTargetTree = nullptr;
    EXPECT_EQ(Unload("a"), 0u);
    EXPECT_EQ(Unload("b"), 0u);
}

TEST_F(UnloadModule, ThousandRoundsKeepMemoryFlat)
{
    dir.AddExamples();
    log.open = {false, false, false, false};
    const auto round = [&] {
        for (const char *name : {"example-interface-shaping", "example-interfaces", "quelvo-bras-user-manage"})
            EXPECT_EQ(Load(name), 0u);
        for (const char *name : {"example-interfaces", "example-interface-shaping", "quelvo-bras-user-manage"})
            EXPECT_EQ(Unload(name), 0u);
    };
    for (int i = 0; i < 50; ++i)
        round();
    const size_t before = mallinfo2().uordblks;
    for (int i = 0; i < 1000; ++i)
        round();
    EXPECT_LE(mallinfo2().uordblks, before + 8192) << "a block of 16 bytes a round would be 16000";
    EXPECT_EQ(Services().LiveBlocks().size(), 2u);
}

} // namespace
} // namespace test
