#pragma once

#include "commondlg3/export.h"

#include <cfgmgr2/property_storage.h>
#include <gen_helpers2/error_code.h>
#include <gen_helpers2/file_stamp.h>
#include <gen_helpers2/path.h>

#include <memory>
#include <string>

namespace commondlg3 {

/// A settings file for all pages that keep theirs in it: it is read once, what is wrong with it is told once,
/// and what one page writes the others have as well.
///
///     const auto file = std::make_shared<settings_file_t>("preferences.xml");
///     frame.add_page(std::make_shared<saving_page_t>(file));
///     frame.add_page(std::make_shared<editors_page_t>(file));
///
/// A host that has a storage of its own gives that one instead. Threads: load() and save() on any, one at a
/// time; the storage is safe in all.
/// @since 3.1
class COMMONDLG3_EXPORT settings_file_t
{
public:
    /// @param name of a file in the product's configuration directory, or a full path
    explicit settings_file_t(const std::string& name);
    /// Around a storage that is the host's, which has read it.
    explicit settings_file_t(gen_helpers2::sptr_t<cfgmgr2::IPropertyStorage> storage);

    /// Reads the file at the first call, and again when another program has written it. Else it succeeds: an error
    /// is told once.
    [[nodiscard]] gen_helpers2::error_code_t load();
    /// Writes what was changed.
    [[nodiscard]] gen_helpers2::error_code_t save() { return m_storage->save(); }

    /// Never null; empty before load().
    const gen_helpers2::sptr_t<cfgmgr2::IPropertyStorage>& get() const { return m_storage; }
    /// Empty around a host's storage.
    const gen_helpers2::path_t& get_path() const { return m_path; }

private:
    gen_helpers2::path_t m_path;
    gen_helpers2::sptr_t<cfgmgr2::IPropertyStorage> m_storage;
    gen_helpers2::file_stamp_t m_stamp;
    bool m_is_read = false;
};
using settings_file_ptr_t = std::shared_ptr<settings_file_t>;

} // namespace commondlg3
