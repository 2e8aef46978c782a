#include "consent_page.h"
#include "experimental_page.h"
#include "preferences_page.h"
#include "result_saving_page.h"

namespace gallery {

std::vector<std::unique_ptr<preferences_page_t>> make_preferences_pages()
{
    std::vector<std::unique_ptr<preferences_page_t>> pages;
    pages.push_back(std::make_unique<result_saving_page_t>());
    pages.push_back(std::make_unique<experimental_page_t>());
    pages.push_back(std::make_unique<consent_page_t>());
    return pages;
}

} // namespace gallery
