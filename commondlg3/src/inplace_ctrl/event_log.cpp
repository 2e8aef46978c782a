#include "event_log.h"

#include "commondlg3/text_utils.h"

#include <msngr2/messenger.h>

#include <string>

#include <cstdint>

namespace commondlg3 {

event_log_t::event_log_t(wxWindow* parent, bool show_debug)
    : CEventLog(parent),
      m_show_debug(show_debug),
      m_error_image(add_image(GetImageList(), image_loader_t::image_type_t::error12)),
      m_warning_image(add_image(GetImageList(), image_loader_t::image_type_t::warning12)),
      m_info_image(add_image(GetImageList(), image_loader_t::image_type_t::info12)),
      m_empty_image(add_image(GetImageList(), image_loader_t::image_type_t::empty12))
{
    vdxcfrw7::log_words_t words;
    words.error = translate_message("severity.error");
    words.warning = translate_message("severity.warning");
    words.name = translate_message("inplace_ctrl.name");
    words.lines_came = [](std::size_t count) {
        return translate_message("inplace_ctrl.lines_came", {{"count", count}});
    };
    words.news = [](std::size_t count, std::uint32_t worst) {
        using vdxcfrw7::line_t;
        return translate_message(worst & line_t::error_bits     ? "inplace_ctrl.news_errors"
                                 : worst & line_t::warning_bits ? "inplace_ctrl.news_warnings"
                                                                : "inplace_ctrl.news",
                                 {{"count", count}});
    };
    words.said_times = [](std::uint64_t count) {
        return translate_message("inplace_ctrl.said_times", {{"count", count}});
    };
    words.dropped = [](std::uint64_t count) {
        return translate_message("inplace_ctrl.dropped_lines", {{"count", count}});
    };
    words.first_part = [](std::uint64_t bytes) {
        return translate_message("inplace_ctrl.first_part", {{"bytes", bytes}});
    };
    words.go_to_end = translate_message("inplace_ctrl.go_to_end");
    words.link = [](const std::string& link) {
        return translate_message("inplace_ctrl.link", {{"link", link}});
    };
    words.links = [](std::size_t count) {
        return translate_message("inplace_ctrl.links", {{"count", count}});
    };
    SetWords(words);
}

int event_log_t::add_image(vdxc7::IImageList* list, image_loader_t::image_type_t type)
{
    return list->Add(image_loader_t::get().load_image(type));
}

int event_log_t::image_of(int severity) const
{
    if (severity & (msngr2::sev_error | msngr2::sev_critical))
        return m_error_image;
    return severity & msngr2::sev_warning ? m_warning_image : m_empty_image;
}

} // namespace commondlg3
