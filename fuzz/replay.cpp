/* Runs a fuzz target over files and directories of inputs, without the fuzzer. */
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size);

namespace {

namespace fs = std::filesystem;

void Run(const fs::path &path)
{
    std::ifstream in(path, std::ios::binary);
    const std::vector<char> input((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::printf("%s\n", path.c_str());
    (void)std::fflush(stdout); /* the last line names the input that ends the process */
    (void)LLVMFuzzerTestOneInput(reinterpret_cast<const unsigned char *>(input.data()), input.size());
}

} // namespace

int main(int argc, char **argv)
{
    size_t inputs = 0;
    for (int i = 1; i < argc; ++i) {
        if (!fs::exists(argv[i]))
            continue;
        for (const auto &entry : fs::directory_iterator(argv[i])) {
            Run(entry.path());
            ++inputs;
        }
    }
    std::printf("%zu inputs\n", inputs);
    return inputs == 0 ? 1 : 0;
}
