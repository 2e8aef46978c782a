#include "staged_files.h"
#include "atomic_file.h"
#include "transaction_note.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <set>
#include <utility>

namespace gen_helpers2 {
namespace _internal {
namespace {

thread_local staged_files_t* current_of_thread = nullptr;

void let_go(const staged_files_t::file_t& file)
{
    if (file.lock >= 0)
        ::close(file.lock);
}

} // namespace

staged_files_t* staged_files_t::current() noexcept
{
    return current_of_thread;
}

staged_files_t::staged_files_t()
{
    current_of_thread = this;
}

staged_files_t::~staged_files_t()
{
    current_of_thread = nullptr;
    for (const file_t& file : m_files) {
        ::unlink(file.temporary.c_str());
        let_go(file);
    }
    tell(false);
}

void staged_files_t::add(file_t file)
{
    const auto same = std::find_if(m_files.begin(), m_files.end(),
                                   [&](const file_t& each) { return each.target == file.target; });
    if (same == m_files.end()) {
        m_files.push_back(std::move(file));
        return;
    }
    std::swap(*same, file);
    ::unlink(file.temporary.c_str());
    let_go(file);
}

error_code_t staged_files_t::commit(const std::string& folder)
{
    current_of_thread = nullptr; // the note is written at once
    // Whatever may fail comes before the first file is moved.
    const std::string note = note_in(folder);
    std::set<std::string> folders;
    std::vector<moved_t> moves;
    for (const file_t& file : m_files) {
        const std::size_t slash = file.target.rfind('/');
        folders.insert(slash == std::string::npos ? "." : file.target.substr(0, slash + 1));
        moves.push_back({file.temporary, file.target});
    }
    const bool needs_note = m_files.size() > 1;
    if (needs_note) {
        const error_code_t result = write_note(note, moves);
        if (result.failed())
            return result;
    }
    error_code_t result;
    std::size_t done = 0;
    const auto move_rest = [&] {
        result = {};
        for (; done < m_files.size() && result.succeeded(); done += result.succeeded() ? 1 : 0)
            if (const file_t& file = m_files[done];
                ::rename(file.temporary.c_str(), file.target.c_str()) != 0)
                result = error_code_t::io_error(file_message("cannot replace", path_t(file.target), errno));
    };
    move_rest();
    if (result.failed() && done > 0)
        move_rest(); // what failed for a moment must not leave half of it
    for (const std::string& each : folders)
        synchronise_folder(each);
    // From the second file on there is no way back, but by the note one forward.
    if (needs_note && (done == 0 || result.succeeded()))
        remove_note(note);
    if (done == 0 && result.failed())
        return result; // the files go with this object
    for (const file_t& file : m_files)
        let_go(file);
    m_files.clear();
    tell(result.succeeded());
    return result;
}

void staged_files_t::tell(bool committed)
{
    for (const auto& ended : std::exchange(m_ended, {}))
        ended(committed);
}

void synchronise_folder(const std::string& folder) noexcept
{
    const int file = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0)
        return;
    if (::fsync(file) != 0)
        errno = 0;
    ::close(file);
}

} // namespace _internal
} // namespace gen_helpers2
