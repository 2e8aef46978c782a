#include "consent_page.h"
#include "editor_page.h"
#include "experimental_page.h"
#include "preferences_page.h"
#include "result_saving_page.h"
#include "sampling_page.h"
#include "search_dirs_page.h"
#include "silenced_preferences.h"

#include <memory>
#include <vector>

namespace gallery {

std::vector<std::shared_ptr<commondlg3::preferences_page_t>> make_preferences_pages()
{
    std::vector<std::shared_ptr<commondlg3::preferences_page_t>> pages;
    const auto file = std::make_shared<commondlg3::settings_file_t>(preferences_file);
    pages.push_back(std::make_shared<result_saving_page_t>(file));
    pages.push_back(std::make_shared<editor_page_t>(file));
    const auto dirs = std::make_shared<search_dirs_store_t>();
    pages.push_back(std::make_shared<search_dirs_page_t>(dirs, FF_2_13::category_binaries, "binaries"));
    pages.push_back(std::make_shared<search_dirs_page_t>(dirs, FF_2_13::category_sources, "sources"));
    pages.push_back(std::make_shared<search_dirs_page_t>(dirs, FF_2_13::category_others, "others"));
    pages.push_back(std::make_shared<experimental_page_t>());
    pages.push_back(std::make_shared<consent_page_t>(file));
    pages.push_back(std::make_shared<silenced_preferences_t>(file));
    pages.push_back(make_sampling_page(file));
    return pages;
}

} // namespace gallery
