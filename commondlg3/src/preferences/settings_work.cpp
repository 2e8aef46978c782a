#include "settings_work.h"

#include <gen_helpers2/file_transaction.h>
#include <gen_helpers2/log.h>

#include <utility>

namespace commondlg3 {

std::map<std::string, gen_helpers2::file_stamp_t> settings_work_t::look() const
{
    std::map<std::string, gen_helpers2::file_stamp_t> now;
    for (const preferences_page_ptr_t& page : pages)
        for (const gen_helpers2::path_t& file : page->get_files())
            if (now.count(file.as_string()) == 0)
                now.emplace(file.as_string(), gen_helpers2::file_stamp_t(file));
    return now;
}

void settings_work_t::read()
{
    unread.clear();
    gen_helpers2::finish_transaction(folder);
    stamps = look(); // before: what is written while we read is noticed later
    for (const preferences_page_ptr_t& page : pages) {
        const auto read = page->load();
        if (read.failed())
            unread += (unread.empty() ? "" : "\n") + read.message();
    }
    if (!memory)
        return;
    if (const auto read = memory->load(); read.failed()) // as if nothing had been remembered
        gen_helpers2::log_warning("preferences", read.as_string());
}

void settings_work_t::write(const std::vector<preferences_page_ptr_t>& changed)
{
    gen_helpers2::file_transaction_t transaction(folder);
    theirs = look();
    is_theirs = theirs != stamps;
    result = {};
    if (is_theirs)
        return;
    for (const preferences_page_ptr_t& page : changed)
        if (result = page->save(); result.failed())
            return;
    result = transaction.commit();
    if (result.succeeded())
        stamps = look();
}

} // namespace commondlg3
