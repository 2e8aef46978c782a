#pragma once

#include "preferences_page.h"

#include <commondlg3/settings_file.h>

#include <utility>
#include <vector>

namespace gallery {

/// A page whose settings are in a file that it shares with others.
class file_page_t : public preferences_page_t
{
public:
    explicit file_page_t(commondlg3::settings_file_ptr_t store) : m_store(std::move(store)) {}

    gen_helpers2::error_code_t load() override { return m_store->load(); }
    gen_helpers2::error_code_t save() override { return m_store->save(); }
    std::vector<gen_helpers2::path_t> get_files() const override { return {m_store->get_path()}; }

protected:
    commondlg3::settings_file_ptr_t m_store;
};

} // namespace gallery
