#pragma once

#include "gen_helpers2/assertion.h"
#include "gen_helpers2/path.h"

#include <map>
#include <string>
#include <vector>

namespace test_tools {

/// Assertions that were raised since the test began. Reading them accepts them; one that is left unread fails
/// the test.
std::vector<gen_helpers2::assertion_t> take_assertions();

/// A folder of its own, removed with everything in it.
class temp_dir_t
{
public:
    temp_dir_t();
    ~temp_dir_t();
    temp_dir_t(const temp_dir_t&) = delete;
    temp_dir_t& operator=(const temp_dir_t&) = delete;

    const gen_helpers2::path_t& path() const { return m_path; }
    gen_helpers2::path_t operator/(const char* name) const { return m_path / name; }
    /// Names of all entries, sorted.
    std::vector<std::string> names() const;

private:
    gen_helpers2::path_t m_path;
};

std::string read_text(const gen_helpers2::path_t& file);
void write_text(const gen_helpers2::path_t& file, const std::string& text);

/// The bytes of a compiled message file.
std::string make_mo(const std::map<std::string, std::string>& messages, bool big_endian = false);

} // namespace test_tools
