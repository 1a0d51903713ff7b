/* The fuzzer's way of changing and joining inputs: always as trees of statements. */
#include <cstdint>
#include <cstring>

#include "mutations.h"
#include "places.h"

extern "C" const char *__asan_default_options(); // NOLINT(bugprone-reserved-identifier)
extern "C" size_t LLVMFuzzerMutate(uint8_t *data, size_t size, size_t maxSize);
extern "C" size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t maxSize, unsigned seed);
extern "C" size_t LLVMFuzzerCustomCrossOver(const uint8_t *data1, size_t size1, const uint8_t *data2, size_t size2,
                                            uint8_t *out, size_t maxOutSize, unsigned seed);

namespace {

constexpr size_t MUTATIONS_AT_ONCE = 5;
constexpr size_t ARGUMENT_ROOM = 64;
constexpr size_t ARGUMENT_BYTES_ONE_IN = 20;

fuzz::Statement Parsed(const uint8_t *data, size_t size)
{
    return fuzz::ParseStatements({reinterpret_cast<const char *>(data), size});
}

/* The bytes of an argument are the fuzzer's own to change. */
void ChangeBytes(fuzz::Statement *root, fuzz::Random *random)
{
    auto places = fuzz::AllPlaces(root);
    if (places.empty())
        return;
    std::string &argument = random->Of(places).Self().argument;
    std::string room = argument.substr(0, ARGUMENT_ROOM);
    const size_t size = room.size();
    room.resize(2 * ARGUMENT_ROOM);
    room.resize(LLVMFuzzerMutate(reinterpret_cast<uint8_t *>(room.data()), size, room.size()));
    argument = room;
}

/* The tree's text, or 0 where there is no room for it. */
size_t Store(const fuzz::Statement &root, uint8_t *out, size_t maxSize)
{
    const std::string text = fuzz::ToText(root);
    if (text.size() > maxSize || text.empty())
        return 0;
    std::memcpy(out, text.data(), text.size());
    return text.size();
}

} // namespace

/* What is released and kept for a while must not fill the gigabyte that an input may take. */
const char *__asan_default_options()
{
    return "quarantine_size_mb=64";
}

size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t maxSize, unsigned seed)
{
    fuzz::Random random(seed);
    fuzz::Statement root = Parsed(data, size);
    for (size_t i = 1 + random.Below(MUTATIONS_AT_ONCE); i > 0; --i) {
        if (random.OneIn(ARGUMENT_BYTES_ONE_IN))
            ChangeBytes(&root, &random);
        else
            fuzz::Mutate(&root, &random);
    }
    const size_t stored = Store(root, data, maxSize);
    return stored != 0 ? stored : size;
}

size_t LLVMFuzzerCustomCrossOver(const uint8_t *data1, size_t size1, const uint8_t *data2, size_t size2, uint8_t *out,
                                 size_t maxOutSize, unsigned seed)
{
    fuzz::Random random(seed);
    fuzz::Statement root = Parsed(data1, size1);
    fuzz::Splice(&root, Parsed(data2, size2), &random);
    return Store(root, out, maxOutSize);
}
