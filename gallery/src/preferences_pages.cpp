#include "consent_page.h"
#include "editor_page.h"
#include "experimental_page.h"
#include "preferences_page.h"
#include "result_saving_page.h"
#include "search_dirs_page.h"

#include <memory>
#include <vector>

namespace gallery {

std::vector<std::unique_ptr<preferences_page_t>> make_preferences_pages()
{
    std::vector<std::unique_ptr<preferences_page_t>> pages;
    const auto store = std::make_shared<settings_store_t>(preferences_file);
    pages.push_back(std::make_unique<result_saving_page_t>(store));
    pages.push_back(std::make_unique<editor_page_t>(store));
    const auto dirs = std::make_shared<search_dirs_store_t>();
    pages.push_back(std::make_unique<search_dirs_page_t>(dirs, FF_2_13::category_binaries, "binaries"));
    pages.push_back(std::make_unique<search_dirs_page_t>(dirs, FF_2_13::category_sources, "sources"));
    pages.push_back(std::make_unique<search_dirs_page_t>(dirs, FF_2_13::category_others, "others"));
    pages.push_back(std::make_unique<experimental_page_t>());
    pages.push_back(std::make_unique<consent_page_t>(store));
    return pages;
}

} // namespace gallery
