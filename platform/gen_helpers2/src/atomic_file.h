#pragma once

#include "gen_helpers2/error_code.h"
#include "gen_helpers2/path.h"

#include <string>
#include <string_view>

namespace gen_helpers2 {
namespace _internal {

/// A file written beside the one it is to replace. Unless commit() succeeds nothing of it remains: it has no
/// name before, where the file system can do that. Elsewhere a program that is killed leaves a name behind,
/// which the next one that writes into the folder takes away.
class atomic_file_t
{
public:
    explicit atomic_file_t(const path_t& path);
    ~atomic_file_t();
    atomic_file_t(const atomic_file_t&) = delete;
    atomic_file_t& operator=(const atomic_file_t&) = delete;

    /// The first error stays; writing after it does nothing.
    const error_code_t& error() const noexcept { return m_error; }
    void append(std::string_view bytes);
    error_code_t commit();

private:
    void open_temporary(unsigned mode);
    bool make_name();
    void fail(const char* what, int number);

    path_t m_shown;
    std::string m_target;
    std::string m_temporary;
    int m_file = -1;
    int m_lock = -1; ///< the same file, as long as it has its temporary name
    error_code_t m_error;
};

/// "what path: reason", for the errors of files.
std::string file_message(const char* what, const path_t& path, int number);

} // namespace _internal
} // namespace gen_helpers2
