/* A host of the library for tests: an instance with log hooks that remember what they are told. */
#ifndef KORV_TEST_HOST_H
#define KORV_TEST_HOST_H

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "korv_lib_yang.h"
#include "support/host_services.h"
#include "support/models.h"
#include "support/schema_faults.h"

namespace test {

inline constexpr uint64_t MODULE_ID = 0x5100000042;

struct LogLine {
    uint32_t level;
    std::string text;

    bool operator==(const LogLine &) const = default;
};

/* What the hooks of one instance saw. The hooks' debug type is 100 + level. */
class LogSink {
  public:
    std::array<TELMYANG_DEBUG_HOOK_S, KORV_LOG_LEVEL_NUM> Hooks();
    uint64_t Component() { return reinterpret_cast<uint64_t>(this); }

    /* The texts of one level, in order. */
    std::vector<std::string> Texts(uint32_t level) const;
    std::vector<std::string> Errors() const { return Texts(0); }
    bool Has(const std::string &text) const;
    void Clear();

    std::array<bool, KORV_LOG_LEVEL_NUM> open = {true, true, true, true};
    std::array<uint64_t, KORV_LOG_LEVEL_NUM> asked = {};
    std::vector<LogLine> lines;
    std::function<void()> onPrint; /* called by the print hook */
    bool otherArguments = false;   /* a hook got something that it must not get */
};

/* The fixture of the library's tests: one directory, one instance (started on first use), and at the end nothing is left
 * allocated and no unexpected assertion was raised. */
class HostTest : public ::testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    TELMYANG_LOCAL_DATA_S *Local();
    void Stop();

    /* The operation's result while all levels are closed and nothing may be said. */
    uint32_t Unheard(const std::function<uint32_t()> &operation);
    /* False while a fault is asked for: what is counted must be done once. */
    bool MayRunTwice() const;

    /* Every load runs twice, the first time unheard, and both come out the same. */
    uint32_t Load(const std::string &name, const char *revision = nullptr);
    uint32_t Unload(const std::string &name, const char *revision = nullptr);
    TELMYANG_YANG_FILE_INFO_S *File(const std::string &name, const char *revision = nullptr);
    QY_MOD *SchemaModule(const std::string &name);

    /* Node at the path of names ("a/b/c", choices and cases included) of a module's own tree. */
    KorvTreeNode *Node(const std::string &module, const std::string &path);
    static KorvTreeNode *NodeBelow(KorvTreeNode *top, const std::string &path);
    static KorvTreeLeaf *LeafOf(const KorvTreeNode *node, const std::string &name, bool caseLeaf = false);

    ModelDir dir;
    ModelDir dir2;
    LogSink log;
    bool assertionsExpected = false;

  private:
    TELMYANG_LOCAL_DATA_S *local = nullptr;
};

/* "3 4 0 0" of a key array without trailing zeros: "3 4". */
std::string Keys(const uint8_t (&keys)[NODE_KEY_LIST_NUM]);

} // namespace test

#endif // KORV_TEST_HOST_H
