#include "sampling_page.h"

#include "page_icons.h"

#include <commondlg3/form_page.h>

#include <memory>
#include <string>
#include <utility>

namespace gallery {
namespace {

class sampling_page_t : public commondlg3::form_page_t
{
public:
    explicit sampling_page_t(commondlg3::settings_file_ptr_t file)
        : form_page_t(std::move(file), "pref.sampling",
                      {"gallery.dat", "gallery.xrc", "pref.sampling", "gallery"})
    {
        add("interval", "m_interval", 10);
        add("stacks", "m_stacks", true);
        add("event", "m_event", 0);
        add("note", "m_note", "");
    }
    std::string get_title() const override { return text("preferences.page.sampling"); }
    std::string get_search_words() const override { return text("preferences.page.sampling.words"); }
    wx_helpers1::wxStaticPicture get_icon() const override { return get_page_icon(page_icon_t::sampling); }
    std::string get_help_topic() const override { return "sampling"; }
};

} // namespace

std::shared_ptr<commondlg3::preferences_page_t> make_sampling_page(commondlg3::settings_file_ptr_t file)
{
    return std::make_shared<sampling_page_t>(std::move(file));
}

} // namespace gallery
