/* A schema context over a directory of its own, and what it holds as text that a test can compare. */
#ifndef KORV_TEST_SCHEMA_H
#define KORV_TEST_SCHEMA_H

#include <korv_platform.h>

#include <filesystem>
#include <string>
#include <vector>

namespace test {

/* Text of a module in YANG 1.1 with the namespace "urn:NAME" and its name as prefix. `imports` are names of modules,
 * blank separated, NAME@REVISION among them, each imported under its own name; their namespaces are bound likewise. The
 * head is the first line, so that the body begins on the second. */
std::string ModuleText(const std::string &name, const std::string &body, const std::string &imports = "",
                       const std::string &version = "1.1");

class Schema {
  public:
    Schema();
    ~Schema();
    Schema(const Schema &) = delete;
    Schema &operator=(const Schema &) = delete;

    const std::string &Dir() const { return dir_; }
    QY_CTX *Context() const { return context_; }

    void File(const std::string &name, const std::string &text);

    /* Writes NAME.yin with ModuleText(...). */
    void Module(const std::string &name, const std::string &body, const std::string &imports = "");

    /* Loads the module; a failure ends the test. */
    void Load(const std::string &name, const char *revision = nullptr);

    /* Loads a module that must fail: the texts of its failures, a line each, without the directory. */
    std::string Failures(const std::string &name, const char *revision = nullptr);

    /* Writes the module and loads it. */
    void LoadText(const std::string &name, const std::string &body, const std::string &imports = "");

    QY_MOD *Mod(const std::string &name);

    /* The node at "container/list/leaf" below the module's top, of whatever module. */
    QY_NODE *Node(const std::string &module, const std::string &path);

    /* The augment of the module with that number. */
    QY_NODE *Augment(const std::string &module, size_t index = 0);

    /* A line for each node: indentation, type, name ("module:name" when it is another module's), "key", "off" when it is
     * disabled, "[n]" for the number of a list's keys, the built-in type, "-> target" and extension instances. */
    std::string Tree(const std::string &module);
    std::string AugmentTree(const std::string &module, size_t index = 0);

    /* Names of the modules that are loaded by name, of those given. */
    std::string Loaded(const std::vector<std::string> &names);

  private:
    std::string dir_;
    QY_CTX *context_;
};

/* The type chain of a leaf, from the built-in type on: "uint8 0..255 | uint8 1..10", "enumeration | enumeration a=1". */
std::string TypeChain(QY_NODE *leaf);

/* The instances of a node or module: "m:ext(argument) m:outer(x){m:inner(y)}"; an absent argument is "-". */
std::string Extensions(QY_NODE *node);
std::string Extensions(QY_MOD *module);

std::string Path(QY_NODE *node);

/* The YIN files of a directory. */
std::vector<std::filesystem::path> YinFiles(const std::string &dir);

} // namespace test

#endif // KORV_TEST_SCHEMA_H
