#pragma once

#include <commondlg3/settings_file.h>

#include <memory>

namespace commondlg3 {
class preferences_page_t;
}

namespace gallery {

/// How the product that the gallery plays takes samples: an example of a page of one file.
std::shared_ptr<commondlg3::preferences_page_t> make_sampling_page(commondlg3::settings_file_ptr_t file);

} // namespace gallery
