/* Host services that fail one call at a time, while a host does everything once: what fails is said or asserted, and nothing
 * is left or released twice. */
#include <functional>
#include <set>

#include "support/host.h"

namespace test {
namespace {

class FailingServices : public HostTest {
  protected:
    void SetUp() override
    {
        HostTest::SetUp();
        dir.AddExamples();
        log.open = {true, false, true, false};
        assertionsExpected = true;
    }

    void LookUp(const char *module, const char *own, const char *xpath)
    {
        const YangXpathLookup lookup = {Local(), module, nullptr, own, xpath, 0, 0};
        (void)TELMYANG_KorvFindTreeNodeByXpath(&lookup);
        (void)TELMYANG_KorvFindTreeNodeByLeafXpath(Local(), module, nullptr, own, xpath);
    }

    void Dump(const char *module)
    {
        YangDumpNodeData **records = nullptr;
        uint32_t count = 0;
        const YangDumpRequest request = {Local(), module, nullptr, nullptr, 0};
        (void)YANGLIB_DumpYangModuleDataEx(&request, &records, &count);
        YANGLIB_FreeDumpDataEx(records, count);
        ZOR_Free_F(records, __FILE__, __LINE__);
    }

    /* The life of an instance, from its start to its end. */
    void Live()
    {
        if (Local() == nullptr)
            return;
        for (const char *module : {"example-interfaces", "quelvo-bras-user-manage", "example-interface-qos"})
            (void)Load(module);
        LookUp("example-interfaces", "/interfaces/interface", "if:interfaces/if:interface");
        LookUp("example-interface-qos", "/interfaces/interface/traffic", "if:interfaces/if:interface/ifq:traffic");
        Dump("example-interfaces");
        (void)Unload("example-interfaces");
        Stop();
    }

    void Sweep(const std::function<void(uint64_t)> &fail, const uint64_t &calls)
    {
        for (uint64_t n = 0;; ++n) {
            SCOPED_TRACE("call " + std::to_string(n));
            log.Clear();
            Services().assertions.clear();
            fail(n);
            Live();
            const bool met = calls > n;
            fail(NEVER);
            Stop();
            ASSERT_EQ(Services().Leaks(), "");
            EXPECT_TRUE(!met || !log.open[0] || !Services().assertions.empty() || log.lines != usual)
                << "nobody was told";
            if (!met)
                return;
        }
    }

    std::vector<LogLine> usual; /* lines of a life without failures */
};

/* Two calls in a row: a formatter takes over where the copies in its place fail. */
TEST_F(FailingServices, BoundedCopies)
{
    Live();
    usual = log.lines;
    Sweep([](uint64_t n) { Services().FailBounded(n, 2); }, Services().boundedCalls);
    log.open = {};
    Sweep([](uint64_t n) { Services().FailBounded(n, 2); }, Services().boundedCalls);
}

TEST_F(FailingServices, FormatterHasTheLastWord)
{
    dir.Add("m", Container("c", Leaf("l", "int8")));
    ASSERT_EQ(Load("m"), 0u);
    const YangXpathLookup lookup = {Local(), "m", nullptr, "/c", "m:c", 0, 0};
    YangDumpNodeData **records = nullptr;
    uint32_t count = 0;
    const YangDumpRequest request = {Local(), "m", nullptr, nullptr, 0};
    for (uint64_t calls : {1u, 2u}) {
        std::set<std::string> said;
        for (uint64_t n = 0; n < 40; ++n) {
            SCOPED_TRACE(n);
            for (const bool dump : {false, true}) {
                log.Clear();
                Services().FailBounded(n, calls);
                const bool found = !dump && TELMYANG_KorvFindTreeNodeByXpath(&lookup) != nullptr;
                if (dump) {
                    EXPECT_EQ(YANGLIB_DumpYangModuleDataEx(&request, &records, &count), 0u);
                }
                Services().FailBounded(NEVER, 1);
                for (const std::string &error : log.Errors())
                    said.insert(error);
                if (dump && count != 0) {
                    const auto *leaf = static_cast<const YangDumpLeafData *>(records[0]->pstLeafList->ppvItem[0]);
                    EXPECT_TRUE(calls == 2 || leaf->pcPath == std::string(records[0]->pcXpath) + "/l") << leaf->pcPath;
                    YANGLIB_FreeDumpDataEx(records, count);
                    ZOR_Free_F(records, __FILE__, __LINE__);
                }
                EXPECT_TRUE(dump || found == log.Errors().empty());
            }
        }
        EXPECT_EQ(said.count("sprintf_s return 0xffffffff!"), calls - 1);
        EXPECT_EQ(said.count("path too long! ()"), calls - 1);
    }
}

TEST_F(FailingServices, Vectors)
{
    Live();
    usual = log.lines;
    Sweep([](uint64_t n) { Services().FailVectorSet(n); }, Services().vectorSets);
    Sweep([](uint64_t n) { Services().FailVectorInit(n); }, Services().vectorInits);
    log.open = {};
    Sweep([](uint64_t n) { Services().FailVectorSet(n); }, Services().vectorSets);
}

} // namespace
} // namespace test
