#include "commondlg3/silenced_messages.h"

#include "commondlg3/text_utils.h"
#include "inplace_ctrl/background.h"
#include "without_mnemonic.h"

#include <gen_helpers2/log.h>

#include <algorithm>
#include <ctime>
#include <utility>

namespace commondlg3 {
namespace {

using button_type_t = message_window_t::button_type_t;
using gen_helpers2::variant_bag_t;
using gen_helpers2::variant_t;

constexpr char silenced_child[] = "silenced_messages";
constexpr char silenced_record[] = "message";

void write_message(variant_bag_t& bag, const silenced_message_t& message)
{
    bag.add_value("name", message.name);
    bag.add_value("main_message", message.main_message);
    bag.add_value("supplemental_message", message.supplemental_message);
    bag.add_value("details_message", message.details_message);
    bag.add_value("button_type", static_cast<int>(message.button_type));
    bag.add_value("icon_type", static_cast<int>(message.icon_type));
    bag.add_value("answer", message.answer);
    bag.add_value("answer_label", message.answer_label);
    bag.add_value("silenced_at", static_cast<long long>(message.silenced_at));
}

long long read_number(const variant_bag_t& bag, const char* name, long long otherwise)
{
    const variant_t& value = bag.get<variant_t>(name);
    return value.can_get<long long>() ? value.get<long long>() : otherwise;
}

silenced_message_t read_message(const variant_bag_t& bag)
{
    const auto text = [&](const char* name) { return bag.find_text(name).value_or(std::string()); };
    silenced_message_t message;
    message.name = text("name");
    message.main_message = text("main_message");
    message.supplemental_message = text("supplemental_message");
    message.details_message = text("details_message");
    message.answer_label = text("answer_label");
    const auto buttons = read_number(bag, "button_type", 0);
    const auto icon = read_number(bag, "icon_type", 0);
    const auto answer = read_number(bag, "answer", message_window_t::result_none);
    if (buttons >= 0 && buttons <= static_cast<int>(button_type_t::none))
        message.button_type = static_cast<button_type_t>(buttons);
    if (icon >= 0 && icon <= static_cast<int>(message_window_t::icon_types_t::progress))
        message.icon_type = static_cast<message_window_t::icon_types_t>(icon);
    if (answer >= message_window_t::result_close && answer <= message_window_t::result_none)
        message.answer = static_cast<int>(answer);
    message.silenced_at = std::max(0LL, read_number(bag, "silenced_at", 0));
    return message;
}

// An answer is that of a button which the message has now: a newer version of it may have others.
bool answers(const silenced_message_t& message, button_type_t buttons)
{
    switch (buttons) {
    case button_type_t::close:
        return message.answer == message_window_t::result_close;
    case button_type_t::yes_no:
        return message.answer == message_window_t::result_yes;
    case button_type_t::ok_cancel:
        return message.answer == message_window_t::result_ok;
    default:
        return false;
    }
}

silenced_message_t message_of(const std::string& name, const message_window_t& window)
{
    silenced_message_t message;
    message.name = name;
    message.main_message = window.main_message;
    message.supplemental_message = window.supplemental_message;
    message.details_message = window.details_message;
    message.button_type = window.button_type;
    message.icon_type = window.icon_type;
    message.silenced_at = std::time(nullptr);
    return message;
}

void save_later(silenced_messages_t messages)
{
    background_t::get().add(background_t::kind_t::must_be_done, [messages = std::move(messages)]() mutable {
        if (const auto saved = messages.save(); saved.failed())
            gen_helpers2::log_warning("silenced_messages", "not saved: " + saved.as_string());
    });
}

class silencing_box_t : public gen_helpers2::ref_counted_of_t<i_check_box_definition>
{
public:
    silencing_box_t(silenced_messages_t all, silenced_message_t message, bool checked)
        : m_all(std::move(all)), m_message(std::move(message)), m_checked(checked)
    {
    }

