/* Messages on their way to the host's hooks. */
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

} // namespace
} // namespace test
