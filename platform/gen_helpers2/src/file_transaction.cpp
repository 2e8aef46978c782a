#include "gen_helpers2/file_transaction.h"
#include "gen_helpers2/file.h"
#include "staged_files.h"
#include "transaction_note.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <string>
#include <thread>
#include <utility>

namespace gen_helpers2 {
namespace {

thread_local const std::string* locked_folder = nullptr;

std::string name_of_folder(const path_t& folder)
{
    return folder.is_empty() ? std::string(".") : folder.as_string();
}

} // namespace

folder_lock_t::folder_lock_t(const path_t& folder)
{
    const std::string name = name_of_folder(folder);
    if (locked_folder && *locked_folder == name)
        return;
    m_folder = ::open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int attempt = 0; m_folder >= 0 && attempt < 50; ++attempt) {
        m_is_locked = ::flock(m_folder, LOCK_EX | LOCK_NB) == 0;
        if (m_is_locked || errno != EWOULDBLOCK)
            return;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

folder_lock_t::~folder_lock_t()
{
    if (m_folder >= 0)
        ::close(m_folder);
}

struct file_transaction_t::impl_t
{
    explicit impl_t(std::string name) : folder(std::move(name)), lock(path_t(folder))
    {
        if (lock.is_locked())
            locked_folder = &folder;
    }
    ~impl_t() { locked_folder = nullptr; }

    std::string folder;
    folder_lock_t lock;
    _internal::staged_files_t files; // ends first: it puts back what the lock guards
};

file_transaction_t::file_transaction_t(const path_t& folder)
{
    if (_internal::staged_files_t::current())
        return;
    make_private_folder(folder);
    finish_transaction(folder);
    m_impl = std::make_unique<impl_t>(name_of_folder(folder));
}

file_transaction_t::~file_transaction_t() = default;

error_code_t file_transaction_t::commit()
{
    return m_impl ? m_impl->files.commit(m_impl->folder) : error_code_t();
}

bool file_transaction_t::when_ended(std::function<void(bool committed)> ended)
{
    auto* files = _internal::staged_files_t::current();
    if (files)
        files->when_ended(std::move(ended));
    return files != nullptr;
}

void finish_transaction(const path_t& folder)
{
    const std::string note = _internal::note_in(name_of_folder(folder));
    if (::access(note.c_str(), F_OK) != 0)
        return;
    const folder_lock_t lock(folder);
    if (lock.is_locked())
        _internal::follow_note(note);
}

} // namespace gen_helpers2
