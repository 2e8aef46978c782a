#include "vdx/message_element.h"

#include "vdx/event_log.h"

#include "html_markup.h"
#include "log_layout.h"
#include "log_times.h"
#include "log_view.h"
#include "styled_text.h"

#include <algorithm>
#include <cstdint>

namespace vdxcfrw7 {

std::string BodyToText(const std::string& html)
{
    return is_light_markup(html) ? markup_to_text(html) : html;
}

std::string LineToText(std::string_view said)
{
    if (!has_sequences(said))
        return std::string(said);
    styled_text_t shown;
    read_styled_text(said, shown);
    return shown.text;
}

CMessageElement::CMessageElement(CEventLog& log)
    : m_log(log), m_gauge(std::make_unique<CGauge>([this] { TailChanged(); })), m_began(time_now())
{
}

CMessageElement::~CMessageElement() = default;

void CMessageElement::Changed()
{
    HeadChanged();
    TailChanged();
}

void CMessageElement::HeadChanged()
{
    if (m_log.m_view)
        m_log.m_view->head_changed(*this);
}

void CMessageElement::BodyChanged()
{
    m_head.laid_out = m_head.html && is_light_markup(m_head.body);
    HeadChanged();
}

void CMessageElement::TailChanged()
{
    if (m_log.m_view)
        m_log.m_view->tail_changed(*this);
}

CCaption CMessageElement::AddCaption(int severity, std::string_view text, int image, bool status, bool copy,
                                     std::int64_t time)
{
    line_t line{};
    line.severity = static_cast<std::uint32_t>(severity);
    line.image = static_cast<std::uint8_t>(std::clamp(image, 0, 255));
    line.width = line_t::no_width;
    line.flags = line_t::auto_size;
    if (status) {
        m_status_text.assign(text.data(), text.size());
        text = m_status_text;
        line.flags |= line_t::status;
    } else {
        line.flags |= line_t::adjusted;
        if (copy)
            text = std::string_view(m_lines.keep(text), text.size());
        else
            m_lines.use_adopted(text.data());
    }
    line.text = text.data();
    line.length = static_cast<std::uint32_t>(text.size());
    line.set(line_t::styled, has_sequences(text));
    if (m_log.m_view)
        m_log.m_view->adding_line(line);
    m_lines.add(line, time);
    if (!status)
        Count(line.severity, 1);
    if (status)
        m_status_line = m_lines.size() - 1;
    if (m_log.m_view)
        m_log.m_view->line_added(*this);
    return CCaption(*this, status ? CCaption::kind_t::status : CCaption::kind_t::line, m_lines.size() - 1);
}

bool CMessageElement::RepeatLast(int severity, std::string_view text, std::uint64_t count)
{
    if (!m_log.GetCollapse() || !m_lines.ends_with(static_cast<std::uint32_t>(severity), text))
        return false;
    CountUp(count);
    return true;
}

void CMessageElement::CountUp(std::uint64_t count)
{
    const std::size_t last = m_lines.last_remembered();
    if (last >= m_lines.size())
        return;
    m_lines.repeat_last(count);
    Count(m_lines.at(last).severity, count);
    if (!m_log.GetCollapse())
        m_lines.at(last).set(line_t::expanded, true);
    if (m_log.m_view)
        m_log.m_view->line_repeated(*this, last, count);
}

void CMessageElement::Count(std::uint32_t severity, std::uint64_t times)
{
    if (severity & line_t::error_bits) {
        m_counts.errors += times;
        m_log.m_counts.errors += times;
    } else if (severity & line_t::warning_bits) {
        m_counts.warnings += times;
        m_log.m_counts.warnings += times;
    }
}

void CMessageElement::ShowRepeats(bool show)
{
    bool changed = m_lines.expand_repeats(show);
    std::size_t seen = m_log.m_view ? m_log.m_view->get_layout().get_anchor_line(*this) : 0;
    if (!show && m_lines.collapse(seen)) {
        changed = true;
        if (m_status_line != no_line)
            for (m_status_line = 0; m_lines.at(m_status_line).text != m_status_text.data();)
                ++m_status_line;
    }
    if (changed && m_log.m_view)
        m_log.m_view->lines_changed(*this, seen);
}

void CMessageElement::DropBlocks(std::size_t count, int image)
{
    count = std::min(count, GetOldBlocks());
    if (count == 0)
        return;
    const std::size_t lines = count * line_store_t::block_size;
    const bool with_status = m_status_line != no_line;
    const bool status_goes = with_status && m_status_line <= lines; // or is where the mark will be
    const std::size_t others = status_goes ? 2 : 1; // lines whose places the mark and the status line take
    for (std::size_t index = 0; index < lines + others; ++index)
        if (!m_lines.at(index).has(line_t::status)) {
            const std::uint64_t said = m_lines.get_count(index);
            Count(m_lines.at(index).severity, 0 - said);
            m_dropped += said;
        }
    m_lines.drop_blocks(count);
    if (with_status)
        m_status_line = status_goes ? 1 : m_status_line - lines;
    line_t mark{};
    mark.severity = 1;
    mark.image = static_cast<std::uint8_t>(std::clamp(image, 0, 255));
    mark.width = line_t::no_width;
    mark.flags = line_t::auto_size | line_t::status;
    if (status_goes) {
        line_t status = mark;
        status.text = m_status_text.data();
        status.length = static_cast<std::uint32_t>(m_status_text.size());
        m_lines.replace(1, status);
    }
    const auto& words = m_log.GetWords().dropped;
    m_dropped_text = words ? words(m_dropped) : std::string();
    mark.text = m_dropped_text.data();
    mark.length = static_cast<std::uint32_t>(m_dropped_text.size());
    m_lines.replace(0, mark);
    if (log_view_t* view = m_log.m_view)
        view->lines_dropped(*this, lines, others);
}

void CMessageElement::SetLineText(std::size_t index, std::string_view text)
{
    line_t& line = m_lines.at(index);
    if (index == m_status_line) {
        m_status_text.assign(text.data(), text.size());
        line.text = m_status_text.data();
    } else
        line.text = m_lines.keep(text);
    line.length = static_cast<std::uint32_t>(text.size());
    line.set(line_t::styled, has_sequences(text));
    if (m_log.m_view)
        m_log.m_view->line_changed(*this, index);
}

CButton& CMessageElement::AddButton(int id, const std::string& label, bool is_default)
{
    m_buttons.push_back(std::make_unique<CButton>(id, label, is_default, [this] { TailChanged(); }));
    TailChanged();
    return *m_buttons.back();
}

void CMessageElement::ClearButtons()
{
    if (m_buttons.empty())
        return;
    // A button may be cleared while it is pressed: the view lets go of it first, and its press holds no more
    // of it.
    if (m_log.m_view)
        m_log.m_view->buttons_going(*this);
    m_buttons.clear();
    TailChanged();
}

void CMessageElement::ShowButtons(bool show)
{
    if (show == m_buttons_shown)
        return;
    m_buttons_shown = show;
    if (!m_buttons.empty())
        TailChanged();
}

std::int64_t CMessageElement::GetBeginning() const
{
    const std::int64_t first = m_lines.empty() ? line_store_t::no_time : m_lines.get_time(0);
    return first == line_store_t::no_time ? m_began : std::min(m_began, first);
}

std::string CMessageElement::GetBodyText() const
{
    return m_head.laid_out ? markup_to_text(m_head.body) : m_head.body;
}

std::string CMessageElement::GetText() const
{
    std::string text = m_head.header;
    const std::string body = GetBodyText();
    if (!body.empty())
        text += (text.empty() ? "" : "\n") + body;
    if (m_status_line != no_line && !m_status_text.empty()) {
        std::string storage;
        text += text.empty() ? "" : "\n";
        text += get_shown_text(m_lines.at(m_status_line), storage);
    }
    return text;
}

line_t* CCaption::get_kept_line() const
{
    line_store_t& lines = m_element->m_lines;
    const std::size_t line = get_line();
    const bool is_line = m_kind == kind_t::line || m_kind == kind_t::status;
    return is_line && line < lines.size() ? &lines.at(line) : nullptr;
}

std::size_t CCaption::get_line() const
{
    return m_kind == kind_t::status ? m_element->m_status_line : m_line;
}

void CCaption::SetText(std::string_view text)
{
    if (m_kind == kind_t::header) {
        m_element->m_head.header.assign(text.data(), text.size());
        m_element->HeadChanged();
    } else if (m_kind == kind_t::body) {
        m_element->m_head.body.assign(text.data(), text.size());
        m_element->BodyChanged();
    } else if (get_kept_line())
        m_element->SetLineText(get_line(), text);
}

std::string CCaption::GetText() const
{
    if (m_kind == kind_t::header)
        return m_element->m_head.header;
    if (m_kind == kind_t::body)
        return m_element->m_head.body;
    const line_t* line = get_kept_line();
    return line ? std::string(line->get_text()) : std::string();
}

void CCaption::UseHTML(bool use)
{
    if (m_kind != kind_t::body || m_element->m_head.html == use)
        return;
    m_element->m_head.html = use;
    m_element->BodyChanged();
}

void CCaption::SetImage(const CImage& image)
{
    if (m_kind != kind_t::header && m_kind != kind_t::body) {
        line_t* line = get_kept_line();
        if (!line || image.get_index() < 0)
            return;
        line->image = static_cast<std::uint8_t>(std::min(image.get_index(), 255));
        if (m_element->m_log.m_view)
            m_element->m_log.m_view->look_changed();
        return;
    }
    m_element->m_head.picture =
        image.get_index() >= 0
            ? wx_helpers1::picture_t(m_element->m_log.GetImageList()->Get(image.get_index()))
            : image.get_picture();
    m_element->HeadChanged();
}

void CCaption::SetAutoSize(bool on)
{
    if (line_t* line = get_kept_line())
        line->set(line_t::auto_size, on);
}

void CCaption::AdjustHeight(bool on)
{
    line_t* line = get_kept_line();
    if (!line || line->has(line_t::adjusted) == on)
        return;
    line->set(line_t::adjusted, on);
    if (m_element->m_log.m_view)
        m_element->m_log.m_view->line_changed(*m_element, get_line());
}

void CCaption::SetTextAlignment(int) {}

} // namespace vdxcfrw7
