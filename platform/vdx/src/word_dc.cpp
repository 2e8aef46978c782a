#include "word_dc.h"

#include <string>

namespace vdxcfrw7 {
namespace {

constexpr std::size_t most_words = 50000;
constexpr std::size_t longest_word = 40;

struct extent_t
{
    wxCoord width, height, descent, leading;
};

} // namespace

class word_dc_t::impl_t : public wxGCDCImpl
{
public:
    impl_t(wxDC* owner, const wxMemoryDC& dc) : wxGCDCImpl(owner, dc) {}

    void DoGetTextExtent(const wxString& text, wxCoord* width, wxCoord* height, wxCoord* descent,
                         wxCoord* leading, const wxFont* font) const override
    {
        if (font || text.length() > longest_word) {
            wxGCDCImpl::DoGetTextExtent(text, width, height, descent, leading, font);
            return;
        }
        // Fonts share their data with those they were copied from, and are kept by the one who lays out.
        auto& words = m_words[m_font.GetRefData()];
        auto found = words.find(text.ToStdWstring());
        if (found == words.end()) {
            if (words.size() >= most_words)
                words.clear();
            extent_t extent{};
            wxGCDCImpl::DoGetTextExtent(text, &extent.width, &extent.height, &extent.descent, &extent.leading,
                                        nullptr);
            found = words.emplace(text.ToStdWstring(), extent).first;
            m_fonts[m_font.GetRefData()] = m_font;
        }
        const extent_t& extent = found->second;
        if (width)
            *width = extent.width;
        if (height)
            *height = extent.height;
        if (descent)
            *descent = extent.descent;
        if (leading)
            *leading = extent.leading;
    }

    // Asked for by the parser at the beginning of each body.
    wxCoord GetCharHeight() const override { return size_of_characters().height; }
    wxCoord GetCharWidth() const override { return size_of_characters().width; }

private:
    const extent_t& size_of_characters() const
    {
        extent_t& size = m_characters[m_font.GetRefData()];
        if (size.height == 0) {
            size.height = wxGCDCImpl::GetCharHeight();
            size.width = wxGCDCImpl::GetCharWidth();
            m_fonts[m_font.GetRefData()] = m_font;
        }
        return size;
    }

    using words_t = std::unordered_map<std::wstring, extent_t>;
    mutable std::unordered_map<const void*, words_t> m_words;
    mutable std::unordered_map<const void*, extent_t> m_characters;
    mutable std::unordered_map<const void*, wxFont> m_fonts; // keeps the keys of both alive
};

word_dc_t::word_dc_t(const wxMemoryDC& dc) : wxDC(new impl_t(this, dc)) {}

} // namespace vdxcfrw7
