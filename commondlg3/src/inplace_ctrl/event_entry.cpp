#include "event_entry.h"

#include "saved_keys.h"

#include <gen_helpers2/assertion.h>

namespace commondlg3 {

gen_helpers2::error_code_t read_saved_line(const gen_helpers2::variant_bag_t& entry, saved_line_t& line)
{
    using gen_helpers2::error_code_t;
    const gen_helpers2::variant_t* text = entry.find_value(saved::message);
    if (!text)
        return error_code_t::invalid_value("entry.has<gh2::variant_t>(MSG_NAME)");
    if (!text->can_get<const unsigned char*>())
        return error_code_t::invalid_value("value.can_get<const cpil2::uchar_t*>()");
    const gen_helpers2::variant_t* severity = entry.find_value(saved::severity);
    if (!severity)
        return error_code_t::invalid_value("entry.has<gh2::variant_t>(SEVERITY_NAME)");
    if (!severity->can_get<int>())
        return error_code_t::invalid_value("value.can_get<int>()");
    const gen_helpers2::variant_t* time = entry.find_value(saved::time);
    line = {static_cast<msngr2::ESeverity>(severity->get<int>()), text->text(),
            time && time->can_get<long long>() ? time->get<long long>() : vdxcfrw7::line_store_t::no_time};
    return {};
}

event_entry_t::event_entry_t(event_log_t& log, tag_t tag)
    : m_log(&log), m_element(&log.AddElement()), m_tag(tag), m_show_debug(log.get_show_debug())
{
}

event_entry_t::~event_entry_t() = default;

void event_entry_t::hide()
{
    free_lines(remove_element(), {});
}

vdxcfrw7::line_store_t event_entry_t::remove_element()
{
    if (!m_element)
        return {};
    vdxcfrw7::CMessageElement* element = m_element;
    m_element = nullptr;
    m_status = nullptr;
    m_status_caption.reset();
    return m_log->Remove(*element);
}

gen_helpers2::error_code_t event_entry_t::save(gen_helpers2::variant_bag_t& bag)
{
    for_each_line([&bag, times = m_log->keeps_times()](const messenger_entry_t& line) {
        gen_helpers2::variant_bag_t& child = bag.add_child(saved::line);
        child.put(saved::message, line.text);
        child.put(saved::severity, static_cast<int>(line.severity));
        if (times && line.time != vdxcfrw7::line_store_t::no_time)
            child.put(saved::time, static_cast<long long>(line.time));
        child.shrink_to_fit();
    });
    return {};
}

gen_helpers2::error_code_t event_entry_t::load(const gen_helpers2::variant_bag_t& bag,
                                               msngr2::IMessenger* msngr)
{
    using gen_helpers2::error_code_t;
    if (!msngr)
        return error_code_t::invalid_parameter("msngr");
    auto* own = dynamic_cast<event_entry_t*>(msngr);
    for (const auto& item : bag) {
        const gen_helpers2::variant_bag_t* entry = item.child();
        if (!entry || item.name() != saved::line)
            continue;
        saved_line_t line;
        const error_code_t read = read_saved_line(*entry, line);
        if (read.failed())
            return read;
        if (own) // others take texts that end at their first zero byte
            own->say_text(line.severity, line.text, line.time);
        else
            msngr->say(line.severity, line.text.data());
    }
    return {};
}

void event_entry_t::say_impl(vdxcfrw7::CVisualElement* parent, vdxcfrw7::CCaption** status,
                             msngr2::ESeverity severity, std::string_view text)
{
    if ((severity & msngr2::sev_debug) && !m_show_debug)
        return;
    m_log->set_changed(true);
    const bool is_status = (severity & msngr2::sev_status) != 0;
    const int image = m_log->image_of(severity);
    if (is_status && *status) {
        (*status)->SetText(text);
        (*status)->SetImage(image);
        return;
    }
    if (!is_status)
        m_severities |= severity;
    auto* element = static_cast<vdxcfrw7::CMessageElement*>(parent);
    if (!is_status && element->RepeatLast(severity, text, m_said))
        return;
    // Lines size themselves; the height of a remembered one follows its text, a status line keeps to one row.
    const vdxcfrw7::CCaption caption =
        element->AddCaption(severity, text, image, is_status, m_copy_texts || is_status, m_time);
    if (m_said > 1 && !is_status)
        element->CountUp(m_said - 1);
    if (is_status) {
        m_status_caption = std::make_unique<vdxcfrw7::CCaption>(caption);
        *status = m_status_caption.get();
    }
}

} // namespace commondlg3
