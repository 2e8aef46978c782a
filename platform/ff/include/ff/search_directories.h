/// @file
/// The file finder's directories: where it looks for the files that a result mentions.
#pragma once

#include "ff/export.h"

#include <cfgmgr2/property_storage.h>
#include <gen_helpers2/error_code.h>
#include <gen_helpers2/intrusive_pointer.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace FF_2_13 {

/// Counts a reference to one of this library's objects.
template <class T>
using ObjectPtr = gen_helpers2::sptr_t<T>;

/// What is looked for. Each category has a list of its own, searched from its beginning. Numbers beyond these
/// are the host's own and are kept like the others.
enum search_category_t : std::int32_t
{
    category_binaries = 1, ///< modules of the analysed program
    category_symbols = 2,  ///< their debug information; by custom the same directories as for binaries
    category_sources = 3,  ///< its source files
    category_others = 4    ///< whatever else
};

/// A directory of a list, with all that is kept of it.
/// @since 3.1
struct search_dir_entry_t
{
    std::string path;
    bool recursive = false;
    bool enabled = true; ///< otherwise it stays in the list, and nobody looks into it
    std::string comment; ///< of people who edit the file; lines without "#", empty when there is none
};

/// A place in the list of one category: it walks the list, and what it adds stands before the place.
///
///     for (auto dir = container->get_dirs(category_sources); !dir->at_end(); dir->next())
///         if (dir->is_enabled())
///             use(dir->get_path(), dir->is_recursive());
///
/// Reference counted; it keeps its container alive. What others change in the list in the meantime moves the
/// place to the end at most. Any thread, one at a time.
class ISearchDirIterator : public gen_helpers2::i_ref_counted
{
public:
    /// Whether it stands behind the last.
    virtual bool at_end() const = 0;
    /// Goes to the next one.
    virtual void next() = 0;
    /// Bytes, as they were added; empty at the end.
    virtual std::string get_path() const = 0;
    /// Whether the folders below count as well; false at the end.
    virtual bool is_recursive() const = 0;
    /// Puts a directory in front of the place. It need not exist and is not looked at.
    /// @return false for an empty path and for one with a zero byte, which is not added
    ///
    /// One that stood in the list before it was cleared keeps its comment, and stays disabled if it was.
    virtual bool add(const std::string& path, bool recursive) = 0;

    /// True at the end.
    /// @since 3.1
    virtual bool is_enabled() const { return true; }
    /// @since 3.1
    virtual std::string get_comment() const { return std::string(); }
    /// add() with all that is to be kept.
    /// @since 3.1
    virtual bool add_entry(const search_dir_entry_t& entry) { return add(entry.path, entry.recursive); }

protected:
    ~ISearchDirIterator() = default;
};

/// The lists of all categories, for those who edit them.
///
///     const auto at = container->get_dirs(category_sources);
///     container->clear(category_sources);
///     at->add("/usr/src", true);
///     error_code_t result = container->save();
///
/// Changes are in force at once, for everybody who holds the container; save() keeps them beyond the process.
/// Reference counted. All operations are safe in any thread.
class IEditableSearchDirContainer : public gen_helpers2::i_ref_counted
{
public:
    /// The beginning of the category's list. Never null.
    virtual ObjectPtr<ISearchDirIterator> get_dirs(search_category_t category) = 0;
    /// How many directories the category's list has.
    virtual std::size_t count(search_category_t category) const = 0;
    /// Empties the category's list.
    virtual void clear(search_category_t category) = 0;
    /// Writes what was changed. On an error nothing is lost: the lists stay, and the next call tries again.
    [[nodiscard]] virtual gen_helpers2::error_code_t save() = 0;

protected:
    ~IEditableSearchDirContainer() = default;
};

/// Lists that live in a storage of the host, below its child "search_directories".
///
/// A list is one value of the storage: when two programs write at once, one's whole list stands in the end,
/// never a mixture of both, and lists of other categories are not touched. Comments (lines that begin
/// with "#") belong to the directory below them, and stay. Other lines that are not understood are passed
/// over. Never null; a null storage gives lists in memory, whose save() has nothing to do.
FF_EXPORT ObjectPtr<IEditableSearchDirContainer>
make_search_dir_container(const gen_helpers2::sptr_t<cfgmgr2::IPropertyStorage>& storage);

} // namespace FF_2_13
