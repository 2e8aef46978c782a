#include "button_sizes.h"

#include <wx/button.h>

#include <algorithm>

namespace vdxcfrw7 {
namespace {

wxSize label_size(text_shaper_t& shaper, const std::string& label)
{
    wxSize size;
    pango_layout_get_pixel_size(shaper.layout_of(label, direction_of(label, 0, PANGO_DIRECTION_LTR), {}),
                                &size.x, &size.y);
    return size;
}

} // namespace

void button_sizes_t::set(wxWindow& window, const wxFont& font, double scale)
{
    m_shapers[false].set(window, font);
    m_shapers[true].set(window, font.Bold());
    m_scale = scale;
    m_sizes.clear();
    // The toolkit remembers its default height from the first font that it saw.
    auto* probe = new wxButton;
    probe->Hide();
    probe->Create(&window, wxID_ANY, "x");
    m_around = std::max(probe->GetBestSize().y, 24) - label_size(m_shapers[false], "x").y;
    delete probe;
}

wxSize button_sizes_t::size_of(const std::string& label, bool is_default)
{
    if (const auto found = m_sizes.find({label, is_default}); found != m_sizes.end())
        return found->second;
    if (m_sizes.size() == most_remembered)
        m_sizes.clear();
    const auto scaled = [this](int pixels) { return static_cast<int>(pixels * m_scale + 0.5); };
    wxSize size = label_size(m_shapers[is_default], label) + wxSize(scaled(34), m_around);
    size.IncTo(wxSize(scaled(85), 0));
    return m_sizes[{label, is_default}] = size;
}

} // namespace vdxcfrw7
