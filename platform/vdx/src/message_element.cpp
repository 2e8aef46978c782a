#include "vdx/message_element.h"

#include "vdx/event_log.h"

#include "html_markup.h"
#include "log_layout.h"
#include "log_view.h"

#include <algorithm>
#include <cstdint>

namespace vdxcfrw7 {

CMessageElement::CMessageElement(CEventLog& log)
    : m_log(log), m_gauge(std::make_unique<CGauge>([this] { TailChanged(); }))
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

CCaption CMessageElement::AddCaption(int severity, std::string_view text, int image, bool status, bool copy)
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
    }
    line.text = text.data();
    line.length = static_cast<std::uint32_t>(text.size());
    if (m_log.m_view)
        m_log.m_view->adding_line(line);
    m_lines.add(line);
    if (status)
        m_status_line = m_lines.size() - 1;
    if (m_log.m_view)
        m_log.m_view->line_added(*this);
    return CCaption(*this, CCaption::kind_t::line, m_lines.size() - 1);
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
    if (m_status_line != static_cast<std::size_t>(-1) && !m_status_text.empty())
        text += (text.empty() ? "" : "\n") + m_status_text;
    return text;
}

void CCaption::SetText(std::string_view text)
{
    switch (m_kind) {
    case kind_t::header:
        m_element->m_head.header.assign(text.data(), text.size());
        m_element->HeadChanged();
        break;
    case kind_t::body:
        m_element->m_head.body.assign(text.data(), text.size());
        m_element->BodyChanged();
        break;
    case kind_t::line:
        if (m_line < m_element->m_lines.size())
            m_element->SetLineText(m_line, text);
        break;
    }
}

std::string CCaption::GetText() const
{
    switch (m_kind) {
    case kind_t::header:
        return m_element->m_head.header;
    case kind_t::body:
        return m_element->m_head.body;
    case kind_t::line:
        break;
    }
    return m_line < m_element->m_lines.size() ? std::string(m_element->m_lines.at(m_line).get_text())
                                              : std::string();
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
    if (m_kind == kind_t::line) {
        if (m_line < m_element->m_lines.size() && image.get_index() >= 0) {
            m_element->m_lines.at(m_line).image = static_cast<std::uint8_t>(std::min(image.get_index(), 255));
            if (m_element->m_log.m_view)
                m_element->m_log.m_view->look_changed();
        }
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
    if (m_kind == kind_t::line && m_line < m_element->m_lines.size())
        m_element->m_lines.at(m_line).set(line_t::auto_size, on);
}

void CCaption::AdjustHeight(bool on)
{
    if (m_kind != kind_t::line || m_line >= m_element->m_lines.size())
        return;
    line_t& line = m_element->m_lines.at(m_line);
    if (line.has(line_t::adjusted) == on)
        return;
    line.set(line_t::adjusted, on);
    if (m_element->m_log.m_view)
        m_element->m_log.m_view->line_changed(*m_element, m_line);
}

void CCaption::SetTextAlignment(int) {}

} // namespace vdxcfrw7
