#include "test_tools.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <mutex>
#include <stdexcept>
#include <utility>

namespace test_tools {

namespace {

struct recorder_t
{
    std::mutex mutex;
    std::vector<gen_helpers2::assertion_t> unread;
};

recorder_t& recorder()
{
    static recorder_t* const only = new recorder_t;
    return *only;
}

class assertion_listener_t : public testing::EmptyTestEventListener
{
    void OnTestEnd(const testing::TestInfo&) override
    {
        for (const auto& assertion : take_assertions())
            ADD_FAILURE() << "assertion in " << assertion.unit << ": " << assertion.condition << " ("
                          << assertion.function << ", line " << assertion.line << ")";
    }
};

const bool installed = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new assertion_listener_t);
    gen_helpers2::set_assertion_handler([](const gen_helpers2::assertion_t& assertion) {
        recorder_t& r = recorder();
        const std::lock_guard<std::mutex> lock(r.mutex);
        r.unread.push_back(assertion);
    });
    return true;
}();

} // namespace

std::vector<gen_helpers2::assertion_t> take_assertions()
{
    recorder_t& r = recorder();
    const std::lock_guard<std::mutex> lock(r.mutex);
    return std::exchange(r.unread, {});
}

temp_dir_t::temp_dir_t()
{
    std::string name = (std::filesystem::temp_directory_path() / "platform-test-XXXXXX").string();
    if (!::mkdtemp(name.data()))
        throw std::runtime_error("no temporary folder");
    m_path = gen_helpers2::path_t(name);
}

temp_dir_t::~temp_dir_t()
{
    std::error_code error;
    std::filesystem::remove_all(m_path.as_filesystem_path(), error);
}

std::vector<std::string> temp_dir_t::names() const
{
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(m_path.as_filesystem_path()))
        found.push_back(entry.path().filename().string());
    std::sort(found.begin(), found.end());
    return found;
}

std::string read_text(const gen_helpers2::path_t& file)
{
    std::ifstream in(file.as_string(), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

void write_text(const gen_helpers2::path_t& file, const std::string& text)
{
    std::ofstream(file.as_string(), std::ios::binary) << text;
}

std::string make_mo(const std::map<std::string, std::string>& messages, bool big_endian)
{
    const auto append = [big_endian](std::string& out, unsigned value) {
        for (int i = 0; i < 4; ++i)
            out += static_cast<char>(value >> (8 * (big_endian ? 3 - i : i)));
    };
    std::map<std::string, std::string> all(messages);
    all.emplace("", "Content-Type: text/plain; charset=UTF-8\n");
    const auto count = static_cast<unsigned>(all.size());
    std::string out, keys, texts, strings;
    for (const unsigned number : {0x950412deU, 0U, count, 28U, 28 + count * 8, 0U, 28 + count * 16})
        append(out, number);
    const unsigned first = 28 + count * 16;
    for (const auto& [key, text] : all) {
        append(keys, static_cast<unsigned>(key.size()));
        append(keys, first + static_cast<unsigned>(strings.size()));
        strings += key + '\0';
        append(texts, static_cast<unsigned>(text.size()));
        append(texts, first + static_cast<unsigned>(strings.size()));
        strings += text + '\0';
    }
    return out + keys + texts + strings;
}

} // namespace test_tools
