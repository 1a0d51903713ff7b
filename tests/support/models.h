/* Model files for a test: a directory of its own, and short forms of YIN text. */
#ifndef KORV_TEST_MODELS_H
#define KORV_TEST_MODELS_H

#include <string>

namespace test {

/* Text of the module NAME with prefix p (namespace "urn:NAME"), importing the extension module as mimext. `imports` names
 * further modules, blank separated, each imported under its own name as prefix. */
std::string Module(const std::string &name, const std::string &body, const std::string &imports = "");

/* Short forms of statements. */
std::string Ext(const std::string &keyword, const std::string &value, const std::string &nested = "");
std::string Id(const std::string &number);      /* field-id */
std::string ClassId(const std::string &number); /* class-id */
std::string Leaf(const std::string &name, const std::string &type, const std::string &statements = "");
std::string Container(const std::string &name, const std::string &body);
std::string List(const std::string &name, const std::string &key, const std::string &body);

/* A directory that lives as long as the object. */
class ModelDir {
  public:
    ModelDir(); /* with the extension module in it */
    ~ModelDir();
    ModelDir(const ModelDir &) = delete;
    ModelDir &operator=(const ModelDir &) = delete;

    const std::string &Path() const { return path; }

    /* Writes NAME.yin with Module(name, body, imports). */
    void Add(const std::string &name, const std::string &body, const std::string &imports = "");
    /* Writes a file of any text. */
    void AddFile(const std::string &fileName, const std::string &text);
    /* Copies every example model. */
    void AddExamples();

  private:
    std::string path;
};

/* Directory of the example models. */
std::string ExamplesDir();

} // namespace test

#endif // KORV_TEST_MODELS_H
