#pragma once

#include "text_shaper.h"

#include <wx/font.h>
#include <wx/gdicmn.h>

#include <map>
#include <string>
#include <utility>

class wxWindow;

namespace vdxcfrw7 {

/// How much room the buttons of entries need. As controls they keep the font of all others, however much the
/// text beside them is enlarged. GUI thread.
class button_sizes_t
{
public:
    /// @param scale of the distances around a label
    void set(wxWindow& window, const wxFont& font, double scale);
    /// In pixels. The letters of some languages are higher than those of others in one font.
    wxSize size_of(const std::string& label, bool is_default);

private:
    static constexpr std::size_t most_remembered = 100;

    text_shaper_t m_shapers[2]; // of a button, and of the default one
    int m_around = 0;           // the height of a button, beside its label's
    double m_scale = 1;
    std::map<std::pair<std::string, bool>, wxSize> m_sizes;
};

} // namespace vdxcfrw7
