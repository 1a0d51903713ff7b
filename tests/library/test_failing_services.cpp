/* Host services that fail one call at a time, while a host does everything once: what fails is said or asserted, and nothing
 * is left or released twice. */
#include <functional>

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

TEST_F(FailingServices, BoundedCopies)
{
    Live();
    usual = log.lines;
    Sweep([](uint64_t n) { Services().FailBounded(n); }, Services().boundedCalls);
    log.open = {};
    Sweep([](uint64_t n) { Services().FailBounded(n); }, Services().boundedCalls);
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
