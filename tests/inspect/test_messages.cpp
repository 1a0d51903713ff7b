/* The library's messages that korv-inspect explains are those that the library has. */
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>

#include "model/message_text.h"

namespace {

/* Every text that the library logs at one of these levels, with "*" for each value in it. */
std::set<std::string> LoggedMessages(const std::string &levels)
{
    const std::regex logged("KORV_LOG_(?:" + levels + R"re()\(\s*[^,"]+,\s*"((?:[^"\\]|\\.)*?)(?:\\n)?")re");
    const std::regex value("%[-+ #0]*[0-9]*[hljzt]*[a-zA-Z]");
    std::set<std::string> messages;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(KORV_SOURCE_DIR "/korv_lib_yang")) {
        if (entry.path().extension() != ".cpp")
            continue;
        std::ifstream in(entry.path());
        const std::string source(std::istreambuf_iterator<char>(in), {});
        for (std::sregex_iterator match(source.begin(), source.end(), logged), end; match != end; ++match)
            messages.insert(std::regex_replace((*match)[1].str(), value, "*"));
    }
    return messages;
}

TEST(InspectMessages, AreThoseOfTheLibrary)
{
    const std::set<std::string> logged = LoggedMessages("ERROR|INFO");
    const std::vector<std::string_view> known = inspect::KnownMessages();
    EXPECT_GT(known.size(), 30U);
    for (std::string_view message : known) {
        /* A "*" at the end stands for everything that is left. */
        const std::string beginning(message.substr(0, message.find_last_not_of('*') + 1));
        const auto found = logged.lower_bound(beginning);
        const bool isThere = message.ends_with('*') ? found != logged.end() && found->starts_with(beginning)
                                                    : logged.count(std::string(message)) == 1;
        EXPECT_TRUE(isThere) << message;
    }
}

/* A load that fails is explained, and a load that goes on gets the findings of rules: neither quotes the library. */
TEST(InspectMessages, OfTheLibraryReachNobody)
{
    for (std::string message : LoggedMessages("ERROR")) {
        for (size_t star = message.find('*'); star != std::string::npos; star = message.find('*'))
            message.replace(star, 1, "7");
        const std::optional<inspect::Explanation> remark = inspect::RemarkOf(message);
        EXPECT_TRUE(!remark || remark->text == "there is not enough memory") << message;
        EXPECT_EQ(inspect::Explain({message}).text.find(message), std::string::npos) << message;
    }
    EXPECT_EQ(inspect::Explain({"Load Module (m) fail!", "odd"}).text, "the library says: odd");
}

} // namespace