    std::string get_name() const override { return m_message.name; }
    bool get_default_checked() const override { return false; }
    void reset() override
    {
        m_checked = false;
        commit();
    }
    bool is_checked() const override { return m_checked; }
    void set_checked(bool checked) override { m_checked = checked; }
    void commit() override
    {
        if (m_checked == m_all.find(m_message.name).has_value())
            return; // nobody changed anything
        if (m_checked)
            m_all.silence(m_message);
        else
            m_all.restore({m_message.name});
        save_later(m_all);
    }
    std::string get_label() const override { return translate_message("silenced_messages.check_box"); }

private:
    silenced_messages_t m_all;
    silenced_message_t m_message;
    bool m_checked;
};

// What is ticked is told only once the answer is known.
class asking_box_t : public gen_helpers2::ref_counted_of_t<i_check_box_definition>
{
public:
    asking_box_t(std::string name, bool is_question) : m_name(std::move(name)), m_is_question(is_question) {}

    std::string get_name() const override { return m_name; }
    bool get_default_checked() const override { return false; }
    void reset() override { m_checked = m_committed = false; }
    bool is_checked() const override { return m_checked; }
    void set_checked(bool checked) override { m_checked = checked; }
    void commit() override { m_committed = m_checked; }
    bool is_committed() const { return m_committed; }
    std::string get_label() const override
    {
        return translate_message(m_is_question ? "silenced_messages.check_box_question"
                                               : "silenced_messages.check_box");
    }

private:
    std::string m_name;
    bool m_is_question;
    bool m_checked = false;
    bool m_committed = false;
};

} // namespace

message_window_t silenced_message_t::get_window() const
{
    message_window_t window;
    window.main_message = main_message;
    window.supplemental_message = supplemental_message;
    window.details_message = details_message;
    window.button_type = button_type;
    window.icon_type = icon_type;
    return window;
}

silenced_messages_t::silenced_messages_t(storage_t storage) : m_storage(std::move(storage)) {}

std::vector<silenced_message_t> silenced_messages_t::get_all() const
{
    std::vector<silenced_message_t> all;
    if (!m_storage || !m_storage->has_child(silenced_child))
        return all;
    m_storage->get_child(silenced_child)->to_bag().for_each_child(silenced_record, [&](const auto& bag) {
        silenced_message_t message = read_message(bag);
        if (!message.name.empty())
            all.push_back(std::move(message));
    });
    return all;
}

std::optional<silenced_message_t> silenced_messages_t::find(const std::string& name) const
{
    for (silenced_message_t& message : get_all())
        if (message.name == name)
            return std::move(message);
    return std::nullopt;
}

gen_helpers2::sptr_t<i_check_box_definition>
silenced_messages_t::make_check_box(const std::string& name, const message_window_t& window)
{
    return gen_helpers2::sptr_t<i_check_box_definition>(
        new silencing_box_t(*this, message_of(name, window), find(name).has_value()));
}

int silenced_messages_t::ask(const std::string& name, message_window_t window, wxWindow* parent,
                             const message_options_t& options)
{
    const bool destroys = options.first.destructive || options.second.destructive;
    const auto before = find(name);
    if (before && !destroys && answers(*before, window.button_type))
        return before->answer;
    const bool is_question =
        window.button_type == button_type_t::yes_no || window.button_type == button_type_t::ok_cancel;
    if (name.empty() || !m_storage || destroys ||
        (!is_question && window.button_type != button_type_t::close))
        return show_modal(window, options, parent);
    auto* box = new asking_box_t(name, is_question);
    window.check_box = box;
    silenced_messages_t alive(*this); // its owner may go with the window
    silenced_message_t message = message_of(name, window);
    message.answer = show_modal(window, options, parent);
    if (!box->is_committed())
        return message.answer;
    message.answer_label = without_mnemonic(is_question ? options.first.label : options.second.label);
    alive.silence(message);
    save_later(alive);
    return message.answer;
}

void silenced_messages_t::silence(const silenced_message_t& message)
{
    if (!m_storage || message.name.empty())
        return;
    restore({message.name});
    variant_bag_t before, after;
    write_message(after.add_child(silenced_record), message);
    m_storage->get_child(silenced_child)->change(before, after, {"name"});
}

void silenced_messages_t::restore(const std::vector<std::string>& names)
{
    if (!m_storage || names.empty() || !m_storage->has_child(silenced_child))
        return;
    variant_bag_t before, after;
    for (const silenced_message_t& message : get_all())
        if (std::find(names.begin(), names.end(), message.name) != names.end())
            write_message(before.add_child(silenced_record), message);
    m_storage->get_child(silenced_child)->change(before, after, {"name"});
}

gen_helpers2::error_code_t silenced_messages_t::save()
{
    return m_storage ? m_storage->save() : gen_helpers2::error_code_t();
}

} // namespace commondlg3
