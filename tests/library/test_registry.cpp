/* The registry of loaded modules: its key, and records coming and going. */
#include "support/host.h"
#include "telem_yang/telem_yang.h"

namespace test {
namespace {

class Registry : public HostTest {
  protected:
    void SetUp() override
    {
        HostTest::SetUp();
        dir.Add("m", Container("c", ""));
        dir.Add("n", Container("c", ""));
    }
};

TEST_F(Registry, IsKeyedByNameAndRevisionAsGiven)
{
    ASSERT_EQ(Load("m", "2026-01-01"), 0u);
    EXPECT_EQ(File("m"), nullptr);
    EXPECT_EQ(File("m", ""), nullptr);
    EXPECT_EQ(File("m", "2026-01-02"), nullptr);
    EXPECT_EQ(File("M", "2026-01-01"), nullptr);
    TELMYANG_YANG_FILE_INFO_S *const dated = File("m", "2026-01-01");
    ASSERT_NE(dated, nullptr);
    ASSERT_EQ(Load("m", ""), 0u);
    TELMYANG_YANG_FILE_INFO_S *const plain = File("m");
    ASSERT_NE(plain, nullptr);
    EXPECT_NE(plain, dated);
    EXPECT_EQ(plain->pcRevision, nullptr);
    EXPECT_EQ(File("m", ""), plain);
    EXPECT_EQ(File("m", "2026-01-01"), dated);
    EXPECT_EQ(Local()->uiModuleNum, 2u);

    plain->ucInUse = 0;
    EXPECT_EQ(File("m"), nullptr) << "still linked, but not in use";
    plain->ucInUse = 1;
}

TEST_F(Registry, KeepsLoadOrderWhileRecordsGo)
{
    ASSERT_EQ(Load("m", "1"), 0u);
    ASSERT_EQ(Load("n"), 0u);
    ASSERT_EQ(Load("m", "2"), 0u);
    EXPECT_EQ(TELEMYANG_DestroyYangMouleTree(Local(), "n", nullptr), 0u);
    EXPECT_EQ(TELMYANG_RemoveYangFileInfoFromCtx(Local(), "n", nullptr), 0u);
    EXPECT_EQ(Local()->uiModuleNum, 2u);
    const TELMYANG_YANG_FILE_LIST_S &list = Local()->pstYangCtx->stYangFileList;
    EXPECT_STREQ(list.pstNext->pcRevision, "1");
    EXPECT_EQ(list.pstNext->pstNext, list.pstPrev);
    EXPECT_STREQ(list.pstPrev->pcRevision, "2");
    EXPECT_EQ(list.pstPrev->pstPrev, list.pstNext);

    log.Clear();
    EXPECT_EQ(TELMYANG_RemoveYangFileInfoFromCtx(Local(), "n", nullptr), 1u);
    EXPECT_EQ(log.Errors(), std::vector<std::string>{"can not find yang module!\n"});
    EXPECT_EQ(YANGLIB_UnloadYangModuleAll(Local()), 0u);
    EXPECT_EQ(static_cast<const void *>(list.pstNext), &list);
    EXPECT_EQ(static_cast<const void *>(list.pstPrev), &list);
    EXPECT_EQ(Local()->uiModuleNum, 0u);
}

/* Modules are in the registry under two revisions and without one; the first two names have the same hash. */
TEST_F(Registry, FindsEachOfManyWhateverElseGoes)
{
    log.open = {false, false, false, false};
    std::vector<std::string> names = {"costarring", "liquid"};
    for (int i = 0; i < 20; ++i)
        names.push_back("r" + std::to_string(i));
    std::vector<std::pair<std::string, const char *>> keys;
    for (const std::string &name : names) {
        dir.Add(name, Container("c", ""));
        for (const char *revision : {"1", "2", ""})
            keys.emplace_back(name, revision);
    }
    for (const size_t step : {1u, 7u, 65u}) { /* 66 records go in several orders */
        for (const auto &[name, revision] : keys)
            ASSERT_EQ(YANGLIB_LoadYangModule(Local(), name.c_str(), revision), 0u);
        uint64_t calls = 0; /* of the host */
        Services().watcher = [&calls] { ++calls; };
        EXPECT_NE(File(keys.back().first), nullptr);
        EXPECT_LE(calls, 16u);
        Services().watcher = nullptr;
        for (size_t gone = 0; gone < keys.size(); ++gone) {
            const auto &[leaving, itsRevision] = keys[gone * step % keys.size()];
            EXPECT_EQ(TELEMYANG_DestroyYangMouleTree(Local(), leaving.c_str(), itsRevision), 0u);
            TELMYANG_RemoveYangFile(Local(), File(leaving, itsRevision));
            for (size_t i = 0; i < keys.size(); ++i) {
                const auto &[name, revision] = keys[i * step % keys.size()];
                const TELMYANG_YANG_FILE_INFO_S *file = File(name, revision);
                ASSERT_EQ(file != nullptr, i > gone) << name << "/" << revision << " after " << gone;
                ASSERT_TRUE(file == nullptr || file->pcModuleName == name) << name;
            }
        }
    }
}

TEST_F(Registry, FindsRecordsThatTheHostPutsAtItsEnd)
{
    log.open = {false, false, false, false};
    const auto add = [this](const std::string &name) {
        dir.Add(name, Container("c", ""));
        EXPECT_EQ(YANGLIB_LoadYangModule(Local(), name.c_str(), nullptr), 0u);
    };
    for (int i = 0; i < 10; ++i)
        add("before" + std::to_string(i));
    auto *file = static_cast<TELMYANG_YANG_FILE_INFO_S *>(
        TELMYANG_Malloc_BZero(Local(), MODULE_ID, sizeof(TELMYANG_YANG_FILE_INFO_S)));
    EXPECT_EQ(TELMYANG_FillYangModuleInfo(Local(), file, MODULE_ID, "host", nullptr), 0u);
    TELMYANG_YANG_FILE_LIST_S &list = Local()->pstYangCtx->stYangFileList;
    file->pstPrev = list.pstPrev;
    file->pstNext = list.pstPrev->pstNext;
    list.pstPrev->pstNext = file;
    list.pstPrev = file;
    Local()->uiModuleNum++;
    EXPECT_EQ(File("host"), file);
    add("behind");
    EXPECT_EQ(File("host"), file);
    EXPECT_NE(File("behind"), nullptr);
    TELMYANG_RemoveYangFile(Local(), file);
    EXPECT_EQ(File("host"), nullptr);
    EXPECT_NE(File("behind"), nullptr);
}

TEST_F(Registry, FillingWithoutMemoryLeavesWhatWasCopied)
{
    for (uint64_t n = 0; n < 2; ++n) {
        auto *file = static_cast<TELMYANG_YANG_FILE_INFO_S *>(
            TELMYANG_Malloc_BZero(Local(), MODULE_ID, sizeof(TELMYANG_YANG_FILE_INFO_S)));
        log.Clear();
        Services().FailAllocation(n, false);
        EXPECT_EQ(TELMYANG_FillYangModuleInfo(Local(), file, MODULE_ID, "name", "rev"), 1u);
        EXPECT_EQ(log.Errors(), std::vector<std::string>{"malloc failed!"});
        EXPECT_EQ(file->pcRevision != nullptr, n == 1);
        EXPECT_EQ(file->ucInUse, 0);
        TELMYANG_FreeYangFileInfo(Local(), file);
    }
    TELMYANG_FreeYangFileInfo(Local(), nullptr);
}

} // namespace
} // namespace test
