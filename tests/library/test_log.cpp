/* Messages on their way to the host's hooks. */
#include <utility>

#include "support/host.h"
#include "telem_yang_lib/telem_yang_lib.h"

namespace test {
namespace {

class Log : public HostTest {
  protected:
    void Write(uint32_t level, const char *text)
    {
        TELMYANG_WriteLog(Local(), level, "error", __FILE__, __func__, __LINE__, "%s", text);
    }
};

TEST_F(Log, ReachesThePrintHookOfItsLevelWithTheHostsOwnValues)
{
    Write(0, "a");
    Write(2, "b");
    EXPECT_EQ(log.lines, (std::vector<LogLine>{{0, "a"}, {2, "b"}}));
}

TEST_F(Log, ClosedLevelCostsOneQuestionAndNoPrint)
{
    ASSERT_NE(Local(), nullptr);
    log.open = {false, false, false, false};
    log.Clear();
    Write(0, "a");
    EXPECT_EQ(log.asked[0], 1u);
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(Log, OpenLevelIsAskedOnce)
{
    ASSERT_NE(Local(), nullptr);
    log.Clear();
    (void)TELMYANG_BSC_GetNodeSpecMimExt(Local(), nullptr, MIM_EXT_NONE, nullptr);
    EXPECT_EQ(log.Errors(), std::vector<std::string>{"Get ExtName error in node!"});
    EXPECT_EQ(log.asked[0], 1u);
}

TEST_F(Log, LongMessageIsCutTo1023Characters)
{
    Write(0, std::string(5000, 'x').c_str());
    EXPECT_EQ(log.Errors(), std::vector<std::string>{std::string(1023, 'x')});
}

TEST_F(Log, LevelAbove3AndMissingHooksAreDropped)
{
    Write(4, "a");
    Write(0xFFFFFFFF, "a");
    EXPECT_TRUE(log.lines.empty());
    Local()->astDebugHook[0].pfnDebugIsOpen = nullptr;
    Write(0, "a");
    Local()->astDebugHook[2].pfnDebugPrint = nullptr;
    Write(2, "a");
    EXPECT_TRUE(log.lines.empty());
    TELMYANG_WriteLog(nullptr, 0, "error", "f", "g", 1, "%s", "a");
    EXPECT_EQ(TELMYANG_LIBDebugPrintIsOpen(nullptr, 0), 0u);
}

TEST_F(Log, LoadFailureNeedsModuleAndText)
{
    EXPECT_EQ(KORV_LIBYANG_LoadFailedPrint("m", "f", 1, "why", 2, Local()), 0u);
    EXPECT_EQ(KORV_LIBYANG_LoadFailedPrint(nullptr, "f", 1, "why", 2, Local()), 0u);
    EXPECT_EQ(KORV_LIBYANG_LoadFailedPrint("m", "f", 1, nullptr, 2, Local()), 0u);
    EXPECT_EQ(log.Errors(), std::vector<std::string>{"3. Load module m failed, errInfo: why"});
}

uint32_t CountNode(void *count, KorvTreeNode *)
{
    ++*static_cast<uint32_t *>(count);
    return 0;
}

uint32_t CountPair(const char *, int32_t, void *count)
{
    return CountNode(count, nullptr);
}

/* Asks everything that hooks and callbacks may ask about the module m, which is registered. */
struct Asking {
    void Ask()
    {
        if (std::exchange(busy, true))
            return;
        const YangPathRequest request = {"m", nullptr, "/c/d", "m:c/m:d"};
        uint32_t nodes = 0;
        right += YANGLIB_TravelYangModule(local, &request, this, nullptr, AskInTravel) == 0 ? 1 : 0;
        const YangDumpRequest dump = {local, "m", nullptr, nullptr, 0};
        YangDumpNodeData **records = nullptr;
        (void)YANGLIB_DumpYangModuleDataEx(&dump, &records, &nodes);
        YANGLIB_FreeDumpDataEx(records, nodes);
        ZOR_Free_F(records, __FILE__, __LINE__);
        right += nodes == 2 && YANGLIB_GetYangRevision(local, "m") == nullptr ? 1 : 0;
        asked += 2;
        busy = false;
    }

    static uint32_t AskInTravel(void *asking, KorvTreeNode *node)
    {
        uint32_t found = 0;
        const auto *leaf = static_cast<const KorvTreeLeaf *>(node->pstLeafList->ppvItem[0]);
        (void)YANGLIB_TravelYangModuleSubTree(static_cast<Asking *>(asking)->local, node, &found, nullptr, CountNode);
        (void)YANGLIB_ScanNameValuePair(leaf, CountPair, &found);
        return found == 3 && YANGLIB_IsLeafNode(node, "e") == 1 ? 0 : 1;
    }

    TELMYANG_LOCAL_DATA_S *local;
    uint32_t asked = 0;
    uint32_t right = 0;
    bool busy = false;
};

uint32_t AskOfLeaf(uint64_t component, KorvTreeLeaf *leaf)
{
    uint32_t pairs = 0;
    EXPECT_EQ(YANGLIB_ScanNameValuePair(leaf, CountPair, &pairs), 0u);
    reinterpret_cast<LogSink *>(component)->onPrint();
    return 0;
}

TEST_F(Log, HooksAndCallbacksMayAsk)
{
    const std::string type = "<type name=\"enumeration\"><enum name=\"a\"/><enum name=\"b\"/></type>";
    dir.Add("m", Container("c", Container("d", Leaf("e", type))));
    dir.Add("x", "<augment target-node=\"/m:c\">" + Container("f", Leaf("g", type)) + "</augment>", "m");
    ASSERT_EQ(Load("m"), 0u);
    Asking asking = {Local()};
    YANGLIB_RegisterDatatypeAdaptFunc(Local(), AskOfLeaf);
    log.onPrint = [&] { asking.Ask(); };
    EXPECT_EQ(Load("x"), 0u);
    EXPECT_EQ(Load("none"), 1u);
    EXPECT_EQ(Unload("x"), 0u);
    log.onPrint = nullptr;
    EXPECT_GT(asking.asked, 40u);
    EXPECT_EQ(asking.right, asking.asked);
}

} // namespace
} // namespace test
