#include "support/models.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace test {

std::string Ext(const std::string &keyword, const std::string &value, const std::string &nested)
{
    return "<mimext:" + keyword + " value=\"" + value + "\">" + nested + "</mimext:" + keyword + ">\n";
}

std::string Id(const std::string &number)
{
    return Ext("field-id", number);
}

std::string ClassId(const std::string &number)
{
    return Ext("class-id", number);
}

std::string Leaf(const std::string &name, const std::string &type, const std::string &statements)
{
    const std::string typeText = type.front() == '<' ? type : "<type name=\"" + type + "\"/>";
    return "<leaf name=\"" + name + "\">" + typeText + statements + "</leaf>\n";
}

std::string Container(const std::string &name, const std::string &body)
{
    return "<container name=\"" + name + "\">\n" + body + "</container>\n";
}

std::string List(const std::string &name, const std::string &key, const std::string &body)
{
    return "<list name=\"" + name + "\"><key value=\"" + key + "\"/>\n" + body + "</list>\n";
}

std::string Module(const std::string &name, const std::string &body, const std::string &imports)
{
    std::string bindings;
    std::string statements;
    std::istringstream words("quelvo-mim-extensions " + imports);
    for (std::string word; words >> word;) {
        const bool ext = word == "quelvo-mim-extensions";
        const std::string prefix = ext ? "mimext" : word;
        bindings += " xmlns:" + prefix + "=\"" + (ext ? "urn:quelvo:yang:mim-extensions" : "urn:" + word) + "\"";
        statements += "<import module=\"" + word + "\"><prefix value=\"" + prefix + "\"/></import>\n";
    }
    return "<module name=\"" + name + "\" xmlns=\"urn:ietf:params:xml:ns:yang:yin:1\" xmlns:p=\"urn:" + name + "\"" +
           bindings + ">\n<yang-version value=\"1.1\"/><namespace uri=\"urn:" + name + "\"/><prefix value=\"p\"/>\n" +
           statements + body + "</module>\n";
}

ModelDir::ModelDir()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "korv-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no temporary directory");
    path = pattern;
    std::filesystem::copy_file(ExamplesDir() + "/quelvo-mim-extensions.yin", path + "/quelvo-mim-extensions.yin");
}

ModelDir::~ModelDir()
{
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

void ModelDir::Add(const std::string &name, const std::string &body, const std::string &imports)
{
    AddFile(name + ".yin", Module(name, body, imports));
}

void ModelDir::AddFile(const std::string &fileName, const std::string &text)
{
    std::ofstream(path + "/" + fileName, std::ios::binary) << text;
}

void ModelDir::AddExamples()
{
    using Options = std::filesystem::copy_options;
    std::filesystem::copy(ExamplesDir(), path, Options::recursive | Options::overwrite_existing);
}

std::string ExamplesDir()
{
    return KORV_SOURCE_DIR "/examples/yin";
}

} // namespace test
