#include "model_files.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>

#include "model_generator.h"
#include "support/compact_twin.h"

namespace bench {

ModelFiles::ModelFiles(std::string given) : m_given(std::move(given))
{
    std::string pattern = (std::filesystem::temp_directory_path() / "korv-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no temporary directory");
    m_dir = pattern;
    (void)Add("quelvo-mim-extensions", ExtensionModule());
}

ModelFiles::ModelFiles(std::string given, std::string dir)
    : m_given(std::move(given)), m_dir(std::move(dir)), m_stays(true)
{
    (void)Add("quelvo-mim-extensions", ExtensionModule());
}

ModelFiles::~ModelFiles()
{
    if (m_stays)
        return;
    std::error_code ignored;
    std::filesystem::remove_all(m_dir, ignored);
}

std::string ModelFiles::Add(const std::string &name, std::string text) const
{
    std::ofstream(m_dir + "/" + name + ".yin", std::ios::binary) << text;
    return text;
}

void ModelFiles::AddCompact(const std::string &name, const std::string &yin) const
{
    std::ofstream(m_dir + "/" + name + ".yang", std::ios::binary) << test::CompactTwin(yin);
}

} // namespace bench
