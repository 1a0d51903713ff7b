/* Starting and ending an instance, and the directories in which it finds models. */
#include <filesystem>

#include "korv_lib_yang/korv_lib_yang.h"
#include "support/host.h"

namespace test {
namespace {

class Lifecycle : public HostTest {
  protected:
    TELMYANG_LOCAL_DATA_S *Start(const char *first, const char *second, bool hooks = true)
    {
        return YANGLIB_Initial(MODULE_ID, log.Component(), hooks ? log.Hooks().data() : nullptr, first, second);
    }
};

TEST_F(Lifecycle, StartFillsTheRecordAndPublishesIt)
{
    TELMYANG_LOCAL_DATA_S *instance = Start("one", "two");
    ASSERT_NE(instance, nullptr);
    EXPECT_EQ(g_pstKORVLibYangLocalData, instance);
    EXPECT_EQ(instance->ulModuleId, MODULE_ID);
    EXPECT_EQ(instance->uiModuleNum, 0u);
    EXPECT_EQ(YANGLIB_GetKorvComponent(instance), log.Component());
    const TELMYANG_YANG_CTX_S *ctx = instance->pstYangCtx;
    EXPECT_STREQ(ctx->ppcSearchDir[0], "two");
    EXPECT_STREQ(ctx->ppcSearchDir[1], "one");
    EXPECT_EQ(ctx->ppcSearchDir[2], nullptr);
    EXPECT_EQ(static_cast<const void *>(ctx->stYangFileList.pstNext), &ctx->stYangFileList);
    EXPECT_EQ(Faults().setDirs, (std::vector<std::string>{"one", "two"}));
    for (const Block &block : Services().LiveBlocks()) {
        EXPECT_EQ(block.moduleId, MODULE_ID);
        EXPECT_EQ(block.partition, PARTITION);
        EXPECT_EQ(block.place.rfind("korv_lib_yang/lifecycle.cpp:", 0), 0u) << block.place;
    }
    YANGLIB_Uninitial(instance);
    EXPECT_EQ(g_pstKORVLibYangLocalData, nullptr);
}

TEST_F(Lifecycle, NullHooksAndNullDirectoriesAreFine)
{
    TELMYANG_LOCAL_DATA_S *instance = Start(nullptr, nullptr, false);
    ASSERT_NE(instance, nullptr);
    EXPECT_STREQ(instance->pstYangCtx->acSearchDir1, "");
    EXPECT_STREQ(instance->pstYangCtx->acSearchDir2, "");
    EXPECT_EQ(Faults().setDirs, (std::vector<std::string>{"", ""}));
    EXPECT_EQ(YANGLIB_LoadYangModule(instance, "m", nullptr), 1u);
    EXPECT_TRUE(log.lines.empty());
    YANGLIB_Uninitial(instance);
    YANGLIB_Uninitial(nullptr);
}

TEST_F(Lifecycle, FailedStartLeavesNothingAndKeepsTheGlobal)
{
    TELMYANG_LOCAL_DATA_S *const before = Local();
    const std::string tooLong(256, 'd');
    const std::string longest(255, 'd');
    log.Clear();
    EXPECT_EQ(Start(tooLong.c_str(), nullptr), nullptr);
    EXPECT_EQ(Start("x", tooLong.c_str()), nullptr);
    EXPECT_EQ(log.Errors(), (std::vector<std::string>{"Set yang search direction return 0x1",
                                                      "Set yang search direction return 0x1"}));
    log.Clear();
    Faults().noContext = true;
    EXPECT_EQ(Start("x", "y"), nullptr);
    EXPECT_EQ(log.Errors(), std::vector<std::string>{"Create yang context return 0x1"});
    Faults().noContext = false;
    EXPECT_EQ(g_pstKORVLibYangLocalData, before);

    TELMYANG_LOCAL_DATA_S *instance = Start(longest.c_str(), longest.c_str());
    EXPECT_NE(instance, nullptr);
    YANGLIB_Uninitial(instance);
    EXPECT_EQ(g_pstKORVLibYangLocalData, nullptr) << "whichever instance ends";
}

TEST_F(Lifecycle, StartWithoutMemory)
{
    const std::vector<std::vector<std::string>> expected = {{}, {"XUR_Malloc  failed\n"}};
    for (uint64_t n = 0; n < expected.size(); ++n) {
        log.Clear();
        Services().FailAllocation(n, false);
        EXPECT_EQ(Start("x", "y"), nullptr);
        EXPECT_EQ(log.Errors(), expected[n]);
        EXPECT_EQ(Services().Leaks(), "");
    }
}

TEST_F(Lifecycle, BaseDirectoriesCanBeRegisteredAgain)
{
    TELMYANG_YANG_CTX_S *ctx = Local()->pstYangCtx;
    const std::string one = dir.Path();
    const std::string two = dir2.Path();
    Faults().setDirs.clear();
    Faults().unsetAll = 0;
    EXPECT_EQ(TELMYANG_SetYangContextSearchPath(ctx), 0u);
    EXPECT_EQ(Faults().setDirs, (std::vector<std::string>{two, one, "NULL"}));
    EXPECT_EQ(Faults().unsetAll, 0u);
    Faults().setDirs.clear();
    EXPECT_EQ(TELMYANG_UpdateSearchDir(Local()), 0u);
    EXPECT_EQ(Faults().setDirs, (std::vector<std::string>{one, two}));
    EXPECT_EQ(Faults().unsetAll, 1u);
    char other[] = "other";
    char *entries[] = {other, nullptr, nullptr};
    ctx->ppcSearchDir = entries;
    Faults().setDirs.clear();
    EXPECT_EQ(TELMYANG_UndoYangContextSearchPath(ctx), 0u);
    EXPECT_EQ(Faults().setDirs, (std::vector<std::string>{"other", "NULL", "NULL"}));
    EXPECT_EQ(Faults().unsetAll, 2u);
    ctx->ppcSearchDir = ctx->apcSearchDir;
    EXPECT_EQ(TELMYANG_SetYangContextSearchPath(nullptr), 1u);
    EXPECT_EQ(TELMYANG_UndoYangContextSearchPath(nullptr), 1u);
}

TEST_F(Lifecycle, InstallPathIsSearchedUntilItIsTakenBack)
{
    ModelDir package;
    package.Add("packaged", Container("c", ""));
    EXPECT_EQ(Load("packaged"), 1u);
    EXPECT_EQ(YANGLIB_PkgAddInstallPath(Local(), package.Path().c_str()), 0u);
    EXPECT_EQ(Load("packaged"), 0u);
    EXPECT_EQ(Unload("packaged"), 0u);
    EXPECT_EQ(TELMYANG_UndoYangContextSearchPath(Local()->pstYangCtx), 0u);
    EXPECT_EQ(Load("packaged"), 1u);
    EXPECT_EQ(YANGLIB_PkgAddInstallPath(Local(), package.Path().c_str()), 0u);
    EXPECT_EQ(YANGLIB_PkgDelUnInstallPath(Local(), package.Path().c_str()), 0u);
    EXPECT_EQ(Load("packaged"), 1u);
    log.Clear();
    Faults().setDirs.clear();
    EXPECT_EQ(YANGLIB_PkgAddInstallPath(Local(), (package.Path() + "/missing").c_str()), 0u);
    EXPECT_EQ(log.lines, (std::vector<LogLine>{{2, "The install path not exist."}}));
    EXPECT_TRUE(Faults().setDirs.empty());
}

TEST_F(Lifecycle, InstallPathListOfTheHostIsEmptiedAtTheEnd)
{
    DLL_S &list = Local()->stInstallPathList;
    auto *head = reinterpret_cast<DLL_NODE_S *>(&list);
    for (const char *path : {"/a", "/b", "", "/c"}) {
        if (*path == '\0') {
            YANGLIB_DeInitPkgSearchPath(Local());
            EXPECT_EQ(list.uiCount, 0u);
            EXPECT_TRUE(list.pstNext == head);
            YANGLIB_DeInitPkgSearchPath(Local());
            continue;
        }
        auto *entry = static_cast<YANGLIB_INSTALL_PATH_S *>(
            ZOR_Malloc_F(MODULE_ID, 0, sizeof(YANGLIB_INSTALL_PATH_S), __FILE__, __LINE__));
        *entry = {{head, list.pstPrev}, path};
        list.pstPrev->pstNext = &entry->stNode;
        list.pstPrev = &entry->stNode;
        list.uiCount++;
        EXPECT_EQ(YANGLIB_PkgDllCompare(path, entry), 0);
        EXPECT_NE(YANGLIB_PkgDllCompare("/d", entry), 0);
    }
    Stop();
    EXPECT_EQ(Services().Leaks(), "") << "the end of the instance empties it as well";
}

TEST_F(Lifecycle, ZeroFilledAllocation)
{
    EXPECT_EQ(TELMYANG_Malloc_BZero(Local(), 5, 0), nullptr);
    auto *block = static_cast<unsigned char *>(TELMYANG_Malloc_BZero(Local(), 5, 100));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::count(block, block + 100, 0), 100);
    ZOR_Free_F(block, __FILE__, __LINE__);
    EXPECT_TRUE(log.lines.empty());
    Services().FailAllocation(0, false);
    EXPECT_EQ(TELMYANG_Malloc_BZero(Local(), 5, 100), nullptr);
    EXPECT_EQ(log.Errors(), std::vector<std::string>{"malloc fail!"});
}

} // namespace
} // namespace test
