#pragma once

#include "gen_helpers2/error_code.h"
#include "gen_helpers2/export.h"
#include "gen_helpers2/path.h"

#include <functional>
#include <memory>

namespace gen_helpers2 {

/// Several files that change together: all of them, or none.
///
/// \code
/// file_transaction_t transaction(config_directory);
/// result = preferences->save();                   // whatever writes whole files on this thread
/// if (result.succeeded())
///     result = directories->save();
/// if (result.succeeded())
///     result = transaction.commit();
/// \endcode
///
/// While it lives, what write_whole_file(), whole_file_writer_t and the bags' and storages' saving write on
/// this thread is written beside the files, complete and synchronised, but takes their place only in commit().
/// A program that is killed before that leaves the old files; one that is killed in the middle of it leaves a
/// note of what belongs where in the folder, by which finish_transaction() brings the rest to its place. A
/// transaction that ends without commit() has changed nothing.
///
/// The folder is locked meanwhile (folder_lock_t). Files that symbolic links lead elsewhere may be
/// in other folders; only there what a killed program left stays until its note is followed. Reading a file
/// before commit() gives the old one. One a thread at a time: an inner one joins the outer, which decides.
/// @since 3.1
class GEN_HELPERS2_EXPORT file_transaction_t
{
public:
    explicit file_transaction_t(const path_t& folder);
    ~file_transaction_t();
    file_transaction_t(const file_transaction_t&) = delete;
    file_transaction_t& operator=(const file_transaction_t&) = delete;

    /// Puts the files into their places. On an error none of them is there, unless the disk failed in the very
    /// middle: then the note stays, and the next program that reads the folder goes on.
    [[nodiscard]] error_code_t commit();

    /// Runs `ended` when this thread's transaction has ended, with whether its files are in place. For those who
    /// remember what they have written. It must not throw. @return false when there is none: what was written
    /// is in its place already, and `ended` is not run
    static bool when_ended(std::function<void(bool committed)> ended);

private:
    struct impl_t;
    std::unique_ptr<impl_t> m_impl; ///< null for an inner one
};

/// Keeps other programs of ours from writing into a folder between our reading and our writing. It is a
/// courtesy: if the lock cannot be had within half a second, things go on without it rather than keeping a
/// user waiting.
/// @since 3.1
class GEN_HELPERS2_EXPORT folder_lock_t
{
public:
    /// A folder that this thread's transaction has locked is not locked again.
    explicit folder_lock_t(const path_t& folder);
    ~folder_lock_t();
    folder_lock_t(const folder_lock_t&) = delete;
    folder_lock_t& operator=(const folder_lock_t&) = delete;

    bool is_locked() const noexcept { return m_is_locked; }

private:
    int m_folder = -1;
    bool m_is_locked = false;
};

/// Follows the note of a program that was killed while it put files into their places, if there is one of this
/// user in the folder. To be called before a folder's settings are read; without a note it costs one call of
/// the system.
/// @since 3.1
GEN_HELPERS2_EXPORT void finish_transaction(const path_t& folder);

} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
