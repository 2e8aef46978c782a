#pragma once

#include "gen_helpers2/error_code.h"

#include <functional>
#include <string>
#include <vector>

namespace gen_helpers2 {
namespace _internal {

/// What a transaction of this thread holds back.
class staged_files_t
{
public:
    /// Null when the thread has no transaction.
    static staged_files_t* current() noexcept;

    struct file_t
    {
        std::string temporary;
        std::string target;
        int lock; ///< a descriptor that keeps others from taking the temporary one for left behind
    };

    staged_files_t();
    ~staged_files_t();
    staged_files_t(const staged_files_t&) = delete;
    staged_files_t& operator=(const staged_files_t&) = delete;

    /// To be called first: add() fails no more then.
    void make_room() { m_files.reserve(m_files.size() + 1); }
    /// Takes a complete, synchronised file over. A second one for the same target takes the first one's place.
    void add(file_t file);
    /// Puts all into their places; `folder` gets the note meanwhile.
    error_code_t commit(const std::string& folder);
    void when_ended(std::function<void(bool)> ended) { m_ended.push_back(std::move(ended)); }

private:
    void tell(bool committed);

    std::vector<file_t> m_files;
    std::vector<std::function<void(bool)>> m_ended;
};

/// So that the names in it survive a power cut. A file system that cannot do that is no error.
void synchronise_folder(const std::string& folder) noexcept;

} // namespace _internal
} // namespace gen_helpers2
