#include "page_search.h"

#include <cpil/strings.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/ctrlsub.h>
#include <wx/radiobut.h>
#include <wx/statbox.h>
#include <wx/stattext.h>

#include <algorithm>
#include <sstream>

namespace commondlg3 {
namespace {

bool bears_a_text(const wxWindow& window)
{
    return dynamic_cast<const wxStaticText*>(&window) || dynamic_cast<const wxCheckBox*>(&window) ||
           dynamic_cast<const wxRadioButton*>(&window) || dynamic_cast<const wxButton*>(&window) ||
           dynamic_cast<const wxStaticBox*>(&window) || dynamic_cast<const wxItemContainer*>(&window);
}

// A list's label is what can be chosen in it; its own is none.
std::string get_text(const wxWindow& window)
{
    if (const auto* items = dynamic_cast<const wxItemContainer*>(&window)) {
        std::string all;
        for (unsigned i = 0; i < items->GetCount(); ++i)
            all += wx_helpers1::from_wx(items->GetString(i)) + "\n";
        return all;
    }
    return wx_helpers1::from_wx(static_cast<const wxControl&>(window).GetLabelText());
}

template <class F>
void for_each_text(const wxWindow& page, F&& fn)
{
    for (wxWindow* child : page.GetChildren()) {
        if (!child->IsShown())
            continue;
        if (bears_a_text(*child))
            fn(child);
        for_each_text(*child, fn);
    }
}

} // namespace

// The upper case of two texts is the same when only their cases differ, in every script.
std::string to_searched(const std::string& text)
{
    return CPIL_2_18::strings::to_upper(text);
}

search_words_t::search_words_t(const std::string& typed)
{
    std::istringstream words(to_searched(typed));
    for (std::string word; words >> word;)
        m_words.push_back(word);
}

bool search_words_t::are_in(const std::string& text) const
{
    return are_in_searched(to_searched(text));
}

bool search_words_t::are_in_searched(const std::string& text) const
{
    return std::all_of(m_words.begin(), m_words.end(),
                       [&](const std::string& word) { return text.find(word) != std::string::npos; });
}

std::string get_page_texts(const wxWindow& page)
{
    std::string texts;
    for_each_text(page, [&](const wxWindow* window) { texts += get_text(*window) + "\n"; });
    return texts;
}

std::vector<wxWindow*> find_settings(wxWindow& page, const search_words_t& words)
{
    std::vector<wxWindow*> found;
    if (words.empty())
        return found;
    for_each_text(page, [&](wxWindow* window) {
        if (words.are_in(get_text(*window)))
            found.push_back(window);
    });
    return found;
}

void focus_setting(wxWindow& label)
{
    // A label stands before the control that it names.
    for (wxWindow* window = &label; window; window = window->GetNextSibling())
        if (window->IsShown() && window->IsEnabled() && window->AcceptsFocusFromKeyboard()) {
            window->SetFocus();
            return;
        }
}

void found_marks_t::show(const std::vector<wxWindow*>& found)
{
    std::vector<wxWindow*> marked;
    for (const wxWeakRef<wxWindow>& window : m_marked) {
        if (!window)
            continue;
        if (std::find(found.begin(), found.end(), window.get()) == found.end())
            wx_helpers1::set_label_background(window.get(), wxColour());
        else
            marked.push_back(window.get());
    }
    m_marked.clear();
    const auto* settings = wx_helpers1::ui_settings_t::get();
    for (wxWindow* window : found) {
        m_marked.emplace_back(window);
        // Giving a label the mark that it has would measure it anew, at every key of a search.
        if (settings && std::find(marked.begin(), marked.end(), window) == marked.end())
            wx_helpers1::set_label_background(
                window, settings->get_colour(wx_helpers1::ui_colour::notice_background));
    }
}

wxWindow* found_marks_t::get_first() const
{
    return m_marked.empty() ? nullptr : m_marked.front().get();
}

} // namespace commondlg3
