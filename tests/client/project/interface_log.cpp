// The same for the log and what is put into it.
#include "interface.h"

#include <commondlg3/inplace_ctrl.h>
#include <commondlg3/inplace_message.h>
#include <wx_helpers1/progress_impl.h>
#include <wx_helpers1/tasks.h>

#include <cstdint>
#include <string>
#include <type_traits>

using namespace commondlg3;
using std::string;

void name_log()
{
    using gen_helpers2::error_code_t;
    using gen_helpers2::variant_bag_t;
    using log = inplace_ctrl_t;
    using tag = log::tag_t;
    using callback = log::callback_t;
    static_assert(std::is_same_v<tag, std::uint32_t>);
    named<tag(const message_t::ptr_t&, const callback&)>(&log::add_message);
    named<tag(const progress_message_t::ptr_t&, const callback&)>(&log::add_progress);
    named<tag(const custom_message_t::ptr_t&)>(&log::add_custom);
    named<error_code_t(tag, const message_t::ptr_t&, const callback&)>(&log::update_message);
    named<error_code_t(tag)>(&log::erase);
    named<error_code_t()>(&log::clear);
    named<msngr2::IMessenger*(tag)>(&log::get_messenger);
    named<msngr2::IProgress*(tag)>(&log::get_progress);
    named<bool(tag, msngr2::ESeverity)>(&log::has_severity);
    named<bool()>(&log::has_changes);
    named<error_code_t(variant_bag_t&)>(&log::save);
    named<error_code_t(const variant_bag_t&)>(&log::load);
    named<void(wxCommandEvent&)>(&log::handle_copy);
    named<void(wxPoint)>(&log::pupup_menu);

    standard_message_t::ptr_t record(new standard_message_t);
    header_t::ptr_t head = record;
    record->picture = standard_message_t::get_icon_by_type(static_cast<standard_message_t::icon_types_t>(0));
    record->caption = record->message = "text";
    record->set_buttons(static_cast<standard_message_t::standard_buttons_t>(1));
    interactive_message_t::ptr_t interactive = record;
    interactive->add_button(9, "more");
    named_free(interactive->set_default_button(9), interactive->get_default_button());
    interactive->set_button_name(9, "less");
    interactive->clear_buttons();
    const message_button_t button(1, "text", true);
    named_free(button.id, button.text, button.flag, record->get_button(0u).id, record->buttons.size(),
               record->default_button);
    variant_bag_t bag;
    named_free(record->save(bag).succeeded(), record->load(bag).succeeded(),
               progress_message_t::ptr_t(new progress_message_t),
               custom_message_t::ptr_t(new custom_message_t));

    msngr2::IProgress* progress = nullptr;
    if (progress) {
        progress->start("text", 10.0);
        progress->progressed(1);
        progress->internalProgressed(1.0);
        progress->message("text");
        progress->finish();
        progress->cancel();
        named_free(progress->getTotalSteps() + (progress->isCanceled() ? 1 : 0));
    }
    named_free(sizeof(wx_helpers1::ProgressImpl), wx_helpers1::tasks::Scheduler::IsInitialized());
}
