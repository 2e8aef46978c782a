#include "vdx/event_log.h"

#include "html_markup.h"
#include "log_layout.h"
#include "log_view.h"
#include "work_slices.h"

#include <gen_helpers2/strings.h>

#include <string>
#include <string_view>
#include <utility>

namespace vdxcfrw7 {

class CEventLog::images_t : public vdxc7::IImageList
{
public:
    virtual ~images_t() = default;
    int Add(const wx_helpers1::wxStaticPicture& picture) override
    {
        m_pictures.push_back(picture);
        return GetCount() - 1;
    }
    int GetCount() const override { return static_cast<int>(m_pictures.size()); }
    wx_helpers1::wxStaticPicture Get(int index) const override
    {
        return index >= 0 && index < GetCount() ? m_pictures[static_cast<std::size_t>(index)]
                                                : wx_helpers1::wxStaticPicture();
    }

private:
    std::vector<wx_helpers1::wxStaticPicture> m_pictures;
};

CEventLog::CEventLog(wxWindow* parent)
    : m_images(std::make_unique<images_t>()),
      m_slices(std::make_unique<work_slices_t>([this] { return m_view ? m_view->turn() : 0; }))
{
    m_view = new log_view_t(*this, parent);
    m_window = m_view;
}

CEventLog::~CEventLog()
{
    m_slices->stop();
    if (log_view_t* view = m_view) {
        m_view = nullptr;
        view->forget_log();
        view->Destroy();
    }
}

wxWindow* CEventLog::GetWindow() const
{
    return m_window.get();
}

vdxc7::IImageList* CEventLog::GetImageList()
{
    return m_images.get();
}

CMessageElement& CEventLog::AddElement()
{
    std::unique_ptr<CMessageElement> element(new CMessageElement(*this));
    element->m_index = m_elements.size();
    m_elements.push_back(std::move(element));
    if (m_view)
        m_view->element_added(*m_elements.back());
    return *m_elements.back();
}

line_store_t CEventLog::Remove(CMessageElement& element)
{
    const std::size_t index = element.m_index;
    if (index >= m_elements.size() || m_elements[index].get() != &element)
        return {};
    const std::size_t hidden = element.m_lines.get_hidden_count();
    m_counts.errors -= element.m_counts.errors;
    m_counts.warnings -= element.m_counts.warnings;
    // The view looks at the lines once more.
    if (m_view)
        m_view->element_removing(element);
    const std::unique_ptr<CMessageElement> going = std::move(m_elements[index]);
    m_elements.erase(m_elements.begin() + static_cast<std::ptrdiff_t>(index));
    for (std::size_t i = index; i < m_elements.size(); ++i)
        m_elements[i]->m_index = i;
    if (m_view)
        m_view->element_removed();
    if (hidden)
        m_hidden_changed.emit();
    return std::move(going->m_lines);
}

std::string CEventLog::GetText() const
{
    std::string text;
    for (const auto& element : m_elements) {
        if (!text.empty())
            text += '\n';
        text += element->GetText();
        if (element->m_more_text)
            text += element->m_more_text();
    }
    return text;
}

std::string CEventLog::GetHTML() const
{
    constexpr std::size_t longest_html = std::size_t(8) << 20;
    std::size_t bytes = 0; // before any of it is made
    for (const auto& element : m_elements)
        bytes += element->m_lines.get_bytes();
    if (bytes > longest_html)
        return {};
    std::string html;
    for (const auto& element : m_elements) {
        std::string text = element->GetText();
        if (element->m_more_text)
            text += element->m_more_text();
        const std::string& header = element->GetHead().header;
        html += "<p><b>" + text_to_markup(header) + "</b>" +
                text_to_markup(std::string_view(text).substr(header.size())) + "</p>\n";
        if (html.size() > longest_html)
            return {};
    }
    return gen_helpers2::replace_invalid_utf8(html);
}

void CEventLog::SetWords(const log_words_t& words)
{
    m_words = words;
    if (m_view)
        m_view->words_changed();
}

void CEventLog::AddWork(const void* owner, std::function<bool()> work)
{
    m_slices->add(owner, std::move(work));
}

void CEventLog::CancelWork(const void* owner)
{
    m_slices->cancel(owner);
}

bool CEventLog::HasWork() const
{
    return !m_slices->is_empty();
}

bool CEventLog::enough() const
{
    return m_slices->enough();
}

void CEventLog::ScrollToEnd()
{
    if (m_view)
        m_view->scroll_to_end();
}

bool CEventLog::IsAtEnd() const
{
    return !m_view || m_view->get_layout().follows_end();
}

const CMessageElement* CEventLog::GetCurrentElement() const
{
    return m_view ? m_view->get_place().element : nullptr;
}

CEventLog::reading_t CEventLog::GetReading() const
{
    return m_view ? m_view->get_reading() : reading_t();
}

void CEventLog::GoBack(const reading_t& reading)
{
    if (m_view)
        m_view->go_back(reading);
}

void CEventLog::SetFind(const std::string& text, const find_options_t& options)
{
    if (m_view)
        m_view->set_find(text, options);
}

bool CEventLog::IsFinding() const
{
    return m_view && m_view->is_finding();
}

bool CEventLog::IsFiltering() const
{
    return m_view && m_view->is_filtering();
}

const CMessageElement* CEventLog::GetOnlyElement() const
{
    return m_view ? m_view->get_only() : nullptr;
}

bool CEventLog::FindNext(bool forward)
{
    return m_view && m_view->find_next(forward);
}

bool CEventLog::Find(const std::string& text, bool forward)
{
    return m_view && m_view->find(text, forward);
}

CEventLog::find_state_t CEventLog::GetFindState()
{
    return m_view ? m_view->get_find_state() : find_state_t{0, 0, true, false, false};
}

void CEventLog::SetFilter(int severities, const std::string& text, const find_options_t& options,
                          const CMessageElement* only)
{
    if (m_view)
        m_view->set_filter(severities, text, options, only);
}

void CEventLog::SetTimes(times_t times)
{
    if (m_view)
        m_view->set_times(times);
}

CEventLog::times_t CEventLog::GetTimes() const
{
    return m_view ? m_view->get_times() : times_t::none;
}

void CEventLog::SetCopyTimes(bool copy)
{
    if (m_view)
        m_view->get_selection().copy_times(copy);
}

bool CEventLog::GetCopyTimes() const
{
    return m_view && m_view->get_selection().copies_times();
}

void CEventLog::SetWrap(bool wrap)
{
    if (m_view)
        m_view->set_wrap(wrap);
}

bool CEventLog::GetWrap() const
{
    return !m_view || m_view->get_layout().wraps();
}

void CEventLog::SetZoom(int percent)
{
    if (m_view)
        m_view->set_zoom(percent);
}

int CEventLog::GetZoom() const
{
    return m_view ? m_view->get_zoom() : 100;
}

void CEventLog::SetCollapse(bool collapse)
{
    if (collapse == GetCollapse())
        return;
    m_collapse = collapse;
    for (const auto& element : m_elements)
        element->ShowRepeats(!collapse);
}

std::size_t CEventLog::GetHiddenCount() const
{
    std::size_t count = 0;
    for (const auto& element : m_elements)
        count += element->IsFilteredOut() ? element->m_lines.size() : element->m_lines.get_hidden_count();
    return count;
}

void CEventLog::SelectAll()
{
    if (m_view)
        m_view->select_all();
}

bool CEventLog::HasSelection() const
{
    return m_view && !m_view->get_selection().is_empty();
}

std::string CEventLog::GetSelectedText() const
{
    return m_view ? m_view->get_selection().get_text(false) : std::string();
}

std::string CEventLog::GetSelectedHTML() const
{
    return m_view ? m_view->get_selection().get_text(true) : std::string();
}

CEventLog::state_t CEventLog::GetState()
{
    if (!m_view)
        return {0, 0, true, true};
    log_layout_t& layout = m_view->get_layout();
    layout.settle();
    return {layout.top(), layout.total(), layout.is_exact(), layout.follows_end()};
}

void CEventLog::ScrollTo(std::int64_t top)
{
    if (m_view)
        m_view->scroll_to(top);
}

wxRect CEventLog::GetLineRect(const CMessageElement& element, std::size_t line)
{
    if (!m_view || line >= element.GetLines().size())
        return wxRect();
    log_layout_t& layout = m_view->get_layout();
    layout.settle();
    const line_t& kept = element.GetLines().at(line);
    return wxRect(layout.line_left(), static_cast<int>(layout.top_of_line(element, line) - layout.top()),
                  layout.line_width(), kept.has(line_t::hidden) ? 0 : static_cast<int>(kept.height));
}

} // namespace vdxcfrw7
