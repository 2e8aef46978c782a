#include "commondlg3/message_window.h"
#include "commondlg3/message_options.h"

#include "commondlg3/text_utils.h"

#include "base/message_of.h"
#include "kept_window.h"
#include "result_of.h"

#include <wx_helpers1/main_window.h>

#include <iterator>
#include <utility>

namespace commondlg3 {
namespace {

using CPIL_2_18::generic::varg_list;

// A button type that shows Close alone never ends with its first button, so type 0 has no row here.
constexpr int results_of_first_button[] = {message_window_t::result_yes, message_window_t::result_none,
                                           message_window_t::result_ok, message_window_t::result_none,
                                           message_window_t::result_retry};
constexpr int results_of_second_button[] = {message_window_t::result_close, message_window_t::result_no,
                                            message_window_t::result_none,  message_window_t::result_cancel,
                                            message_window_t::result_none,  message_window_t::result_cancel};

} // namespace

int result_of(int id, message_window_t::button_type_t button_type)
{
    const int type = static_cast<int>(button_type);
    if (id == wxID_OK && type >= 1 && type <= static_cast<int>(std::size(results_of_first_button)))
        return results_of_first_button[type - 1];
    if (id == wxID_CANCEL && type >= 0 && type < static_cast<int>(std::size(results_of_second_button)))
        return results_of_second_button[type];
    return message_window_t::result_none;
}

std::string message_window_t::get_message(const std::string& catalog_name, const std::string& key,
                                          const varg_list& args)
{
    return message_of(catalog_name, key, args);
}

void message_window_t::set_main_message(const std::string& catalog, const std::string& key,
                                        const varg_list& args)
{
    main_message = get_message(catalog, key, args);
}

void message_window_t::set_supplemental_message(const std::string& catalog, const std::string& key,
                                                const varg_list& args)
{
    supplemental_message = get_message(catalog, key, args);
}

void message_window_t::set_details_message(const std::string& catalog, const std::string& key,
                                           const varg_list& args)
{
    details_message = get_message(catalog, key, args);
}

message_window_t message_window_t::simple_error_wnd(const std::string& catalog, const std::string& main_key,
                                                    const std::string& supplemental_key,
                                                    const varg_list& main_args,
                                                    const varg_list& supplemental_args)
{
    message_window_t window;
    window.set_main_message(catalog, main_key, main_args);
    window.set_supplemental_message(catalog, supplemental_key, supplemental_args);
    return window;
}

message_window_t message_window_t::simple_warning_wnd(const std::string& catalog, const std::string& main_key,
                                                      const std::string& supplemental_key,
                                                      button_type_t button_type, const varg_list& main_args,
                                                      const varg_list& supplemental_args)
{
    message_window_t window =
        simple_error_wnd(catalog, main_key, supplemental_key, main_args, supplemental_args);
    window.button_type = button_type;
    window.icon_type = icon_types_t::warning;
    return window;
}

message_window_t
message_window_t::warning_wnd_with_check(const std::string& catalog, const std::string& main_key,
                                         const std::string& supplemental_key, button_type_t button_type,
                                         gen_helpers2::sptr_t<i_check_box_definition> check_box,
                                         const varg_list& main_args, const varg_list& supplemental_args)
{
    message_window_t window =
        simple_warning_wnd(catalog, main_key, supplemental_key, button_type, main_args, supplemental_args);
    window.check_box = std::move(check_box);
    return window;
}

int show_modal(const message_window_t& window, wxWindow* parent)
{
    return show_modal(window, message_options_t(), parent);
}

int show_modal(const message_window_t& window, const message_options_t& options, wxWindow* parent)
{
    if (window.check_box && window.check_box->is_checked())
        return message_window_t::result_none;
    if (!parent)
        parent = wx_helpers1::get_main_window();
    return result_of(run_message_window(window, options, parent), window.button_type);
}

int show_msg_box(const std::string& text1, const std::string& text2, message_window_t::icon_types_t icon,
                 wxWindow* parent)
{
    message_window_t window;
    window.main_message = text1;
    window.supplemental_message = text2;
    window.icon_type = icon;
    if (!parent)
        parent = wx_helpers1::get_main_window();
    return parent ? show_modal(window, parent) : static_cast<int>(message_window_t::result_no_parent);
}

} // namespace commondlg3
