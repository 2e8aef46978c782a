#pragma once

#include "commondlg3/preferences_page.h"
#include "commondlg3/settings_file.h"

#include <gen_helpers2/error_code.h>
#include <gen_helpers2/file_stamp.h>
#include <gen_helpers2/path.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace commondlg3 {

/// What a thread reads and writes for the preferences: it may hang with its disk, and outlive them.
struct settings_work_t
{
    std::vector<preferences_page_ptr_t> pages;
    settings_file_ptr_t memory; ///< may be null
    gen_helpers2::path_t folder;

    /// What each file was when it was read, or written by us.
    std::map<std::string, gen_helpers2::file_stamp_t> stamps{};
    std::string unread{}; ///< what could not be read, a line each
    gen_helpers2::error_code_t result{};
    bool is_theirs = false; ///< somebody else has written since, and nothing was
    std::map<std::string, gen_helpers2::file_stamp_t> theirs{}; ///< what they have made of the files

    /// Of the files as they are now.
    std::map<std::string, gen_helpers2::file_stamp_t> look() const;
    void read();
    /// Writes these pages, all or none of them, unless somebody else has written since they were read.
    void write(const std::vector<preferences_page_ptr_t>& changed);
};
using settings_work_ptr_t = std::shared_ptr<settings_work_t>;

} // namespace commondlg3
